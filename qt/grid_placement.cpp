#include "qt/grid_placement.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>
#include <map>

#include "platform/form/command_button.h"
#include "platform/form/ss_tab.h"
#include "qt/layouts.h"

namespace cp {

void PlaceRows(QWidget& view, form::ControlContainer& container, const BindingLookup& bindingOf) {
  QWidget* const self = &view;
  std::map<QWidget*, std::pair<QGridLayout*, int>> grids;  // area widget -> grid, next row
  const auto gridOf = [&](QWidget* area) -> std::pair<QGridLayout*, int>& {
    auto it = grids.find(area);
    if (it == grids.end()) {
      auto* grid = new QGridLayout(area);
      if (area == self || qobject_cast<QTabWidget*>(area->parentWidget()) == nullptr)
        grid->setContentsMargins(area == self ? 0 : 6, area == self ? 0 : 6,
                                 area == self ? 0 : 6, area == self ? 0 : 6);
      grid->setColumnStretch(1, 1);
      it = grids.emplace(area, std::make_pair(grid, 0)).first;
    }
    return it->second;
  };
  const auto areaWidget = [&](const layout::Area& area) -> QWidget* {
    if (!area.owner) return self;
    ControlBinding* owner = bindingOf(*area.owner);
    if (!owner) return self;
    if (owner->tabs) {
      auto& ss = static_cast<const form::SSTab&>(*area.owner);
      while (static_cast<int>(owner->pages.size()) < ss.Tabs()) {
        auto* page = new QWidget;
        owner->pages.push_back(page);
        owner->tabs->addTab(page, QString());
      }
      return owner->pages[std::min<std::size_t>(area.tab, owner->pages.size() - 1)];
    }
    return owner->area ? owner->area : self;
  };
  // Tab strips get their pages even when nothing sits on them.
  for (form::Control* control : container.Controls())
    if (const ControlBinding* b = bindingOf(*control); b && b->tabs) areaWidget({control, 0});

  std::map<QWidget*, bool> expands;  // areas holding a widget that takes the spare height
  std::map<QWidget*, int> stackedRow;  // per area, the row of the last user control placed
  for (const layout::PlacedRow& row : layout::PlanRows(container)) {
    QWidget* area = areaWidget(row.area);
    auto& [grid, r] = gridOf(area);
    std::size_t first = 0;
    if (row.labelled) {
      if (row.cells[0].control) grid->addWidget(bindingOf(*row.cells[0].control)->outer, r, 0);
      first = 1;
    }
    // A row of one frame, tab strip or user control gets the whole width and spare height.
    // User controls that follow each other share one cell: only one of them is visible at a
    // time (the dialog's two criteria controls), so the hidden one must not keep a row.
    if (!row.labelled && row.cells.size() == 1) {
      ControlBinding* b = bindingOf(*row.cells[0].control);
      const auto previous = stackedRow.find(area);
      if (b->nested && previous != stackedRow.end() && previous->second == r - 1) {
        grid->addWidget(b->outer, r - 1, 0, 1, 2);
        continue;
      }
      if (b->nested) stackedRow[area] = r;
      if (b->area || b->tabs || b->nested) {
        grid->addWidget(b->outer, r, 0, 1, 2);
        grid->setRowStretch(r, 1);
        expands[area] = true;
        ++r;
        continue;
      }
    }
    auto* line = new QHBoxLayout;
    bool stretchable = false;
    for (std::size_t i = first; i < row.cells.size(); ++i) {
      const layout::PlacedCell& cell = row.cells[i];
      if (cell.kind == layout::Cell::Kind::Stretch) {
        line->addStretch(1);
        stretchable = true;
        continue;
      }
      if (!cell.control) continue;
      ControlBinding* b = bindingOf(*cell.control);
      QWidget* w = b->outer;
      if (cell.widthChars > 0) {
        w->setFixedWidth(w->fontMetrics().horizontalAdvance(QLatin1Char('0')) *
                             cell.widthChars + 16);
      } else if (qobject_cast<QLineEdit*>(w) || b->nested || b->tabs || b->area) {
        stretchable = true;
      }
      if (auto* button = qobject_cast<QPushButton*>(w);
          button && static_cast<form::CommandButton*>(cell.control)->Caption() == "...") {
        button->setFixedWidth(button->fontMetrics().horizontalAdvance(QStringLiteral("...")) + 18);
      }
      line->addWidget(w);
    }
    if (!stretchable) line->addStretch(1);
    if (row.labelled)
      grid->addLayout(line, r, 1);
    else
      grid->addLayout(line, r, 0, 1, 2);
    ++r;
  }
  // Rows keep to the top of an area that nothing stretches.
  for (auto& [area, g] : grids)
    if (!expands[area]) g.first->setRowStretch(g.second, 1);
}

}  // namespace cp
