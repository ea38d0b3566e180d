// The runtime's number and date conversions and the text conventions beneath them. Only the
// runtime's documented errors may come out (5 invalid call, 6 overflow, 13 type mismatch, 94
// Null), and what the contracts promise must hold:
//   - IsNumeric accepts a text exactly when ParseNumber reads it, and CDbl then gives that
//     number; CInt and CLng then fail only by overflow;
//   - ParsePlainNumber never gives an infinity or NaN;
//   - CDate of a text is ParseDate's date, and a date from either writes (IsoDate, CStr,
//     "dd/mm/yyyy") into text that parses back to the same date, or day;
//   - a number CDate accepts is a date of the valid calendar: its ISO text parses back.
//
// Input: a text, tried as a number and a date both ways; when it holds "|", the text before
// it is also formatted with the mask or pattern after it.
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_support.h"
#include "platform/core/conversions.h"
#include "platform/core/date.h"
#include "platform/core/error.h"
#include "platform/core/text_format.h"

namespace {

using namespace cp;

std::string_view g_input;

[[noreturn]] void Broken(const std::string& what) { fuzz::Breach(what, g_input); }

// Runs a conversion; a documented error ends it quietly, anything else is a breach.
template <class F>
bool Try(const char* name, F&& f) {
  try {
    f();
    return true;
  } catch (const Error& e) {
    const long n = e.number();
    if (n != err::kInvalidProcedureCall && n != err::kOverflow && n != err::kTypeMismatch &&
        n != err::kInvalidUseOfNull)
      Broken(std::string(name) + " raised undocumented error " + std::to_string(n));
    return false;
  }
}

// A conversion of a number that fits may fail only by overflow.
template <class F>
void OnlyOverflow(const char* name, F&& f) {
  try {
    f();
  } catch (const Error& e) {
    if (e.number() != err::kOverflow)
      Broken(std::string(name) + " of a numeric text raised " + std::to_string(e.number()));
  }
}

// The same day and time of day to the second (a fraction of a second may not survive text).
bool SameInstant(Date a, Date b) {
  const DateParts p = SplitDate(a), q = SplitDate(b);
  return p.year == q.year && p.month == q.month && p.day == q.day && p.hour == q.hour &&
         p.minute == q.minute && p.second == q.second;
}

void ExpectDateRoundTrip(Date d, const char* from) {
  const auto iso = ParseDate(IsoDate(d));
  if (!iso || !SameInstant(*iso, d))
    Broken(std::string("the ISO text of a date from ") + from + " does not parse back: " + IsoDate(d));
  const auto day = ParseDate(FormatDate(d, "dd/mm/yyyy"));
  if (!day || !SameInstant(*day, MakeDate(SplitDate(d).year, SplitDate(d).month, SplitDate(d).day)))
    Broken(std::string("dd/mm/yyyy of a date from ") + from + " does not parse back: " +
           FormatDate(d, "dd/mm/yyyy"));
  Date again;
  if (!Try("CDate(CStr)", [&] { again = CDate(Variant(CStr(Variant(d)))); }) ||
      !SameInstant(again, d))
    Broken(std::string("CStr of a date from ") + from + " does not convert back: " + CStr(Variant(d)));
}

void TextAsNumber(const std::string& text) {
  const Variant v(text);
  const auto parsed = ParseNumber(text);
  if (IsNumeric(v) != parsed.has_value()) Broken("IsNumeric and ParseNumber disagree");
  double d = 0;
  const bool converted = Try("CDbl", [&] { d = CDbl(v); });
  if (parsed) {
    if (!converted || !(d == *parsed || (std::isnan(d) && std::isnan(*parsed))))
      Broken("CDbl of a numeric text is not its number");
    OnlyOverflow("CInt", [&] { CInt(v); });
    OnlyOverflow("CLng", [&] { CLng(v); });
    Try("CStr", [&] { CStr(Variant(d)); });
  } else if (converted) {
    Broken("CDbl converted a text IsNumeric refuses");
  }
  Try("CBool", [&] { CBool(v); });
}

void TextAsDate(const std::string& text) {
  const auto parsed = ParseDate(text);
  Date d;
  const bool converted = Try("CDate", [&] { d = CDate(Variant(text)); });
  if (parsed.has_value() != converted || (parsed && *parsed != d))
    Broken("CDate of a text is not ParseDate's date");
  if (parsed) ExpectDateRoundTrip(*parsed, "ParseDate");
}

void PlainNumber(const std::string& text) {
  const auto plain = ParsePlainNumber(text);
  if (!plain) return;
  if (!std::isfinite(*plain)) Broken("ParsePlainNumber gave no finite number");
  const Variant v(*plain);
  Try("CInt", [&] { CInt(v); });
  Try("CLng", [&] { CLng(v); });
  Try("CStr", [&] { CStr(v); });
  RoundHalfEven(*plain);
  Date d;
  if (Try("CDate", [&] { d = CDate(v); })) ExpectDateRoundTrip(d, "a number");
}

void Formats(const std::string& value, const std::string& format) {
  if (const auto n = ParsePlainNumber(value)) Try("FormatNumber", [&] { FormatNumber(*n, format); });
  if (const auto n = ParseNumber(value)) Try("FormatNumber", [&] { FormatNumber(*n, format); });
  Date d;
  if (Try("CDate", [&] { d = CDate(Variant(value)); }) ||
      (ParsePlainNumber(value) && Try("CDate", [&] { d = CDate(Variant(*ParsePlainNumber(value))); })))
    Try("FormatDate", [&] { FormatDate(d, format); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  g_input = text;
  TextAsNumber(text);
  TextAsDate(text);
  PlainNumber(text);
  if (const auto bar = text.find('|'); bar != std::string::npos)
    Formats(text.substr(0, bar), text.substr(bar + 1));
  return 0;
}
