// Engine failures to DAO errors: the number a Jet user would get, the culprit named and the
// engine's own code kept.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "platform/core/error.h"
#include "platform/dao/dao_errors.h"
#include "platform/dao/types.h"
#include "platform/sqlite/connection.h"
#include "tests/support/errors.h"

namespace cp::dao {
namespace {

using ::testing::HasSubstr;

struct FailureCase {
  int rc;
  const char* message;
  SqlContext context;
  long number;
  const char* named;
};

// Missing columns, statement syntax, unreadable and unopenable files are met for real
// in the DAO suite and the SQLite tests; these are the other failures.
TEST(DaoErrors, SqliteFailuresMapToDaoNumbers) {
  const char* file = "/no/such/folder/datos.db";
  const std::vector<FailureCase> cases = {
      {SQLITE_ERROR, "no such table: main.Zonas", SqlContext::Statement,
       daoerr::kTableNotFound, "'Zonas'"},
      {SQLITE_ERROR, "near \"FORM\": syntax error", SqlContext::Criterion,
       daoerr::kSyntaxInExpression, "FORM"},
      {SQLITE_ERROR, "unrecognized token: \"#\"", SqlContext::Statement,
       daoerr::kSyntaxInQuery, "#"},
      {SQLITE_ERROR, "ambiguous column name: IdZona", SqlContext::Statement,
       daoerr::kAmbiguousField, "'IdZona'"},
      {SQLITE_ERROR, "no such function: jet_like", SqlContext::Statement,
       daoerr::kUndefinedFunction, "'jet_like'"},
      // A damaged file reads as a format Jet does not recognise, in Spanish.
      {SQLITE_CORRUPT, "database disk image is malformed", SqlContext::Statement,
       daoerr::kUnrecognisedFormat, "Formato de base de datos no reconocido '/no/such"},
      // A thousand list items in one criterion pass SQLite's depth limit.
      {SQLITE_ERROR, "Expression tree is too large (maximum depth 1000)",
       SqlContext::Criterion, daoerr::kQueryTooComplex, "Consulta demasiado compleja."},
      // An extended code maps as its primary code.
      {SQLITE_BUSY_SNAPSHOT, "database is locked", SqlContext::Statement, daoerr::kBusy, file},
      {SQLITE_LOCKED, "database table is locked: Zona", SqlContext::Statement, daoerr::kLocked,
       "Zona"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    const Error e = cp::testing::CaughtError([&] {
      RaiseEngineError(sqlite::DescribeFailure(c.rc, c.message, file), "SELECT x", c.context,
                       kRecordsetSource);
    });
    EXPECT_EQ(e.number(), c.number);
    EXPECT_THAT(e.description(), HasSubstr(c.named));
    EXPECT_EQ(e.description().find("main."), std::string::npos);
    EXPECT_EQ(e.engine_code(), "SQLite " + std::to_string(c.rc));
  }
}

// The schema's own declarations are read back in the DAO suite; these are the other shapes.
TEST(DaoTypes, DeclaredTypesMapToDaoCodes) {
  const struct {
    const char* declared;
    int type;
    long size;
  } cases[] = {
      {"varchar ( 12 )", dbText, 12}, {"VARCHAR", dbText, 255}, {"TEXT(30)", dbText, 30},
      {"date", dbDate, 8},            {"", 0, 0},               {"BLOB", 0, 0},
      // The server's spellings, and the ones tools write.
      {"DOUBLE", dbDouble, 8},    {"double  precision", dbDouble, 8}, {"DATETIME", dbDate, 8},
      {"timestamp", dbDate, 8},   {"TIMESTAMP WITH TIME ZONE", dbDate, 8},
  };
  for (const auto& c : cases) {
    const ColumnType t = TypeFromDeclaration(c.declared);
    EXPECT_EQ(t.type, c.type) << c.declared;
    EXPECT_EQ(t.size, c.size) << c.declared;
  }
}

TEST(DaoTypes, StoredValuesThatDoNotFitTheirColumnComeBackAsTheyAre) {
  EXPECT_EQ(ToVariant(std::string("no es fecha"), dbDate), Variant("no es fecha"));
  EXPECT_EQ(ToVariant(std::int64_t{70000}, dbInteger), Variant(std::int32_t{70000}));
  EXPECT_EQ(ToVariant(std::int64_t{5000000000}, dbLong), Variant(5000000000.0));
  EXPECT_EQ(ToVariant(std::string("12"), dbLong), Variant("12"));
  EXPECT_EQ(ToVariant(std::int64_t{-1}, dbBoolean), Variant(true));
  EXPECT_TRUE(ToVariant(std::monostate{}, dbText).IsNull());
}

}  // namespace
}  // namespace cp::dao
