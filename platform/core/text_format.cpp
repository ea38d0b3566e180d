#include "platform/core/text_format.h"

#include <charconv>
#include <cmath>
#include <vector>

namespace cp {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view TrimBlanks(std::string_view s) {
  while (!s.empty() && (s.front() == ' ' || s.front() == '\t')) s.remove_prefix(1);
  while (!s.empty() && (s.back() == ' ' || s.back() == '\t')) s.remove_suffix(1);
  return s;
}

// Reads from min to max ASCII digits at the front of s. sscanf's %d would also take a sign
// and blanks, so "2024-+1-05" or "1/ 3/2024" would pass as dates.
std::optional<int> TakeDigits(std::string_view& s, std::size_t min, std::size_t max) {
  std::size_t n = 0;
  while (n < max && n < s.size() && IsDigit(s[n])) ++n;
  if (n < min) return std::nullopt;
  int value = 0;
  std::from_chars(s.data(), s.data() + n, value);
  s.remove_prefix(n);
  return value;
}

bool TakeChar(std::string_view& s, char c) {
  if (s.empty() || s.front() != c) return false;
  s.remove_prefix(1);
  return true;
}

// Integer part under the conventions: plain digits, or 1-3 digits followed by ".ddd" groups.
bool ValidIntegerPart(std::string_view s) {
  if (s.empty()) return false;
  const auto dot = s.find('.');
  if (dot == std::string_view::npos) {
    for (char c : s)
      if (!IsDigit(c)) return false;
    return true;
  }
  if (dot == 0 || dot > 3) return false;
  for (std::size_t i = 0; i < s.size(); ++i) {
    const bool groupSeparator = i >= dot && (i - dot) % 4 == 0;
    if (groupSeparator ? s[i] != '.' : !IsDigit(s[i])) return false;
  }
  return (s.size() - dot) % 4 == 0;
}

std::string TwoDigits(int n) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "%02d", n);
  return buf;
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  std::string_view s = TrimBlanks(text);
  bool negative = false;
  if (!s.empty() && (s.front() == '+' || s.front() == '-')) {
    negative = s.front() == '-';
    s.remove_prefix(1);
  }
  std::string_view integer = s, fraction;
  if (const auto comma = s.find(','); comma != std::string_view::npos) {
    integer = s.substr(0, comma);
    fraction = s.substr(comma + 1);
    if (fraction.empty()) return std::nullopt;
    for (char c : fraction)
      if (!IsDigit(c)) return std::nullopt;
    if (integer.empty()) integer = "0";  // ",5" is a half
  }
  if (!ValidIntegerPart(integer)) return std::nullopt;
  std::string plain;
  for (char c : integer)
    if (c != '.') plain += c;
  if (!fraction.empty()) plain += "." + std::string(fraction);
  const auto value = ParsePlainNumber(plain);
  if (!value) return std::nullopt;
  return negative ? -*value : *value;
}

// std::from_chars, unlike strtod, never looks at LC_NUMERIC (Qt sets it from the desktop).
std::optional<double> ParsePlainNumber(std::string_view text) {
  if (text.size() > 1 && text.front() == '+' && text[1] != '-' && text[1] != '+')
    text.remove_prefix(1);
  double value = 0;
  const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (ec != std::errc() || end != text.data() + text.size() || !std::isfinite(value))
    return std::nullopt;
  return value;
}

std::string FormatDate(Date date, std::string_view pattern) {
  const DateParts p = SplitDate(date);
  // Tokenise first so that "m" can be told apart as month or minute by its neighbours.
  struct Token {
    char letter;  // 0 for a literal
    std::size_t count;
    std::string literal;
  };
  std::vector<Token> tokens;
  for (std::size_t i = 0; i < pattern.size();) {
    const char c = pattern[i];
    const char lower = static_cast<char>(c >= 'A' && c <= 'Z' ? c - 'A' + 'a' : c);
    if (lower == 'd' || lower == 'm' || lower == 'y' || lower == 'h' || lower == 'n' ||
        lower == 's') {
      std::size_t j = i;
      while (j < pattern.size() && (pattern[j] == c)) ++j;
      tokens.push_back({lower, j - i, {}});
      i = j;
    } else {
      tokens.push_back({0, 0, std::string(1, c)});
      ++i;
    }
  }
  auto neighbour = [&](std::size_t i, int step) -> char {
    for (long k = static_cast<long>(i) + step; k >= 0 && k < static_cast<long>(tokens.size());
         k += step)
      if (tokens[k].letter) return tokens[k].letter;
    return 0;
  };
  std::string out;
  for (std::size_t i = 0; i < tokens.size(); ++i) {
    const Token& t = tokens[i];
    const bool two = t.count >= 2;
    switch (t.letter) {
      case 0: out += t.literal; break;
      case 'd': out += two ? TwoDigits(p.day) : std::to_string(p.day); break;
      case 'm': {
        const bool minute = neighbour(i, -1) == 'h' || neighbour(i, +1) == 's';
        const int v = minute ? p.minute : p.month;
        out += two ? TwoDigits(v) : std::to_string(v);
        break;
      }
      case 'y': {
        // Four digits, as the calendar's years from 100 on need to parse back.
        char year[8];
        std::snprintf(year, sizeof year, "%04d", p.year);
        out += t.count >= 3 ? year : TwoDigits(p.year % 100);
        break;
      }
      case 'h': out += two ? TwoDigits(p.hour) : std::to_string(p.hour); break;
      case 'n': out += two ? TwoDigits(p.minute) : std::to_string(p.minute); break;
      case 's': out += two ? TwoDigits(p.second) : std::to_string(p.second); break;
    }
  }
  return out;
}

