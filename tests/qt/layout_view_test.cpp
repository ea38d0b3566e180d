// Layouts: the descriptions name real controls and place each one once; the generic rule
// places any other container; on screen, the rows line up.
#include <QTabBar>
#include <QTabWidget>
#include <set>

#include "platform/form/frame.h"
#include "qt/layouts.h"
#include "tests/qt/gui_support.h"

namespace cp::testing {
namespace {

using layout::Cell;

// Names and indexes are parsed for every description by the guard below; here, widths and
// text that is no cell.
TEST(LayoutCells, WidthsAndBadText) {
  EXPECT_EQ(layout::ParseCell("txtPrecio(0):12").widthChars, 12);
  EXPECT_EQ(layout::ParseCell("|").kind, Cell::Kind::Stretch);
  for (const char* bad : {"txt(", "txt(a)", "txt:x", "(1)", "txt:-2"})
    EXPECT_THROW(layout::ParseCell(bad), Error) << bad;
}

// Every control placed exactly once, and every name a description uses exists.
void ExpectDescribedCompletely(const form::ControlContainer& c) {
  std::multiset<const form::Control*> placed;
  for (const auto& row : layout::PlanRows(c))
    for (const auto& cell : row.cells)
      if (cell.control) placed.insert(cell.control);
  for (const form::Control* control : c.Controls())
    EXPECT_EQ(placed.count(control), 1u) << c.Name() << "." << control->Name();
  EXPECT_EQ(placed.size(), c.Controls().size());
  const auto rows = layout::DescriptionFor(c.Name());
  EXPECT_FALSE(rows.empty()) << c.Name();
  for (const auto& row : rows)
    for (const std::string& text : row) {
      const Cell cell = layout::ParseCell(text);
      if (cell.kind == Cell::Kind::Control) {
        EXPECT_NE(c.Find(cell.name, cell.index), nullptr) << c.Name() << ": " << text;
      }
    }
}

using DialogLayoutTest = SelectionTest;

TEST_F(DialogLayoutTest, DescriptionsCoverTheDialogAndBothControls) {
  frmSeleccion& dlg = sel_->Dialog();
  ExpectDescribedCompletely(dlg.Controls());
  ExpectDescribedCompletely(dlg.SeleccionCli1().Controls());
  ExpectDescribedCompletely(dlg.SeleccionInm1().Controls());
}

TEST(LayoutFallback, LabelStartsARowAndContainersStandAlone) {
  form::ControlContainer c("Otro");
  c.AddLabel("lblUno");
  c.AddTextBox("txtUno");
  c.AddCommandButton("cmdUno");
  c.AddLabel("lblDos");
  c.AddCheckBox("chkDos");
  auto& frame = c.AddFrame("fraTres");
  c.AddTextBox("txtTres").setParent(&frame);
  c.AddCommandButton("cmdSuelto");
  const auto rows = layout::PlanRows(c);
  std::vector<std::vector<std::string>> names;
  for (const auto& row : rows) {
    names.emplace_back();
    for (const auto& cell : row.cells) names.back().push_back(cell.control->Name());
  }
  // Rows of one area keep creation order; the frame's own row belongs to the frame.
  EXPECT_EQ(names, (std::vector<std::vector<std::string>>{{"lblUno", "txtUno", "cmdUno"},
                                                          {"lblDos", "chkDos"},
                                                          {"fraTres"},
                                                          {"cmdSuelto"},
                                                          {"txtTres"}}));
  EXPECT_TRUE(rows[0].labelled);
  EXPECT_FALSE(rows[2].labelled);
  EXPECT_EQ(rows[3].area, layout::Area{});
  EXPECT_EQ(rows[4].area, (layout::Area{&frame, -1}));
}

// Labels and boxes in columns, pickers right of their box, the "y" between its bounds, Tab in
// creation order, and a window that fits a 1366x768 screen.
TEST_F(DialogLayoutTest, BothControlsOnScreen) {
  frmSeleccion& dlg = sel_->Dialog();
  dlg.cboEntidad().setText("Inm. Propios");
  SelectionWindow window(dlg);
  ShowActive(window);
  EXPECT_LE(window.width(), 1366);
  EXPECT_LE(window.height(), 768 - 60);  // room for a task bar and the title
  FormView* inm = window.View().NestedView("SeleccionInm1");
  FormView* cli = window.View().NestedView("SeleccionCli1");
  ASSERT_TRUE(inm && cli);
  FormView* view = inm;
  const auto at = [&](const char* name, int index = -1) {
    QWidget* w = view->WidgetOf(name, index);
    return QRect(w->mapTo(&window, QPoint(0, 0)), w->size());
  };
  EXPECT_EQ(at("lblPais").left(), at("lblProvincia").left());
  EXPECT_EQ(at("txtPais").left(), at("txtProvincia").left());
  EXPECT_EQ(at("txtPais").left(), at("txtPrecio", 0).left());
  EXPECT_GT(at("cmdPais").left(), at("txtPais").right());
  EXPECT_NEAR(at("cmdPais").center().y(), at("txtPais").center().y(), 3);
  EXPECT_GT(at("lbly1").left(), at("txtPrecio", 0).right());
  EXPECT_LT(at("lbly1").right(), at("txtPrecio", 1).left());
  EXPECT_NEAR(at("lbly1").center().y(), at("txtPrecio", 1).center().y(), 3);
  inm->WidgetOf("txtInmueble")->setFocus(Qt::TabFocusReason);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), inm->WidgetOf("cmdInmueble"));
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget(), inm->WidgetOf("txtOperacion"));

  dlg.cboEntidad().setText("Clientes");
  view = cli;
  QTabBar* bar = static_cast<QTabWidget*>(cli->WidgetOf("tbsSelec"))->tabBar();
  QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(1).center());  // "Fechas"
  ASSERT_TRUE(cli->WidgetOf("dtpAlta", 0)->isVisible());
  EXPECT_FALSE(inm->isVisible()) << "the hidden control's nested view goes with it";
  EXPECT_EQ(at("dtpAlta", 0).left(), at("dtpTransmision", 0).left());
  EXPECT_GT(at("lblAlta2").left(), at("dtpAlta", 0).right());
  EXPECT_LT(at("lblAlta2").right(), at("dtpAlta", 1).left());
  window.close();
}

}  // namespace
}  // namespace cp::testing
