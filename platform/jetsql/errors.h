#pragma once
// The errors that translation raises. They carry the numbers DAO gives the same faults and
// DAO's source name, so that a caller's trap reports them as database errors.
#include <string>
#include <string_view>

namespace cp::jetsql {

inline constexpr const char* kErrorSource = "DAO.Database";
// A statement or condition that is not valid Jet SQL.
inline constexpr long kSyntaxErrorNumber = 3075;
// A function that the translation does not know ("Función no definida").
inline constexpr long kUndefinedFunctionNumber = 3085;
// Valid Jet SQL that cannot be translated faithfully (GROUP BY, UNION, parameters...).
inline constexpr long kUnsupportedNumber = 3296;

// Raises kSyntaxErrorNumber naming the text at fault.
[[noreturn]] void RaiseSyntaxError(std::string_view textAtFault);
// Raises kUnsupportedNumber naming the construct ("GROUP BY", "UNION"...).
[[noreturn]] void RaiseUnsupported(std::string_view construct);
// Raises kUndefinedFunctionNumber naming the function.
[[noreturn]] void RaiseUndefinedFunction(std::string_view name);

}  // namespace cp::jetsql
