#pragma once
// The runtime's conversions and string functions that the component relies on, under the
// component's fixed text conventions (independent of the machine's locale):
// numbers are digits with an optional sign, "." grouping thousands in groups of three and
// "," as the decimal mark ("150.000" is 150000, "2,5" is 2.5); plain digits always parse.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/variant.h"

namespace cp {

// Parses a number typed under the text conventions; blanks around it are ignored.
// Returns nullopt for anything else (empty text, letters, misplaced grouping, "1e3").
std::optional<double> ParseNumber(std::string_view text);

// Parses a number as C and SQL write it ("2.5", "-1e3", ".5"), whatever the machine's locale;
// the whole text must be the number. Returns nullopt for anything else, infinities included.
std::optional<double> ParsePlainNumber(std::string_view text);

// True for Empty, Boolean and numeric values, and for text that ParseNumber accepts.
// False for Null, dates, arrays and objects.
bool IsNumeric(const Variant& value);

// Conversions. Numbers round half to even (2.5 gives 2, 3.5 gives 4). Errors raised:
// 6 overflow, 13 type mismatch (text that is not a number, arrays, objects), 94 Null.
std::int16_t CInt(const Variant& value);
std::int32_t CLng(const Variant& value);
double CDbl(const Variant& value);
bool CBool(const Variant& value);
// Dates from Date, numbers (serials) and text in "yyyy-mm-dd[ hh:mm[:ss]]" or
// "dd/mm/yyyy[ hh:mm[:ss]]"; anything else raises 13.
Date CDate(const Variant& value);
// Text of a value: numbers as CStr under the conventions ("2,5"), dates "dd/mm/yyyy" with
// " hh:mm:ss" when there is a time of day, booleans "True"/"False", Empty "". Null raises 94.
std::string CStr(const Variant& value);

// Round half to even, as the runtime's CInt/CLng/Round do.
double RoundHalfEven(double value);

// String functions on UTF-8 text. Trim removes blanks (U+0020) only, as the runtime does.
std::string Trim(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
// Splits on every occurrence of the delimiter, keeping empty items ("a;;b" gives 3 items,
// "a;" gives "a" and ""). An empty text gives no items, as the runtime's Split does.
std::vector<std::string> Split(std::string_view text, std::string_view delimiter);
// Replaces every occurrence, left to right, binary comparison.
std::string Replace(std::string_view text, std::string_view find, std::string_view with);
// Length in characters (code points) of UTF-8 text.
int Len(std::string_view text);

// Formats a date with the runtime's tokens: d dd m mm yy yyyy h hh n nn s ss; "m"/"mm" right
// after an hour token or right before a seconds token is minutes. Other characters are copied.
std::string FormatDate(Date date, std::string_view pattern);
// Formats a number with a "#,###"-style mask: "," in the mask groups thousands with ".",
// "#" digits are optional (zero gives ""), "0" digits are mandatory; a "," or "." decimal part
// ("#,##0,00") gives decimals with "," as the mark. Rounds half away from zero, as Format does.
std::string FormatNumber(double value, std::string_view mask);

// Parses "yyyy-mm-dd" (optionally with " hh:mm[:ss]" or "Thh:mm[:ss]") or "dd/mm/yyyy".
std::optional<Date> ParseDate(std::string_view text);
// "yyyy-mm-dd", or "yyyy-mm-dd hh:mm:ss" when the date has a time of day.
std::string IsoDate(Date date);

}  // namespace cp
