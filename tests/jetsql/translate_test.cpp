// Jet text in, SQLite or PostgreSQL text out, grouped by construct. What the SQL means is
// checked by running it in sqlite_semantics_test.cpp; these tables pin the shape:
// index-friendly id comparisons, where the collation and the functions go, Jet's precedence.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cctype>
#include <string_view>

#include "platform/jetsql/literals.h"
#include "platform/jetsql/translator.h"
#include "tests/support/pg_server.h"

namespace cp::jetsql {
namespace {

struct Case {
  const char* jet;
  const char* sqlite;  // or PostgreSQL, in its tests
};

void ExpectConditions(const std::vector<Case>& cases, Dialect dialect = Dialect::Sqlite) {
  for (const Case& c : cases)
    EXPECT_EQ(TranslateCondition(c.jet, dialect), c.sqlite) << "Jet: " << c.jet;
}

void ExpectStatements(const std::vector<Case>& cases, Dialect dialect = Dialect::Sqlite,
                      const TranslateOptions& options = {}) {
  for (const Case& c : cases)
    EXPECT_EQ(TranslateStatement(c.jet, dialect, options), c.sqlite) << "Jet: " << c.jet;
}

TEST(TranslateSqlite, ConditionsByConstruct) {
  ExpectConditions({
      // Number comparisons leave the column bare for its index.
      {"T.IdX = 5", "T.IdX = 5"}, {"5 = T.IdX", "5 = T.IdX"},
      {"T.IdX not in (1, 2)", "T.IdX NOT IN (1, 2)"}, {"T.Id<>-1", "T.Id <> -1"},
      {"150000 BETWEEN T.Min AND T.Max", "150000 BETWEEN T.Min AND T.Max"},
      {"T.Precio NOT BETWEEN 1.5 AND 2E3", "T.Precio NOT BETWEEN 1.5 AND 2E3"},
      // Text comparisons use the Jet collation.
      {"T.Nombre = 'Ávila'", "T.Nombre COLLATE JET_NOCASE = 'Ávila'"},
      {"T.Nombre = \"dice \"\"hola\"\"\"", "T.Nombre COLLATE JET_NOCASE = 'dice \"hola\"'"},
      // Nothing is known of two columns: the collation acts only if both hold text.
      {"A.x = B.y", "A.x COLLATE JET_NOCASE = B.y"},
      {"(T.a + T.b) = 'x'", "(jet_add(T.a, T.b)) COLLATE JET_NOCASE = 'x'"},
      {"Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*garcia*')",
       "Cliente.IdCliente COLLATE JET_NOCASE IN (SELECT IdCliente FROM TfnoCli WHERE "
       "jet_like('*garcia*', Numero))"},
      // LIKE goes through the Jet pattern function.
      {"Cliente.Apellidos LIKE 'garcia*'", "jet_like('garcia*', Cliente.Apellidos)"},
      {"T.x NOT LIKE '*a?b#[!c-d]'", "NOT jet_like('*a?b#[!c-d]', T.x)"},
      {"T.x LIKE '*' & T.y & '*'", "jet_like(jet_concat('*', T.y, '*'), T.x)"},
      {"NOT T.x LIKE 'a*' AND T.y = 1", "NOT jet_like('a*', T.x) AND T.y = 1"},
      // Date literals are ISO text against normalised dates.
      {"T.Fecha >= #03/07/05# ", "jet_date(T.Fecha) >= '2005-03-07'"},
      {"T.Fecha IN (#1/1/05#, T.Otra)", "jet_date(T.Fecha) IN ('2005-01-01', jet_date(T.Otra))"},
      {"#1/1/05# < T.Fecha", "'2005-01-01' < jet_date(T.Fecha)"},
      {"T.Fecha = Null", "T.Fecha = NULL"},
      // True matches 1 and -1.
      {"TRUE = T.Activo", "T.Activo IN (1, -1)"}, {"T.Activo <> TRUE", "T.Activo NOT IN (1, -1)"},
      {"T.Activo <> FALSE", "T.Activo <> 0"}, {"T.Nivel > TRUE", "T.Nivel > -1"},
      // Null tests in both forms.
      {"NOT ISNULL(T.Min)", "NOT (T.Min IS NULL)"}, {"(T.a = 1) IS NULL", "(T.a = 1) IS NULL"},
      {"T.IdZona IS NOT NULL", "T.IdZona IS NOT NULL"},
      // Concatenation: a text written only with literals becomes one literal (a typed "|" comes
      // as chr(124), and hundreds of them must not nest hundreds deep); chr of a constant is its
      // character; other texts known on both sides join with ||.
      {"T.x = 'O''Brien' + chr(124) + '2'", "T.x COLLATE JET_NOCASE = 'O''Brien|2'"},
      {"T.x = ('a' + chr(124)) & chr(39)", "T.x COLLATE JET_NOCASE = 'a|'''"},
      {"T.x = Chr$(128)", "T.x COLLATE JET_NOCASE = '€'"},
      {"T.x = chr(T.n)", "T.x COLLATE JET_NOCASE = jet_chr(T.n)"},
      {"T.x = chr(0.2)", "T.x COLLATE JET_NOCASE = jet_chr(0.2)"},  // no NUL in SQL text
      {"T.x = 'a' & chr$(.2)", "T.x COLLATE JET_NOCASE = 'a' || jet_chr(.2)"},
      {"T.x = 'a' & 'b'", "T.x COLLATE JET_NOCASE = 'ab'"},
      {"T.x = 'a' + (T.y & 'b')", "T.x COLLATE JET_NOCASE = 'a' || (jet_concat(T.y, 'b'))"},
      {"T.x = 'a' & T.y", "T.x COLLATE JET_NOCASE = jet_concat('a', T.y)"},
      // Only the values say whether + adds or joins.
      {"T.x = T.y + 'a'", "T.x COLLATE JET_NOCASE = jet_add(T.y, 'a')"},
      {"T.n = 1 + 2 * 3", "T.n = 1 + 2 * 3"}, {"T.n = 1 - (2 - 3)", "T.n = 1 - (2 - 3)"},
      {"T.n = 7 / 2", "T.n = CAST(7 AS DOUBLE PRECISION) / 2"}, {"T.n = - -T.m", "T.n = -(-T.m)"},
      // & binds looser than +, as in Jet: 'a' & 1 + 2 is 'a3'.
      {"T.x = 'a' & 1 + 2", "T.x COLLATE JET_NOCASE = jet_concat('a', 1 + 2)"},
      // Logic keeps Jet precedence.
      {"a = 1 OR b = 2 AND c = 3", "a = 1 OR b = 2 AND c = 3"},
      {"(a = 1 OR b = 2) AND c = 3", "(a = 1 OR b = 2) AND c = 3"}, {"NOT a = 1", "NOT a = 1"},
      {"T.x BETWEEN 1 AND 2 AND T.y = 3", "T.x BETWEEN 1 AND 2 AND T.y = 3"},
      {"  a=1   and   b=2 ", "a = 1 AND b = 2"},
  });
}

TEST(TranslateSqlite, StatementsTheComponentRuns) {
  ExpectStatements({
      {"SELECT Alias FROM Agencia WHERE IdAgencia<1000000 ORDER BY Alias ASC",
       "SELECT Alias FROM Agencia WHERE IdAgencia < 1000000 ORDER BY Alias COLLATE JET_NOCASE"},
      {"SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona  "
       "WHERE IdPais = 1",
       "SELECT DISTINCT Zona.Nombre COLLATE JET_NOCASE AS Nombre FROM Zona INNER JOIN BZona ON "
       "BZona.IdZona COLLATE JET_NOCASE = Zona.IdZona WHERE IdPais = 1"},
      {"SELECT Cliente.* FROM Cliente WHERE Cliente.IdCliente = 1;",
       "SELECT Cliente.* FROM Cliente WHERE Cliente.IdCliente = 1"},
      {"SELECT Demanda.*, Operacion.Operacion FROM (( Demanda LEFT JOIN AliasInmueble On "
       "AliasInmueble.IdAliasInmueble = Demanda.IdAliasInmueble) LEFT OUTER JOIN Operacion On "
       "Operacion.IdOperacion = Demanda.IdOperacion) WHERE Demanda.IdDemanda = 7",
       "SELECT Demanda.*, Operacion.Operacion FROM ((Demanda LEFT JOIN AliasInmueble ON "
       "AliasInmueble.IdAliasInmueble COLLATE JET_NOCASE = Demanda.IdAliasInmueble) LEFT JOIN "
       "Operacion ON Operacion.IdOperacion COLLATE JET_NOCASE = Demanda.IdOperacion) WHERE "
       "Demanda.IdDemanda = 7"},
      {"select a from T t right join U on t.x = 2 order by a desc, T.b + 1",
       "SELECT a FROM T AS t RIGHT JOIN U ON t.x = 2 ORDER BY a COLLATE JET_NOCASE DESC, "
       "jet_add(T.b, 1) COLLATE JET_NOCASE"},
      {"SELECT DISTINCT T.Id, T.Nombre & 'x' FROM T",
       "SELECT DISTINCT T.Id COLLATE JET_NOCASE AS Id, jet_concat(T.Nombre, 'x') COLLATE "
       "JET_NOCASE FROM T"},
  });
}

TEST(TranslateSqlite, NamesAreQuotedOnlyWhenSqliteWouldMisreadThem) {
  ExpectStatements({
      {"SELECT [Mi Tabla].[Un Campo] AS [Otro Nombre] FROM [Mi Tabla]",
       "SELECT \"Mi Tabla\".\"Un Campo\" AS \"Otro Nombre\" FROM \"Mi Tabla\""},
      {"SELECT [Order].[Index], [a\"b] FROM [Order]",
       "SELECT \"Order\".\"Index\", \"a\"\"b\" FROM \"Order\""},
      {"SELECT Población FROM Pais", "SELECT \"Población\" FROM Pais"},
      {"SELECT [Nombre] FROM [Pais]", "SELECT Nombre FROM Pais"},
  });
}

// A column named like any keyword of the engine's own list comes out quoted: SQLite's, and
// the words the server will not take as a column name (reserved, or only a type or function).
TEST(TranslateSqlite, ColumnsNamedLikeAKeywordAreQuoted) {
  for (int i = 0; i < sqlite3_keyword_count(); ++i) {
    const char* text = nullptr;
    int length = 0;
    sqlite3_keyword_name(i, &text, &length);
    const std::string word(text, static_cast<std::size_t>(length));
    EXPECT_EQ(TranslateStatement("SELECT T.[" + word + "] FROM T", Dialect::Sqlite),
              "SELECT T.\"" + word + "\" FROM T");
  }
}

TEST(TranslatePostgres, ColumnsNamedLikeAReservedWordAreQuoted) {
  if (!cp::testing::TestServer()) GTEST_SKIP() << "no test server";
  postgres::Session server(cp::testing::CreateServerDatabase("cp_c", false),
                           postgres::Session::Purpose::Tool);
  const postgres::Result words =
      server.Exec("SELECT word FROM pg_get_keywords() WHERE catcode IN ('R', 'T')");
  ASSERT_GT(words.Rows(), 50);
  for (int i = 0; i < words.Rows(); ++i) {
    const std::string word = words.Text(i, 0);
    std::string upper = word;
    std::transform(upper.begin(), upper.end(), upper.begin(), ::toupper);
    EXPECT_EQ(TranslateStatement("SELECT T.[" + upper + "] FROM T", Dialect::Postgres),
              "SELECT T.\"" + word + "\" FROM T");
  }
}

// A date column the engine vouches for as ISO-only is compared bare, so that its index serves;
// the name must resolve to it as SQLite resolves names, or the comparison keeps jet_date.
TEST(TranslateSqlite, DatesOfVouchedColumnsAreComparedBare) {
  TranslateOptions options;
  options.isoDateColumn = [](std::string_view table, std::string_view column) {
    std::string key;
    for (char c : std::string(table) + "." + std::string(column)) key += std::tolower(c);
    return key == "ipropio.fechaalta" || key == "demanda.fechaalta";
  };
  ExpectStatements({
      {"SELECT Id FROM IPropio WHERE FechaAlta >= #03/01/24#",
       "SELECT Id FROM IPropio WHERE FechaAlta >= '2024-03-01'"},
      {"SELECT Id FROM ipropio WHERE IPROPIO.fechaalta BETWEEN #1/1/24# AND #3/1/24 10:00# OR "
       "#1/1/24# <> IPropio.FechaAlta",
       "SELECT Id FROM ipropio WHERE IPROPIO.fechaalta BETWEEN '2024-01-01' AND "
       "'2024-03-01 10:00:00' OR '2024-01-01' <> IPropio.FechaAlta"},
      {"SELECT Id FROM IPropio AS I WHERE I.FechaAlta < #1/1/24# AND I.FechaBaja < #1/1/24#",
       "SELECT Id FROM IPropio AS I WHERE I.FechaAlta < '2024-01-01' AND "
       "jet_date(I.FechaBaja) < '2024-01-01'"},
      // An alias hides the table's own name.
      {"SELECT Id FROM IPropio AS I, IAjeno AS IPropio WHERE IPropio.FechaAlta = #1/1/24#",
       "SELECT Id FROM IPropio AS I, IAjeno AS IPropio WHERE jet_date(IPropio.FechaAlta) = "
       "'2024-01-01'"},
      // Unqualified: found in one table only; in two the engine refuses it as ambiguous.
      {"SELECT Id FROM Zona INNER JOIN IPropio ON Zona.Id = IPropio.Id WHERE FechaAlta > #1/1/24#",
       "SELECT Id FROM Zona INNER JOIN IPropio ON Zona.Id COLLATE JET_NOCASE = IPropio.Id "
       "WHERE FechaAlta > '2024-01-01'"},
      {"SELECT Id FROM Demanda, IPropio WHERE FechaAlta > #1/1/24#",
       "SELECT Id FROM Demanda, IPropio WHERE jet_date(FechaAlta) > '2024-01-01'"},
      // A subquery sees its own tables first, then the outer ones by qualified name only.
      {"SELECT Id FROM IPropio WHERE IdCliente IN (SELECT IdCliente FROM Cliente WHERE "
       "FechaAlta > #1/1/24# OR IPropio.FechaAlta > #1/1/24#)",
       "SELECT Id FROM IPropio WHERE IdCliente COLLATE JET_NOCASE IN (SELECT IdCliente FROM "
       "Cliente WHERE jet_date(FechaAlta) > '2024-01-01' OR IPropio.FechaAlta > '2024-01-01')"},
      {"SELECT Id FROM Cliente WHERE IdCliente IN (SELECT IdCliente FROM Demanda WHERE "
       "FechaAlta = #1/1/24#) AND FechaAlta = #1/1/24#",
       "SELECT Id FROM Cliente WHERE IdCliente COLLATE JET_NOCASE IN (SELECT IdCliente FROM "
       "Demanda WHERE FechaAlta = '2024-01-01') AND jet_date(FechaAlta) = '2024-01-01'"},
      {"SELECT Id FROM Demanda WHERE Id IN (SELECT Id FROM Cliente AS Demanda WHERE "
       "Demanda.FechaAlta = #1/1/24#)",
       "SELECT Id FROM Demanda WHERE Id COLLATE JET_NOCASE IN (SELECT Id FROM Cliente AS Demanda "
       "WHERE jet_date(Demanda.FechaAlta) = '2024-01-01')"},
  }, Dialect::Sqlite, options);
  // A bare condition has no tables for a name to resolve to.
  EXPECT_EQ(TranslateCondition("IPropio.FechaAlta = #1/1/24#", Dialect::Sqlite, options),
            "jet_date(IPropio.FechaAlta) = '2024-01-01'");
}

// The same tree through the PostgreSQL table of overrides.
TEST(TranslatePostgres, ConditionsUseServerTypesAndJetFunctions) {
  ExpectConditions({
      // Dates are timestamps on the server: midnight compares natively.
      {" ( T.Fecha >= #03/07/05# )  AND (T.Fecha <= #12/31/05# ) ",
       "(T.Fecha >= TIMESTAMP '2005-03-07') AND (T.Fecha <= TIMESTAMP '2005-12-31')"},
      {"T.Fecha = #1/2/30 10:00#", "T.Fecha = TIMESTAMP '1930-01-02 10:00:00'"},
      // ILIKE has no # or [..]: the pattern goes to the server's jet_like.
      {"Cliente.Apellidos LIKE 'garcia*'", "pg_temp.jet_like('garcia*', Cliente.Apellidos)"},
      // The collation only where a side is known to be text: integers refuse collations.
      {"T.Nombre = 'Ávila'", "T.Nombre COLLATE pg_temp.jet_nocase = 'Ávila'"},
      {"A.IdX = B.IdX", "A.IdX = B.IdX"},
      {"Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*1*')",
       "Cliente.IdCliente IN (SELECT IdCliente FROM TfnoCli WHERE "
       "pg_temp.jet_like('*1*', Numero))"},
      {"T.Activo = TRUE AND IsNull(T.x)", "T.Activo IN (1, -1) AND (T.x IS NULL)"},
      {"T.x = 'O''Brien' + chr(124) + '2'",
       "T.x COLLATE pg_temp.jet_nocase = 'O''Brien|2'"},
      {"T.x = T.y & 'a'", "T.x COLLATE pg_temp.jet_nocase = pg_temp.jet_concat(VARIADIC "
                          "ARRAY[pg_temp.jet_text(T.y), pg_temp.jet_text('a')])"},
      {"T.n = T.a + T.b", "T.n = pg_temp.jet_add(T.a, T.b)"},
  }, Dialect::Postgres);
}

TEST(TranslatePostgres, StatementsQuoteInLowerCaseAndSortNullsFirst) {
  ExpectStatements({
      {"SELECT Alias FROM Agencia WHERE IdAgencia<1000000 ORDER BY Alias ASC",
       "SELECT Alias FROM Agencia WHERE IdAgencia < 1000000 ORDER BY Alias NULLS FIRST"},
      {"SELECT [Mi Campo], [User] FROM [Order] ORDER BY [Mi Campo] DESC",
       "SELECT \"mi campo\", \"user\" FROM \"order\" ORDER BY \"mi campo\" DESC NULLS LAST"},
      {"SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona",
       "SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona"},
      // A word reserved only by SQLite needs no quotes here.
      {"SELECT T.Action FROM T", "SELECT T.Action FROM T"},
  }, Dialect::Postgres);
}

// Jet's literal rules: the two-digit year pivot, midnight, 12-hour times, chr's code page.
TEST(DateLiteral, ReadsMonthFirstAndPivotsTwoDigitYears) {
  struct Case {
    const char* text;
    const char* iso;  // nullptr: refused
  } cases[] = {
      {"03/07/05", "2005-03-07"}, {"3/7/05", "2005-03-07"}, {"12/31/99", "1999-12-31"},
      {"01/01/29", "2029-01-01"}, {"01/01/30", "1930-01-01"},
      {"12/31/2005", "2005-12-31"}, {"02/29/2024", "2024-02-29"}, {"2005-03-07", "2005-03-07"},
      {" 12/31/05 ", "2005-12-31"}, {"12/31/05 00:00:00", "2005-12-31"},
      {"12/31/05 10:00", "2005-12-31 10:00:00"},
      {"12/31/05 12:00 AM", "2005-12-31"}, {"12/31/05 12:30 PM", "2005-12-31 12:30:00"},
      {"12/31/05 1:05:09 pm", "2005-12-31 13:05:09"}, {"02/29/05", nullptr}, {"13/01/05", nullptr},
      {"12/32/05", nullptr}, {"12/31/005", nullptr}, {"12-31-2005", nullptr}, {"12/31", nullptr},
      {"", nullptr}, {"12/31/05 24:00", nullptr}, {"12/31/05 10:60", nullptr},
      {"12/31/05 13:00 PM", nullptr}, {"12/31/05 10", nullptr},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DateLiteralToIso(c.text).value_or("<refused>"), c.iso ? c.iso : "<refused>")
        << c.text;
  }
}

TEST(Chr, FollowsTheWindowsCodePage) {
  const std::pair<int, std::string> rows[] = {
      {0, std::string(1, '\0')}, {65, "A"}, {127, "\x7f"}, {128, "€"}, {129, "\xc2\x81"},
      {159, "Ÿ"}, {160, "\xc2\xa0"}, {255, "ÿ"}, {256, "<none>"}, {-1, "<none>"}};
  for (const auto& [code, text] : rows) EXPECT_EQ(ChrText(code).value_or("<none>"), text) << code;
}

}  // namespace
}  // namespace cp::jetsql
