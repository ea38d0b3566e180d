#include "platform/core/clock.h"

#include <ctime>

namespace cp {
namespace {
std::optional<Date>& FixedNow() {
  static std::optional<Date> fixed;
  return fixed;
}
}  // namespace

Date Now() {
  if (FixedNow()) return *FixedNow();
  std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  // A leap second (tm_sec 60) is folded into the last second of the minute.
  return MakeDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                  local.tm_min, local.tm_sec > 59 ? 59 : local.tm_sec);
}

Date Today() { return DateOnly(Now()); }

void SetFixedNow(std::optional<Date> fixed) { FixedNow() = fixed; }

}  // namespace cp
