#include "platform/form/default_value.h"

#include <cstdint>

#include "platform/core/error.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/date_picker.h"
#include "platform/form/label.h"
#include "platform/form/text_box.h"

namespace cp::form {

Variant DefaultValue(const Control& control) {
  if (const auto* text = dynamic_cast<const TextBox*>(&control)) return Variant(text->Text());
  if (const auto* check = dynamic_cast<const CheckBox*>(&control)) {
    return Variant(static_cast<std::int16_t>(check->Value()));
  }
  if (const auto* picker = dynamic_cast<const DTPicker*>(&control)) return picker->Value();
  if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) return Variant(combo->Text());
  if (const auto* label = dynamic_cast<const Label*>(&control)) return Variant(label->Caption());
  Raise(err::kPropertyNotFound);
}

}  // namespace cp::form
