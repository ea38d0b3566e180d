#include "platform/form/user_control.h"

#include "platform/form/control_container.h"

namespace cp::form {

UserControl::UserControl(ControlContainer& container, std::string name, int index,
                         std::shared_ptr<ControlContainer> content)
    : Control(container, std::move(name), index), content_(std::move(content)) {
  if (!content_ || content_.get() == &container) RaiseInvalidCall();
}

std::string UserControl::TypeName() const { return content_->Name(); }

}  // namespace cp::form
