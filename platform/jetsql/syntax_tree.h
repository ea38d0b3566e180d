#pragma once
// The syntax tree of the Jet SQL subset that the translator accepts. Nodes own their
// children; the parser builds them and the generators only read them.
#include <memory>
#include <string>
#include <vector>

namespace cp::jetsql {

struct Select;

struct Expr {
  enum class Kind {
    Column,   // qualifier (may be empty) and name
    Number,   // text: the literal as written
    String,   // text: the value, unescaped
    Date,     // text: the instant as ISO text ("yyyy-mm-dd[ hh:mm:ss]")
    Boolean,  // text: "TRUE" or "FALSE"
    Null,
    Group,     // ( args[0] ) as written by the author
    Not,       // NOT args[0]
    Negate,    // - args[0]
    Arith,     // args[0] op args[1], op one of - * /
    Plus,      // args[0] + args[1]: adds numbers, joins texts
    Concat,    // args[0] & args[1] & ...: flattened chain
    Compare,   // args[0] op args[1], op one of = <> < > <= >=
    And,       // args[0] AND args[1]
    Or,        // args[0] OR args[1]
    Like,      // args[0] [NOT] LIKE args[1]
    Between,   // args[0] [NOT] BETWEEN args[1] AND args[2]
    InList,    // args[0] [NOT] IN (args[1], ...)
    InSelect,  // args[0] [NOT] IN (subquery)
    IsNull,    // args[0] IS [NOT] NULL, and the function IsNull(args[0])
    Chr,       // chr(args[0])
  };
  Kind kind;
  std::string op;         // operator of Arith and Compare
  std::string text;       // literal value, see Kind
  std::string qualifier;  // Column: table name or alias, "" when not qualified
  std::string name;       // Column: field name
  bool negated = false;   // NOT LIKE, NOT BETWEEN, NOT IN, IS NOT NULL
  bool function = false;  // IsNull written as the function IsNull(x)
  std::vector<std::unique_ptr<Expr>> args;
  std::unique_ptr<Select> subquery;  // InSelect
};
using ExprPtr = std::unique_ptr<Expr>;

struct SelectItem {
  bool star = false;        // * or qualifier.*
  std::string qualifier;    // for qualifier.*
  ExprPtr expr;             // when not star
  std::string alias;        // AS alias, "" when none
};

struct TableRef {
  enum class Kind { Table, Join };
  enum class JoinType { Inner, Left, Right };
  Kind kind = Kind::Table;
  std::string name;   // Table
  std::string alias;  // Table: "" when none
  JoinType joinType = JoinType::Inner;
  std::unique_ptr<TableRef> left, right;  // Join
  ExprPtr on;                             // Join
  bool grouped = false;                   // written inside parentheses
};

struct OrderItem {
  ExprPtr expr;
  bool descending = false;
};

struct Select {
  bool distinct = false;
  std::vector<SelectItem> items;
  std::vector<std::unique_ptr<TableRef>> from;  // comma-separated sources
  ExprPtr where;                                // null when absent
  std::vector<OrderItem> orderBy;
};

}  // namespace cp::jetsql
