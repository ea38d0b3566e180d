#pragma once
// The default property of a control: what the runtime reads when code names a control (or
// its Value) without saying which property, as the condition builders do with number boxes.
#include "platform/core/variant.h"
#include "platform/form/control.h"

namespace cp::form {

// TextBox: Text (String); CheckBox: Value (Integer 0, 1 or 2); DTPicker: Value (Date, or
// Null while unchecked); ComboBox: Text (String); Label: Caption (String).
// Any other kind of control has no default property and raises 438.
Variant DefaultValue(const Control& control);

}  // namespace cp::form
