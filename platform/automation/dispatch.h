#pragma once
// Dispatch: a late-bound automation object. Members are reached by name, values travel as
// Variants. Member names match case-insensitively, as late binding did on the original
// platform. An unknown member raises error 438.
#include <string>
#include <vector>

#include "platform/core/variant.h"

namespace cp {

class Dispatch {
 public:
  virtual ~Dispatch() = default;
  // Reads a property. Raises 438 for an unknown name; other errors as the object raises them.
  virtual Variant GetProperty(const std::string& name) = 0;
  // Writes a property. Raises 438 for an unknown name, 13 for a value of the wrong type.
  virtual void SetProperty(const std::string& name, const Variant& value) = 0;
  // Calls a method with its arguments in order and returns its result (Empty for none).
  virtual Variant CallMethod(const std::string& name, const std::vector<Variant>& args = {}) = 0;
};

}  // namespace cp
