#include "platform/core/date.h"

#include <cmath>
#include <cstdio>

#include "platform/core/error.h"

namespace cp {
namespace {

using std::chrono::day;
using std::chrono::days;
using std::chrono::month;
using std::chrono::sys_days;
using std::chrono::year;
using std::chrono::year_month_day;

// Day 0 of the runtime's serials.
constexpr sys_days kEpoch = sys_days{year{1899} / 12 / 30};

sys_days CivilDay(int y, int m, int d) {
  return sys_days{year{y} / month{static_cast<unsigned>(m)} / day{static_cast<unsigned>(d)}};
}

}  // namespace

bool IsValidDay(int y, int m, int d) {
  if (y < 100 || y > 9999 || m < 1 || m > 12 || d < 1 || d > 31) return false;
  return (year{y} / month{static_cast<unsigned>(m)} / day{static_cast<unsigned>(d)}).ok();
}

bool IsValidSerial(double serial) {
  // A coarse bound first: SplitDate needs the day count to fit its integer.
  if (!(serial > -700000.0 && serial < 3000000.0)) return false;
  const int year = SplitDate(Date{serial}).year;
  return year >= 100 && year <= 9999;
}

Date MakeDate(int year, int month, int day, int hour, int minute, int second) {
  if (!IsValidDay(year, month, day) || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
      second < 0 || second > 59) {
    Raise(err::kInvalidProcedureCall);
  }
  const double days = static_cast<double>((CivilDay(year, month, day) - kEpoch).count());
  const double time = (hour * 3600.0 + minute * 60.0 + second) / 86400.0;
  // Before the epoch the runtime keeps the time as a positive fraction of a negative day.
  return Date{days >= 0 ? days + time : days - time};
}

DateParts SplitDate(Date date) {
  double whole = std::trunc(date.serial);
  double fraction = std::fabs(date.serial - whole);
  long seconds = std::lround(fraction * 86400.0);
  if (seconds >= 86400) {  // rounding reached midnight of the next day
    seconds = 0;
    whole += date.serial >= 0 ? 1 : -1;
  }
  const year_month_day civil{kEpoch + days{static_cast<long>(whole)}};
  DateParts p;
  p.year = static_cast<int>(civil.year());
  p.month = static_cast<int>(static_cast<unsigned>(civil.month()));
  p.day = static_cast<int>(static_cast<unsigned>(civil.day()));
  p.hour = static_cast<int>(seconds / 3600);
  p.minute = static_cast<int>(seconds / 60 % 60);
  p.second = static_cast<int>(seconds % 60);
  return p;
}

Date DateOnly(Date date) { return Date{std::trunc(date.serial)}; }

sys_days DayOf(Date date) { return kEpoch + days{static_cast<long>(std::trunc(date.serial))}; }

Date DateOfDay(sys_days day) { return Date{static_cast<double>((day - kEpoch).count())}; }

std::string IsoText(const DateParts& p, bool withTime) {
  char buf[48];
  if (withTime)
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", p.year, p.month, p.day,
                  p.hour, p.minute, p.second);
  else
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", p.year, p.month, p.day);
  return buf;
}

std::string IsoDate(Date date) {
  return IsoText(SplitDate(date), date.serial != std::trunc(date.serial));
}

std::string StoredIsoDate(Date date) {
  const DateParts p = SplitDate(date);
  return IsoText(p, p.hour != 0 || p.minute != 0 || p.second != 0);
}

}  // namespace cp
