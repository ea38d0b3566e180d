#include "platform/core/date.h"

#include <cmath>

#include "platform/core/error.h"

namespace cp {
namespace {

// Days from 1970-01-01 to a civil date (Howard Hinnant's algorithm).
long DaysFromCivil(long y, unsigned m, unsigned d) {
  y -= m <= 2;
  const long era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<long>(doe) - 719468;
}

void CivilFromDays(long z, int& y, int& m, int& d) {
  z += 719468;
  const long era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long yy = static_cast<long>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  y = static_cast<int>(yy + (m <= 2));
}

// 1899-12-30 counted from 1970-01-01.
const long kEpochOffset = DaysFromCivil(1899, 12, 30);

}  // namespace

bool IsValidDay(int year, int month, int day) {
  if (year < 100 || year > 9999 || month < 1 || month > 12 || day < 1) return false;
  static const int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  int last = kDays[month - 1];
  if (month == 2 && ((year % 4 == 0 && year % 100 != 0) || year % 400 == 0)) last = 29;
  return day <= last;
}

Date MakeDate(int year, int month, int day, int hour, int minute, int second) {
  if (!IsValidDay(year, month, day) || hour < 0 || hour > 23 || minute < 0 || minute > 59 ||
      second < 0 || second > 59) {
    Raise(err::kInvalidProcedureCall);
  }
  const double days = static_cast<double>(DaysFromCivil(year, month, day) - kEpochOffset);
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
  DateParts p;
  CivilFromDays(static_cast<long>(whole) + kEpochOffset, p.year, p.month, p.day);
  p.hour = static_cast<int>(seconds / 3600);
  p.minute = static_cast<int>(seconds / 60 % 60);
  p.second = static_cast<int>(seconds % 60);
  return p;
}

Date DateOnly(Date date) { return Date{std::trunc(date.serial)}; }

}  // namespace cp
