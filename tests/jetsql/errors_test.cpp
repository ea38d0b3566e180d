// What the translator refuses: syntax errors name the text at fault, valid Jet outside the
// translated subset names the construct, and nothing is ever translated into other SQL.
#include <gtest/gtest.h>

#include "platform/core/error.h"
#include "platform/jetsql/translator.h"
#include "tests/support/errors.h"

namespace cp::jetsql {
namespace {

using cp::testing::CaughtError;

using namespace std::string_view_literals;

struct Refusal {
  std::string_view jet;
  bool statement;
  long number;
  const char* named;  // must appear in the description
};

void ExpectRefused(const std::vector<Refusal>& cases,
                   const std::vector<Dialect>& dialects = {Dialect::Sqlite, Dialect::Postgres}) {
  for (const Refusal& r : cases) {
    for (Dialect dialect : dialects) {
      try {
        std::string out =
            r.statement ? TranslateStatement(r.jet, dialect) : TranslateCondition(r.jet, dialect);
        ADD_FAILURE() << "Jet: " << r.jet << " translated to: " << out;
      } catch (const Error& e) {
        EXPECT_EQ(e.number(), r.number) << "Jet: " << r.jet << " / " << e.description();
        EXPECT_NE(e.description().find(r.named), std::string::npos)
            << "Jet: " << r.jet << " / " << e.description();
        EXPECT_EQ(e.source(), "DAO.Database");
      }
    }
  }
}

TEST(TranslateErrors, SyntaxErrorsNameTheClauseAtFault) {
  ExpectRefused({
      {"T.x = = 5", false, 3075, "Error de sintaxis en la expresión de consulta 'T.x = = 5'."},
      {"T.x = 'abc", false, 3075, "'T.x = 'abc'"}, {"T.x = [abc", false, 3075, "'T.x = [abc'"},
      {"T.x = #13/45/05#", false, 3075, "'T.x = #13/45/05#'"},
      {"T.x = #1/2/2005 25:00#", false, 3075, "#1/2/2005 25:00#"},
      {"T.x = #1/2/2005", false, 3075, "'T.x = #1/2/2005'"},
      {"SELECT a FROM T WHERE b = 'x ORDER BY a", true, 3075, "'b = 'x ORDER BY a'"},
      {"T.x BETWEEN 1", false, 3075, "'T.x BETWEEN 1'"}, {"T.x IN ()", false, 3075, "T.x IN ()"},
      {"T.x IS 5", false, 3075, "T.x IS 5"}, {"(T.x = 1", false, 3075, "(T.x = 1"},
      {"T.x = 1)", false, 3075, "T.x = 1)"},
      {"", false, 3075, "''"}, {"T.x = 5a", false, 3075, "'T.x = 5a'"},
      {"T.x = 1 @ 2", false, 3075, "'T.x = 1 @ 2'"}, {"IsNull(a, b)", false, 3075, "IsNull(a, b)"},
      {"T.* = 1", false, 3075, "T.* = 1"}, {"SELECT FROM T", true, 3075, "'FROM T'"},
      {"SELECT a FROM T WHERE a = ", true, 3075, "'a ='"},
      {"SELECT a b FROM T", true, 3075, "'a b'"},
      {"SELECT a FROM T JOIN U ON T.x = U.x", true, 3075, "JOIN U"},
      // Jet needs parentheses around all but the last of several joins.
      {"SELECT * FROM A INNER JOIN B ON A.x = B.x INNER JOIN C ON C.y = B.y", true, 3075,
       "'FROM A INNER JOIN B ON A.x = B.x INNER JOIN C ON C.y = B.y'"},
      {"SELECT * FROM (A INNER JOIN B ON A.x = B.x", true, 3075, "(A INNER JOIN"},
      {"T.x = 1", true, 3075, "T.x = 1"},
      // No engine takes a NUL inside SQL text: a literal holding one is never closed.
      {"T.x = 'a\0b'"sv, false, 3075, "T.x = 'a"}, {"T.x = [a\0b]"sv, false, 3075, "T.x = [a"},
  });
}

TEST(TranslateErrors, UntranslatableConstructsAreNamed) {
  ExpectRefused({
      {"SELECT a FROM T GROUP BY a", true, 3296, "'GROUP BY'"},
      {"SELECT a FROM T UNION SELECT a FROM U", true, 3296, "'UNION'"},
      {"SELECT TOP 5 a FROM T", true, 3296, "'TOP'"},
      {"SELECT DISTINCTROW a FROM T", true, 3296, "'DISTINCTROW'"},
      {"SELECT a INTO U FROM T", true, 3296, "'SELECT INTO'"},
      {"UPDATE T SET a = 1", true, 3296, "'UPDATE'"},
      {"PARAMETERS p Long; SELECT a FROM T", true, 3296, "'PARAMETERS'"},
      {"SELECT a FROM (SELECT a FROM T) AS s", true, 3296, "subconsulta en FROM"},
      {"SELECT a FROM T FULL JOIN U ON T.a = U.a", true, 3296, "'FULL JOIN'"},
      {"SELECT a FROM T ORDER BY 1", true, 3296, "ORDER BY con un número"},
      {"T.x = (SELECT MAX(a) FROM U)", false, 3296, "subconsulta como valor"},
      {"EXISTS (SELECT a FROM U)", false, 3296, "'EXISTS'"},
      {"T.x IN (SELECT a, b FROM U)", false, 3306, "más de un campo"},
      {"T.x IN (SELECT * FROM U)", false, 3306, "más de un campo"}, {"T.x = ?", false, 3296, "parámetros"},
      {"T.x = 7 \\ 2", false, 3296, "división entera"}, {"T.x = 7 Mod 2", false, 3296, "'MOD'"},
      {"T.x = 2 ^ 3", false, 3296, "potencia"}, {"a = 1 XOR b = 2", false, 3296, "'XOR'"},
      {"Forms!F!x = 1", false, 3296, "separador de objetos"},
      {"Left(T.x, 3) = 'a'", false, 3085, "Función 'Left' no definida"},
      // Each + nests a call in SQLite's text, whose parser refuses deep nesting.
      {"T.x = a+a+a+a+a+a+a+a+a+a+a+a+a+a+a+a+a", false, 3296, "16 niveles de anidamiento"},
      {"NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT NOT a", false, 3296,
       "16 niveles de anidamiento"},
  });
}

// SQLite folds DISTINCT values through the collation, which cannot be put on "*";
// PostgreSQL leaves DISTINCT to the columns' own collations.
TEST(TranslateErrors, SqliteRefusesDistinctStarButPostgresWritesIt) {
  ExpectRefused({{"SELECT DISTINCT * FROM T", true, 3296, "'DISTINCT *'"}}, {Dialect::Sqlite});
  EXPECT_EQ(TranslateStatement("SELECT DISTINCT * FROM T", Dialect::Postgres),
            "SELECT DISTINCT * FROM T");
}

TEST(TranslateErrors, ChrOutsideTheCodePageIsAnInvalidCall) {
  for (const char* jet : {"T.x = chr(256)", "T.x = chr(-1)"}) {
    EXPECT_EQ(CaughtError([&] { TranslateCondition(jet, Dialect::Sqlite); }).number(), 5) << jet;
  }
}

}  // namespace
}  // namespace cp::jetsql
