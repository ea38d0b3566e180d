#include "platform/jetsql/generator.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <string_view>

#include "platform/core/conversions.h"
#include "platform/core/text_format.h"
#include "platform/core/error.h"
#include "platform/jetsql/errors.h"
#include "platform/jetsql/literals.h"

namespace cp::jetsql {
namespace {

constexpr int kComparisonLevel = 3;
constexpr int kPrimary = 9;

bool IsLiteral(const Expr& e) {
  switch (e.kind) {
    case Expr::Kind::Number:
    case Expr::Kind::String:
    case Expr::Kind::Date:
    case Expr::Kind::Boolean:
    case Expr::Kind::Null:
      return true;
    default:
      return false;
  }
}

bool IsSimpleName(const std::string& name) {
  if (name.empty() || std::isdigit(static_cast<unsigned char>(name[0]))) return false;
  for (char c : name) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && c != '_') return false;
  }
  return true;
}

bool SameName(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return false;
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (std::tolower(static_cast<unsigned char>(a[i])) !=
        std::tolower(static_cast<unsigned char>(b[i])))
      return false;
  }
  return true;
}

void CollectTables(const TableRef& ref, std::vector<const TableRef*>& tables) {
  if (ref.kind == TableRef::Kind::Table) {
    tables.push_back(&ref);
  } else {
    CollectTables(*ref.left, tables);
    CollectTables(*ref.right, tables);
  }
}

}  // namespace

Sql Wrap(Sql sql, int minLevel) {
  if (sql.level >= minLevel) return sql;
  return Sql{"(" + sql.text + ")", kPrimary};
}

StaticType Generator::TypeOf(const Expr& e) {
  switch (e.kind) {
    case Expr::Kind::Number:
    case Expr::Kind::Negate:
    case Expr::Kind::Arith:
      return StaticType::Number;
    case Expr::Kind::String:
    case Expr::Kind::Concat:
    case Expr::Kind::Chr:
      return StaticType::Text;
    case Expr::Kind::Date:
      return StaticType::Date;
    case Expr::Kind::Null:
      return StaticType::Null;
    case Expr::Kind::Group:
      return TypeOf(*e.args[0]);
    case Expr::Kind::Plus: {
      StaticType a = TypeOf(*e.args[0]), b = TypeOf(*e.args[1]);
      if (a == b && (a == StaticType::Number || a == StaticType::Text)) return a;
      return StaticType::Unknown;
    }
    case Expr::Kind::Column:
      return StaticType::Unknown;
    default:
      return StaticType::Boolean;
  }
}

CompareMode Generator::ModeOf(const std::vector<const Expr*>& operands) {
  bool number = false, text = false;
  for (const Expr* e : operands) {
    switch (TypeOf(*e)) {
      case StaticType::Date: return CompareMode::Date;
      // A Null side makes the result Null whatever the rules: compare as written.
      case StaticType::Null:
      case StaticType::Number:
      case StaticType::Boolean: number = true; break;
      case StaticType::Text: text = true; break;
      default: break;
    }
  }
  if (number) return CompareMode::Number;
  return text ? CompareMode::Text : CompareMode::Unknown;
}

bool Generator::IsIsoDateColumn(const Expr& e) const {
  if (!options_.isoDateColumn || e.kind != Expr::Kind::Column || scopes_.empty()) return false;
  if (e.qualifier.empty()) {
    // Only the innermost FROM is looked at: a table there without the column would send the
    // name outward, and the options cannot tell that. Two tables with the column make the
    // engine reject the name as ambiguous, whatever is written.
    int vouched = 0;
    for (const TableRef* table : scopes_.back()) {
      if (options_.isoDateColumn(table->name, e.name)) ++vouched;
    }
    return vouched == 1;
  }
  // A table with an alias is known only by its alias; the innermost statement naming the
  // qualifier owns the column.
  for (auto scope = scopes_.rbegin(); scope != scopes_.rend(); ++scope) {
    const TableRef* owner = nullptr;
    int owners = 0;
    for (const TableRef* table : *scope) {
      if (SameName(table->alias.empty() ? table->name : table->alias, e.qualifier)) {
        owner = table;
        ++owners;
      }
    }
    if (owners > 0) return owners == 1 && options_.isoDateColumn(owner->name, e.name);
  }
  return false;
}

std::string Generator::Name(const std::string& name) const {
  if (rules_.name) return rules_.name(name);
  if (IsSimpleName(name)) return name;
  return QuotedIdentifier(name);
}

std::string Generator::StringLiteral(const std::string& value) const {
  std::string out = "'";
  for (char c : value) out += c == '\'' ? std::string("''") : std::string(1, c);
  return out + "'";
}

Sql Generator::Operand(const Expr& e, int minLevel) const { return Wrap(Expression(e), minLevel); }

