// The subcommands as scripts see them: exit status, standard output, standard error.
#include "cli/commands.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::ScratchDb;
using testing::ScratchDir;

using testing::Result;

Result RunInitDb(const InitDbOptions& o) {
  std::ostringstream out, err;
  const int status = InitDb(o, out, err);
  return {status, out.str(), err.str()};
}

Result RunSql(const std::string& db, const std::string& statement, bool json = false) {
  std::ostringstream out, err;
  const int status = Sql({db, json, statement}, out, err);
  return {status, out.str(), err.str()};
}

Result RunTranslate(jetsql::Dialect dialect, const std::string& sql, bool condition = false) {
  std::ostringstream out, err;
  const int status = Translate({dialect, condition, sql}, out, err);
  return {status, out.str(), err.str()};
}

TEST(InitDbCommand, RefusesToOverwriteAnExistingFile) {
  ScratchDir dir;
  const std::string path = dir.File("datos.db");
  std::ofstream(path) << "not a database, but somebody's file";
  const Result r = RunInitDb({path, true, 10});
  EXPECT_EQ(r.status, kExitError);
  EXPECT_NE(r.err.find("ya existe"), std::string::npos) << r.err;
  EXPECT_EQ(r.out, "");
  std::ifstream in(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}),
            "not a database, but somebody's file");
}

TEST(InitDbCommand, CreatesTheSchemaAndOnlyWithDemoTheRows) {
  ScratchDir dir;
  const Result empty = RunInitDb({dir.File("vacia.db"), false, 2000});
  ASSERT_EQ(empty.status, kExitOk) << empty.err;
  EXPECT_EQ(empty.err, "");
  EXPECT_EQ(ScratchDb(dir.File("vacia.db")).Count("SELECT count(*) FROM Pais"), 0);

  const Result demo = RunInitDb({dir.File("demo.db"), true, 40});
  ASSERT_EQ(demo.status, kExitOk) << demo.err;
  EXPECT_NE(demo.out.find("demo.db"), std::string::npos);
  ScratchDb db(dir.File("demo.db"));
  EXPECT_EQ(db.Count("SELECT count(*) FROM IPropio"), 40);
  EXPECT_EQ(db.Count("SELECT count(*) FROM Demanda"), 20);
}

TEST(InitDbCommand, AFailureLeavesNoFileBehind) {
  ScratchDir dir;
  const std::string missing_folder = dir.File("no/existe/datos.db");
  const Result r = RunInitDb({missing_folder, true, 10});
  EXPECT_EQ(r.status, kExitError);
  EXPECT_FALSE(r.err.empty());
  EXPECT_FALSE(std::filesystem::exists(missing_folder));

  const Result negative = RunInitDb({dir.File("negativo.db"), true, -5});
  EXPECT_EQ(negative.status, kExitError);
  EXPECT_FALSE(std::filesystem::exists(dir.File("negativo.db")));
}

TEST(TranslateCommand, PrintsOneLineOrFailsOnStandardError) {
  const Result ok = RunTranslate(jetsql::Dialect::Sqlite,
                                 "SELECT IPropio.* FROM IPropio WHERE IPropio.Notas LIKE '*luz*'");
  EXPECT_EQ(ok.status, kExitOk) << ok.err;
  ASSERT_FALSE(ok.out.empty());
  EXPECT_EQ(ok.out.find('\n'), ok.out.size() - 1) << ok.out;
  EXPECT_EQ(ok.err, "");

  const Result condition = RunTranslate(jetsql::Dialect::Postgres,
                                        "IsNull(IPropio.IdZona) OR IPropio.Huecos >= 3", true);
  EXPECT_EQ(condition.status, kExitOk) << condition.err;
  EXPECT_EQ(condition.out.find("SELECT"), std::string::npos) << condition.out;

  for (const char* bad : {"SELECT * FROM", "SELECT a FROM t WHERE (b = 1", "DELETE"}) {
    const Result r = RunTranslate(jetsql::Dialect::Sqlite, bad);
    EXPECT_EQ(r.status, kExitError) << bad;
    EXPECT_EQ(r.out, "") << bad;
    EXPECT_FALSE(r.err.empty()) << bad;
  }
}

