#include "platform/jetsql/sqlite_rules.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>

#include "platform/jetsql/literals.h"

namespace cp::jetsql {
namespace {

// SQLite's keywords: a name spelled like one of them is quoted.
constexpr std::array<std::string_view, 147> kKeywords = {
    "ABORT", "ACTION", "ADD", "AFTER", "ALL", "ALTER", "ALWAYS", "ANALYZE", "AND", "AS", "ASC",
    "ATTACH", "AUTOINCREMENT", "BEFORE", "BEGIN", "BETWEEN", "BY", "CASCADE", "CASE", "CAST",
    "CHECK", "COLLATE", "COLUMN", "COMMIT", "CONFLICT", "CONSTRAINT", "CREATE", "CROSS",
    "CURRENT", "CURRENT_DATE", "CURRENT_TIME", "CURRENT_TIMESTAMP", "DATABASE", "DEFAULT",
    "DEFERRABLE", "DEFERRED", "DELETE", "DESC", "DETACH", "DISTINCT", "DO", "DROP", "EACH",
    "ELSE", "END", "ESCAPE", "EXCEPT", "EXCLUDE", "EXCLUSIVE", "EXISTS", "EXPLAIN", "FAIL",
    "FILTER", "FIRST", "FOLLOWING", "FOR", "FOREIGN", "FROM", "FULL", "GENERATED", "GLOB",
    "GROUP", "GROUPS", "HAVING", "IF", "IGNORE", "IMMEDIATE", "IN", "INDEX", "INDEXED",
    "INITIALLY", "INNER", "INSERT", "INSTEAD", "INTERSECT", "INTO", "IS", "ISNULL", "JOIN",
    "KEY", "LAST", "LEFT", "LIKE", "LIMIT", "MATCH", "MATERIALIZED", "NATURAL", "NO", "NOT",
    "NOTHING", "NOTNULL", "NULL", "NULLS", "OF", "OFFSET", "ON", "OR", "ORDER", "OTHERS",
    "OUTER", "OVER", "PARTITION", "PLAN", "PRAGMA", "PRECEDING", "PRIMARY", "QUERY", "RAISE",
    "RANGE", "RECURSIVE", "REFERENCES", "REGEXP", "REINDEX", "RELEASE", "RENAME", "REPLACE",
    "RESTRICT", "RETURNING", "RIGHT", "ROLLBACK", "ROW", "ROWS", "SAVEPOINT", "SELECT", "SET",
    "TABLE", "TEMP", "TEMPORARY", "THEN", "TIES", "TO", "TRANSACTION", "TRIGGER", "UNBOUNDED",
    "UNION", "UNIQUE", "UPDATE", "USING", "VACUUM", "VALUES", "VIEW", "VIRTUAL", "WHEN",
    "WHERE", "WINDOW", "WITH", "WITHOUT"};

std::string QuoteName(const std::string& name) {
  bool simple = !name.empty() && !std::isdigit(static_cast<unsigned char>(name[0]));
  std::string upper;
  for (char c : name) {
    simple = simple && (std::isalnum(static_cast<unsigned char>(c)) || c == '_');
    upper += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  if (simple && std::find(kKeywords.begin(), kKeywords.end(), upper) == kKeywords.end()) {
    return name;
  }
  return QuotedIdentifier(name);
}

Sql Collated(Sql operand) {
  return Sql{Wrap(std::move(operand), 9).text + " COLLATE " + kSqliteCollation, 8};
}

DialectRules MakeRules() {
  DialectRules rules;
  rules.name = QuoteName;
  // Stored dates are ISO text, but a row written by another tool may hold a date with a
  // midnight time or a Jet serial number: jet_date brings every form to the literal's form.
  rules.dateOperand = [](Sql operand) { return Sql{"jet_date(" + operand.text + ")", 9}; };
  // Columns against columns (join keys) get the collation as well: it only acts when both
  // values are text, so numeric keys compare as before.
  rules.textOperand = [](Sql operand, CompareMode) { return Collated(std::move(operand)); };
  rules.orderItem = [](Sql expr, StaticType type, bool descending) {
    std::string text = type == StaticType::Number ? expr.text : Collated(std::move(expr)).text;
    return descending ? text + " DESC" : text;
  };
  // Jet's DISTINCT takes 'MADRID' and 'Madrid' for one value.
  rules.distinctItem = [](Sql expr, StaticType type, const std::string& outputName) {
    std::string text = type == StaticType::Number ? expr.text : Collated(std::move(expr)).text;
    return outputName.empty() ? text : text + " AS " + QuoteName(outputName);
  };
  return rules;
}

}  // namespace

const DialectRules& SqliteRules() {
  static const DialectRules rules = MakeRules();
  return rules;
}

}  // namespace cp::jetsql
