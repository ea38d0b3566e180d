#include "platform/form/label.h"

namespace cp::form {

Label::Label(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index) {}

void Label::setCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  NotifyChanged("Caption");
}

}  // namespace cp::form
