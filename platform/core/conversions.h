#pragma once
// The runtime's conversions of a Variant that the component relies on, under the fixed text
// conventions of platform/core/text_format.h (independent of the machine's locale).
#include <cstdint>
#include <string>

#include "platform/core/variant.h"

namespace cp {

// True for Empty, Boolean and numeric values, and for text that ParseNumber accepts.
// False for Null, dates, arrays and objects.
bool IsNumeric(const Variant& value);

// Conversions. Numbers round half to even (2.5 gives 2, 3.5 gives 4). Errors raised:
// 6 overflow, 13 type mismatch (text that is not a number, arrays, objects), 94 Null.
std::int16_t CInt(const Variant& value);
std::int32_t CLng(const Variant& value);
double CDbl(const Variant& value);
bool CBool(const Variant& value);
// Dates from Date, numbers (serials: one outside years 100 to 9999 raises 6) and text in
// "yyyy-mm-dd[ hh:mm[:ss]]" or "dd/mm/yyyy[ hh:mm[:ss]]"; anything else raises 13.
Date CDate(const Variant& value);
// Text of a value: numbers as CStr under the conventions ("2,5"), dates "dd/mm/yyyy" with
// " hh:mm:ss" when there is a time of day, booleans "True"/"False", Empty "". Null raises 94.
std::string CStr(const Variant& value);

// Round half to even, as the runtime's CInt/CLng/Round do.
double RoundHalfEven(double value);

}  // namespace cp
