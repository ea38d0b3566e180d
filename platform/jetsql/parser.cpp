#include "platform/jetsql/parser.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

#include "platform/jetsql/errors.h"
#include "platform/jetsql/generator.h"
#include "platform/jetsql/lexer.h"
#include "platform/jetsql/literals.h"

namespace cp::jetsql {
namespace {

std::string Upper(std::string_view s) {
  std::string out(s);
  for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return out;
}

// Words that cannot name a table or a column unless bracketed.
constexpr std::array kReserved = {
    "ALL",    "ALTER",   "AND",    "ANY",    "AS",      "ASC",      "BETWEEN", "BY",
    "CREATE", "DELETE",  "DESC",   "DISTINCT", "DISTINCTROW", "DROP", "EQV",   "EXISTS",
    "FALSE",  "FROM",    "FULL",   "GROUP",  "HAVING",  "IMP",      "IN",      "INNER",
    "INSERT", "INTO",    "IS",     "JOIN",   "LEFT",    "LIKE",     "MOD",     "NOT",
    "NULL",   "ON",      "OR",     "ORDER",  "OUTER",   "PARAMETERS", "PIVOT", "RIGHT",
    "SELECT", "SET",     "SOME",   "TOP",    "TRANSFORM", "TRUE",   "UNION",   "UPDATE",
    "VALUES", "WHERE",   "WITH",   "XOR"};

// Words that end a clause: the text at fault in a syntax error runs up to the next one.
constexpr std::array kClauseWords = {"FROM", "WHERE", "ORDER", "GROUP", "HAVING", "UNION"};

bool IsReserved(const std::string& upper) {
  return std::find(kReserved.begin(), kReserved.end(), upper) != kReserved.end();
}

// How deep parentheses, NOT, signs, function arguments and subqueries may nest. The
// translation nests at least as deep, and SQLite's parser refuses text nested not much
// deeper (its stack holds 100 entries); the parser's own recursion stays bounded as well.
constexpr int kMaxNesting = 16;
// What a subquery's SELECT ... FROM ... WHERE costs SQLite's parser, in levels.
constexpr int kSubqueryLevels = 2;

class Parser {
 public:
  explicit Parser(std::string_view source) : src_(source), tokens_(Tokenize(source)) {}

  std::unique_ptr<Select> Statement() {
    const Token& first = Peek();
    if (!IsWord("SELECT")) {
      std::string word = Upper(first.text);
      if (first.kind == Token::Kind::Word &&
          (word == "UPDATE" || word == "DELETE" || word == "INSERT" || word == "TRANSFORM" ||
           word == "PARAMETERS" || word == "CREATE" || word == "DROP" || word == "ALTER")) {
        RaiseUnsupported(word);
      }
      Fail();
    }
    auto select = SelectBody();
    if (IsSymbol(";")) Advance();
    if (Peek().kind != Token::Kind::End) TrailingText();
    return select;
  }

  ExprPtr Condition() {
    clauseStart_ = 0;
    ExprPtr e = Expression();
    if (Peek().kind != Token::Kind::End) TrailingText();
    return e;
  }

 private:
  // ---- token helpers
  const Token& Peek(std::size_t ahead = 0) const {
    return tokens_[std::min(pos_ + ahead, tokens_.size() - 1)];
  }
  const Token& Advance() { return tokens_[pos_ < tokens_.size() - 1 ? pos_++ : pos_]; }
  bool IsWord(const char* upper, std::size_t ahead = 0) const {
    const Token& t = Peek(ahead);
    return t.kind == Token::Kind::Word && Upper(t.text) == upper;
  }
  bool IsSymbol(const char* s, std::size_t ahead = 0) const {
    const Token& t = Peek(ahead);
    return t.kind == Token::Kind::Symbol && t.text == s;
  }
  bool AcceptWord(const char* upper) {
    if (!IsWord(upper)) return false;
    Advance();
    return true;
  }
  void ExpectWord(const char* upper) {
    if (!AcceptWord(upper)) Fail();
  }
  void ExpectSymbol(const char* s) {
    if (!IsSymbol(s)) Fail();
    Advance();
  }

  // Marks where the clause being parsed begins, for the text of a syntax error.
  void BeginClause() { clauseStart_ = pos_; }

