#include "qt/form_view.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QTimer>
#include <map>

#include "platform/core/date.h"
#include "platform/core/variant.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/frame.h"
#include "platform/form/keys.h"
#include "platform/form/label.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "platform/form/user_control.h"
#include "qt/layouts.h"

namespace cp {
namespace {

std::exception_ptr& Pending() {
  static std::exception_ptr pending;
  return pending;
}
std::function<void()>& Hook() {
  static std::function<void()> hook;
  return hook;
}

QString Q(const std::string& text) { return QString::fromStdString(text); }
std::string S(const QString& text) { return text.toStdString(); }

QString WidgetName(const form::Control& c) {
  return c.Index() < 0 ? Q(c.Name()) : Q(c.Name() + "(" + std::to_string(c.Index()) + ")");
}

// The runtime's key code for a Qt key; 0 for keys the model never hears (Tab moves the
// focus, modifiers alone are not keys).
int VbKeyCode(int key) {
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
    return key;  // same codes
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return 112 + (key - Qt::Key_F1);
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return form::vbKeyReturn;
    case Qt::Key_Escape: return form::vbKeyEscape;
    case Qt::Key_Delete: return form::vbKeyDelete;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    default: return 0;
  }
}

int VbShift(Qt::KeyboardModifiers m) {
  return (m & Qt::ShiftModifier ? form::vbShiftMask : 0) |
         (m & Qt::ControlModifier ? form::vbCtrlMask : 0) |
         (m & Qt::AltModifier ? form::vbAltMask : 0);
}

QDate ToQDate(Date d) {
  const DateParts p = SplitDate(d);
  return QDate(p.year, p.month, p.day);
}

Qt::CheckState CheckStateOf(int value) {
  return value == form::vbChecked   ? Qt::Checked
         : value == form::vbGrayed ? Qt::PartiallyChecked
                                   : Qt::Unchecked;
}

// A tri-state box whose click asks the model for the next value instead of cycling through
// Qt's order: the user reaches 0 and 1 by clicking (grey becomes checked), grey only by code
// or by a key handler.
class TriStateBox : public QCheckBox {
 public:
  using QCheckBox::QCheckBox;
  std::function<void()> onClick;

 protected:
  void nextCheckState() override {
    if (onClick) onClick();
  }
};

}  // namespace

// Which control each focusable widget stands for, shared by a view and its nested views:
// it turns the user's focus moves into the model's and remembers the control last focused.
class FocusTracker : public QObject {
 public:
  struct Entry {
    FormView* view;
    form::Control* control;
  };

