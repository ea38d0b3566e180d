#pragma once
// DTPicker with a check box: Value is a Date while the box is checked and Null while it is
// unchecked. The picker keeps showing a date while unchecked; checking it again brings that
// date back.
#include <string>

#include "platform/core/date.h"
#include "platform/core/variant.h"
#include "platform/form/control.h"

namespace cp::form {

class DTPicker : public Control {
 public:
  // A new picker is checked and shows today's date (cp::Today()).
  DTPicker(ControlContainer& container, std::string name, int index);
  std::string TypeName() const override { return "DTPicker"; }

  // A Date (checked) or Null (unchecked).
  Variant Value() const;
  // Null unchecks; a Date, a number or a text that CDate accepts ("yyyy-mm-dd",
  // "dd/mm/yyyy") checks and shows that date. Empty or any other value raises 380 (13 for a
  // text that is no date); nothing changes then. A different value is reported as "Value"
  // and fires Change; the same value does nothing.
  void setValue(const Variant& value);

  bool Checked() const { return checked_; }
  // Checking or unchecking changes Value as setValue does (reported, Change fired).
  void setChecked(bool checked);
  // The date shown, also while unchecked.
  Date ShownDate() const { return shown_; }

  const std::string& CustomFormat() const { return customFormat_; }
  void setCustomFormat(std::string format);

  Event<> Change;

 private:
  void Apply(bool checked, Date shown);
  bool checked_ = true;
  Date shown_;
  std::string customFormat_;
};

}  // namespace cp::form