  // Raises the syntax error naming the current clause: from its first token up to the next
  // clause keyword at the same depth of parentheses, or the end of the text.
  [[noreturn]] void Fail() const {
    std::size_t begin = std::min(clauseStart_, tokens_.size() - 1);
    std::size_t end = src_.size();
    int depth = 0;
    for (std::size_t i = begin + 1; i < tokens_.size(); ++i) {
      const Token& t = tokens_[i];
      if (t.kind == Token::Kind::Symbol && t.text == "(") ++depth;
      if (t.kind == Token::Kind::Symbol && t.text == ")") --depth;
      bool clauseWord = t.kind == Token::Kind::Word &&
                        std::find(kClauseWords.begin(), kClauseWords.end(), Upper(t.text)) !=
                            kClauseWords.end();
      if (i > pos_ && depth <= 0 && clauseWord) {
        end = t.offset;
        break;
      }
      if (depth < 0 && i > pos_) {
        end = t.offset;
        break;
      }
    }
    std::size_t from = tokens_[begin].offset;
    std::string_view text = src_.substr(from, end > from ? end - from : 0);
    while (!text.empty() && std::isspace(static_cast<unsigned char>(text.back())))
      text.remove_suffix(1);
    RaiseSyntaxError(text);
  }

  // Text left over after a complete statement or condition: a known clause that the
  // translation does not support is named, anything else is a syntax error.
  [[noreturn]] void TrailingText() {
    if (IsWord("GROUP")) RaiseUnsupported("GROUP BY");
    if (IsWord("HAVING")) RaiseUnsupported("HAVING");
    if (IsWord("UNION")) RaiseUnsupported("UNION");
    if (IsWord("WITH")) RaiseUnsupported("WITH OWNERACCESS OPTION");
    Fail();
  }

  // Checks a token for the unsupported operators and parameter markers of Jet.
  void RejectUnsupportedSymbol() const {
    const Token& t = Peek();
    if (t.kind == Token::Kind::Symbol) {
      if (t.text == "\\") RaiseUnsupported("\\ (división entera)");
      if (t.text == "^") RaiseUnsupported("^ (potencia)");
      if (t.text == "?" || t.text == ":") RaiseUnsupported("parámetros");
      if (t.text == "!") RaiseUnsupported("! (separador de objetos)");
    }
    if (t.kind == Token::Kind::Word) {
      std::string w = Upper(t.text);
      if (w == "MOD" || w == "XOR" || w == "EQV" || w == "IMP") RaiseUnsupported(w);
    }
  }

  // A name: a bracketed name or a word that is not reserved.
  bool AtName(std::size_t ahead = 0) const {
    const Token& t = Peek(ahead);
    return t.kind == Token::Kind::Bracketed ||
           (t.kind == Token::Kind::Word && !IsReserved(Upper(t.text)));
  }
  std::string Name() {
    if (!AtName()) Fail();
    return Advance().text;
  }

  // ---- statements
  std::unique_ptr<Select> SelectBody() {
    auto select = std::make_unique<Select>();
    ExpectWord("SELECT");
    BeginClause();
    if (IsWord("DISTINCTROW")) RaiseUnsupported("DISTINCTROW");
    if (IsWord("TOP")) RaiseUnsupported("TOP");
    if (IsWord("ALL")) Advance();
    else if (AcceptWord("DISTINCT")) select->distinct = true;
    do {
      select->items.push_back(Item());
    } while (IsSymbol(",") && (Advance(), true));
    if (IsWord("INTO")) RaiseUnsupported("SELECT INTO");
    if (!IsWord("FROM")) Fail();
    BeginClause();
    Advance();
    do {
      select->from.push_back(Source());
    } while (IsSymbol(",") && (Advance(), true));
    if (IsWord("WHERE")) {
      Advance();
      BeginClause();
      select->where = Expression();
    }
    if (IsWord("GROUP")) RaiseUnsupported("GROUP BY");
    if (IsWord("HAVING")) RaiseUnsupported("HAVING");
    if (IsWord("ORDER")) {
      BeginClause();
      Advance();
      ExpectWord("BY");
      do {
        OrderItem item;
        item.expr = Expression();
        // SQLite would read a number as a column position, Jet as a constant.
        if (item.expr->kind == Expr::Kind::Number) RaiseUnsupported("ORDER BY con un número");
        if (AcceptWord("DESC")) item.descending = true;
        else AcceptWord("ASC");
        select->orderBy.push_back(std::move(item));
      } while (IsSymbol(",") && (Advance(), true));
    }
    if (IsWord("UNION")) RaiseUnsupported("UNION");
    return select;
  }

