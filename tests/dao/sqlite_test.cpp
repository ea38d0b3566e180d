// What only the SQLite engine does: files, the native path for tools, locking. The tool's
// bulk writes through native statements are read back in the tool's and the DAO tests.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>

#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/dao/dao_errors.h"
#include "platform/jetsql/translator.h"
#include "platform/sqlite/iso_dates.h"
#include "platform/sqlite/native.h"
#include "platform/sqlite/sqlite_engine.h"
#include "tests/support/errors.h"
#include "tests/support/scratch_db.h"

namespace cp::sqlite {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using cp::testing::CaughtError;
using cp::testing::ErrorNumberOf;
namespace fs = std::filesystem;

class SqliteTest : public ::testing::Test {
 protected:
  std::string PathOf(const std::string& name) const { return dir_.File(name); }
  cp::testing::ScratchDir dir_;
};

TEST_F(SqliteTest, OpeningFailuresNameTheFileOrPath) {
  std::ofstream(PathOf("notas.txt")) << "Esto no es una base de datos, aunque lo parezca.\n";
  const struct { std::string path; long number; std::string said; } cases[] = {
      {PathOf("no_existe.sqlite"), dao::daoerr::kFileNotFound, "No se encuentra el archivo '"},
      {PathOf("falta/datos.sqlite"), dao::daoerr::kInvalidPath, ""},
      {PathOf("notas.txt"), dao::daoerr::kUnrecognisedFormat, ""},
      {"postgresql://servidor/agencia", dao::daoerr::kConnectionFailed, ""}};
  for (const auto& c : cases) {
    const Error e = CaughtError([&] { dao::OpenDatabase(c.path); });
    EXPECT_EQ(e.number(), c.number) << c.path;
    EXPECT_EQ(e.source(), dao::kDatabaseSource) << c.path;
    if (c.number == dao::daoerr::kConnectionFailed) continue;  // the server names no file
    EXPECT_THAT(e.description(), HasSubstr(c.said + c.path));
  }
  EXPECT_FALSE(fs::exists(PathOf("no_existe.sqlite"))) << "opening must not create the file";
}

TEST_F(SqliteTest, NativeStatementsReadRowsRollBackAndCarryDaoNumbers) {
  NativeDatabase native(PathOf("fechas.sqlite"), NativeDatabase::Mode::CreateIfMissing);
  native.ExecuteNative("CREATE TABLE F (Dia DATETIME, N INTEGER)");
  auto insert = native.Prepare("INSERT INTO F VALUES (?1, ?2)");
  insert.Bind(1, MakeDate(1925, 2, 3));
  insert.Bind(2, std::int32_t{-4});
  insert.Step();
  EXPECT_EQ(native.LastInsertId(), 1);
  EXPECT_EQ(ErrorNumberOf([&] { insert.Bind(1, Variant(Array2D(0, 0, 0, 0))); }),
            err::kTypeMismatch);
  {
    Transaction tx(native);  // never committed
    native.ExecuteNative("INSERT INTO F VALUES (NULL, 1); INSERT INTO F VALUES (NULL, 2)");
  }
  auto read = native.Prepare("SELECT Dia, N, typeof(Dia) FROM F");
  ASSERT_TRUE(read.Step());
  EXPECT_EQ(read.ColumnCount(), 3);
  EXPECT_EQ(read.ColumnName(0), "Dia");
  EXPECT_EQ(read.Column(0), Variant("1925-02-03"));  // dates stay ISO text
  EXPECT_EQ(read.Column(1), Variant(std::int32_t{-4}));
  EXPECT_EQ(read.Column(2), Variant("text"));
  EXPECT_FALSE(read.Step());
  const Error syntax = CaughtError([&] { native.ExecuteNative("CREATE TABLA X (N INTEGER)"); });
  EXPECT_EQ(syntax.number(), dao::daoerr::kSyntaxInQuery);
  EXPECT_THAT(syntax.description(), HasSubstr("TABLA"));
  EXPECT_EQ(syntax.source(), "SQLite");
  EXPECT_EQ(ErrorNumberOf([&] { native.Prepare("SELECT * FROM Nada"); }),
            dao::daoerr::kTableNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { native.Prepare("SELECT 1; SELECT 2"); }),
            dao::daoerr::kTextAfterStatement);
  EXPECT_EQ(ErrorNumberOf([&] { NativeDatabase(PathOf("nueva.sqlite")); }),
            dao::daoerr::kFileNotFound);
}

