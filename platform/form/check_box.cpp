#include "platform/form/check_box.h"

namespace cp::form {

CheckBox::CheckBox(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index) {}

void CheckBox::setValue(int value) {
  if (value < vbUnchecked || value > vbGrayed) RaiseInvalidValue();
  if (value == value_) return;
  value_ = value;
  NotifyChanged("Value");
  Click.Fire();
}

void CheckBox::setCaption(std::string caption) {
  if (caption == caption_) return;
  caption_ = std::move(caption);
  NotifyChanged("Caption");
}

}  // namespace cp::form