  SelectItem Item() {
    SelectItem item;
    if (IsSymbol("*")) {
      Advance();
      item.star = true;
      return item;
    }
    if (AtName() && IsSymbol(".", 1) && IsSymbol("*", 2)) {
      item.qualifier = Advance().text;
      Advance();
      Advance();
      item.star = true;
      return item;
    }
    item.expr = Expression();
    if (AcceptWord("AS")) item.alias = Name();
    return item;
  }

  std::unique_ptr<TableRef> Source() {
    auto left = SourcePrimary();
    int joins = 0;
    for (;;) {
      TableRef::JoinType type;
      if (IsWord("INNER") && IsWord("JOIN", 1)) {
        type = TableRef::JoinType::Inner;
        Advance();
      } else if (IsWord("LEFT") || IsWord("RIGHT")) {
        type = IsWord("LEFT") ? TableRef::JoinType::Left : TableRef::JoinType::Right;
        Advance();
        AcceptWord("OUTER");
      } else if (IsWord("FULL")) {
        RaiseUnsupported("FULL JOIN");
      } else if (IsWord("JOIN")) {
        // Jet has no bare JOIN: the kind of join must be named.
        Fail();
      } else {
        break;
      }
      ExpectWord("JOIN");
      // Jet needs parentheses around each join but the last: A JOIN B ON .. JOIN C is an error.
      if (joins > 0) Fail();
      ++joins;
      auto join = std::make_unique<TableRef>();
      join->kind = TableRef::Kind::Join;
      join->joinType = type;
      join->left = std::move(left);
      join->right = SourcePrimary();
      ExpectWord("ON");
      join->on = Expression();
      left = std::move(join);
    }
    return left;
  }

  std::unique_ptr<TableRef> SourcePrimary() {
    if (IsSymbol("(")) {
      if (IsWord("SELECT", 1)) RaiseUnsupported("subconsulta en FROM");
      Advance();
      Nested nested(*this);
      auto inner = Source();
      ExpectSymbol(")");
      inner->grouped = true;
      return inner;
    }
    auto table = std::make_unique<TableRef>();
    table->name = Name();
    if (IsSymbol(".")) RaiseUnsupported("tabla de otra base de datos");
    if (IsWord("IN")) RaiseUnsupported("IN (base de datos externa)");
    if (AcceptWord("AS")) table->alias = Name();
    else if (AtName()) table->alias = Name();
    return table;
  }

  // ---- expressions, from the loosest operator to the tightest
  // One more level of nesting for its scope; beyond kMaxNesting raises 3296.
  class Nested {
   public:
    explicit Nested(Parser& parser) : parser_(parser) {
      if (++parser_.nesting_ > kMaxNesting)
        RaiseUnsupported("más de " + std::to_string(kMaxNesting) + " niveles de anidamiento");
    }
    ~Nested() { --parser_.nesting_; }
    Nested(const Nested&) = delete;
    Nested& operator=(const Nested&) = delete;

   private:
    Parser& parser_;
  };

  ExprPtr Expression() {
    Nested nested(*this);
    ExprPtr e = OrExpr();
    if (Height(*e) > kMaxNesting)
      RaiseUnsupported("más de " + std::to_string(kMaxNesting) + " niveles de anidamiento");
    return e;
  }

  // The levels of the tree under e, as the translation nests them: chains of AND, of OR and
  // of + between numbers or between texts are written flat, so a link of such a chain adds
  // no level; other chains (+ of values of unknown type: nested calls) nest, and a
  // subquery's condition sits kSubqueryLevels below its IN.
  static bool FlatPlus(const Expr& e) {
    if (e.kind != Expr::Kind::Plus) return false;
    const StaticType type = Generator::TypeOf(e);
    return type == StaticType::Number || type == StaticType::Text;
  }

  static int Height(const Expr& e) {
    int below = 0;
    if (e.subquery && e.subquery->where) below = kSubqueryLevels + Height(*e.subquery->where);
    for (const ExprPtr& arg : e.args) {
      const bool link = arg->kind == e.kind && (e.kind == Expr::Kind::And ||
                                                e.kind == Expr::Kind::Or || FlatPlus(e));
      below = std::max(below, Height(*arg) - (link ? 1 : 0));
    }
    return below + 1;
  }