TEST_F(SqliteTest, ReaderWaitsThenReportsALockedDatabase) {
  const std::string path = PathOf("bloqueo.sqlite");
  NativeDatabase writer(path, NativeDatabase::Mode::CreateIfMissing);
  writer.ExecuteNative("CREATE TABLE T (N INTEGER); INSERT INTO T VALUES (1)");
  const std::chrono::milliseconds wait(200);
  auto db = [&] {
    ProcessSlot<std::chrono::milliseconds>::Scoped shorter(BusyTimeoutSlot(), wait);
    return dao::OpenDatabase(path);
  }();
  writer.ExecuteNative("BEGIN EXCLUSIVE; INSERT INTO T VALUES (2)");
  const auto start = std::chrono::steady_clock::now();
  const Error busy = CaughtError([&] { db->OpenRecordset("SELECT N FROM T"); });
  EXPECT_GE(std::chrono::steady_clock::now() - start, wait);
  EXPECT_EQ(busy.number(), dao::daoerr::kBusy);
  EXPECT_THAT(busy.description(), HasSubstr(path));
  writer.Rollback();
  EXPECT_EQ(db->OpenRecordset("SELECT N FROM T").RecordCount(), 1);
}

// A date table as our schema writes it: the CHECK, and an index on the date.
std::string CheckedTable(const std::string& name) {
  return "CREATE TABLE " + name + " (Id INTEGER PRIMARY KEY, Fecha DATETIME " +
         IsoDateCheck("Fecha") + "); CREATE INDEX " + name + "_Fecha ON " + name + " (Fecha);";
}

TEST_F(SqliteTest, IsoCheckAdmitsOnlyTheFormsJetDateKeeps) {
  NativeDatabase native(PathOf("check.sqlite"), NativeDatabase::Mode::CreateIfMissing);
  native.ExecuteNative(CheckedTable("F"));
  const std::pair<const char*, bool> values[] = {
      {"NULL", true}, {"'2024-03-01'", true}, {"'2024-03-01 10:00:00'", true},
      {"'2024-03-01 00:00:00'", false}, {"'01/03/2024'", false}, {"45352", false},
      {"45352.5", false}, {"'2024-03-01T10:00:00'", false}, {"'2024-3-1'", false},
      {"' 2024-03-01'", false}, {"'2024-03-01 10:00'", false}, {"'2024-03-01 10:00:00 '", false},
      // Shapes that are no real instant pass; jet_date leaves them as they are.
      {"'2024-02-30'", true}, {"'2023-02-29 12:00:00'", true}, {"'2024-13-01'", true},
      {"'0099-12-31'", true}, {"'2024-03-01 24:00:00'", true}, {"'2024-03-01 10:60:00'", true},
      // The edges of the runtime's dates, and times before the epoch.
      {"'0100-01-01 00:00:01'", true}, {"'9999-12-31 23:59:59'", true},
      {"'1899-12-29 12:00:00'", true}, {"'1899-12-30 00:00:01'", true},
  };
  for (const auto& [value, admitted] : values) {
    const int number = ErrorNumberOf(
        [&] { native.ExecuteNative("INSERT INTO F (Fecha) VALUES (" + std::string(value) + ")"); });
    EXPECT_EQ(number == 0, admitted) << value << ": error " << number;
  }
  auto changed = native.Prepare("SELECT Fecha FROM F WHERE jet_date(Fecha) IS NOT Fecha");
  EXPECT_FALSE(changed.Step()) << changed.Column(0).AsString();
}

// Only the exact CHECK, where SQLite reads it, vouches for a column.
TEST(IsoDateCheckedColumns, FindsTheExactCheckOutsideCommentsAndQuotes) {
  const std::string a = IsoDateCheck("A");
  std::string loose = IsoDateCheck("B");
  loose.replace(loose.find("00:00:00"), 8, "00:00:01");
  const std::pair<std::string, std::vector<std::string>> cases[] = {
      {"CREATE TABLE T (\"A\" DATETIME " + a + ", B DATETIME, C DATETIME " +
           IsoDateCheck("C") + ")",
       {"A", "C"}},
      {"CREATE TABLE T (A DATETIME, B DATETIME " + loose + ")", {}},
      {"CREATE TABLE T (A DATETIME -- " + a + "\n, B DATETIME " + IsoDateCheck("B") + ")", {"B"}},
      {"CREATE TABLE T (A DATETIME /* " + a + " */)", {}},
      {"CREATE TABLE T (A DATETIME DEFAULT `" + a + "`)", {}},
      {"CREATE TABLE T (A DATETIME NOT" + a + ")", {}},
      {"CREATE TABLE T (\"Fe\"\"cha\" DATETIME " + IsoDateCheck("Fe\"cha") + ")", {"Fe\"cha"}},
  };
  for (const auto& [sql, columns] : cases) EXPECT_EQ(IsoDateCheckedColumns(sql), columns) << sql;
}

