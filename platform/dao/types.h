#pragma once
// DAO type codes, field attributes and recordset kinds, and the mapping between the values an
// engine stores and the Variants that DAO hands out.
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

#include "platform/core/variant.h"

namespace cp::dao {

// DAO field type codes (Field.Type).
inline constexpr int dbBoolean = 1;
inline constexpr int dbByte = 2;
inline constexpr int dbInteger = 3;
inline constexpr int dbLong = 4;
inline constexpr int dbCurrency = 5;
inline constexpr int dbDouble = 7;
inline constexpr int dbDate = 8;
inline constexpr int dbText = 10;
inline constexpr int dbMemo = 12;

// DAO field attribute bits (Field.Attributes).
inline constexpr long dbFixedField = 1;
inline constexpr long dbVariableField = 2;
inline constexpr long dbAutoIncrField = 16;
inline constexpr long dbUpdatableField = 32;

// Recordset kinds, with DAO's numbers.
enum class RecordsetType { Snapshot = 4, ForwardOnly = 8 };
inline constexpr RecordsetType dbOpenSnapshot = RecordsetType::Snapshot;
inline constexpr RecordsetType dbOpenForwardOnly = RecordsetType::ForwardOnly;

// One stored value as an engine returns it, before DAO typing: Null, integer, real or text
// (binary data travels as text bytes).
using Cell = std::variant<std::monostate, std::int64_t, double, std::string>;

// A DAO type code with its size in bytes (characters for text). Type 0 means "not known from
// the declaration": the value decides (TypeOfValue).
struct ColumnType {
  int type = 0;
  long size = 0;
};

// Maps a declared column type ("VARCHAR(50)", "INTEGER", "DATETIME", ...) to its DAO type
// code and size; case and blanks do not matter. Unknown or empty declarations give type 0.
ColumnType TypeFromDeclaration(std::string_view declared);

// DAO's size of a fixed-size type (Long 4, Double 8, ...); 0 for memo, 255 for text.
long DefaultSize(int type);

// The DAO type of a value whose column has no usable declaration: integers are Long,
// reals Double, text and Null Text.
int TypeOfValue(const Cell& cell);

// The Variant DAO returns for a stored value in a column of the given type: Null as Null,
// Long/Integer/Byte as Long/Integer, Boolean as Boolean (non-zero is True), Double and
// Currency as Double, dates parsed from their ISO text into Date, text as String. A value
// that does not fit its column's type (text in a numeric column, say) comes back as its
// natural Variant instead of failing; type 0 means "infer from the value".
Variant ToVariant(const Cell& cell, int type);

// Case-insensitive (ASCII) equality of two field or table names, as DAO looks them up.
bool SameName(std::string_view a, std::string_view b);

}  // namespace cp::dao
