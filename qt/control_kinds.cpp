#include "qt/control_kinds.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <functional>

#include "platform/core/date.h"
#include "platform/core/variant.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/frame.h"
#include "platform/form/label.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "platform/form/user_control.h"
#include "qt/focus_tracker.h"
#include "qt/form_view.h"

namespace cp {
namespace {

QString Q(const std::string& text) { return QString::fromStdString(text); }
std::string S(const QString& text) { return text.toStdString(); }

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

template <class T>
T& As(const ControlBinding& b) {
  return static_cast<T&>(*b.control);
}

}  // namespace

QString WidgetName(const form::Control& c) {
  return c.Index() < 0 ? Q(c.Name()) : Q(c.Name() + "(" + std::to_string(c.Index()) + ")");
}

const ControlKind& ControlKinds::Of(const form::Control& control) {
  const auto& table = Table();
  const std::string type = control.TypeName();
  for (const ControlKind& kind : table)
    if (!kind.typeName.empty() && kind.typeName == type) return kind;
  // The last two entries: user controls, then the placeholder.
  return dynamic_cast<const form::UserControl*>(&control) ? table[table.size() - 2]
                                                          : table.back();
}

// The entries are written here, inside a member, so that they reach the view's internals
// (Guard, updating_, the tracker) as the view's own code would.
const std::vector<ControlKind>& ControlKinds::Table() {
  static const std::vector<ControlKind> table = {
      {"TextBox",
       [](FormView& view, ControlBinding& b) { b.outer = b.input = new QLineEdit(&view); },
       [](FormView& view, ControlBinding& b) {
         auto* text = &As<form::TextBox>(b);
         auto* edit = static_cast<QLineEdit*>(b.input);
         QObject::connect(edit, &QLineEdit::textEdited, &view,
                          [v = &view, text, edit](const QString& typed) {
                            v->Guard([&] {
                              text->setText(S(typed));
                              // Keep the model's caret where the user's is (setText put it
                              // at the start).
                              if (!v->detached_ && text->Text() == S(edit->text())) {
                                ++v->updating_;
                                text->setSelStart(edit->cursorPosition());
                                --v->updating_;
                              }
                            });
                          });
       },
       [](FormView&, ControlBinding& b, std::string_view property) {
         const auto& text = As<form::TextBox>(b);
         auto* edit = static_cast<QLineEdit*>(b.input);
         if (property == "Text" && edit->text() != Q(text.Text())) {
           edit->setText(Q(text.Text()));
           edit->setCursorPosition(0);
         } else if (property == "SelStart" || property == "SelLength") {
           edit->setSelection(text.SelStart(), text.SelLength());
           if (text.SelLength() == 0) edit->setCursorPosition(text.SelStart());
         } else if (property == "Locked") {
           edit->setReadOnly(text.Locked());
         } else if (property == "MaxLength") {
           edit->setMaxLength(text.MaxLength() > 0 ? text.MaxLength() : 32767);
         }
       }},

      {"ComboBox",
       [](FormView& view, ControlBinding& b) {
         auto* combo = new QComboBox(&view);
         combo->setEditable(false);
         combo->setSizeAdjustPolicy(QComboBox::AdjustToContents);
         b.outer = b.input = combo;
       },
       [](FormView& view, ControlBinding& b) {
         auto* combo = &As<form::ComboBox>(b);
         QObject::connect(static_cast<QComboBox*>(b.input), &QComboBox::activated, &view,
                          [v = &view, combo](int index) {
                            v->Guard([&] { combo->setListIndex(index); });
                          });
       },
       [](FormView&, ControlBinding& b, std::string_view property) {
         const auto& combo = As<form::ComboBox>(b);
         auto* box = static_cast<QComboBox*>(b.input);
         if (property == "List") {
           box->clear();
           for (int i = 0; i < combo.ListCount(); ++i) box->addItem(Q(combo.List(i)));
         }
         if (property == "List" || property == "ListIndex")
           box->setCurrentIndex(combo.ListIndex());
       }},

      {"CheckBox",
       [](FormView& view, ControlBinding& b) {
         auto* box = new TriStateBox(&view);
         box->setTristate(true);
         b.outer = b.input = box;
       },
       [](FormView& view, ControlBinding& b) {
         auto* check = &As<form::CheckBox>(b);
         static_cast<TriStateBox*>(b.input)->onClick = [v = &view, check] {
           v->Guard([&] {
             check->setValue(check->Value() == form::vbChecked ? form::vbUnchecked
                                                               : form::vbChecked);
           });
         };
       },
       [](FormView&, ControlBinding& b, std::string_view property) {
         const auto& check = As<form::CheckBox>(b);
         auto* box = static_cast<QCheckBox*>(b.input);
         if (property == "Value") box->setCheckState(CheckStateOf(check.Value()));
         if (property == "Caption") box->setText(Q(check.Caption()));
       }},

      {"DTPicker",
       [](FormView& view, ControlBinding& b) {
         auto* holder = new QWidget(&view);
         auto* row = new QHBoxLayout(holder);
         row->setContentsMargins(0, 0, 0, 0);
         row->setSpacing(2);
         b.dateCheck = new QCheckBox(holder);
         b.dateCheck->setObjectName(WidgetName(*b.control) + "_check");
         b.dateEdit = new QDateEdit(holder);
         b.dateEdit->setLocale(QLocale(QLocale::Spanish, QLocale::Spain));
         b.dateEdit->setCalendarPopup(true);
         // Wide enough for the longest day name in the display format ("miércoles 30/12/26").
         b.dateEdit->setMinimumWidth(
             b.dateEdit->fontMetrics().horizontalAdvance(QStringLiteral("miércoles 30/12/26")) +
             44);
         row->addWidget(b.dateCheck);
         row->addWidget(b.dateEdit);
         b.outer = holder;
         b.input = b.dateEdit;
         holder->setObjectName(WidgetName(*b.control) + "_holder");
       },
       [](FormView& view, ControlBinding& b) {
         auto* picker = &As<form::DTPicker>(b);
         QObject::connect(b.dateCheck, &QCheckBox::clicked, &view, [v = &view, picker](bool on) {
           v->Guard([&] { picker->setChecked(on); });
         });
         QObject::connect(b.dateEdit, &QDateEdit::dateChanged, &view,
                          [v = &view, picker](const QDate& d) {
                            if (v->updating_ || !d.isValid()) return;
                            v->Guard([&] {
                              picker->setValue(Variant(MakeDate(d.year(), d.month(), d.day())));
                            });
                          });
       },
       [](FormView&, ControlBinding& b, std::string_view property) {
         const auto& picker = As<form::DTPicker>(b);
         const QSignalBlocker blockCheck(b.dateCheck);
         const QSignalBlocker blockEdit(b.dateEdit);
         if (property == "Value") {
           b.dateCheck->setChecked(picker.Checked());
           b.dateEdit->setDate(ToQDate(picker.ShownDate()));
           // An unchecked picker means no date: its date is shown greyed, as the original did.
           b.dateEdit->setEnabled(picker.Checked());
         } else if (property == "CustomFormat") {
           b.dateEdit->setDisplayFormat(picker.CustomFormat().empty()
                                            ? QStringLiteral("dd/MM/yyyy")
                                            : Q(picker.CustomFormat()));
         }
       }},

      {"CommandButton",
       [](FormView& view, ControlBinding& b) {
         auto* button = new QPushButton(&view);
         button->setAutoDefault(false);  // Enter in a box does not press anything
         b.outer = b.input = button;
       },
       [](FormView& view, ControlBinding& b) {
         auto* button = &As<form::CommandButton>(b);
         QWidget* widget = b.input;
         QObject::connect(
             static_cast<QPushButton*>(b.input), &QPushButton::clicked, &view,
             [v = &view, button, widget] {
               if (v->detached_) return;
               FocusTracker& tracker = *v->tracker_;
               // The mouse press already tried to move the focus here; a refusal stands.
               if (tracker.refused == widget) {
                 tracker.refused = nullptr;
                 return;
               }
               // An accelerator presses without moving the focus: move it as a click would.
               if (button->Container().ActiveControl() != button) {
                 if (!tracker.UserMove(v, button, widget)) return;
                 tracker.MoveRealFocus(widget, button);
               }
               v->Guard([&] { button->Press(); });
             });
       },
       [](FormView&, ControlBinding& b, std::string_view property) {
         if (property == "Caption")
           static_cast<QPushButton*>(b.input)->setText(Q(As<form::CommandButton>(b).Caption()));
       }},

      {"Label",
       [](FormView& view, ControlBinding& b) {
         auto* label = new QLabel(&view);
         label->setTextFormat(Qt::PlainText);
         b.outer = label;
       },
       nullptr,
       [](FormView&, ControlBinding& b, std::string_view property) {
         if (property == "Caption")
           static_cast<QLabel*>(b.outer)->setText(Q(As<form::Label>(b).Caption()));
       }},

      {"Frame",
       [](FormView& view, ControlBinding& b) {
         const auto& caption = As<form::Frame>(b).Caption();
         b.outer = b.area =
             caption.empty() ? new QWidget(&view) : new QGroupBox(Q(caption), &view);
       },
       nullptr,
       [](FormView&, ControlBinding& b, std::string_view property) {
         if (auto* group = qobject_cast<QGroupBox*>(b.outer); group && property == "Caption")
           group->setTitle(Q(As<form::Frame>(b).Caption()));
       }},

      {"SSTab",
       [](FormView& view, ControlBinding& b) { b.outer = b.tabs = new QTabWidget(&view); },
       [](FormView& view, ControlBinding& b) {
         auto* ss = &As<form::SSTab>(b);
         QObject::connect(b.tabs, &QTabWidget::currentChanged, &view, [v = &view, ss](int tab) {
           if (v->updating_ || tab < 0 || tab >= ss->Tabs()) return;
           v->Guard([&] { ss->setTab(tab); });
         });
       },
       [](FormView&, ControlBinding& b, std::string_view property) {
         const auto& ss = As<form::SSTab>(b);
         if (property == "Tabs") {
           while (static_cast<int>(b.pages.size()) < ss.Tabs()) {
             auto* page = new QWidget;
             b.pages.push_back(page);
             b.tabs->addTab(page, QString());
           }
           while (static_cast<int>(b.pages.size()) > ss.Tabs()) {
             b.tabs->removeTab(static_cast<int>(b.pages.size()) - 1);
             b.pages.back()->deleteLater();
             b.pages.pop_back();
           }
         }
         if (property == "Tabs" || property == "TabCaption")
           for (int i = 0; i < ss.Tabs(); ++i) b.tabs->setTabText(i, Q(ss.TabCaption(i)));
         if (property == "Tabs" || property == "Tab") b.tabs->setCurrentIndex(ss.Tab());
       }},

      // User controls: a nested view of their content, sharing the focus tracker.
      {"",
       [](FormView& view, ControlBinding& b) {
         b.outer = b.nested =
             new FormView(As<form::UserControl>(b).Content(), view.tracker_, &view);
       },
       nullptr, nullptr},

      // A kind the view does not know: keeps its place only.
      {"", [](FormView& view, ControlBinding& b) { b.outer = new QWidget(&view); }, nullptr,
       nullptr},
  };
  return table;
}

}  // namespace cp
