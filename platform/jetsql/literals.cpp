#include "platform/jetsql/literals.h"

#include <cctype>
#include <cstdio>
#include <vector>

#include "platform/core/date.h"

namespace cp::jetsql {
namespace {

// Windows-1252 code points for 0x80..0x9F; the five holes of the code page map to the C1
// control of the same number, as Windows does.
constexpr char32_t kCp1252High[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
    0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

std::string Utf8(char32_t cp) {
  std::string out;
  if (cp < 0x80) {
    out += static_cast<char>(cp);
  } else if (cp < 0x800) {
    out += static_cast<char>(0xC0 | (cp >> 6));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  } else {
    out += static_cast<char>(0xE0 | (cp >> 12));
    out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
    out += static_cast<char>(0x80 | (cp & 0x3F));
  }
  return out;
}

// Splits on the separators, dropping empty parts; the numbers must be plain digits.
std::optional<std::vector<int>> Numbers(std::string_view text, char separator) {
  std::vector<int> out;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find(separator, start);
    if (end == std::string_view::npos) end = text.size();
    std::string_view part = text.substr(start, end - start);
    if (part.empty() || part.size() > 4) return std::nullopt;
    int value = 0;
    for (char c : part) {
      if (!std::isdigit(static_cast<unsigned char>(c))) return std::nullopt;
      value = value * 10 + (c - '0');
    }
    out.push_back(value);
    start = end + 1;
  }
  return out;
}

std::string Trimmed(std::string_view s) {
  std::size_t b = s.find_first_not_of(' ');
  if (b == std::string_view::npos) return {};
  std::size_t e = s.find_last_not_of(' ');
  return std::string(s.substr(b, e - b + 1));
}

}  // namespace

std::optional<std::string> ChrText(long code) {
  if (code < 0 || code > 255) return std::nullopt;
  if (code >= 0x80 && code <= 0x9F) return Utf8(kCp1252High[code - 0x80]);
  return Utf8(static_cast<char32_t>(code));
}

std::optional<std::string> DateLiteralToIso(std::string_view raw) {
  std::string text = Trimmed(raw);
  std::string datePart = text, timePart;
  if (std::size_t blank = text.find(' '); blank != std::string::npos) {
    datePart = text.substr(0, blank);
    timePart = Trimmed(std::string_view(text).substr(blank + 1));
  }

  int year = 0, month = 0, day = 0;
  if (datePart.find('/') != std::string::npos) {
    auto parts = Numbers(datePart, '/');
    if (!parts || parts->size() != 3) return std::nullopt;
    month = (*parts)[0];
    day = (*parts)[1];
    year = (*parts)[2];
    std::size_t yearDigits = datePart.size() - datePart.rfind('/') - 1;
    if (yearDigits <= 2) {
      year += year < 30 ? 2000 : 1900;
    } else if (yearDigits != 4) {
      return std::nullopt;
    }
  } else {
    auto parts = Numbers(datePart, '-');
    if (!parts || parts->size() != 3 || datePart.find('-') != 4) return std::nullopt;
    year = (*parts)[0];
    month = (*parts)[1];
    day = (*parts)[2];
  }
  if (!IsValidDay(year, month, day)) return std::nullopt;

  int hour = 0, minute = 0, second = 0;
  if (!timePart.empty()) {
    bool pm = false, am = false;
    std::string upper;
    for (char c : timePart) upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    if (upper.size() > 2 && (upper.ends_with("AM") || upper.ends_with("PM"))) {
      pm = upper.ends_with("PM");
      am = !pm;
      timePart = Trimmed(std::string_view(timePart).substr(0, timePart.size() - 2));
    }
    auto parts = Numbers(timePart, ':');
    if (!parts || parts->size() < 2 || parts->size() > 3) return std::nullopt;
    hour = (*parts)[0];
    minute = (*parts)[1];
    second = parts->size() == 3 ? (*parts)[2] : 0;
    if (am || pm) {
      if (hour < 1 || hour > 12) return std::nullopt;
      hour = hour % 12 + (pm ? 12 : 0);
    }
    if (hour > 23 || minute > 59 || second > 59) return std::nullopt;
  }

  return IsoText(DateParts{year, month, day, hour, minute, second},
                 hour != 0 || minute != 0 || second != 0);
}

std::string QuotedIdentifier(std::string_view name) {
  std::string out = "\"";
  for (char c : name) out += c == '"' ? std::string("\"\"") : std::string(1, c);
  return out + "\"";
}

}  // namespace cp::jetsql
