#pragma once
// UserControl: a user control placed on a form (the dialog's SeleccionCli1), seen from the
// form as one control. Its constituent controls live in their own ControlContainer, whose
// Name() is the user control's class name and so its TypeName ("SeleccionCli").
//
// The two containers keep their focus separately, as the runtime's form and user control
// each have an active control; hiding the user control does not hide its constituents from
// code (the view hides them with it).
#include <memory>
#include <string>

#include "platform/form/control.h"

namespace cp::form {

class UserControl : public Control {
 public:
  // content must not be null (error 5); the user control shares its ownership.
  UserControl(ControlContainer& container, std::string name, int index,
              std::shared_ptr<ControlContainer> content);
  std::string TypeName() const override;
  bool CanHaveFocus() const override { return false; }

  ControlContainer& Content() const { return *content_; }

 private:
  std::shared_ptr<ControlContainer> content_;
};

}  // namespace cp::form
