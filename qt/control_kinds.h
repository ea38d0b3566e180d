#pragma once
// Control kinds: for every kind of form control, how a FormView creates its widgets, connects
// them to the model and shows the model's changes. One table entry per kind, so a new kind
// is one entry and a kind cannot be half handled.
#include <string_view>
#include <vector>

#include <QString>

class QCheckBox;
class QDateEdit;
class QTabWidget;
class QWidget;

namespace cp {

class FormView;
struct ControlKind;
namespace form {
class Control;
}

// The widgets that show one control of a view.
struct ControlBinding {
  const ControlKind* kind = nullptr;
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

struct ControlKind {
  // The control's TypeName; empty for user controls and for the placeholder kind.
  std::string_view typeName;
  // Creates the widgets of b.control as children of view: sets outer, and the other fields
  // that the kind uses.
  void (*create)(FormView& view, ControlBinding& b);
  // Hands what the user does to the model's setters; null when the user cannot change it.
  void (*connect)(FormView& view, ControlBinding& b);
  // Shows the new value of property (Enabled, Visible and Focus are the view's own); null
  // when the kind shows nothing. Runs with the widgets' signals blocked.
  void (*refresh)(FormView& view, ControlBinding& b, std::string_view property);
};

class ControlKinds {
 public:
  // The entry for control: by type name; a user control gets a nested view; any other kind
  // gets a placeholder that only keeps its place.
  static const ControlKind& Of(const form::Control& control);

 private:
  static const std::vector<ControlKind>& Table();
};

// The object name of the widget that shows control: "txtPrecio(1)", or "txtZona".
QString WidgetName(const form::Control& control);

}  // namespace cp
