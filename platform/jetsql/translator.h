#pragma once
// Translation of the Jet SQL dialect that the component writes into the SQL of the engine
// underneath. The result must return what Jet would return; a construct that cannot be
// translated faithfully is an Error naming it, never different SQL.
#include <string>
#include <string_view>

namespace cp::jetsql {

enum class Dialect { Sqlite, Postgres };

// Translates one Jet SELECT statement. Raises cp::Error (DAO-style numbers, Spanish text
// naming the text at fault) on a syntax error or an untranslatable construct.
std::string TranslateStatement(std::string_view jet, Dialect dialect);

// Translates a bare Jet condition (a WHERE text without the keyword, as FindFirst takes).
std::string TranslateCondition(std::string_view jet, Dialect dialect);

}  // namespace cp::jetsql
