#pragma once
// Control: what every control of the GUI-free form model shares. A control belongs to one
// ControlContainer (a dialog form or a user control), which creates and owns it; it has a
// name, an index when it is an element of a control array (-1 otherwise), the runtime's
// type name, Enabled, Visible, Tag, an optional frame or tab strip it sits in, and focus.
//
// Every property setter reports the change to the container's observers (the view) before
// the events it fires, so a handler sees the view already in step. A view feeds user
// actions through the same setters, so events fire exactly as for changes made in code.
#include <string>
#include <string_view>

#include "platform/form/event.h"

namespace cp::form {

class ControlContainer;

class Control {
 public:
  // Called by ControlContainer, which owns the control; name must not be empty.
  Control(ControlContainer& container, std::string name, int index);
  virtual ~Control() = default;
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  const std::string& Name() const { return name_; }
  // Index in its control array, -1 when the control is not an array element.
  int Index() const { return index_; }
  // The runtime's type name: "TextBox", "ComboBox", "CheckBox", "DTPicker", "CommandButton",
  // "Label", "Frame", "SSTab", or a user control's class name ("SeleccionCli").
  virtual std::string TypeName() const = 0;
  ControlContainer& Container() const { return *container_; }

  bool Enabled() const { return enabled_; }
  void setEnabled(bool enabled);
  bool Visible() const { return visible_; }
  void setVisible(bool visible);
  const std::string& Tag() const { return tag_; }
  void setTag(std::string tag);
  // False for a control whose focus must not validate the control left (a cancel button):
  // moving the focus to it fires no Validate.
  bool CausesValidation() const { return causesValidation_; }
  void setCausesValidation(bool causes) { causesValidation_ = causes; }

  // The frame or tab strip this control is drawn in (nullptr: the container itself), and for
  // a tab strip the tab page (-1 otherwise). A hidden or disabled frame hides or disables
  // what it holds. Raises error 5 when the parent is not a Frame or SSTab of the same
  // container, or would make a cycle.
  Control* Parent() const { return parent_; }
  int ParentTab() const { return parentTab_; }
  void setParent(Control* parent, int tab = -1);
  // Own flag and every parent's flag.
  bool EffectivelyVisible() const;
  bool EffectivelyEnabled() const;

  // Whether this kind of control can ever hold the focus (labels and frames cannot).
  virtual bool CanHaveFocus() const { return true; }
  // Moves the focus here (see ControlContainer::MoveFocus). Raises 438 on a control that
  // cannot have focus, 5 when this control or a parent is disabled or invisible.
  // Returns false when the control that had the focus refused to lose it (Validate).
  bool SetFocus();
  bool HasFocus() const;

  // A key pressed while this control has the focus, as the view reports it: fires KeyDown
  // (which may swallow the key by setting keyCode to 0) and returns the key code left.
  int SendKeyDown(int keyCode, int shift);
  // A character typed, as the view reports it: fires KeyPress (a handler may set it to 0)
  // and returns the character code left.
  int SendKeyPress(int keyAscii);

  Event<int& /*keyCode*/, int& /*shift*/> KeyDown;
  Event<int& /*keyAscii*/> KeyPress;
  Event<bool& /*cancel*/> Validate;
  Event<> GotFocus;
  Event<> LostFocus;

 protected:
  // Tells the container's observers that a property of this control changed.
  void NotifyChanged(std::string_view property);

 private:
  ControlContainer* container_;
  std::string name_;
  int index_;
  bool enabled_ = true;
  bool visible_ = true;
  std::string tag_;
  bool causesValidation_ = true;
  Control* parent_ = nullptr;
  int parentTab_ = -1;
};

// The runtime's error 5 "Llamada a procedimiento o argumento no válidos".
[[noreturn]] void RaiseInvalidCall();
// The runtime's error 380 "Valor de propiedad no válido".
[[noreturn]] void RaiseInvalidValue();
// Raises error 381 "Índice de matriz de propiedades no válido" (List(i), TabCaption(i) out of
// range).
[[noreturn]] void RaiseInvalidArrayIndex();

}  // namespace cp::form
