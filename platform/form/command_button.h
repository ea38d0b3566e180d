#pragma once
// CommandButton: a push button.
#include <string>

#include "platform/form/control.h"

namespace cp::form {

class CommandButton : public Control {
 public:
  CommandButton(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "CommandButton"; }

  const std::string& Caption() const { return caption_; }
  void setCaption(std::string caption);

  // Pushes the button: fires Click, whether the user (through the view) or code pushes it.
  void Press();

  Event<> Click;

 private:
  std::string caption_;
};

}  // namespace cp::form
