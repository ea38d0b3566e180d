#include "platform/core/conversions.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/core/error.h"
#include "platform/core/string_functions.h"
#include "platform/core/text_format.h"

namespace cp {
namespace {

double ToDouble(const Variant& v) {
  switch (v.type()) {
    case Variant::Type::Empty: return 0.0;
    case Variant::Type::Null: Raise(err::kInvalidUseOfNull);
    case Variant::Type::Boolean: return v.AsBool() ? -1.0 : 0.0;
    case Variant::Type::Integer: return v.AsInteger();
    case Variant::Type::Long: return v.AsLong();
    case Variant::Type::Double: return v.AsDouble();
    case Variant::Type::Date: return v.AsDate().serial;
    case Variant::Type::String: {
      if (auto n = ParseNumber(v.AsString())) return *n;
      Raise(err::kTypeMismatch);
    }
    default: Raise(err::kTypeMismatch);
  }
}

template <typename T>
T RoundedInteger(const Variant& v) {
  const double r = RoundHalfEven(ToDouble(v));
  if (!(r >= std::numeric_limits<T>::min() && r <= std::numeric_limits<T>::max()))
    Raise(err::kOverflow);
  return static_cast<T>(r);
}

// Text of a double as the runtime writes it: up to 15 significant digits, "," as the mark.
std::string DoubleText(double d) {
  if (d == 0) return "0";
  char buf[64];
  const auto written = std::to_chars(buf, buf + sizeof buf, d, std::chars_format::general, 15);
  std::string s(buf, written.ptr);
  for (char& c : s)
    if (c == '.') c = ',';
  return s;
}

}  // namespace

bool IsNumeric(const Variant& value) {
  switch (value.type()) {
    case Variant::Type::Empty:
    case Variant::Type::Boolean:
    case Variant::Type::Integer:
    case Variant::Type::Long:
    case Variant::Type::Double: return true;
    case Variant::Type::String: return ParseNumber(value.AsString()).has_value();
    default: return false;
  }
}

double RoundHalfEven(double value) {
  const double floor = std::floor(value);
  const double diff = value - floor;
  if (diff > 0.5) return floor + 1;
  if (diff < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

std::int16_t CInt(const Variant& value) { return RoundedInteger<std::int16_t>(value); }
std::int32_t CLng(const Variant& value) { return RoundedInteger<std::int32_t>(value); }
double CDbl(const Variant& value) { return ToDouble(value); }

bool CBool(const Variant& value) {
  if (value.IsString()) {
    const std::string t = Trim(value.AsString());
    if (t == "True" || t == "true" || t == "TRUE" || t == "Verdadero") return true;
    if (t == "False" || t == "false" || t == "FALSE" || t == "Falso") return false;
  }
  return ToDouble(value) != 0.0;
}

Date CDate(const Variant& value) {
  switch (value.type()) {
    case Variant::Type::Date: return value.AsDate();
    case Variant::Type::Null: Raise(err::kInvalidUseOfNull);
    case Variant::Type::String:
      if (auto d = ParseDate(value.AsString())) return *d;
      Raise(err::kTypeMismatch);
    default:
      if (value.IsNumberType() || value.IsEmpty()) {
        const double serial = ToDouble(value);
        if (!IsValidSerial(serial)) Raise(err::kOverflow);
        return Date{serial};
      }
      Raise(err::kTypeMismatch);
  }
}

std::string CStr(const Variant& value) {
  switch (value.type()) {
    case Variant::Type::Empty: return {};
    case Variant::Type::Null: Raise(err::kInvalidUseOfNull);
    case Variant::Type::Boolean: return value.AsBool() ? "True" : "False";
    case Variant::Type::Integer: return std::to_string(value.AsInteger());
    case Variant::Type::Long: return std::to_string(value.AsLong());
    case Variant::Type::Double: return DoubleText(value.AsDouble());
    case Variant::Type::Date: {
      const Date d = value.AsDate();
      const bool hasTime = d.serial != std::trunc(d.serial);
      return FormatDate(d, hasTime ? "dd/mm/yyyy hh:nn:ss" : "dd/mm/yyyy");
    }
    case Variant::Type::String: return value.AsString();
    default: Raise(err::kTypeMismatch);
  }
}

}  // namespace cp
