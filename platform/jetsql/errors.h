#pragma once
// The errors that translation raises. They carry the numbers DAO gives the same faults and
// DAO's source name, so that a caller's trap reports them as database errors.
#include <string>
#include <string_view>

namespace cp::jetsql {

inline constexpr const char* kErrorSource = "DAO.Database";

// A statement or condition that is not valid Jet SQL: raises 3075 naming the text at fault.
[[noreturn]] void RaiseSyntaxError(std::string_view textAtFault);
// Valid Jet SQL that cannot be translated faithfully (GROUP BY, UNION, parameters...): raises
// 3296 naming the construct.
[[noreturn]] void RaiseUnsupported(std::string_view construct);
// A subquery after IN that gives more than one field, or "*": raises 3306.
[[noreturn]] void RaiseSubqueryFields();
// A function that the translation does not know: raises 3085 naming the function.
[[noreturn]] void RaiseUndefinedFunction(std::string_view name);

}  // namespace cp::jetsql