  static ExprPtr Node(Expr::Kind kind) {
    auto e = std::make_unique<Expr>();
    e->kind = kind;
    return e;
  }
  static ExprPtr Binary(Expr::Kind kind, ExprPtr a, ExprPtr b, std::string op = {}) {
    auto e = Node(kind);
    e->op = std::move(op);
    e->args.push_back(std::move(a));
    e->args.push_back(std::move(b));
    return e;
  }

  ExprPtr OrExpr() {
    ExprPtr left = AndExpr();
    while (AcceptWord("OR")) left = Binary(Expr::Kind::Or, std::move(left), AndExpr());
    RejectUnsupportedSymbol();
    return left;
  }

  ExprPtr AndExpr() {
    ExprPtr left = NotExpr();
    while (AcceptWord("AND")) left = Binary(Expr::Kind::And, std::move(left), NotExpr());
    return left;
  }

  ExprPtr NotExpr() {
    if (AcceptWord("NOT")) {
      Nested nested(*this);
      auto e = Node(Expr::Kind::Not);
      e->args.push_back(NotExpr());
      return e;
    }
    return Comparison();
  }

  ExprPtr Comparison() {
    ExprPtr left = ConcatExpr();
    for (;;) {
      const Token& t = Peek();
      if (t.kind == Token::Kind::Symbol &&
          (t.text == "=" || t.text == "<>" || t.text == "<" || t.text == ">" || t.text == "<=" ||
           t.text == ">=")) {
        std::string op = Advance().text;
        left = Binary(Expr::Kind::Compare, std::move(left), ConcatExpr(), op);
        continue;
      }
      bool negated = false;
      if (IsWord("NOT") && (IsWord("LIKE", 1) || IsWord("BETWEEN", 1) || IsWord("IN", 1))) {
        Advance();
        negated = true;
      }
      if (AcceptWord("LIKE")) {
        left = Binary(Expr::Kind::Like, std::move(left), ConcatExpr());
      } else if (AcceptWord("BETWEEN")) {
        auto e = Node(Expr::Kind::Between);
        e->args.push_back(std::move(left));
        e->args.push_back(ConcatExpr());
        ExpectWord("AND");
        e->args.push_back(ConcatExpr());
        left = std::move(e);
      } else if (AcceptWord("IN")) {
        left = InTail(std::move(left));
      } else if (!negated && AcceptWord("IS")) {
        auto e = Node(Expr::Kind::IsNull);
        e->negated = AcceptWord("NOT");
        ExpectWord("NULL");
        e->args.push_back(std::move(left));
        left = std::move(e);
        continue;
      } else {
        break;
      }
      left->negated = negated;
    }
    return left;
  }

  ExprPtr InTail(ExprPtr left) {
    ExpectSymbol("(");
    if (IsWord("SELECT")) {
      auto e = Node(Expr::Kind::InSelect);
      e->args.push_back(std::move(left));
      std::size_t outerClause = clauseStart_;
      e->subquery = SelectBody();
      // Jet takes "*" only from a table of one field, which the translation cannot see;
      // the engines would refuse the statement later, without Jet's number.
      const auto& items = e->subquery->items;
      if (items.size() != 1 || items.front().star) RaiseSubqueryFields();
      clauseStart_ = outerClause;
      ExpectSymbol(")");
      return e;
    }
    auto e = Node(Expr::Kind::InList);
    e->args.push_back(std::move(left));
    do {
      e->args.push_back(ConcatExpr());
    } while (IsSymbol(",") && (Advance(), true));
    ExpectSymbol(")");
    return e;
  }

  ExprPtr ConcatExpr() {
    ExprPtr left = Additive();
    if (!IsSymbol("&")) return left;
    auto e = Node(Expr::Kind::Concat);
    e->args.push_back(std::move(left));
    while (IsSymbol("&")) {
      Advance();
      e->args.push_back(Additive());
    }
    return e;
  }

  ExprPtr Additive() {
    ExprPtr left = Multiplicative();
    for (;;) {
      if (IsSymbol("+")) {
        Advance();
        left = Binary(Expr::Kind::Plus, std::move(left), Multiplicative(), "+");
      } else if (IsSymbol("-")) {
        Advance();
        left = Binary(Expr::Kind::Arith, std::move(left), Multiplicative(), "-");
      } else {
        return left;
      }
    }
  }

