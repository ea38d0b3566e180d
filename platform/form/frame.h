#pragma once
// Frame: a captioned group that other controls sit in (Control::setParent); hiding or
// disabling it hides or disables them. It never takes the focus.
#include <string>

#include "platform/form/control.h"

namespace cp::form {

class Frame : public Control {
 public:
  Frame(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "Frame"; }
  bool CanHaveFocus() const override { return false; }

  const std::string& Caption() const { return caption_; }
  void setCaption(std::string caption);

 private:
  std::string caption_;
};

}  // namespace cp::form