  FocusTracker() {
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { OnFocusChanged(now); });
  }

  void Register(QWidget* widget, FormView* view, form::Control* control) {
    entries_[widget] = {view, control};
  }
  void Unregister(const FormView* view) {
    for (auto it = entries_.begin(); it != entries_.end();) {
      if (it->second.view == view) {
        if (current == it->second.control) current = nullptr;
        it = entries_.erase(it);
      } else {
        ++it;
      }
    }
  }
  const Entry* Find(QWidget* widget) const {
    for (; widget; widget = widget->parentWidget()) {
      const auto it = entries_.find(widget);
      if (it != entries_.end()) return &it->second;
    }
    return nullptr;
  }

  // Moves the real focus for the model (no model event follows).
  void MoveRealFocus(QWidget* widget, form::Control* control) {
    ++programmatic_;
    current = control;
    widget->setFocus(Qt::OtherFocusReason);
    --programmatic_;
  }

  // The user put the focus on widget (control target of view): runs the model's focus move.
  // Returns whether the model accepted it.
  bool UserMove(FormView* view, form::Control* target, QWidget* widget) {
    if (!target->EffectivelyEnabled() || !target->EffectivelyVisible()) return false;
    handling_ = true;
    bool accepted = false;
    view->Guard([&] {
      form::ControlContainer& container = target->Container();
      // Leaving a user control for its form (or the other way) validates what is left.
      form::Control* left = current;
      if (left && left != target && &left->Container() != &container &&
          left->Container().ActiveControl() == left && target->CausesValidation()) {
        bool cancel = false;
        left->Validate.Fire(cancel);
        if (cancel) {
          refused = widget;
          RestoreLater(left);
          return;
        }
      }
      if (container.MoveFocus(*target)) {
        current = target;
        refused = nullptr;
        accepted = true;
      } else {
        // The container's "Focus" notice puts the real focus back.
        refused = widget;
      }
    });
    handling_ = false;
    return accepted;
  }

  bool Handling() const { return handling_; }

  form::Control* current = nullptr;  // the control that last had the real focus
  QPointer<QWidget> refused;         // a widget whose focus the model refused

 private:
  void OnFocusChanged(QWidget* now) {
    if (!now) return;
    const Entry* entry = Find(now);
    if (!entry) return;
    if (programmatic_) {
      current = entry->control;
      return;
    }
    // A message box shown by a handler hands the focus back while we are still inside it.
    if (handling_ || entry->view->Detached()) return;
    UserMove(entry->view, entry->control, now);
  }

  void RestoreLater(form::Control* control) {
    for (const auto& [widget, entry] : entries_) {
      if (entry.control != control) continue;
      QPointer<QWidget> target(widget);
      QTimer::singleShot(0, widget, [this, target, control] {
        if (target) MoveRealFocus(target, control);
      });
      return;
    }
  }

  std::map<QWidget*, Entry> entries_;
  bool handling_ = false;
  int programmatic_ = 0;
};

struct FormView::Binding {
  form::Control* control = nullptr;
  QWidget* outer = nullptr;  // what the layout places
  QWidget* input = nullptr;  // what takes the focus; null when the control never has it
  QWidget* area = nullptr;   // frames: where the controls inside them go
  QTabWidget* tabs = nullptr;
  std::vector<QWidget*> pages;
  QCheckBox* dateCheck = nullptr;
  QDateEdit* dateEdit = nullptr;
  FormView* nested = nullptr;
};

FormView::FormView(form::ControlContainer& container, QWidget* parent)
    : FormView(container, std::make_shared<FocusTracker>(), parent) {
  std::vector<QWidget*> chain;
  CollectFocusChain(chain);
  for (std::size_t i = 1; i < chain.size(); ++i) QWidget::setTabOrder(chain[i - 1], chain[i]);
}

FormView::FormView(form::ControlContainer& container, std::shared_ptr<FocusTracker> tracker,
                   QWidget* parent)
    : QWidget(parent), container_(&container), tracker_(std::move(tracker)) {
  setObjectName(Q(container.Name()));
  Build();
}

FormView::~FormView() { Detach(); }

void FormView::Detach() {
  if (detached_) return;
  detached_ = true;
  container_->RemoveObserver(observerId_);
  tracker_->Unregister(this);
  for (const auto& b : bindings_)
    if (b->nested) b->nested->Detach();
}

std::exception_ptr FormView::TakePendingError() { return std::exchange(Pending(), nullptr); }

void FormView::SetErrorHook(std::function<void()> hook) { Hook() = std::move(hook); }

void FormView::Guard(const std::function<void()>& action) {
  if (detached_) return;
  try {
    action();
  } catch (...) {
    KeepError(std::current_exception());
  }
}

void FormView::KeepError(std::exception_ptr error) {
  if (!Pending()) Pending() = std::move(error);
  if (Hook()) Hook()();
}

void FormView::Build() {
  for (form::Control* control : container_->Controls()) CreateWidget(*control);
  PlaceRows();
  for (const auto& b : bindings_) {
    Connect(*b);
    RefreshAll(*b);
  }
  observerId_ = container_->AddObserver([this](form::Control& control, std::string_view what) {
    if (detached_) return;
    if (Binding* b = BindingOf(control)) Refresh(*b, what);
  });
}

