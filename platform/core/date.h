#pragma once
// The runtime's Date: a serial number of days since 30 December 1899, the fraction being
// the time of day. Only the proleptic Gregorian calendar from year 100 to 9999 is valid.
// Every conversion between dates and the civil calendar, and every ISO text of a date, goes
// through here (std::chrono's calendar underneath).
#include <chrono>
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
// True when a serial, its time rounded to the second, falls in years 100 to 9999 (NaN and
// infinities do not).
bool IsValidSerial(double serial);

// The calendar day of a date (its time of day dropped, toward the epoch) and the date at the
// midnight that starts a day.
std::chrono::sys_days DayOf(Date d);
Date DateOfDay(std::chrono::sys_days day);

// "yyyy-mm-dd", with " hh:mm:ss" after it when withTime.
std::string IsoText(const DateParts& parts, bool withTime);
// "yyyy-mm-dd", or "yyyy-mm-dd hh:mm:ss" when the date has a time of day.
std::string IsoDate(Date date);
// The form a date is written to a database in: "yyyy-mm-dd hh:mm:ss", or "yyyy-mm-dd" when
// the time rounded to the second is midnight (date columns refuse a midnight time).
std::string StoredIsoDate(Date date);

}  // namespace cp