// The same conditions on a checked table, on an unchecked one with the same ISO text, and on
// one holding the other forms of the same instants that an import or another tool may leave.
TEST_F(SqliteTest, CheckedDatesSelectTheRowsJetDoes) {
  const std::string path = PathOf("fechas.sqlite");
  NativeDatabase native(path, NativeDatabase::Mode::CreateIfMissing);
  native.ExecuteNative(CheckedTable("Marcadas") +
                       "CREATE TABLE Libres (Id INTEGER PRIMARY KEY, Fecha DATETIME);"
                       "CREATE TABLE Formas (Id INTEGER PRIMARY KEY, Fecha DATETIME);");
  const std::string iso =
      "(1,'2024-03-01'),(2,'2024-03-01 10:00:00'),(3,'2024-02-29'),(4,'2024-02-29 23:59:59'),"
      "(5,'2024-03-02'),(6,NULL),(7,'1925-06-15'),(8,'2024-02-30')";
  native.ExecuteNative("INSERT INTO Marcadas VALUES " + iso + "; INSERT INTO Libres VALUES " + iso +
                       "; INSERT INTO Formas VALUES (1,'2024-03-01 00:00:00'),"
                       "(2,45352.416666666664),(3,'29/02/2024'),(4,'29/02/2024 23:59:59'),"
                       "(5,45353),(6,NULL),(7,'1925-06-15 00:00:00'),(8,'2024-02-30')");
  auto db = dao::OpenDatabase(path);
  const std::pair<const char*, std::vector<long>> cases[] = {
      {"Fecha >= #03/01/24#", {1, 2, 5}}, {"Fecha = #03/01/24#", {1}},
      {"Fecha <> #03/01/24#", {2, 3, 4, 5, 7, 8}}, {"Fecha < #03/01/24#", {3, 4, 7, 8}},
      {"Fecha <= #03/01/24#", {1, 3, 4, 7, 8}}, {"Fecha > #02/29/24#", {1, 2, 4, 5, 8}},
      {"Fecha BETWEEN #2/29/24# AND #3/1/24 10:00#", {1, 2, 3, 4, 8}},
      {"Fecha NOT BETWEEN #2/29/24# AND #3/1/24 10:00#", {5, 7}},
      {"Fecha > #3/1/24 9:59:59# AND Fecha < #3/2/24#", {2}},
      {"Fecha IN (#6/15/1925#, #3/2/24#)", {5, 7}},
  };
  for (const char* table : {"Marcadas", "Libres", "Formas"}) {
    for (const auto& [condition, expected] : cases) {
      auto rs = db->OpenRecordset("SELECT T.Id FROM " + std::string(table) + " AS T WHERE " +
                                  "T." + condition + " ORDER BY T.Id");
      std::vector<long> ids;
      for (; !rs.Eof(); rs.MoveNext()) ids.push_back(rs.Fields(0).Value().AsLong());
      EXPECT_EQ(ids, expected) << table << ": " << condition;
    }
  }
}

// The engine reads which columns are checked when first asked and again after the schema
// changes, so a table created by a tool meanwhile gets its index used.
TEST_F(SqliteTest, DateComparisonOnACheckedColumnSearchesItsIndex) {
  const std::string path = PathOf("plan.sqlite");
  NativeDatabase native(path, NativeDatabase::Mode::CreateIfMissing);
  native.ExecuteNative("CREATE TABLE Libres (Id INTEGER PRIMARY KEY, Fecha DATETIME);"
                       "CREATE INDEX Libres_Fecha ON Libres (Fecha)");
  SqliteEngine engine(path);
  auto plan = [&](const std::string& jet) {
    const std::string sql =
        jetsql::TranslateStatement(jet, jetsql::Dialect::Sqlite, engine.TranslationOptions());
    auto cursor = engine.Query("EXPLAIN QUERY PLAN " + sql);
    std::string detail;
    while (cursor->Next()) detail += std::get<std::string>(cursor->Value(3)) + ";";
    return detail;
  };
  EXPECT_THAT(plan("SELECT Id FROM Libres WHERE Fecha >= #11/01/24#"), StartsWith("SCAN"));
  native.ExecuteNative(CheckedTable("Marcadas"));
  for (const char* condition : {"Fecha >= #11/01/24#", "Fecha BETWEEN #1/1/24# AND #2/1/24#",
                                "Fecha = #11/01/24 10:30#"}) {
    EXPECT_THAT(plan("SELECT Id FROM Marcadas WHERE " + std::string(condition)),
                StartsWith("SEARCH Marcadas USING COVERING INDEX Marcadas_Fecha"))
        << condition;
  }
  // Table definitions are kept too, and read again after the schema changes.
  EXPECT_EQ(engine.Table("libres").fields.size(), 2u);
  native.ExecuteNative("ALTER TABLE Libres ADD COLUMN Nota TEXT");
  EXPECT_EQ(engine.Table("Libres").fields.back().name, "Nota");
}

}  // namespace
}  // namespace cp::sqlite