Sql Generator::ComparedOperand(const Expr& e, CompareMode mode, bool isLeft) const {
  Sql sql = Operand(e, kComparisonLevel + 1);
  StaticType type = TypeOf(e);
  if (mode == CompareMode::Date && type != StaticType::Date && type != StaticType::Null &&
      rules_.dateOperand && !IsIsoDateColumn(e)) {
    sql = rules_.dateOperand(std::move(sql));
  }
  if (isLeft && (mode == CompareMode::Text || mode == CompareMode::Unknown) &&
      rules_.textOperand) {
    sql = rules_.textOperand(std::move(sql), mode);
  }
  return sql;
}

Sql Generator::BooleanCompare(const Expr& other, const Expr& literal,
                              const std::string& op) const {
  // Our Yes/No columns hold 1 for Yes; a -1 imported from Access is Yes as well.
  std::string o = Operand(other, kComparisonLevel + 1).text;
  bool isTrue = literal.text == "TRUE";
  bool equal = op == "=";
  if (isTrue) return Sql{o + (equal ? " IN (1, -1)" : " NOT IN (1, -1)"), kComparisonLevel};
  return Sql{o + (equal ? " = 0" : " <> 0"), kComparisonLevel};
}

Sql Generator::Compare(const Expr& e) const {
  const Expr& a = *e.args[0];
  const Expr& b = *e.args[1];
  if (e.op == "=" || e.op == "<>") {
    if (b.kind == Expr::Kind::Boolean && !IsLiteral(a)) return BooleanCompare(a, b, e.op);
    if (a.kind == Expr::Kind::Boolean && !IsLiteral(b)) return BooleanCompare(b, a, e.op);
  }
  CompareMode mode = ModeOf({&a, &b});
  return Sql{ComparedOperand(a, mode, true).text + " " + e.op + " " +
                 ComparedOperand(b, mode, false).text,
             kComparisonLevel};
}

Sql Generator::Between(const Expr& e) const {
  CompareMode mode = ModeOf({e.args[0].get(), e.args[1].get(), e.args[2].get()});
  return Sql{ComparedOperand(*e.args[0], mode, true).text +
                 (e.negated ? " NOT BETWEEN " : " BETWEEN ") +
                 ComparedOperand(*e.args[1], mode, false).text + " AND " +
                 ComparedOperand(*e.args[2], mode, false).text,
             kComparisonLevel};
}

Sql Generator::InList(const Expr& e) const {
  std::vector<const Expr*> operands;
  for (const auto& arg : e.args) operands.push_back(arg.get());
  CompareMode mode = ModeOf(operands);
  std::string text = ComparedOperand(*e.args[0], mode, true).text;
  text += e.negated ? " NOT IN (" : " IN (";
  for (std::size_t i = 1; i < e.args.size(); ++i) {
    if (i > 1) text += ", ";
    text += ComparedOperand(*e.args[i], mode, false).text;
  }
  return Sql{text + ")", kComparisonLevel};
}

Sql Generator::InSelect(const Expr& e) const {
  CompareMode mode = ModeOf({e.args[0].get()});
  if (mode == CompareMode::Date) mode = CompareMode::Unknown;
  return Sql{ComparedOperand(*e.args[0], mode, true).text + (e.negated ? " NOT IN (" : " IN (") +
                 Statement(*e.subquery) + ")",
             kComparisonLevel};
}

Sql Generator::Plus(const Expr& e) const {
  StaticType a = TypeOf(*e.args[0]), b = TypeOf(*e.args[1]);
  if (a == StaticType::Text && b == StaticType::Text) {
    return Sql{Operand(*e.args[0], 7).text + " || " + Operand(*e.args[1], 7).text, 7};
  }
  if (a == StaticType::Number && b == StaticType::Number) {
    return Sql{Operand(*e.args[0], 5).text + " + " + Operand(*e.args[1], 6).text, 5};
  }
  // Only the values tell whether Jet adds or joins: a function decides row by row.
  return Call("jet_add", {e.args[0].get(), e.args[1].get()});
}

Sql Generator::Arith(const Expr& e) const {
  if (e.op == "-") {
    return Sql{Operand(*e.args[0], 5).text + " - " + Operand(*e.args[1], 6).text, 5};
  }
  if (e.op == "*") {
    return Sql{Operand(*e.args[0], 6).text + " * " + Operand(*e.args[1], 7).text, 6};
  }
  // Jet divides in floating point even between integers.
  return Sql{"CAST(" + Expression(*e.args[0]).text + " AS DOUBLE PRECISION) / " +
                 Operand(*e.args[1], 7).text,
             6};
}

