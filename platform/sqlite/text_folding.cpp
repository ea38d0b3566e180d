#include "platform/sqlite/text_folding.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <unordered_map>

namespace cp::sqlite {
namespace {

int CompareBytes(std::string_view a, std::string_view b) {
  int c = a.compare(b);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

struct FoldedForms {
  std::string withoutMarks, withMarks;
};

// Values computed per text and remembered: a table holds few distinct texts (place names,
// categories) and comparing or matching would compute each again for every row. When full, the
// memo starts a new generation and keeps the last one, so a value returned stays valid through
// the next call: CompareJetText holds one side's forms while it asks for the other's.
template <class Value>
class PerTextMemo {
 public:
  template <class Make>
  const Value& Get(std::string_view text, Make make) {
    key_.assign(text);
    if (auto it = current_.find(key_); it != current_.end()) return it->second;
    if (current_.size() >= kLimit) {
      older_.swap(current_);
      current_.clear();
    }
    return current_.emplace(key_, make(text)).first->second;
  }

 private:
  static constexpr std::size_t kLimit = 4096;
  std::unordered_map<std::string, Value> current_, older_;
  std::string key_;
};

// Both folded forms of a non-ASCII text.
const FoldedForms& FoldedFormsOf(std::string_view text) {
  static thread_local PerTextMemo<FoldedForms> memo;
  return memo.Get(text,
                  [](std::string_view t) { return FoldedForms{Fold(t, true), Fold(t, false)}; });
}

// The unaccented lower-case ASCII letter of U+00C0..U+00FF ('Á' gives 'a'), 0 for those that
// have none ('ß', 'æ', '×'): taken from the folding itself once, so both always agree.
char LatinBase(unsigned char second) {
  static const std::array<char, 64> table = [] {
    std::array<char, 64> t{};
    for (int i = 0; i < 64; ++i) {
      const char bytes[] = {static_cast<char>(0xC3), static_cast<char>(0x80 + i)};
      const std::string folded = Fold(std::string_view(bytes, 2), true);
      if (folded.size() == 1 && static_cast<unsigned char>(folded[0]) < 0x80) t[i] = folded[0];
    }
    return t;
  }();
  return second >= 0x80 && second < 0xC0 ? table[second - 0x80] : 0;
}

// The accent-blind letter at s[i] when it is ASCII or a Latin-1 letter with an ASCII base.
char BaseAt(std::string_view s, std::size_t i) {
  const auto c = static_cast<unsigned char>(s[i]);
  if (c < 0x80) return AsciiLower(static_cast<char>(c));
  if (c == 0xC3 && i + 1 < s.size()) return LatinBase(static_cast<unsigned char>(s[i + 1]));
  return 0;
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
  // Over a common ASCII beginning the folded forms are the lower-case bytes, so the first
  // ASCII difference (or an end met with ASCII still on the other side) decides; only text
  // that differs first beyond ASCII needs Unicode folding.
  const std::size_t n = std::min(a.size(), b.size());
  std::size_t i = 0;
  for (; i < n; ++i) {
    const auto x = static_cast<unsigned char>(a[i]), y = static_cast<unsigned char>(b[i]);
    if (x >= 0x80 || y >= 0x80) {
      // Different base letters decide the accent-blind order there and then ('Ático' < 'Piso').
      const char bx = BaseAt(a, i), by = BaseAt(b, i);
      if (bx && by && bx != by)
        return static_cast<unsigned char>(bx) < static_cast<unsigned char>(by) ? -1 : 1;
      break;
    }
    const char lx = AsciiLower(static_cast<char>(x)), ly = AsciiLower(static_cast<char>(y));
    if (lx != ly) {
      // A mark after the letter folds into it: let Unicode decide then.
      if ((i + 1 < a.size() && static_cast<unsigned char>(a[i + 1]) >= 0x80) ||
          (i + 1 < b.size() && static_cast<unsigned char>(b[i + 1]) >= 0x80))
        break;
      return static_cast<unsigned char>(lx) < static_cast<unsigned char>(ly) ? -1 : 1;
    }
  }
  if (i == n) {
    if (a.size() == b.size()) return 0;
    const std::string_view rest = a.size() > n ? a.substr(n) : b.substr(n);
    if (static_cast<unsigned char>(rest[0]) < 0x80) return a.size() < b.size() ? -1 : 1;
  }
  if (a == b) return 0;
  const FoldedForms& x = FoldedFormsOf(a);
  const FoldedForms& y = FoldedFormsOf(b);
  int c = CompareBytes(x.withoutMarks, y.withoutMarks);
  return c != 0 ? c : CompareBytes(x.withMarks, y.withMarks);
}

const std::u32string& FoldedCodePoints(std::string_view s) {
  static thread_local PerTextMemo<std::u32string> memo;
  // The criteria of one value ask up to four times in a row: skip the hashing then.
  static thread_local std::string lastText;
  static thread_local const std::u32string* last = nullptr;
  if (last && lastText == s) return *last;
  lastText.assign(s);
  return *(last = &memo.Get(s, [](std::string_view t) { return CodePoints(Fold(t, false)); }));
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
