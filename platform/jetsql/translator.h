#pragma once
// Translation of the Jet SQL dialect that the component writes into the SQL of the engine
// underneath. The result must return what Jet would return; a construct that cannot be
// translated faithfully is an Error naming it, never different SQL.
#include <string>
#include <string_view>

namespace cp::jetsql {

enum class Dialect { Sqlite, Postgres };

// Translates one Jet SELECT statement. Raises cp::Error with source "DAO.Database":
// 3075 for a syntax error (the description names the clause at fault), 3085 for a function
// other than IsNull and Chr, 3296 for valid Jet that cannot be translated faithfully (GROUP
// BY, UNION, TOP, parameters...), 5 for chr of a constant outside 0..255.
// The SQLite text needs the functions of platform/sqlite/jet_functions.h on the connection;
// what the PostgreSQL text assumes of the server is listed in postgres_rules.h.
std::string TranslateStatement(std::string_view jet, Dialect dialect);

// Translates a bare Jet condition (a WHERE text without the keyword, as FindFirst takes).
std::string TranslateCondition(std::string_view jet, Dialect dialect);

}  // namespace cp::jetsql
