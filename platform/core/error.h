#pragma once
// The one error type of the component: what the original runtime raised as a runtime,
// database or automation error. Every failure that a caller may trap is an Error.
#include <stdexcept>
#include <string>

#include "platform/core/error_numbers.h"

namespace cp {

class Error : public std::runtime_error {
 public:
  // number: the runtime error number; description: Spanish text for the user;
  // source: who raised it (component, class or engine name); engineCode: the database
  // engine's own code for the failure ("SQLite 1", "SQLSTATE 42P01"), empty when the error
  // did not come from an engine.
  Error(long number, std::string description, std::string source = "CriterioPredios",
        std::string engineCode = {});

  long number() const noexcept { return number_; }
  const std::string& description() const noexcept { return description_; }
  const std::string& source() const noexcept { return source_; }
  const std::string& engine_code() const noexcept { return engineCode_; }

 private:
  long number_;
  std::string description_;
  std::string source_;
  std::string engineCode_;
};

// The runtime's own Spanish description of a standard error number ("" when unknown).
std::string StandardDescription(long number);

// Throws Error(number, StandardDescription(number) or description if given, source).
[[noreturn]] void Raise(long number, const std::string& description = {},
                        const std::string& source = "CriterioPredios");

}  // namespace cp
