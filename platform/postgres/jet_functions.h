#pragma once
// What translated Jet SQL needs on a PostgreSQL session (see platform/jetsql/postgres_rules.h):
// an ICU collation and SQL/PL/pgSQL functions, all created in the session's own temporary
// schema, so the office database never depends on them and no extension is needed.
//   pg_temp.jet_nocase        nondeterministic ICU collation "und-u-ks-level2": case folded
//                             (accented capitals too), accents kept, ordered by letter first
//   pg_temp.jet_like(P, X[, E])  Jet's LIKE, through a regular expression built from P once
//                             per statement (the pattern is usually constant); folded with ICU
//                             lower() whatever the database's collation
//   pg_temp.jet_add(A, B)     Jet's +; pg_temp.jet_concat(VARIADIC text[]) Jet's &, its
//                             parts written by pg_temp.jet_text as the runtime's CStr does
//   pg_temp.jet_chr(N)        chr on the Windows-1252 code page
#include <string>

namespace cp::postgres {

// The statements that create them (one text, ";"-separated).
const std::string& JetFunctionsSql();

}  // namespace cp::postgres
