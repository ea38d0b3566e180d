#pragma once
// ControlContainer: a dialog form or a user control of the form model. It creates and owns
// its controls, keeps them in creation order (the order that saved selections and conditions
// follow), finds them by name (case-insensitive, as the runtime does) and by control array,
// moves the focus the way the runtime does, and tells observers (the view) about every
// property change of every control.
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/error.h"
#include "platform/form/control.h"

namespace cp::form {

class TextBox;
class ComboBox;
class CheckBox;
class DTPicker;
class CommandButton;
class Label;
class Frame;
class SSTab;
class UserControl;

class ControlContainer {
 public:
  // Told the control and the property ("Text", "ListIndex", "Value", "Focus", ...) after
  // each change; "Focus" also when a refused focus move leaves the focus where it was.
  using Observer = std::function<void(Control& control, std::string_view property)>;

  explicit ControlContainer(std::string name);
  virtual ~ControlContainer();
  ControlContainer(const ControlContainer&) = delete;
  ControlContainer& operator=(const ControlContainer&) = delete;

  const std::string& Name() const { return name_; }

  // Creation helpers: append a new control and return it (owned by the container).
  // index -1 makes a plain control, 0 or more an element of the control array of that name.
  // Raises error 5 for an empty name, an index below -1, a name+index already present, a
  // name used both as a plain control and as an array, or an array of mixed types.
  TextBox& AddTextBox(std::string name, int index = -1);
  ComboBox& AddComboBox(std::string name, int index = -1);
  CheckBox& AddCheckBox(std::string name, int index = -1);
  DTPicker& AddDTPicker(std::string name, int index = -1);
  CommandButton& AddCommandButton(std::string name, int index = -1);
  Label& AddLabel(std::string name, int index = -1);
  Frame& AddFrame(std::string name, int index = -1);
  SSTab& AddSSTab(std::string name, int tabs = 1, int index = -1);
  // Places a user control whose constituents are in content (shared with the caller).
  UserControl& AddUserControl(std::string name, std::shared_ptr<ControlContainer> content,
                              int index = -1);

  // Every control, in creation order.
  const std::vector<Control*>& Controls() const { return order_; }

  // The control of that name (any case) and index, or nullptr. Index -1 finds a plain control
  // only; an array element needs its index.
  Control* Find(std::string_view name, int index = -1) const;
  // Like Find, but raises the runtime's error instead of returning nullptr: 730 unknown name,
  // 344 an array without index, 343 an index on a plain control, 340 a missing element.
  Control& Item(std::string_view name, int index = -1) const;
  // Item, then the expected type; another type raises 13.
  template <class T>
  T& Get(std::string_view name, int index = -1) const {
    auto* typed = dynamic_cast<T*>(&Item(name, index));
    if (!typed) Raise(err::kTypeMismatch);
    return *typed;
  }
  // True when the name (any case) is a control array.
  bool IsControlArray(std::string_view name) const;
  // The elements of a control array ordered by index (empty when there is none).
  std::vector<Control*> ControlArray(std::string_view name) const;

  // The control that has the focus, or nullptr.
  Control* ActiveControl() const { return active_; }
  // Moves the focus as the runtime does: the control that has it gets Validate(cancel) unless
  // the target does not cause validation, and if a handler cancels, keeps the focus (returns
  // false). Otherwise it gets LostFocus and
  // the target GotFocus. Moving to the control that has the focus does nothing.
  // Raises 438 for a control that cannot have focus, 5 for one (or a parent) that is disabled
  // or invisible, both before any event.
  bool MoveFocus(Control& target);

  // Observers, run in the order added; RemoveObserver is safe from inside an observer.
  int AddObserver(Observer observer);
  void RemoveObserver(int id);

  // For controls: report a change to the observers; re-check that the focused control can
  // still have it (a control that is hidden or disabled loses it, with LostFocus only).
  void NotifyChanged(Control& control, std::string_view property);
  void CheckFocus();

 private:
  template <class T, class... Extra>
  T& Add(std::string name, int index, Extra&&... extra);
  void CheckNewName(const std::string& name, int index, std::string_view typeName) const;

  std::string name_;
  std::vector<std::unique_ptr<Control>> owned_;
  std::vector<Control*> order_;
  Control* active_ = nullptr;
  Event<Control&, std::string_view> observers_;
};

// The same thing under the name a dialog is known by.
using Form = ControlContainer;

}  // namespace cp::form
