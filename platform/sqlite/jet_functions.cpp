#include "platform/sqlite/jet_functions.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/conversions.h"
#include "platform/core/date.h"
#include "platform/core/string_functions.h"
#include "platform/core/error.h"
#include "platform/core/string_functions.h"
#include "platform/core/text_format.h"
#include "platform/jetsql/literals.h"
#include "platform/sqlite/like_pattern.h"
#include "platform/sqlite/text_folding.h"

namespace cp::sqlite {
namespace {

int CollationCallback(void*, int lengthA, const void* a, int lengthB, const void* b) {
  return CompareJetText(std::string_view(static_cast<const char*>(a), lengthA),
                        std::string_view(static_cast<const char*>(b), lengthB));
}

std::string_view TextOf(sqlite3_value* v) {
  auto p = reinterpret_cast<const char*>(sqlite3_value_text(v));
  return p ? std::string_view(p, static_cast<std::size_t>(sqlite3_value_bytes(v)))
           : std::string_view();
}

// A compiled pattern kept with the text it came from.
struct Pattern {
  std::string source;
  std::string escape;
  LikePattern compiled;
};

void DeletePattern(void* p) { delete static_cast<Pattern*>(p); }

bool PatternMatches(const LikePattern& pattern, std::string_view value) {
  return IsAscii(value) ? pattern.MatchesAscii(value)
                        : pattern.Matches(FoldedCodePoints(value));
}

void LikeFunction(sqlite3_context* ctx, int argc, sqlite3_value** argv) {
  for (int i = 0; i < argc; ++i) {
    if (sqlite3_value_type(argv[i]) == SQLITE_NULL) return sqlite3_result_null(ctx);
  }
  std::string_view source = TextOf(argv[0]);
  std::string_view escape = argc > 2 ? TextOf(argv[2]) : std::string_view();
  const std::string_view value = TextOf(argv[1]);
  // A constant pattern is compiled once per statement and kept as SQLite's auxiliary data.
  auto* cached = static_cast<Pattern*>(sqlite3_get_auxdata(ctx, 0));
  if (cached && cached->source == source && cached->escape == escape) {
    return sqlite3_result_int(ctx, PatternMatches(cached->compiled, value) ? 1 : 0);
  }
  auto compiled = LikePattern::Compile(source, escape);
  if (!compiled) return sqlite3_result_error(ctx, "Cadena de modelo no válida.", -1);
  auto fresh = std::make_unique<Pattern>(Pattern{std::string(source), std::string(escape),
                                                 std::move(*compiled)});
  bool matched = PatternMatches(fresh->compiled, value);
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
