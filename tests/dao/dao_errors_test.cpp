// Engine messages to DAO errors: the number a Jet user would get and the culprit named.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/core/error.h"
#include "platform/dao/dao_errors.h"
#include "platform/dao/types.h"

namespace cp::dao {
namespace {

using ::testing::HasSubstr;

struct MessageCase {
  const char* message;
  SqlContext context;
  long number;
  const char* named;
};

TEST(DaoErrors, EngineMessagesMapToDaoNumbers) {
  const std::vector<MessageCase> cases = {
      {"no such table: main.Zonas", SqlContext::Statement, daoerr::kTableNotFound, "'Zonas'"},
      {"no such column: Zona.Fantasma", SqlContext::Statement, daoerr::kTooFewParameters,
       "'Zona.Fantasma'"},
      {"no such column: Fantasma", SqlContext::Criterion, daoerr::kUnknownFieldInExpression,
       "'Fantasma'"},
      {"near \"FORM\": syntax error", SqlContext::Statement, daoerr::kSyntaxInQuery, "FORM"},
      {"near \"FORM\": syntax error", SqlContext::Criterion, daoerr::kSyntaxInExpression, "FORM"},
      {"unrecognized token: \"#\"", SqlContext::Statement, daoerr::kSyntaxInQuery, "#"},
      {"ambiguous column name: IdZona", SqlContext::Statement, daoerr::kAmbiguousField,
       "'IdZona'"},
      {"no such function: jet_like", SqlContext::Statement, daoerr::kUndefinedFunction,
       "'jet_like'"},
      {"database disk image is malformed", SqlContext::Statement, daoerr::kEngineFailure,
       "database disk image is malformed"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    try {
      RaiseFromEngineMessage(c.message, "SELECT x", c.context, kRecordsetSource);
      ADD_FAILURE() << "no error raised";
    } catch (const Error& e) {
      EXPECT_EQ(e.number(), c.number);
      EXPECT_THAT(e.description(), HasSubstr(c.named));
      EXPECT_EQ(e.description().find("main."), std::string::npos);
      EXPECT_EQ(e.source(), kRecordsetSource);
    }
  }
}

struct DeclarationCase {
  const char* declared;
  int type;
  long size;
};

TEST(DaoTypes, DeclaredTypesMapToDaoCodes) {
  const std::vector<DeclarationCase> cases = {
      {"VARCHAR(50)", dbText, 50}, {"varchar ( 12 )", dbText, 12}, {"CHAR(2)", dbText, 2},
      {"VARCHAR", dbText, 255},    {"TEXT(30)", dbText, 30},      {"TEXT", dbMemo, 0},
      {"MEMO", dbMemo, 0},         {"INTEGER", dbLong, 4},        {"int", dbLong, 4},
      {"LONG", dbLong, 4},         {"COUNTER", dbLong, 4},        {"SMALLINT", dbInteger, 2},
      {"TINYINT", dbByte, 1},      {"BYTE", dbByte, 1},           {"BOOLEAN", dbBoolean, 1},
      {"BIT", dbBoolean, 1},       {"YESNO", dbBoolean, 1},       {"DOUBLE", dbDouble, 8},
      {"REAL", dbDouble, 8},       {"FLOAT", dbDouble, 8},        {"CURRENCY", dbCurrency, 8},
      {"MONEY", dbCurrency, 8},    {"DATETIME", dbDate, 8},       {"date", dbDate, 8},
      {"", 0, 0},                  {"BLOB", 0, 0},
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
