#include "platform/form/control.h"

#include "platform/form/control_container.h"

namespace cp::form {

void RaiseInvalidCall() { Raise(err::kInvalidProcedureCall); }
void RaiseInvalidValue() { Raise(err::kInvalidPropertyValue); }
void RaiseInvalidArrayIndex() {
  Raise(err::kInvalidPropertyArrayIndex, "Índice de matriz de propiedades no válido");
}

Control::Control(ControlContainer& container, std::string name, int index)
    : container_(&container), name_(std::move(name)), index_(index) {
  if (name_.empty() || index_ < -1) RaiseInvalidCall();
}

void Control::setEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  NotifyChanged("Enabled");
  container_->CheckFocus();
}

void Control::setVisible(bool visible) {
  if (visible == visible_) return;
  visible_ = visible;
  NotifyChanged("Visible");
  container_->CheckFocus();
}

void Control::setTag(std::string tag) {
  if (tag == tag_) return;
  tag_ = std::move(tag);
  NotifyChanged("Tag");
}

void Control::setParent(Control* parent, int tab) {
  if (parent) {
    const std::string type = parent->TypeName();
    if (&parent->Container() != container_ || (type != "Frame" && type != "SSTab")) {
      RaiseInvalidCall();
    }
    if ((type == "SSTab") != (tab >= 0)) RaiseInvalidCall();
    for (const Control* p = parent; p; p = p->parent_) {
      if (p == this) RaiseInvalidCall();
    }
  } else if (tab != -1) {
    RaiseInvalidCall();
  }
  if (parent == parent_ && tab == parentTab_) return;
  parent_ = parent;
  parentTab_ = tab;
  NotifyChanged("Parent");
  container_->CheckFocus();
}

bool Control::EffectivelyVisible() const {
  for (const Control* c = this; c; c = c->parent_) {
    if (!c->visible_) return false;
  }
  return true;
}

bool Control::EffectivelyEnabled() const {
  for (const Control* c = this; c; c = c->parent_) {
    if (!c->enabled_) return false;
  }
  return true;
}

bool Control::SetFocus() { return container_->MoveFocus(*this); }

bool Control::HasFocus() const { return container_->ActiveControl() == this; }

int Control::SendKeyDown(int keyCode, int shift) {
  KeyDown.Fire(keyCode, shift);
  return keyCode;
}

int Control::SendKeyPress(int keyAscii) {
  KeyPress.Fire(keyAscii);
  return keyAscii;
}

void Control::NotifyChanged(std::string_view property) {
  container_->NotifyChanged(*this, property);
}

}  // namespace cp::form
