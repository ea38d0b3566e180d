#include "platform/sqlite/jet_functions.h"

#include <sqlite3.h>
#include <utf8proc.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/jetsql/literals.h"

namespace cp::sqlite {
namespace {

// ---- text folding

bool IsAscii(std::string_view s) {
  for (unsigned char c : s) {
    if (c >= 0x80) return false;
  }
  return true;
}

char AsciiLower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// Case-folded NFC text; with stripMarks, accents removed as well. Text that is not valid
// UTF-8 is returned as it is.
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

int CompareBytes(std::string_view a, std::string_view b) {
  int c = a.compare(b);
  return c < 0 ? -1 : (c > 0 ? 1 : 0);
}

// Orders by the text without case and accents, then by the text without case, so that
// equality ignores case only.
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

int CollationCallback(void*, int lengthA, const void* a, int lengthB, const void* b) {
  return CompareJetText(std::string_view(static_cast<const char*>(a), lengthA),
                        std::string_view(static_cast<const char*>(b), lengthB));
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

// The letter without its accent ('á' gives 'a'), for character ranges.
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

// ---- Jet LIKE patterns

struct PatternItem {
  enum class Kind { AnyRun, AnyOne, Digit, Literal, Class } kind = Kind::Literal;
  char32_t literal = 0;
  bool negated = false;
  std::vector<std::pair<char32_t, char32_t>> ranges;  // Class: inclusive, folded

  bool Matches(char32_t c) const {
    switch (kind) {
      case Kind::AnyOne: return true;
      case Kind::Digit: return c >= U'0' && c <= U'9';
      case Kind::Literal: return c == literal;
      case Kind::Class: {
        char32_t base = BaseLetter(c);
        bool in = false;
        for (auto [lo, hi] : ranges) {
          in = in || (c >= lo && c <= hi) || (base >= lo && base <= hi);
        }
        return in != negated;
      }
      case Kind::AnyRun: return false;
    }
    return false;
  }
};

struct Pattern {
  std::string source;
  std::string escape;
  std::vector<PatternItem> items;
};

// Compiles a pattern; nullopt when a "[" is not closed (Jet's "invalid pattern string").
std::optional<std::vector<PatternItem>> Compile(std::string_view pattern, std::string_view escape) {
  std::u32string p = CodePoints(Fold(pattern, false));
  std::u32string esc = CodePoints(Fold(escape, false));
  std::vector<PatternItem> items;
  for (std::size_t i = 0; i < p.size(); ++i) {
    char32_t c = p[i];
    PatternItem item;
    if (!esc.empty() && c == esc[0] && i + 1 < p.size()) {
      item.literal = p[++i];
    } else if (c == U'*') {
      if (!items.empty() && items.back().kind == PatternItem::Kind::AnyRun) continue;
      item.kind = PatternItem::Kind::AnyRun;
    } else if (c == U'?') {
      item.kind = PatternItem::Kind::AnyOne;
    } else if (c == U'#') {
      item.kind = PatternItem::Kind::Digit;
    } else if (c == U'[') {
      std::size_t close = p.find(U']', i + 1);
      if (close == std::u32string::npos) return std::nullopt;
      std::u32string body = p.substr(i + 1, close - i - 1);
      i = close;
      if (body.empty()) continue;  // "[]" matches the empty text: nothing to consume
      item.kind = PatternItem::Kind::Class;
      std::size_t k = 0;
      if (body[0] == U'!' && body.size() > 1) {
        item.negated = true;
        k = 1;
      }
      for (; k < body.size(); ++k) {
        if (k + 2 < body.size() && body[k + 1] == U'-') {
          item.ranges.emplace_back(body[k], body[k + 2]);
          k += 2;
        } else {
          item.ranges.emplace_back(body[k], body[k]);
        }
      }
    } else {
      item.literal = c;
    }
    items.push_back(std::move(item));
  }
  return items;
}

// Greedy match with one resume point: every item but "*" takes exactly one character.
bool Match(const std::vector<PatternItem>& items, const std::u32string& text) {
  std::size_t p = 0, t = 0;
  std::size_t starItem = std::string::npos, starText = 0;
  while (t < text.size()) {
    if (p < items.size() && items[p].kind == PatternItem::Kind::AnyRun) {
      starItem = p++;
      starText = t;
    } else if (p < items.size() && items[p].Matches(text[t])) {
      ++p;
      ++t;
    } else if (starItem != std::string::npos) {
      p = starItem + 1;
      t = ++starText;
    } else {
      return false;
    }
  }
  while (p < items.size() && items[p].kind == PatternItem::Kind::AnyRun) ++p;
  return p == items.size();
}

std::string_view TextOf(sqlite3_value* v) {
  auto p = reinterpret_cast<const char*>(sqlite3_value_text(v));
  return p ? std::string_view(p, static_cast<std::size_t>(sqlite3_value_bytes(v)))
           : std::string_view();
}

void DeletePattern(void* p) { delete static_cast<Pattern*>(p); }

void LikeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  for (int i = 0; i < argc; ++i) {
    if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return sqlite3_result_null(ctx);
  }
  std::string_view source = TextOf(argv[0]);
  std::string_view escape = argc > 2 ? TextOf(argv[2]) : std::string_view();
  // The folded text is rebuilt for every row: keep its buffer, and skip utf8proc for ASCII.
  static thread_local std::u32string text;
  const std::string_view value = TextOf(argv[1]);
  text.clear();
  if (IsAscii(value)) {
    for (char c : value) text.push_back(static_cast<char32_t>(AsciiLower(c)));
  } else {
    text = CodePoints(Fold(value, false));
  }
  // A constant pattern is compiled once per statement and kept as SQLite's auxiliary data.
  auto* cached = static_cast<Pattern*>(sqlite3_get_auxdata(ctx, 0));
  if (cached && cached->source == source && cached->escape == escape) {
    return sqlite3_result_int(ctx, Match(cached->items, text) ? 1 : 0);
  }
  auto items = Compile(source, escape);
  if (!items) return sqlite3_result_error(ctx, "Cadena de modelo no válida.", -1);
  auto fresh = std::make_unique<Pattern>(Pattern{std::string(source), std::string(escape),
                                                 std::move(*items)});
  bool matched = Match(fresh->items, text);
  sqlite3_set_auxdata(ctx, 0, fresh.release(), DeletePattern);
  sqlite3_result_int(ctx, matched ? 1 : 0);
}

// ---- dates

void DateFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
  sqlite3_value* v = argv[0];
  std::optional<Date> date;
  switch (sqlite3_value_type(v)) {
    case SQLITE_INTEGER:
    case SQLITE_FLOAT: {
      double serial = sqlite3_value_double(v);
      // Serials of the years 100 to 9999, the runtime's valid dates.
      if (serial >= -657434.0 && serial < 2958466.0) date = Date{serial};
      break;
    }
    case SQLITE_TEXT:
      date = ParseDate(TextOf(v));
      break;
    default:
      break;
  }
  if (!date) return sqlite3_result_value(ctx, v);
  std::string iso = IsoDate(*date);
  sqlite3_result_text(ctx, iso.c_str(), static_cast<int>(iso.size()), SQLITE_TRANSIENT);
}

// ---- + & chr

// A number from text as Jet converts it: the runtime's conventions first ("2,5"), then the
// plain "2.5" form.
std::optional<double> TextNumber(std::string_view text) {
  if (auto n = ParseNumber(text)) return n;
  return ParsePlainNumber(Trim(text));
}

bool IsNumberValue(sqlite3_value* v) {
  int t = sqlite3_value_type(v);
  return t == SQLITE_INTEGER || t == SQLITE_FLOAT;
}

void ResultNumber(sqlite3_context* ctx, double d) {
  if (d == std::floor(d) && std::fabs(d) < 9.0e15) {
    sqlite3_result_int64(ctx, static_cast<sqlite3_int64>(d));
  } else {
    sqlite3_result_double(ctx, d);
  }
}

constexpr const char* kTypeMismatch = "No coinciden los tipos de datos en la expresión de criterios.";

void AddFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
  sqlite3_value* a = argv[0];
  sqlite3_value* b = argv[1];
  if (sqlite3_value_type(a) == SQLITE_NULL || sqlite3_value_type(b) == SQLITE_NULL) {
    return sqlite3_result_null(ctx);
  }
  bool na = IsNumberValue(a), nb = IsNumberValue(b);
  if (!na && !nb) {
    std::string joined(TextOf(a));
    joined += TextOf(b);
    return sqlite3_result_text(ctx, joined.c_str(), static_cast<int>(joined.size()),
                               SQLITE_TRANSIENT);
  }
  if (na && nb && sqlite3_value_type(a) == SQLITE_INTEGER &&
      sqlite3_value_type(b) == SQLITE_INTEGER) {
    sqlite3_int64 sum = 0;
    if (!__builtin_add_overflow(sqlite3_value_int64(a), sqlite3_value_int64(b), &sum)) {
      return sqlite3_result_int64(ctx, sum);
    }
  }
  std::optional<double> x = na ? std::optional<double>(sqlite3_value_double(a)) : TextNumber(TextOf(a));
  std::optional<double> y = nb ? std::optional<double>(sqlite3_value_double(b)) : TextNumber(TextOf(b));
  if (!x || !y) return sqlite3_result_error(ctx, kTypeMismatch, -1);
  ResultNumber(ctx, *x + *y);
}

void ConcatFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  std::string out;
  bool any = false;
  for (int i = 0; i < argc; ++i) {
    sqlite3_value* v = argv[i];
    switch (sqlite3_value_type(v)) {
      case SQLITE_NULL:
        continue;
      case SQLITE_INTEGER:
        out += std::to_string(sqlite3_value_int64(v));
        break;
      case SQLITE_FLOAT:
        out += CStr(Variant(sqlite3_value_double(v)));
        break;
      default:
        out += TextOf(v);
        break;
    }
    any = true;
  }
  if (!any) return sqlite3_result_null(ctx);
  sqlite3_result_text(ctx, out.c_str(), static_cast<int>(out.size()), SQLITE_TRANSIENT);
}

void ChrFunction(sqlite3_context* ctx, int, sqlite3_value** argv) {
  sqlite3_value* v = argv[0];
  if (sqlite3_value_type(v) == SQLITE_NULL) return sqlite3_result_null(ctx);
  std::optional<double> code =
      IsNumberValue(v) ? std::optional<double>(sqlite3_value_double(v)) : TextNumber(TextOf(v));
  if (!code) return sqlite3_result_error(ctx, kTypeMismatch, -1);
  double rounded = RoundHalfEven(*code);
  auto text = jetsql::ChrText(rounded >= -1 && rounded <= 256 ? static_cast<long>(rounded) : -1);
  if (!text) {
    return sqlite3_result_error(ctx, StandardDescription(err::kInvalidProcedureCall).c_str(), -1);
  }
  sqlite3_result_text(ctx, text->c_str(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
}

void Check(sqlite3* db, int rc) {
  if (rc == SQLITE_OK) return;
  if (rc == SQLITE_NOMEM) Raise(err::kOutOfMemory);
  throw Error(err::kInvalidProcedureCall,
              std::string("No se pudieron registrar las funciones de Jet: ") + sqlite3_errmsg(db),
              "CriterioPredios");
}

}  // namespace

void RegisterJetFunctions(sqlite3* db) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC;
  Check(db, sqlite3_create_collation(db, "JET_NOCASE", SQLITE_UTF8, nullptr, CollationCallback));
  Check(db, sqlite3_create_function(db, "jet_like", 2, kFlags, nullptr, LikeFunction, nullptr,
                                    nullptr));
  Check(db, sqlite3_create_function(db, "jet_like", 3, kFlags, nullptr, LikeFunction, nullptr,
                                    nullptr));
  Check(db, sqlite3_create_function(db, "jet_date", 1, kFlags, nullptr, DateFunction, nullptr,
                                    nullptr));
  Check(db, sqlite3_create_function(db, "jet_add", 2, kFlags, nullptr, AddFunction, nullptr,
                                    nullptr));
  Check(db, sqlite3_create_function(db, "jet_concat", -1, kFlags, nullptr, ConcatFunction,
                                    nullptr, nullptr));
  Check(db, sqlite3_create_function(db, "jet_chr", 1, kFlags, nullptr, ChrFunction, nullptr,
                                    nullptr));
}

}  // namespace cp::sqlite
