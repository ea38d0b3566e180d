#include "platform/dao/types.h"

#include <cctype>
#include <cstdlib>
#include <limits>
#include <utility>

#include "platform/core/text_format.h"

namespace cp::dao {
namespace {

std::string UpperCollapsed(std::string_view text) {
  std::string out;
  bool blank = false;
  for (char c : text) {
    if (std::isspace(static_cast<unsigned char>(c))) {
      blank = !out.empty();
      continue;
    }
    if (blank) out += ' ';
    blank = false;
    out += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return out;
}

bool OneOf(const std::string& word, std::initializer_list<std::string_view> names) {
  for (auto n : names)
    if (word == n) return true;
  return false;
}

Variant Natural(const Cell& cell) {
  if (const auto* i = std::get_if<std::int64_t>(&cell)) {
    if (*i >= std::numeric_limits<std::int32_t>::min() &&
        *i <= std::numeric_limits<std::int32_t>::max())
      return Variant(static_cast<std::int32_t>(*i));
    return Variant(static_cast<double>(*i));
  }
  if (const auto* d = std::get_if<double>(&cell)) return Variant(*d);
  if (const auto* s = std::get_if<std::string>(&cell)) return Variant(*s);
  return Variant::Null();
}

}  // namespace

ColumnType TypeFromDeclaration(std::string_view declared) {
  std::string decl = UpperCollapsed(declared);
  long length = 0;
  bool hasLength = false;
  if (auto open = decl.find('('); open != std::string::npos) {
    char* end = nullptr;
    const long n = std::strtol(decl.c_str() + open + 1, &end, 10);
    if (end != decl.c_str() + open + 1 && n > 0) {
      length = n;
      hasLength = true;
    }
    decl = UpperCollapsed(decl.substr(0, open));
  }
  if (decl.empty()) return {};
  // Jet's TEXT(n) is a sized text column; a bare TEXT is a memo.
  if (decl == "TEXT" && hasLength) return {dbText, length};
  if (OneOf(decl, {"VARCHAR", "CHAR", "NVARCHAR", "NCHAR", "CHARACTER", "CHARACTER VARYING",
                   "VARCHAR2", "VARYING CHARACTER", "NATIONAL CHARACTER", "STRING"}))
    return {dbText, hasLength ? length : DefaultSize(dbText)};
  if (OneOf(decl, {"TEXT", "MEMO", "LONGTEXT", "LONGCHAR", "CLOB", "NOTE"})) return {dbMemo, 0};
  if (OneOf(decl, {"INTEGER", "INT", "LONG", "COUNTER", "AUTOINCREMENT", "BIGINT", "INT4",
                   "INT8", "SERIAL", "BIGSERIAL", "INTEGER4"}))
    return {dbLong, DefaultSize(dbLong)};
  if (OneOf(decl, {"SMALLINT", "SHORT", "INT2", "INTEGER2"}))
    return {dbInteger, DefaultSize(dbInteger)};
  if (OneOf(decl, {"TINYINT", "BYTE", "INTEGER1"})) return {dbByte, DefaultSize(dbByte)};
  if (OneOf(decl, {"BOOLEAN", "BOOL", "BIT", "YESNO", "LOGICAL"}))
    return {dbBoolean, DefaultSize(dbBoolean)};
  if (OneOf(decl, {"DOUBLE", "DOUBLE PRECISION", "REAL", "FLOAT", "FLOAT8", "FLOAT4", "NUMERIC",
                   "DECIMAL", "NUMBER"}))
    return {dbDouble, DefaultSize(dbDouble)};
  if (OneOf(decl, {"CURRENCY", "MONEY"})) return {dbCurrency, DefaultSize(dbCurrency)};
  if (OneOf(decl, {"DATETIME", "DATE", "TIME", "TIMESTAMP", "TIMESTAMP WITHOUT TIME ZONE",
                   "TIMESTAMP WITH TIME ZONE"}))
    return {dbDate, DefaultSize(dbDate)};
  return {};
}

long DefaultSize(int type) {
  switch (type) {
    case dbBoolean:
    case dbByte: return 1;
    case dbInteger: return 2;
    case dbLong: return 4;
    case dbCurrency:
    case dbDouble:
    case dbDate: return 8;
    case dbText: return 255;
    default: return 0;
  }
}

int TypeOfValue(const Cell& cell) {
  if (std::holds_alternative<std::int64_t>(cell)) {
    const auto v = std::get<std::int64_t>(cell);
    return (v >= std::numeric_limits<std::int32_t>::min() &&
            v <= std::numeric_limits<std::int32_t>::max())
               ? dbLong
               : dbDouble;
  }
  if (std::holds_alternative<double>(cell)) return dbDouble;
  return dbText;
}

Variant ToVariant(const Cell& cell, int type) {
  if (std::holds_alternative<std::monostate>(cell)) return Variant::Null();
  const auto* integer = std::get_if<std::int64_t>(&cell);
  const auto* real = std::get_if<double>(&cell);
  const auto* text = std::get_if<std::string>(&cell);
  switch (type) {
    case dbBoolean:
      if (integer) return Variant(*integer != 0);
      if (real) return Variant(*real != 0.0);
      break;
    case dbByte:
    case dbInteger:
      if (integer && *integer >= std::numeric_limits<std::int16_t>::min() &&
          *integer <= std::numeric_limits<std::int16_t>::max())
        return Variant(static_cast<std::int16_t>(*integer));
      break;
    case dbCurrency:
    case dbDouble:
      if (integer) return Variant(static_cast<double>(*integer));
      break;
    case dbDate:
      if (text) {
        if (auto d = ParseDate(*text)) return Variant(*d);
      }
      break;
    default: break;
  }
  return Natural(cell);
}

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i)
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  return true;
}

}  // namespace cp::dao
