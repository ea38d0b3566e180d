#pragma once
// The common SQL generator: writes a syntax tree as SQL for an engine. What differs between
// engines is a table of overrides (DialectRules); an empty entry keeps the common form.
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/jetsql/syntax_tree.h"
#include "platform/jetsql/translator.h"

namespace cp::jetsql {

// What the translator knows of an expression's type without the schema.
enum class StaticType { Unknown, Number, Text, Date, Boolean, Null };

// How the operands of a comparison (=, <, BETWEEN, IN...) are compared.
enum class CompareMode {
  Number,   // one side is a number: compare as written, so indexes stay usable
  Date,     // one side is a date literal: non-literal sides go through DialectRules::dateOperand,
            // except columns that TranslateOptions::isoDateColumn vouches for
  Text,     // one side is text, none is a number or a date
  Unknown,  // nothing is known (columns against columns)
};

// A piece of generated SQL with the precedence of its outermost operator, so that callers
// add parentheses only where the engine's precedence needs them.
struct Sql {
  std::string text;
  int level;  // 0 OR, 1 AND, 2 NOT, 3 comparison, 5 + -, 6 * /, 7 ||, 8 unary/COLLATE, 9 primary
};

struct DialectRules {
  // A table, column or alias name; must quote what the engine would misread.
  std::function<std::string(const std::string& name)> name;
  // A date literal given as ISO text. Common form: the ISO text as a string literal.
  std::function<std::string(const std::string& iso)> dateLiteral;
  // A non-literal operand compared with a date literal. Common form: unchanged.
  std::function<Sql(Sql operand)> dateOperand;
  // The left operand of a comparison made with Jet's text rules. Common form: unchanged.
  std::function<Sql(Sql operand, CompareMode mode)> textOperand;
  // One ORDER BY term. Common form: the expression, then DESC when descending.
  std::function<std::string(Sql expr, StaticType type, bool descending)> orderItem;
  // One item of a SELECT DISTINCT list; outputName is the alias or the column's name ("" if
  // none). Common form: the expression with its alias.
  std::function<std::string(Sql expr, StaticType type, const std::string& outputName)> distinctItem;
  // A call of one of the engine's Jet functions (jet_like, jet_add, jet_concat, jet_chr).
  // Common form: name(arg, ...).
  std::function<std::string(const std::string& function, const std::vector<std::string>& args)>
      call;
};

class Generator {
 public:
  explicit Generator(const DialectRules& rules, TranslateOptions options = {})
      : rules_(rules), options_(std::move(options)) {}

  // Writes a statement / a condition. Raises cp::Error 3296 for what the engine cannot
  // express faithfully.
  std::string Statement(const Select& select) const;
  std::string Condition(const Expr& condition) const;

  static StaticType TypeOf(const Expr& e);

 private:
  Sql Expression(const Expr& e) const;
  Sql Operand(const Expr& e, int minLevel) const;
  Sql Compare(const Expr& e) const;
  Sql BooleanCompare(const Expr& column, const Expr& literal, const std::string& op) const;
  Sql Between(const Expr& e) const;
  Sql InList(const Expr& e) const;
  Sql InSelect(const Expr& e) const;
  Sql Plus(const Expr& e) const;
  Sql Arith(const Expr& e) const;
  Sql Chr(const Expr& e) const;
  // Applies the mode's rules to one operand of a comparison; isLeft: the operand that carries
  // the text rules.
  Sql ComparedOperand(const Expr& e, CompareMode mode, bool isLeft) const;
  static CompareMode ModeOf(const std::vector<const Expr*>& operands);
  // True for a column reference that resolves, as the engine resolves names, to a column
  // that options_.isoDateColumn vouches for.
  bool IsIsoDateColumn(const Expr& e) const;
  std::string Name(const std::string& name) const;
  std::string Source(const TableRef& ref) const;
  std::string StringLiteral(const std::string& value) const;
  Sql Call(const std::string& function, const std::vector<const Expr*>& args) const;
  Sql CallWith(const std::string& function, const std::vector<std::string>& texts) const;

  const DialectRules& rules_;
  TranslateOptions options_;
  // The tables of the FROM clauses being written, innermost statement last.
  mutable std::vector<std::vector<const TableRef*>> scopes_;
};

// Wraps sql in parentheses when its precedence is below minLevel.
Sql Wrap(Sql sql, int minLevel);

}  // namespace cp::jetsql
