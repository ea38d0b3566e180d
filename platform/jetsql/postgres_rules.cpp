#include "platform/jetsql/postgres_rules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "platform/jetsql/literals.h"

namespace cp::jetsql {
namespace {

// PostgreSQL's reserved words (those that cannot name a column unquoted).
constexpr std::array<std::string_view, 100> kReserved = {
    "ALL", "ANALYSE", "ANALYZE", "AND", "ANY", "ARRAY", "AS", "ASC", "ASYMMETRIC",
    "AUTHORIZATION", "BINARY", "BOTH", "CASE", "CAST", "CHECK", "COLLATE", "COLLATION",
    "COLUMN", "CONCURRENTLY", "CONSTRAINT", "CREATE", "CROSS", "CURRENT_CATALOG",
    "CURRENT_DATE", "CURRENT_ROLE", "CURRENT_SCHEMA", "CURRENT_TIME", "CURRENT_TIMESTAMP",
    "CURRENT_USER", "DEFAULT", "DEFERRABLE", "DESC", "DISTINCT", "DO", "ELSE", "END", "EXCEPT",
    "FALSE", "FETCH", "FOR", "FOREIGN", "FREEZE", "FROM", "FULL", "GRANT", "GROUP", "HAVING",
    "ILIKE", "IN", "INITIALLY", "INNER", "INTERSECT", "INTO", "IS", "ISNULL", "JOIN", "LATERAL",
    "LEADING", "LEFT", "LIKE", "LIMIT", "LOCALTIME", "LOCALTIMESTAMP", "NATURAL", "NOT",
    "NOTNULL", "NULL", "OFFSET", "ON", "ONLY", "OR", "ORDER", "OUTER", "OVERLAPS", "PLACING",
    "PRIMARY", "REFERENCES", "RETURNING", "RIGHT", "SELECT", "SESSION_USER", "SIMILAR", "SOME",
    "SYMMETRIC", "TABLE", "TABLESAMPLE", "THEN", "TO", "TRAILING", "TRUE", "UNION", "UNIQUE",
    "USER", "USING", "VARIADIC", "VERBOSE", "WHEN", "WHERE", "WINDOW", "WITH"};

std::string QuoteName(const std::string& name) {
  bool simple = !name.empty() && !std::isdigit(static_cast<unsigned char>(name[0]));
  std::string upper, lower;
  for (char c : name) {
    simple = simple && (std::isalnum(static_cast<unsigned char>(c)) || c == '_');
    upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    lower += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  }
  if (simple && std::find(kReserved.begin(), kReserved.end(), upper) == kReserved.end()) {
    return name;
  }
  return QuotedIdentifier(lower);
}

DialectRules MakeRules() {
  DialectRules rules;
  rules.name = QuoteName;
  rules.dateLiteral = [](const std::string& iso) { return "TIMESTAMP '" + iso + "'"; };
  // A collation on a column of another type is an error on this server, so it is applied
  // only when one side is known to be text.
  rules.textOperand = [](Sql operand, CompareMode mode) {
    if (mode != CompareMode::Text) return operand;
    return Sql{Wrap(std::move(operand), 9).text + " COLLATE pg_temp.jet_nocase", 8};
  };
  // The functions live in the session's temporary schema, which is never searched for
  // functions: they are called by their qualified names. jet_concat takes text parts, each
  // written as the runtime's CStr writes it (jet_text).
  rules.call = [](const std::string& function, const std::vector<std::string>& args) {
    std::string text;
    for (const auto& a : args) {
      if (!text.empty()) text += ", ";
      text += function == "jet_concat" ? "pg_temp.jet_text(" + a + ")" : a;
    }
    if (function == "jet_concat") text = "VARIADIC ARRAY[" + text + "]";
    return "pg_temp." + function + "(" + text + ")";
  };
  // Jet sorts Null before any value.
  rules.orderItem = [](Sql expr, StaticType, bool descending) {
    return expr.text + (descending ? " DESC NULLS LAST" : " NULLS FIRST");
  };
  return rules;
}

}  // namespace

std::string PostgresName(const std::string& name) { return QuoteName(name); }

const DialectRules& PostgresRules() {
  static const DialectRules rules = MakeRules();
  return rules;
}

}  // namespace cp::jetsql
