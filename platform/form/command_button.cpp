#include "platform/form/command_button.h"

namespace cp::form {

CommandButton::CommandButton(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index) {}

void CommandButton::setCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  NotifyChanged("Caption");
}

void CommandButton::Press() { Click.Fire(); }

}  // namespace cp::form
