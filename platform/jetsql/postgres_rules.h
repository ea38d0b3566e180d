#pragma once
// The PostgreSQL engine's overrides of the common generator.
//
// What the SQL written for PostgreSQL assumes of the server (the engine creates it):
// - names were created unquoted, so they are lower case; a name that needs quotes is
//   written quoted in lower case;
// - date columns are of type timestamp, so a date literal is a TIMESTAMP literal and
//   midnight is compared natively;
// - Yes/No columns are integers holding 0 and 1 (or -1), as on SQLite;
// - a collation pg_temp.jet_nocase exists (ICU, "und-u-ks-level2", deterministic = false: case
//   folded, accents kept) and is applied when a side of a comparison is text;
// - functions pg_temp.jet_like(pattern text, value text[, escape text]), jet_add(a, b),
//   jet_concat(VARIADIC text[]) and jet_chr(code) exist with the meaning of the SQLite
//   functions of the same names: ILIKE cannot express Jet's wildcards
//   (platform/postgres/jet_functions.h creates them).
// Comparisons between two columns of unknown type use the column's own collation.
#include "platform/jetsql/generator.h"

namespace cp::jetsql {

const DialectRules& PostgresRules();

// A table or column name as the rules write it (lower case, quoted when it must be); the
// schema is created with the same spelling.
std::string PostgresName(const std::string& name);

}  // namespace cp::jetsql
