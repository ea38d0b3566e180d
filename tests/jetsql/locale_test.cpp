// Jet's numbers in a statement and in text read the same whatever the machine's locale.
#include <gtest/gtest.h>

#include "tests/jetsql/sqlite_database.h"
#include "tests/support/spanish_locale.h"

namespace cp::jetsql::testing {
namespace {

using SpanishDesktop = cp::testing::SpanishLocale;

TEST_F(SpanishDesktop, JetNumbersIgnoreTheLocale) {
  MemoryDatabase db;
  db.Exec("CREATE TABLE Uno (Id INTEGER, Texto VARCHAR(10)); INSERT INTO Uno VALUES (1, '2.5');");
  EXPECT_EQ(db.Value("SELECT chr(66.6) AS v FROM Uno"), "C");  // a constant, rounded
  EXPECT_EQ(db.Value("SELECT Texto + 1 AS v FROM Uno"), "3.5");
  EXPECT_EQ(db.Value("SELECT '+2.5e1' + 1 AS v FROM Uno"), "26");
}

}  // namespace
}  // namespace cp::jetsql::testing
