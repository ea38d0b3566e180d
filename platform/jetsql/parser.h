#pragma once
// Parses Jet SQL text into the syntax tree. Syntax errors raise cp::Error 3075 naming the
// clause at fault; valid Jet SQL outside the supported subset raises 3296 (or 3085 for a
// function) naming the construct.
#include <string_view>

#include "platform/jetsql/syntax_tree.h"

namespace cp::jetsql {

// One SELECT statement, optionally ended by ";".
std::unique_ptr<Select> ParseStatement(std::string_view source);
// A bare condition (the text after WHERE).
ExprPtr ParseCondition(std::string_view source);

}  // namespace cp::jetsql