  ExprPtr Multiplicative() {
    ExprPtr left = Unary();
    for (;;) {
      RejectUnsupportedSymbol();
      if (IsSymbol("*") || IsSymbol("/")) {
        std::string op = Advance().text;
        left = Binary(Expr::Kind::Arith, std::move(left), Unary(), op);
      } else {
        return left;
      }
    }
  }

  ExprPtr Unary() {
    RejectUnsupportedSymbol();
    if (IsSymbol("-") || IsSymbol("+")) {
      Nested nested(*this);
      if (Advance().text == "+") return Unary();
      auto e = Node(Expr::Kind::Negate);
      e->args.push_back(Unary());
      return e;
    }
    ExprPtr e = Primary();
    RejectUnsupportedSymbol();
    return e;
  }

  ExprPtr Primary() {
    const Token& t = Peek();
    switch (t.kind) {
      case Token::Kind::Number: {
        auto e = Node(Expr::Kind::Number);
        e->text = Advance().text;
        return e;
      }
      case Token::Kind::String: {
        auto e = Node(Expr::Kind::String);
        e->text = Advance().text;
        return e;
      }
      case Token::Kind::Date: {
        auto iso = DateLiteralToIso(t.text);
        if (!iso) Fail();
        Advance();
        auto e = Node(Expr::Kind::Date);
        e->text = *iso;
        return e;
      }
      case Token::Kind::Symbol:
        if (t.text == "(") {
          if (IsWord("SELECT", 1)) RaiseUnsupported("subconsulta como valor");
          Advance();
          auto e = Node(Expr::Kind::Group);
          e->args.push_back(Expression());
          ExpectSymbol(")");
          return e;
        }
        Fail();
      case Token::Kind::Word: {
        std::string word = Upper(t.text);
        if (word == "TRUE" || word == "FALSE") {
          Advance();
          auto e = Node(Expr::Kind::Boolean);
          e->text = word;
          return e;
        }
        if (word == "NULL") {
          Advance();
          return Node(Expr::Kind::Null);
        }
        if (word == "EXISTS") RaiseUnsupported("EXISTS");
        if (word == "ALL" || word == "ANY" || word == "SOME") RaiseUnsupported(word);
        // Left( and Right( are the string functions, not joins.
        if (IsSymbol("(", 1) && (!IsReserved(word) || word == "LEFT" || word == "RIGHT")) {
          return Function();
        }
        return ColumnRef();
      }
      case Token::Kind::Bracketed:
        return ColumnRef();
      case Token::Kind::Invalid:
      case Token::Kind::End:
        Fail();
    }
    Fail();
  }

  ExprPtr Function() {
    std::string name = Advance().text;
    std::string upper = Upper(name);
    Advance();  // (
    std::vector<ExprPtr> args;
    if (!IsSymbol(")")) {
      do {
        args.push_back(Expression());
      } while (IsSymbol(",") && (Advance(), true));
    }
    ExpectSymbol(")");
    Expr::Kind kind;
    if (upper == "ISNULL") {
      kind = Expr::Kind::IsNull;
    } else if (upper == "CHR" || upper == "CHR$") {
      kind = Expr::Kind::Chr;
    } else {
      RaiseUndefinedFunction(name);
    }
    if (args.size() != 1) Fail();
    auto e = Node(kind);
    e->function = true;
    e->args = std::move(args);
    return e;
  }

  ExprPtr ColumnRef() {
    auto e = Node(Expr::Kind::Column);
    e->name = Name();
    if (IsSymbol(".")) {
      Advance();
      if (IsSymbol("*")) Fail();
      e->qualifier = std::move(e->name);
      e->name = Name();
      if (IsSymbol(".")) Fail();
    }
    return e;
  }

  std::string_view src_;
  std::vector<Token> tokens_;
  std::size_t pos_ = 0;
  std::size_t clauseStart_ = 0;
  int nesting_ = 0;
};

}  // namespace

std::unique_ptr<Select> ParseStatement(std::string_view source) {
  return Parser(source).Statement();
}

ExprPtr ParseCondition(std::string_view source) { return Parser(source).Condition(); }

}  // namespace cp::jetsql
