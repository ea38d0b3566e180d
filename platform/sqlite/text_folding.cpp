#include "platform/sqlite/text_folding.h"

#include <utf8proc.h>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace cp::sqlite {
namespace {

int CompareBytes(std::string_view a, std::string_view b) {
  int c = a.compare(b);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

}  // namespace

bool IsAscii(std::string_view s) {
  for (unsigned char c : s) {
    if (c >= 0x80) return false;
  }
  return true;
}

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

std::string Fold(std::string_view s, bool stripMarks) {
  if (IsAscii(s)) {
    std::string out(s);
    for (char& c : out) c = AsciiLower(c);
    return out;
  }
  int options = UTF8PROC_STABLE | UTF8PROC_COMPOSE | UTF8PROC_CASEFOLD;
  if (stripMarks) options |= UTF8PROC_STRIPMARK;
  utf8proc_uint8_t* mapped = nullptr;
  utf8proc_ssize_t n = utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(s.data()),
                                    static_cast<utf8proc_ssize_t>(s.size()), &mapped,
                                    static_cast<utf8proc_option_t>(options));
  if (n < 0) return std::string(s);
  std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(mapped, &std::free);
  return std::string(reinterpret_cast<const char*>(mapped), static_cast<std::size_t>(n));
}

// Equality ignores case only: the accent-blind order decides first, the accented one breaks ties.
int CompareJetText(std::string_view a, std::string_view b) {
  if (IsAscii(a) && IsAscii(b)) {
    std::size_t n = std::min(a.size(), b.size());
    for (std::size_t i = 0; i < n; ++i) {
      char x = AsciiLower(a[i]), y = AsciiLower(b[i]);
      if (x != y) return static_cast<unsigned char>(x) < static_cast<unsigned char>(y) ? -1 : 1;
    }
    return a.size() == b.size() ? 0 : (a.size() < b.size() ? -1 : 1);
  }
  int c = CompareBytes(Fold(a, true), Fold(b, true));
  return c != 0 ? c : CompareBytes(Fold(a, false), Fold(b, false));
}

std::u32string CodePoints(std::string_view s) {
  std::u32string out;
  auto p = reinterpret_cast<const utf8proc_uint8_t*>(s.data());
  utf8proc_ssize_t left = static_cast<utf8proc_ssize_t>(s.size());
  while (left > 0) {
    utf8proc_int32_t cp = 0;
    utf8proc_ssize_t n = utf8proc_iterate(p, left, &cp);
    if (n <= 0) {  // an invalid byte stands for itself
      cp = *p;
      n = 1;
    }
    out.push_back(static_cast<char32_t>(cp));
    p += n;
    left -= n;
  }
  return out;
}

char32_t BaseLetter(char32_t cp) {
  if (cp < 0x80) return cp;
  utf8proc_uint8_t* mapped = nullptr;
  utf8proc_int32_t one = static_cast<utf8proc_int32_t>(cp);
  utf8proc_uint8_t buffer[8];
  utf8proc_ssize_t n = utf8proc_encode_char(one, buffer);
  if (n <= 0) return cp;
  n = utf8proc_map(buffer, n, &mapped,
                   static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE |
                                                  UTF8PROC_STRIPMARK));
  if (n <= 0) return cp;
  std::unique_ptr<utf8proc_uint8_t, decltype(&std::free)> owner(mapped, &std::free);
  utf8proc_int32_t base = 0;
  if (utf8proc_iterate(mapped, n, &base) <= 0) return cp;
  return static_cast<char32_t>(base);
}

}  // namespace cp::sqlite
