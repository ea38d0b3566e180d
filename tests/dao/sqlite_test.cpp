// What only the SQLite engine does: files, the native path for tools, locking. The tool's
// bulk writes through native statements are read back in the tool's and the DAO tests.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/dao/dao_errors.h"
#include "platform/sqlite/native.h"
#include "tests/support/errors.h"
#include "tests/support/scratch_db.h"

namespace cp::sqlite {
namespace {

using ::testing::HasSubstr;
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
    if (c.number != dao::daoerr::kConnectionFailed)
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
  auto db = dao::OpenDatabase(path);
  writer.ExecuteNative("BEGIN EXCLUSIVE; INSERT INTO T VALUES (2)");
  const Error busy = CaughtError([&] { db->OpenRecordset("SELECT N FROM T"); });
  EXPECT_EQ(busy.number(), dao::daoerr::kBusy);
  EXPECT_THAT(busy.description(), HasSubstr(path));
  writer.Rollback();
  EXPECT_EQ(db->OpenRecordset("SELECT N FROM T").RecordCount(), 1);
}

}  // namespace
}  // namespace cp::sqlite