void FormView::CreateWidget(form::Control& control) {
  auto b = std::make_unique<Binding>();
  b->control = &control;
  const std::string type = control.TypeName();
  if (type == "TextBox") {
    b->outer = b->input = new QLineEdit(this);
  } else if (type == "ComboBox") {
    auto* combo = new QComboBox(this);
    combo->setEditable(false);
    combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    b->outer = b->input = combo;
  } else if (type == "CheckBox") {
    auto* box = new TriStateBox(this);
    box->setTristate(true);
    b->outer = b->input = box;
  } else if (type == "DTPicker") {
    auto* holder = new QWidget(this);
    auto* row = new QHBoxLayout(holder);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    b->dateCheck = new QCheckBox(holder);
    b->dateCheck->setObjectName(WidgetName(control) + "_check");
    b->dateEdit = new QDateEdit(holder);
    b->dateEdit->setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
    b->dateEdit->setCalendarPopup(true);
    // Wide enough for the longest day name in the display format ("miércoles 30/12/26").
    b->dateEdit->setMinimumWidth(
        b->dateEdit->fontMetrics().horizontalAdvance(QStringLiteral("miércoles 30/12/26")) + 44);
    row->addWidget(b->dateCheck);
    row->addWidget(b->dateEdit);
    b->outer = holder;
    b->input = b->dateEdit;
    holder->setObjectName(WidgetName(control) + "_holder");
  } else if (type == "CommandButton") {
    auto* button = new QPushButton(this);
    button->setAutoDefault(false);  // Enter in a box does not press anything
    b->outer = b->input = button;
  } else if (type == "Label") {
    auto* label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    b->outer = label;
  } else if (type == "Frame") {
    const auto& caption = static_cast<form::Frame&>(control).Caption();
    b->outer = b->area = caption.empty() ? new QWidget(this) : new QGroupBox(Q(caption), this);
  } else if (type == "SSTab") {
    b->outer = b->tabs = new QTabWidget(this);
  } else if (auto* user = dynamic_cast<form::UserControl*>(&control)) {
    b->outer = b->nested = new FormView(user->Content(), tracker_, this);
  } else {
    b->outer = new QWidget(this);  // a kind the view does not know: keeps its place only
  }
  if (b->input) b->input->setObjectName(WidgetName(control));
  else b->outer->setObjectName(WidgetName(control));
  if (b->input) {
    tracker_->Register(b->input, this, &control);
    b->input->installEventFilter(this);
  }
  if (b->dateCheck) {
    tracker_->Register(b->dateCheck, this, &control);
    b->dateCheck->installEventFilter(this);
  }
  byControl_[&control] = b.get();
  bindings_.push_back(std::move(b));
}

