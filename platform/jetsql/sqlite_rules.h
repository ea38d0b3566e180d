#pragma once
// The SQLite engine's overrides of the common generator. The SQL they write calls the
// collation JET_NOCASE and the functions jet_date, jet_like, jet_add, jet_concat and
// jet_chr, which cp::sqlite::RegisterJetFunctions installs on every connection we open.
#include "platform/jetsql/generator.h"

namespace cp::jetsql {

// Text comparisons that the collation makes, and the collation's name.
inline constexpr const char* kSqliteCollation = "JET_NOCASE";

const DialectRules& SqliteRules();

}  // namespace cp::jetsql
