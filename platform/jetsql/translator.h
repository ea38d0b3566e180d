#pragma once
// Translation of the Jet SQL dialect that the component writes into the SQL of the engine
// underneath. The result must return what Jet would return; a construct that cannot be
// translated faithfully is an Error naming it, never different SQL.
#include <functional>
#include <string>
#include <string_view>

namespace cp::jetsql {

enum class Dialect { Sqlite, Postgres };

// What the engine knows of its schema that lets the translation be plainer. Empty entries
// mean "nothing known", which is always correct.
struct TranslateOptions {
  // True when every value the column can hold is Null or already in the form the dialect
  // brings dates to before comparing them (on SQLite: jet_date(v) = v), so that a date
  // comparison may use the column as it is, and an index on it. Names as Jet writes them
  // (unquoted), compared as the engine compares names.
  std::function<bool(std::string_view table, std::string_view column)> isoDateColumn;
};

// Translates one Jet SELECT statement. Raises cp::Error with source "DAO.Database":
// 3075 for a syntax error (the description names the clause at fault), 3085 for a function
// other than IsNull and Chr, 3296 for valid Jet that cannot be translated faithfully (GROUP
// BY, UNION, TOP, parameters, nesting deeper than 16 levels...), 5 for chr of a constant
// outside 0..255.
// The SQLite text needs the functions of platform/sqlite/jet_functions.h on the connection;
// what the PostgreSQL text assumes of the server is listed in postgres_rules.h.
std::string TranslateStatement(std::string_view jet, Dialect dialect,
                               const TranslateOptions& options = {});

// Translates a bare Jet condition (a WHERE text without the keyword, as FindFirst takes).
// It has no FROM clause, so its column names resolve to no table of the options.
std::string TranslateCondition(std::string_view jet, Dialect dialect,
                               const TranslateOptions& options = {});

}  // namespace cp::jetsql