void FormView::PlaceRows() {
  std::map<QWidget*, std::pair<QGridLayout*, int>> grids;  // area widget -> grid, next row
  const auto gridOf = [&](QWidget* area) -> std::pair<QGridLayout*, int>& {
    auto it = grids.find(area);
    if (it == grids.end()) {
      auto* grid = new QGridLayout(area);
      if (area == this || qobject_cast<QTabWidget*>(area->parentWidget()) == nullptr)
        grid->setContentsMargins(area == this ? 0 : 6, area == this ? 0 : 6,
                                 area == this ? 0 : 6, area == this ? 0 : 6);
      grid->setColumnStretch(1, 1);
      it = grids.emplace(area, std::make_pair(grid, 0)).first;
    }
    return it->second;
  };
  const auto areaWidget = [&](const layout::Area& area) -> QWidget* {
    if (!area.owner) return this;
    Binding* owner = BindingOf(*area.owner);
    if (!owner) return this;
    if (owner->tabs) {
      auto& ss = static_cast<const form::SSTab&>(*area.owner);
      while (static_cast<int>(owner->pages.size()) < ss.Tabs()) {
        auto* page = new QWidget;
        owner->pages.push_back(page);
        owner->tabs->addTab(page, QString());
      }
      return owner->pages[std::min<std::size_t>(area.tab, owner->pages.size() - 1)];
    }
    return owner->area ? owner->area : this;
  };
  // Tab strips get their pages even when nothing sits on them.
  for (const auto& b : bindings_)
    if (b->tabs) areaWidget({b->control, 0});

  std::map<QWidget*, bool> expands;  // areas holding a widget that takes the spare height
  std::map<QWidget*, int> stackedRow;  // per area, the row of the last user control placed
  for (const layout::PlacedRow& row : layout::PlanRows(*container_)) {
    QWidget* area = areaWidget(row.area);
    auto& [grid, r] = gridOf(area);
    std::size_t first = 0;
    if (row.labelled) {
      if (row.cells[0].control) grid->addWidget(BindingOf(*row.cells[0].control)->outer, r, 0);
      first = 1;
    }
    // A row of one frame, tab strip or user control gets the whole width and spare height.
    // User controls that follow each other share one cell: only one of them is visible at a
    // time (the dialog's two criteria controls), so the hidden one must not keep a row.
    if (!row.labelled && row.cells.size() == 1) {
      Binding* b = BindingOf(*row.cells[0].control);
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
      Binding* b = BindingOf(*cell.control);
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

void FormView::Connect(Binding& b) {
  form::Control& control = *b.control;
  if (auto* text = dynamic_cast<form::TextBox*>(&control)) {
    auto* edit = static_cast<QLineEdit*>(b.input);
    connect(edit, &QLineEdit::textEdited, this, [this, text, edit](const QString& typed) {
      Guard([&] {
        text->setText(S(typed));
        // Keep the model's caret where the user's is (setText put it at the start).
        if (!detached_ && text->Text() == S(edit->text())) {
          ++updating_;
          text->setSelStart(edit->cursorPosition());
          --updating_;
        }
      });
    });
  } else if (auto* combo = dynamic_cast<form::ComboBox*>(&control)) {
    connect(static_cast<QComboBox*>(b.input), &QComboBox::activated, this,
            [this, combo](int index) { Guard([&] { combo->setListIndex(index); }); });
  } else if (auto* check = dynamic_cast<form::CheckBox*>(&control)) {
    static_cast<TriStateBox*>(b.input)->onClick = [this, check] {
      Guard([&] {
        check->setValue(check->Value() == form::vbChecked ? form::vbUnchecked : form::vbChecked);
      });
    };
  } else if (auto* picker = dynamic_cast<form::DTPicker*>(&control)) {
    connect(b.dateCheck, &QCheckBox::clicked, this,
            [this, picker](bool on) { Guard([&] { picker->setChecked(on); }); });
    connect(b.dateEdit, &QDateEdit::dateChanged, this, [this, picker](const QDate& d) {
      if (updating_ || !d.isValid()) return;
      Guard([&] { picker->setValue(Variant(MakeDate(d.year(), d.month(), d.day()))); });
    });
  } else if (auto* button = dynamic_cast<form::CommandButton*>(&control)) {
    QWidget* widget = b.input;
    connect(static_cast<QPushButton*>(b.input), &QPushButton::clicked, this,
            [this, button, widget] {
              if (detached_) return;
              // The mouse press already tried to move the focus here; a refusal stands.
              if (tracker_->refused == widget) {
                tracker_->refused = nullptr;
                return;
              }
              // An accelerator presses without moving the focus: move it as a click would.
              if (button->Container().ActiveControl() != button) {
                if (!tracker_->UserMove(this, button, widget)) return;
                tracker_->MoveRealFocus(widget, button);
              }
              Guard([&] { button->Press(); });
            });
  } else if (auto* ss = dynamic_cast<form::SSTab*>(&control)) {
    connect(b.tabs, &QTabWidget::currentChanged, this, [this, ss](int tab) {
      if (updating_ || tab < 0 || tab >= ss->Tabs()) return;
      Guard([&] { ss->setTab(tab); });
    });
  }
}

void FormView::RefreshAll(Binding& b) {
  for (const char* property :
       {"Enabled", "Visible", "Text", "List", "Value", "Caption", "Tabs", "TabCaption", "Tab",
        "CustomFormat", "Locked", "MaxLength"})
    Refresh(b, property);
}

void FormView::Refresh(Binding& b, std::string_view property) {
  form::Control& control = *b.control;
  if (property == "Focus") {
    ApplyFocusFromModel();
    return;
  }
  ++updating_;
  const QSignalBlocker blockOuter(b.outer);
  const QSignalBlocker blockInput(b.input);
  if (property == "Enabled") {
    b.outer->setEnabled(control.Enabled());
  } else if (property == "Visible") {
    b.outer->setVisible(control.Visible());
  } else if (auto* text = dynamic_cast<form::TextBox*>(&control)) {
    auto* edit = static_cast<QLineEdit*>(b.input);
    if (property == "Text" && edit->text() != Q(text->Text())) {
      edit->setText(Q(text->Text()));
      edit->setCursorPosition(0);
    } else if (property == "SelStart" || property == "SelLength") {
      edit->setSelection(text->SelStart(), text->SelLength());
      if (text->SelLength() == 0) edit->setCursorPosition(text->SelStart());
    } else if (property == "Locked") {
      edit->setReadOnly(text->Locked());
    } else if (property == "MaxLength") {
      edit->setMaxLength(text->MaxLength() > 0 ? text->MaxLength() : 32767);
    }
  } else if (auto* combo = dynamic_cast<form::ComboBox*>(&control)) {
    auto* box = static_cast<QComboBox*>(b.input);
    if (property == "List") {
      box->clear();
      for (int i = 0; i < combo->ListCount(); ++i) box->addItem(Q(combo->List(i)));
    }
    if (property == "List" || property == "ListIndex") box->setCurrentIndex(combo->ListIndex());
  } else if (auto* check = dynamic_cast<form::CheckBox*>(&control)) {
    auto* box = static_cast<QCheckBox*>(b.input);
    if (property == "Value") box->setCheckState(CheckStateOf(check->Value()));
    if (property == "Caption") box->setText(Q(check->Caption()));
  } else if (auto* picker = dynamic_cast<form::DTPicker*>(&control)) {
    const QSignalBlocker blockCheck(b.dateCheck);
    const QSignalBlocker blockEdit(b.dateEdit);
    if (property == "Value") {
      b.dateCheck->setChecked(picker->Checked());
      b.dateEdit->setDate(ToQDate(picker->ShownDate()));
      // An unchecked picker means no date: its date is shown greyed, as the original did.
      b.dateEdit->setEnabled(picker->Checked());
    } else if (property == "CustomFormat") {
      b.dateEdit->setDisplayFormat(picker->CustomFormat().empty() ? QStringLiteral("dd/MM/yyyy")
                                                                  : Q(picker->CustomFormat()));
    }
  } else if (auto* button = dynamic_cast<form::CommandButton*>(&control)) {
    if (property == "Caption") static_cast<QPushButton*>(b.input)->setText(Q(button->Caption()));
  } else if (auto* label = dynamic_cast<form::Label*>(&control)) {
    if (property == "Caption") static_cast<QLabel*>(b.outer)->setText(Q(label->Caption()));
  } else if (auto* frame = dynamic_cast<form::Frame*>(&control)) {
    if (auto* group = qobject_cast<QGroupBox*>(b.outer); group && property == "Caption")
      group->setTitle(Q(frame->Caption()));
  } else if (auto* ss = dynamic_cast<form::SSTab*>(&control)) {
    if (property == "Tabs") {
      while (static_cast<int>(b.pages.size()) < ss->Tabs()) {
        auto* page = new QWidget;
        b.pages.push_back(page);
        b.tabs->addTab(page, QString());
      }
      while (static_cast<int>(b.pages.size()) > ss->Tabs()) {
        b.tabs->removeTab(static_cast<int>(b.pages.size()) - 1);
        b.pages.back()->deleteLater();
        b.pages.pop_back();
      }
    }
    if (property == "Tabs" || property == "TabCaption")
      for (int i = 0; i < ss->Tabs(); ++i) b.tabs->setTabText(i, Q(ss->TabCaption(i)));
    if (property == "Tabs" || property == "Tab") b.tabs->setCurrentIndex(ss->Tab());
  }
  --updating_;
}

void FormView::ApplyFocusFromModel() {
  form::Control* active = container_->ActiveControl();
  if (!active) return;
  Binding* b = BindingOf(*active);
  if (!b || !b->input) return;
  // Already there (a date picker's check box counts as the picker).
  if (const auto* e = tracker_->Find(QApplication::focusWidget()); e && e->control == active)
    return;
  QWidget* widget = b->input;
  if (tracker_->Handling()) {
    // Inside the user's own focus move: put the focus back once Qt has finished it.
    QTimer::singleShot(0, widget, [this, widget, active] {
      if (!detached_ && container_->ActiveControl() == active)
        tracker_->MoveRealFocus(widget, active);
    });
  } else {
    tracker_->MoveRealFocus(widget, active);
  }
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && !detached_) {
    for (const auto& b : bindings_)
      if (b->input == watched || b->dateCheck == watched) return ForwardKey(*b, event);
  }
  return QWidget::eventFilter(watched, event);
}

bool FormView::ForwardKey(Binding& b, QEvent* event) {
  auto* key = static_cast<QKeyEvent*>(event);
  bool drop = false;
  if (const int code = VbKeyCode(key->key())) {
    Guard([&] { drop = b.control->SendKeyDown(code, VbShift(key->modifiers())) == 0; });
    if (drop || detached_) return true;
  }
  const QString typed = key->text();
  if (typed.size() == 1) {
    const char16_t ch = typed.at(0).unicode();
    if ((ch >= 32 && ch < 256 && ch != 127) || ch == 13 || ch == 8)
      Guard([&] { drop = b.control->SendKeyPress(ch) == 0; });
  }
  return drop || detached_;
}

FormView::Binding* FormView::BindingOf(const form::Control& control) const {
  const auto it = byControl_.find(&control);
  return it == byControl_.end() ? nullptr : it->second;
}

QWidget* FormView::WidgetOf(const form::Control& control) const {
  const Binding* b = BindingOf(control);
  if (!b) return nullptr;
  return b->input ? b->input : b->outer;
}

bool FormView::FocusAsUser(std::string_view name) {
  form::Control* control = container_->Find(name, -1);
  Binding* b = control ? BindingOf(*control) : nullptr;
  if (!b || !b->input || detached_) return false;
  if (!tracker_->UserMove(this, control, b->input)) return false;
  if (!detached_) tracker_->MoveRealFocus(b->input, control);
  return true;
}

QWidget* FormView::WidgetOf(std::string_view name, int index) const {
  const form::Control* c = container_->Find(name, index);
  return c ? WidgetOf(*c) : nullptr;
}

QCheckBox* FormView::DateCheck(std::string_view name, int index) const {
  const form::Control* c = container_->Find(name, index);
  const Binding* b = c ? BindingOf(*c) : nullptr;
  return b ? b->dateCheck : nullptr;
}

FormView* FormView::NestedView(std::string_view name, int index) const {
  const form::Control* c = container_->Find(name, index);
  const Binding* b = c ? BindingOf(*c) : nullptr;
  return b ? b->nested : nullptr;
}

void FormView::CollectFocusChain(std::vector<QWidget*>& chain) const {
  for (const auto& b : bindings_) {
    if (b->nested) b->nested->CollectFocusChain(chain);
    if (b->dateCheck) chain.push_back(b->dateCheck);
    if (b->input) chain.push_back(b->input);
  }
}

}  // namespace cp
