#pragma once
// PropertyBag: the persisted properties of a user control, as the host saves them with the
// form that holds the control (ReadProperties/WriteProperties).
#include <map>
#include <string>

#include "platform/core/variant.h"

namespace cp::form {

class PropertyBag {
 public:
  // The stored value, or defaultValue when the bag has none under that name.
  Variant ReadProperty(const std::string& name, const Variant& defaultValue = Variant()) const {
    auto it = values_.find(name);
    return it == values_.end() ? defaultValue : it->second;
  }
  void WriteProperty(const std::string& name, const Variant& value) { values_[name] = value; }
  bool Contains(const std::string& name) const { return values_.count(name) != 0; }

 private:
  std::map<std::string, Variant> values_;
};

}  // namespace cp::form
