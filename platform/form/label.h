#pragma once
// Label: a caption; it never takes the focus.
#include <string>

#include "platform/form/control.h"

namespace cp::form {

class Label : public Control {
 public:
  Label(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "Label"; }
  bool CanHaveFocus() const override { return false; }

  const std::string& Caption() const { return caption_; }
  void setCaption(std::string caption);

 private:
  std::string caption_;
};

}  // namespace cp::form
