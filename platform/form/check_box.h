#pragma once
// CheckBox with three states: 0 unchecked, 1 checked, 2 grey (the criteria's "no condition").
#include <string>

#include "platform/form/control.h"

namespace cp::form {

inline constexpr int vbUnchecked = 0;
inline constexpr int vbChecked = 1;
inline constexpr int vbGrayed = 2;

class CheckBox : public Control {
 public:
  CheckBox(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "CheckBox"; }

  int Value() const { return value_; }
  // Sets 0, 1 or 2; any other value raises 380 and changes nothing. A different value is
  // reported as "Value" and fires Click, in code as well as from the user, as the runtime
  // does; the same value does nothing.
  void setValue(int value);

  const std::string& Caption() const { return caption_; }
  void setCaption(std::string caption);

  Event<> Click;

 private:
  int value_ = vbUnchecked;
  std::string caption_;
};

}  // namespace cp::form
