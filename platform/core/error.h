#pragma once
// The one error type of the component: what the original runtime raised as a runtime,
// database or automation error. Every failure that a caller may trap is an Error.
#include <stdexcept>
#include <string>

namespace cp {

// Runtime error numbers that the component and its platform raise.
namespace err {
inline constexpr long kOutOfMemory = 7;
inline constexpr long kOverflow = 6;
inline constexpr long kSubscriptOutOfRange = 9;
inline constexpr long kTypeMismatch = 13;
inline constexpr long kInvalidProcedureCall = 5;
inline constexpr long kFileNotFound = 53;
inline constexpr long kPermissionDenied = 70;
inline constexpr long kPathNotFound = 76;
inline constexpr long kInvalidUseOfNull = 94;
inline constexpr long kObjectRequired = 424;
inline constexpr long kCannotCreateObject = 429;
inline constexpr long kPropertyNotFound = 438;  // "object doesn't support this property or method"
inline constexpr long kInvalidPropertyValue = 380;
}  // namespace err

class Error : public std::runtime_error {
 public:
  // number: the runtime error number; description: Spanish text for the user;
  // source: who raised it (component, class or engine name).
  Error(long number, std::string description, std::string source = "CriterioPredios");

  long number() const noexcept { return number_; }
  const std::string& description() const noexcept { return description_; }
  const std::string& source() const noexcept { return source_; }

 private:
  long number_;
  std::string description_;
  std::string source_;
};

// The runtime's own Spanish description of a standard error number ("" when unknown).
std::string StandardDescription(long number);

// Throws Error(number, StandardDescription(number) or description if given, source).
[[noreturn]] void Raise(long number, const std::string& description = {},
                        const std::string& source = "CriterioPredios");

}  // namespace cp
