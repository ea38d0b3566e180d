#pragma once
// The PostgreSQL engine's overrides of the common generator.
//
// What the SQL written for PostgreSQL assumes of the server (the engine creates it):
// - names were created unquoted, so they are lower case; a name that needs quotes is
//   written quoted in lower case;
// - date columns are of type timestamp, so a date literal is a TIMESTAMP literal and
//   midnight is compared natively;
// - Yes/No columns are integers holding 0 and 1 (or -1), as on SQLite;
// - a collation jet_nocase exists (ICU, "und-u-ks-level2", deterministic = false: case
//   folded, accents kept) and is applied when a side of a comparison is text;
// - functions jet_like(pattern text, value text[, escape text]), jet_add(a, b),
//   jet_concat(variadic) and jet_chr(code) exist with the meaning of the SQLite functions
//   of the same names: ILIKE cannot express Jet's wildcards.
// Comparisons between two columns of unknown type use the column's own collation.
#include "platform/jetsql/generator.h"

namespace cp::jetsql {

const DialectRules& PostgresRules();

}  // namespace cp::jetsql