// The value of a number literal, possibly negated or in parentheses.
std::optional<double> ConstantNumber(const Expr& e) {
  switch (e.kind) {
    case Expr::Kind::Number: return ParsePlainNumber(e.text);
    case Expr::Kind::Group: return ConstantNumber(*e.args[0]);
    case Expr::Kind::Negate: {
      auto inner = ConstantNumber(*e.args[0]);
      return inner ? std::optional<double>(-*inner) : std::nullopt;
    }
    default: return std::nullopt;
  }
}

// The value of a text written only with literals: 'a', chr(n) of a constant n, and joins of
// them with + or &, in parentheses or not; nullopt for anything else. A "|" in a quoted text
// reaches the engine as 'a' + chr(124) + 'b', so a text of many of them would otherwise nest
// as deep as it is long, past what an engine parses.
std::optional<std::string> ConstantText(const Expr& e) {
  switch (e.kind) {
    case Expr::Kind::String: return e.text;
    case Expr::Kind::Group: return ConstantText(*e.args[0]);
    case Expr::Kind::Chr: {
      auto constant = ConstantNumber(*e.args[0]);
      if (!constant) return std::nullopt;
      const double code = RoundHalfEven(*constant);
      auto text = ChrText(code >= -1e9 && code <= 1e9 ? static_cast<long>(code) : -1);
      // SQL text cannot hold a NUL: such a part stays a call of the engine's function.
      if (text && text->find('\0') != std::string::npos) return std::nullopt;
      return text;
    }
    case Expr::Kind::Plus:
    case Expr::Kind::Concat: {
      std::string text;
      for (const auto& arg : e.args) {
        auto part = ConstantText(*arg);
        if (!part) return std::nullopt;
        text += *part;
      }
      return text;
    }
    default: return std::nullopt;
  }
}

Sql Generator::Chr(const Expr& e) const {
  const Expr& arg = *e.args[0];
  if (auto constant = ConstantNumber(arg)) {
    double code = RoundHalfEven(*constant);
    auto text = ChrText(code >= -1e9 && code <= 1e9 ? static_cast<long>(code) : -1);
    if (!text) Raise(err::kInvalidProcedureCall, {}, kErrorSource);
    // SQL text cannot hold a NUL: chr(0) is left to the engine's function.
    if (text->find('\0') == std::string::npos) return Sql{StringLiteral(*text), kPrimary};
  }
  return Call("jet_chr", {&arg});
}

Sql Generator::Call(const std::string& function, const std::vector<const Expr*>& args) const {
  std::vector<std::string> texts;
  for (const Expr* arg : args) texts.push_back(Expression(*arg).text);
  return CallWith(function, texts);
}

Sql Generator::CallWith(const std::string& function, const std::vector<std::string>& texts) const {
  if (rules_.call) return Sql{rules_.call(function, texts), kPrimary};
  std::string text;
  for (const auto& t : texts) text += (text.empty() ? "" : ", ") + t;
  return Sql{function + "(" + text + ")", kPrimary};
}

Sql Generator::Expression(const Expr& e) const {
  switch (e.kind) {
    case Expr::Kind::Column:
      return Sql{e.qualifier.empty() ? Name(e.name) : Name(e.qualifier) + "." + Name(e.name),
                 kPrimary};
    case Expr::Kind::Number:
      return Sql{e.text, kPrimary};
    case Expr::Kind::String:
      return Sql{StringLiteral(e.text), kPrimary};
    case Expr::Kind::Date:
      return Sql{rules_.dateLiteral ? rules_.dateLiteral(e.text) : StringLiteral(e.text), kPrimary};
    case Expr::Kind::Boolean:
      // Jet's True is -1; comparisons with = and <> are handled by BooleanCompare.
      return e.text == "TRUE" ? Sql{"-1", 8} : Sql{"0", kPrimary};
    case Expr::Kind::Null:
      return Sql{"NULL", kPrimary};
    case Expr::Kind::Group:
      return Sql{"(" + Expression(*e.args[0]).text + ")", kPrimary};
    case Expr::Kind::Not:
      return Sql{"NOT " + Operand(*e.args[0], 2).text, 2};
    case Expr::Kind::Negate:
      return Sql{"-" + Operand(*e.args[0], kPrimary).text, 8};
    case Expr::Kind::Arith:
      return Arith(e);
    case Expr::Kind::Plus:
      if (auto text = ConstantText(e)) return Sql{StringLiteral(*text), kPrimary};
      return Plus(e);
    case Expr::Kind::Concat: {
      if (auto text = ConstantText(e)) return Sql{StringLiteral(*text), kPrimary};
      bool literals = true;
      for (const auto& arg : e.args) {
        literals = literals && (arg->kind == Expr::Kind::String ||
                                (arg->kind == Expr::Kind::Chr && ConstantNumber(*arg->args[0])));
      }
      std::string text;
      if (literals) {
        for (const auto& arg : e.args) text += (text.empty() ? "" : " || ") + Expression(*arg).text;
        return Sql{text, 7};
      }
      // Null counts as "" unless every part is Null: a function keeps Jet's rule.
      // SQLite takes at most 127 arguments in a call: a longer chain joins in groups, which
      // keeps the rule, since joining is associative under it.
      constexpr std::size_t kMaxArguments = 100;
      std::vector<std::string> parts;
      for (const auto& arg : e.args) parts.push_back(Expression(*arg).text);
      while (parts.size() > kMaxArguments) {
        std::vector<std::string> groups;
        for (std::size_t i = 0; i < parts.size(); i += kMaxArguments) {
          const auto end = parts.begin() + std::min(parts.size(), i + kMaxArguments);
          groups.push_back(CallWith("jet_concat", {parts.begin() + i, end}).text);
        }
        parts = std::move(groups);
      }
      return CallWith("jet_concat", parts);
    }
    case Expr::Kind::Compare:
      return Compare(e);
    case Expr::Kind::And:
      return Sql{Operand(*e.args[0], 1).text + " AND " + Operand(*e.args[1], 2).text, 1};
    case Expr::Kind::Or:
      return Sql{Operand(*e.args[0], 0).text + " OR " + Operand(*e.args[1], 1).text, 0};
    case Expr::Kind::Like: {
      std::string call = Call("jet_like", {e.args[1].get(), e.args[0].get()}).text;
      return e.negated ? Sql{"NOT " + call, 2} : Sql{call, kPrimary};
    }
    case Expr::Kind::Between:
      return Between(e);
    case Expr::Kind::InList:
      return InList(e);
    case Expr::Kind::InSelect:
      return InSelect(e);
    case Expr::Kind::IsNull: {
      std::string operand = Operand(*e.args[0], kComparisonLevel + 1).text;
      if (e.function) return Sql{"(" + operand + " IS NULL)", kPrimary};
      return Sql{operand + (e.negated ? " IS NOT NULL" : " IS NULL"), kComparisonLevel};
    }
    case Expr::Kind::Chr:
      return Chr(e);
  }
  return Sql{};
}

