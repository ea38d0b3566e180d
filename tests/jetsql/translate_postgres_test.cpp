// Jet text in, PostgreSQL text out: the same tree through the PostgreSQL table of overrides.
#include <gtest/gtest.h>

#include "platform/jetsql/translator.h"

namespace cp::jetsql {
namespace {

struct Case {
  const char* jet;
  const char* postgres;
};

TEST(TranslatePostgres, ConditionsUseServerTypesAndJetFunctions) {
  const std::vector<Case> cases = {
      // Dates are timestamps on the server: midnight compares natively.
      {" ( T.Fecha >= #03/07/05# )  AND (T.Fecha <= #12/31/05# ) ",
       "(T.Fecha >= TIMESTAMP '2005-03-07') AND (T.Fecha <= TIMESTAMP '2005-12-31')"},
      {"T.Fecha = #1/2/30 10:00#", "T.Fecha = TIMESTAMP '1930-01-02 10:00:00'"},
      // ILIKE has no # or [..]: the pattern goes to the server's jet_like.
      {"Cliente.Apellidos LIKE 'garcia*'", "pg_temp.jet_like('garcia*', Cliente.Apellidos)"},
      // The collation only where a side is known to be text: integers refuse collations.
      {"T.Nombre = 'Ávila'", "T.Nombre COLLATE pg_temp.jet_nocase = 'Ávila'"},
      {"A.IdX = B.IdX", "A.IdX = B.IdX"}, {"T.IdX IN (1,2)", "T.IdX IN (1, 2)"},
      {"Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*1*')",
       "Cliente.IdCliente IN (SELECT IdCliente FROM TfnoCli WHERE pg_temp.jet_like('*1*', Numero))"},
      {"T.Activo = TRUE AND IsNull(T.x)", "T.Activo IN (1, -1) AND (T.x IS NULL)"},
      {"T.x = 'O''Brien' + chr(124) + '2'", "T.x COLLATE pg_temp.jet_nocase = 'O''Brien' || '|' || '2'"},
      {"T.x = T.y & 'a'", "T.x COLLATE pg_temp.jet_nocase = pg_temp.jet_concat(VARIADIC ARRAY[pg_temp.jet_text(T.y), pg_temp.jet_text('a')])"},
      {"T.n = T.a + T.b", "T.n = pg_temp.jet_add(T.a, T.b)"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TranslateCondition(c.jet, Dialect::Postgres), c.postgres) << "Jet: " << c.jet;
  }
}

TEST(TranslatePostgres, StatementsQuoteInLowerCaseAndSortNullsFirst) {
  const std::vector<Case> cases = {
      {"SELECT Alias FROM Agencia WHERE IdAgencia<1000000 ORDER BY Alias ASC",
       "SELECT Alias FROM Agencia WHERE IdAgencia < 1000000 ORDER BY Alias NULLS FIRST"},
      {"SELECT [Mi Campo], [User] FROM [Order] ORDER BY [Mi Campo] DESC",
       "SELECT \"mi campo\", \"user\" FROM \"order\" ORDER BY \"mi campo\" DESC NULLS LAST"},
      {"SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona",
       "SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona"},
      // A word reserved only by SQLite needs no quotes here.
      {"SELECT T.Action FROM T", "SELECT T.Action FROM T"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(TranslateStatement(c.jet, Dialect::Postgres), c.postgres) << "Jet: " << c.jet;
  }
}

}  // namespace
}  // namespace cp::jetsql
