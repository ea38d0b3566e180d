#pragma once
// The runtime's Date: a serial number of days since 30 December 1899, the fraction being
// the time of day. Only the proleptic Gregorian calendar from year 100 to 9999 is valid.
#include <compare>
#include <string>

namespace cp {

struct Date {
  double serial = 0.0;
  auto operator<=>(const Date&) const = default;
};

struct DateParts {
  int year = 1899, month = 12, day = 30, hour = 0, minute = 0, second = 0;
};

// Builds a date from its parts. Raises error 5 when the parts are out of range.
Date MakeDate(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);
// Splits a date (seconds rounded to the nearest whole second).
DateParts SplitDate(Date d);
// The date without its time of day.
Date DateOnly(Date d);
// True for a valid calendar day.
bool IsValidDay(int year, int month, int day);

}  // namespace cp
