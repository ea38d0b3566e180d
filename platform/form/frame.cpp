#include "platform/form/frame.h"

namespace cp::form {

Frame::Frame(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index) {}

void Frame::setCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  NotifyChanged("Caption");
}

}  // namespace cp::form