std::string FormatNumber(double value, std::string_view mask) {
  // Split the mask into its integer and decimal parts; "," before the decimal part groups.
  std::string_view integerMask = mask, decimalMask;
  // The decimal part starts at the last "." or "," followed only by digit placeholders.
  for (std::size_t i = mask.size(); i-- > 0;) {
    if (mask[i] == '.' || (mask[i] == ',' && i + 1 < mask.size())) {
      const std::string_view rest = mask.substr(i + 1);
      bool placeholders = !rest.empty() && rest.find_first_not_of("#0") == std::string_view::npos;
      if (placeholders && (mask[i] == '.' || rest.find('#') == std::string_view::npos ||
                           rest.size() != 3)) {
        integerMask = mask.substr(0, i);
        decimalMask = rest;
      }
      break;
    }
  }
  const bool grouping = integerMask.find(',') != std::string_view::npos;
  std::size_t minInteger = 0;
  for (char c : integerMask)
    if (c == '0') ++minInteger;
  const int decimals = static_cast<int>(decimalMask.size());
  std::size_t minDecimals = 0;
  for (char c : decimalMask)
    if (c == '0') ++minDecimals;

  const bool negative = value < 0;
  const double scale = std::pow(10.0, decimals);
  // Half away from zero; the tiny nudge keeps 2.675-style binary fractions honest.
  const double scaled = std::floor(std::fabs(value) * scale + 0.5 + 1e-9);
  const double integerValue = std::floor(scaled / scale);
  const double fractionValue = scaled - integerValue * scale;

  char buf[400];
  std::snprintf(buf, sizeof buf, "%.0f", integerValue);
  std::string digits = buf;
  if (digits == "0") digits.clear();
  while (digits.size() < minInteger) digits.insert(digits.begin(), '0');
  if (grouping) {
    std::string grouped;
    for (std::size_t i = 0; i < digits.size(); ++i) {
      if (i > 0 && (digits.size() - i) % 3 == 0) grouped += '.';
      grouped += digits[i];
    }
    digits = grouped;
  }
  std::string fraction;
  if (decimals > 0) {
    std::snprintf(buf, sizeof buf, "%0*.0f", decimals, fractionValue);
    fraction = buf;
    while (fraction.size() > minDecimals && fraction.back() == '0') fraction.pop_back();
  }
  std::string out = digits;
  if (!fraction.empty() || minDecimals > 0) out += "," + fraction;
  if (negative && !out.empty() && out.find_first_not_of("0.,") != std::string::npos)
    out.insert(out.begin(), '-');
  return out;
}

std::optional<Date> ParseDate(std::string_view text) {
  std::string_view s = TrimBlanks(text);
  std::optional<int> y, m, d;
  std::string_view iso = s;
  if ((y = TakeDigits(iso, 4, 4)) && TakeChar(iso, '-') && (m = TakeDigits(iso, 2, 2)) &&
      TakeChar(iso, '-') && (d = TakeDigits(iso, 2, 2))) {
    s = iso;
  } else if (!((d = TakeDigits(s, 1, 2)) && TakeChar(s, '/') && (m = TakeDigits(s, 1, 2)) &&
               TakeChar(s, '/') && (y = TakeDigits(s, 4, 4)))) {
    return std::nullopt;
  }
  if (!IsValidDay(*y, *m, *d)) return std::nullopt;
  std::optional<int> hh = 0, mm = 0, ss = 0;
  if (!s.empty()) {
    if (!TakeChar(s, ' ') && !TakeChar(s, 'T')) return std::nullopt;
    s = TrimBlanks(s);
    if (!((hh = TakeDigits(s, 1, 2)) && TakeChar(s, ':') && (mm = TakeDigits(s, 1, 2)) &&
          (!TakeChar(s, ':') || (ss = TakeDigits(s, 1, 2))) && s.empty()))
      return std::nullopt;
    if (*hh > 23 || *mm > 59 || *ss > 59) return std::nullopt;
  }
  return MakeDate(*y, *m, *d, *hh, *mm, *ss);
}

}  // namespace cp
