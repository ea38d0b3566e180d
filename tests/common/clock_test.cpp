#include <cmath>
#include <ctime>

#include "tests/common/common_fixture.h"

namespace cp::testing {
namespace {

TEST(Clock, FixedValueUntilReset) {
  const Date fixed = MakeDate(1999, 2, 3, 4, 5, 6);
  SetFixedNow(fixed);
  EXPECT_EQ(Now(), fixed);
  EXPECT_EQ(Today(), MakeDate(1999, 2, 3));

  SetFixedNow(std::nullopt);
  const std::time_t t = std::time(nullptr);
  std::tm local{};
  localtime_r(&t, &local);
  const Date system = MakeDate(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                               local.tm_hour, local.tm_min, local.tm_sec > 59 ? 59 : local.tm_sec);
  // Back on the system's local time (allowing for a slow test run).
  EXPECT_LT(std::abs(Now().serial - system.serial) * 86400.0, 5.0);
}

}  // namespace
}  // namespace cp::testing
