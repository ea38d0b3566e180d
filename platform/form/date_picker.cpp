#include "platform/form/date_picker.h"

#include "platform/core/clock.h"
#include "platform/core/conversions.h"

namespace cp::form {

DTPicker::DTPicker(ControlContainer& container, std::string name, int index)
    : Control(container, std::move(name), index), shown_(Today()) {}

Variant DTPicker::Value() const { return checked_ ? Variant(shown_) : Variant::Null(); }

void DTPicker::setValue(const Variant& value) {
  if (value.IsNull()) {
    Apply(false, shown_);
    return;
  }
  if (value.IsEmpty() || !(value.type() == Variant::Type::Date || value.IsString() ||
                           value.IsNumberType())) {
    RaiseInvalidValue();
  }
  Apply(true, CDate(value));
}

void DTPicker::setChecked(bool checked) { Apply(checked, shown_); }

void DTPicker::Apply(bool checked, Date shown) {
  const bool valueChanges = checked != checked_ || (checked && shown != shown_);
  checked_ = checked;
  shown_ = shown;
  if (!valueChanges) return;
  NotifyChanged("Value");
  Change.Fire();
}

void DTPicker::setCustomFormat(std::string format) {
  if (format == customFormat_) return;
  customFormat_ = std::move(format);
  NotifyChanged("CustomFormat");
}

}  // namespace cp::form