// A tiny database with the values whose printing matters.
class SqlCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    path_ = dir_.File("sql.db");
    ASSERT_EQ(RunInitDb({path_, false, 0}).status, kExitOk);
    ScratchDb db(path_);
    db.Exec(
        "INSERT INTO IPropio (IdIPropio, IdCliente, Precio, Superficie, FechaAlta, "
        "FechaActualizacion, Notas, Exclusividad, Huecos) VALUES "
        "(1, 3, 125000, 80.5, '2024-03-01', '2024-03-05 17:45:00', 'Dos\tlíneas\nvistas "
        "al mar', 1, 3), (2, NULL, NULL, NULL, NULL, NULL, NULL, 0, NULL)");
  }
  ScratchDir dir_;
  std::string path_;
};

TEST_F(SqlCommand, PrintsAHeaderAndTabSeparatedRows) {
  const Result r =
      RunSql(path_,
             "SELECT IdIPropio, IdCliente, Precio, Superficie, FechaAlta, "
             "FechaActualizacion, Notas, Exclusividad FROM IPropio ORDER BY IdIPropio");
  ASSERT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(r.out,
            "IdIPropio\tIdCliente\tPrecio\tSuperficie\tFechaAlta\tFechaActualizacion\tNotas\t"
            "Exclusividad\n"
            "1\t3\t125000\t80.5\t2024-03-01\t2024-03-05 17:45:00\tDos\\tlíneas\\nvistas al mar\t1\n"
            "2\t\t\t\t\t\t\t0\n");
  EXPECT_EQ(r.err, "");
}

TEST_F(SqlCommand, JsonGivesAnArrayOfObjectsWithNulls) {
  const Result r = RunSql(path_,
                          "SELECT IdIPropio, Precio, Superficie, FechaActualizacion, Exclusividad, "
                          "Notas FROM IPropio WHERE IdIPropio >= 1 ORDER BY IdIPropio DESC",
                          true);
  ASSERT_EQ(r.status, kExitOk) << r.err;
  const auto rows = nlohmann::json::parse(r.out);
  ASSERT_TRUE(rows.is_array());
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_EQ(rows[0]["IdIPropio"], 2);
  EXPECT_TRUE(rows[0]["Precio"].is_null());
  EXPECT_EQ(rows[0]["Exclusividad"], false);
  EXPECT_EQ(rows[1]["Precio"], 125000.0);
  EXPECT_EQ(rows[1]["Superficie"], 80.5);
  EXPECT_EQ(rows[1]["FechaActualizacion"], "2024-03-05 17:45:00");
  EXPECT_EQ(rows[1]["Exclusividad"], true);
  EXPECT_EQ(rows[1]["Notas"], "Dos\tlíneas\nvistas al mar");

  const Result none = RunSql(path_, "SELECT IdIPropio FROM IPropio WHERE IdIPropio = 99", true);
  EXPECT_EQ(none.status, kExitOk);
  EXPECT_EQ(nlohmann::json::parse(none.out), nlohmann::json::array());
}

TEST_F(SqlCommand, JetSemanticsApplyToTheStatement) {
  // Case-insensitive LIKE with Jet's wildcard and a Jet date literal.
  const Result r = RunSql(path_,
                          "SELECT IdIPropio FROM IPropio WHERE Notas LIKE '*VISTAS*' AND "
                          "FechaAlta >= #02/28/24#");
  ASSERT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(r.out, "IdIPropio\n1\n");
}

TEST_F(SqlCommand, UnknownNamesAndFilesFailWithTheDaoMessage) {
  struct Case {
    std::string db, statement, culprit, number;
  } cases[] = {
      {path_, "SELECT * FROM Inexistente", "Inexistente", "Error 3078: "},
      {path_, "SELECT Columna FROM IPropio", "Columna", "Error 3061: "},
      {dir_.File("falta.db"), "SELECT * FROM IPropio", "falta.db", "Error 3024: "},
  };
  for (const Case& c : cases) {
    const Result r = RunSql(c.db, c.statement);
    EXPECT_EQ(r.status, kExitError) << c.statement;
    EXPECT_EQ(r.out, "") << c.statement;
    EXPECT_NE(r.err.find(c.culprit), std::string::npos) << r.err;
    EXPECT_EQ(r.err.rfind(c.number, 0), 0u) << r.err;
  }
  // Looking at a missing file must not create it.
  EXPECT_FALSE(std::filesystem::exists(dir_.File("falta.db")));
}

}  // namespace
}  // namespace cp::cli