std::string Generator::Source(const TableRef& ref) const {
  std::string text;
  if (ref.kind == TableRef::Kind::Table) {
    text = Name(ref.name);
    if (!ref.alias.empty()) text += " AS " + Name(ref.alias);
  } else {
    const char* join = ref.joinType == TableRef::JoinType::Inner  ? " INNER JOIN "
                       : ref.joinType == TableRef::JoinType::Left ? " LEFT JOIN "
                                                                  : " RIGHT JOIN ";
    text = Source(*ref.left) + join + Source(*ref.right) + " ON " + Expression(*ref.on).text;
  }
  return ref.grouped ? "(" + text + ")" : text;
}

std::string Generator::Statement(const Select& select) const {
  std::vector<const TableRef*> tables;
  for (const auto& ref : select.from) CollectTables(*ref, tables);
  scopes_.push_back(std::move(tables));
  struct PopScope {
    std::vector<std::vector<const TableRef*>>& scopes;
    ~PopScope() { scopes.pop_back(); }
  } pop{scopes_};
  std::string text = select.distinct ? "SELECT DISTINCT " : "SELECT ";
  for (std::size_t i = 0; i < select.items.size(); ++i) {
    const SelectItem& item = select.items[i];
    if (i > 0) text += ", ";
    if (item.star) {
      if (select.distinct && rules_.distinctItem) RaiseUnsupported("DISTINCT *");
      text += item.qualifier.empty() ? "*" : Name(item.qualifier) + ".*";
      continue;
    }
    Sql expr = Expression(*item.expr);
    if (select.distinct && rules_.distinctItem) {
      std::string outputName = !item.alias.empty()                      ? item.alias
                               : item.expr->kind == Expr::Kind::Column ? item.expr->name
                                                                       : std::string();
      text += rules_.distinctItem(std::move(expr), TypeOf(*item.expr), outputName);
      continue;
    }
    text += expr.text;
    if (!item.alias.empty()) text += " AS " + Name(item.alias);
  }
  text += " FROM ";
  for (std::size_t i = 0; i < select.from.size(); ++i) {
    if (i > 0) text += ", ";
    text += Source(*select.from[i]);
  }
  if (select.where) text += " WHERE " + Expression(*select.where).text;
  for (std::size_t i = 0; i < select.orderBy.size(); ++i) {
    const OrderItem& item = select.orderBy[i];
    text += i == 0 ? " ORDER BY " : ", ";
    Sql expr = Expression(*item.expr);
    if (rules_.orderItem) {
      text += rules_.orderItem(std::move(expr), TypeOf(*item.expr), item.descending);
    } else {
      text += expr.text + (item.descending ? " DESC" : "");
    }
  }
  return text;
}

std::string Generator::Condition(const Expr& condition) const {
  return Expression(condition).text;
}

}  // namespace cp::jetsql
