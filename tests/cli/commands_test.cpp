// The subcommands as scripts see them: exit status, standard output, standard error.
#include "cli/commands.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "sample/sample_database.h"
#include "tests/cli/test_db.h"
#include "tests/support/errors.h"

namespace cp::cli {
namespace {

using namespace testing;

Result RunInitDb(const InitDbOptions& o) {
  return RunCommand([&](auto& out, auto& err) { return InitDb(o, out, err); });
}
Result RunSql(const std::string& db, const std::string& statement, bool json = false) {
  return RunCommand([&](auto& out, auto& err) { return Sql({db, json, statement}, out, err); });
}

TEST(InitDbCommand, CreatesThePlainSchemaAndOnlyWithDemoTheRows) {
  ScratchDir dir;
  const Result empty = RunInitDb({dir.File("vacia.db"), false, 2000});
  ASSERT_EQ(empty.status, kExitOk) << empty.err;
  {
    ScratchDb db(dir.File("vacia.db"));
    EXPECT_EQ(db.Count("SELECT count(*) FROM Pais"), 0);
    // Only tables and indexes, nothing that needs our collations: any SQLite tool writes it.
    EXPECT_EQ(db.Count("SELECT count(*) FROM sqlite_master WHERE type NOT IN ('table','index') "
                       "OR upper(sql) LIKE '%COLLATE%'"), 0);
    // A row written by another tool: the engine numbers the key, Yes/No defaults to 0.
    db.Exec("INSERT INTO IPropio (IdCliente) VALUES (1);"
            "INSERT INTO Demanda (IdCliente) VALUES (1)");
    EXPECT_EQ(db.Rows("SELECT IdIPropio, Exclusividad FROM IPropio"),
              (std::vector<TextRow>{{"1", "0"}}));
    EXPECT_EQ(db.Scalar("SELECT Amueblado FROM Demanda"), kNullText);
  }
  const Result demo = RunInitDb({dir.File("demo.db"), true, 40});
  ASSERT_EQ(demo.status, kExitOk) << demo.err;
  ScratchDb db(dir.File("demo.db"));
  EXPECT_EQ(db.Count("SELECT count(*) FROM IPropio"), 40);
  EXPECT_EQ(db.Count("SELECT count(*) FROM Demanda"), 20);
}

TEST(InitDbCommand, RefusesAnExistingFileAndAFailureLeavesNoFile) {
  ScratchDir dir;
  const std::string path = dir.File("datos.db"), link = dir.File("enlace.db");
  std::ofstream(path) << "somebody's file";
  std::filesystem::create_symlink(dir.File("destino.db"), link);  // leads nowhere yet
  Result r;
  for (const std::string& taken : {path, link}) {
    r = RunInitDb({taken, true, 10});
    EXPECT_EQ(r.status, kExitError) << taken;
    EXPECT_NE(r.err.find("ya existe"), std::string::npos) << r.err;
  }
  // The library refuses by itself too, for its other callers (the demo host).
  for (const std::string& taken : {path, link})
    EXPECT_EQ(cp::testing::ErrorNumberOf([&] { CreateSampleDatabase(taken, std::nullopt); }),
              err::kFileAlreadyExists) << taken;
  EXPECT_FALSE(std::filesystem::exists(dir.File("destino.db")));
  std::ifstream in(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), "somebody's file");
  for (const InitDbOptions& o : {InitDbOptions{dir.File("no/existe/datos.db"), true, 10},
                                 InitDbOptions{dir.File("negativo.db"), true, -5}}) {
    r = RunInitDb(o);
    EXPECT_EQ(r.status, kExitError) << o.db;
    EXPECT_FALSE(r.err.empty()) << o.db;
    EXPECT_FALSE(std::filesystem::exists(o.db));
  }
}

TEST(TranslateCommand, PrintsOneLineOrFailsOnStandardError) {
  auto translate = [](const std::string& jet) {
    return RunCommand([&](auto& out, auto& err) {
      return Translate({jetsql::Dialect::Postgres, true, jet}, out, err);
    });
  };
  const Result ok = translate("T.Activo = TRUE AND IsNull(T.x)");
  EXPECT_EQ(ok.out, "T.Activo IN (1, -1) AND (T.x IS NULL)\n") << ok.err;
  const Result bad = translate("(b = 1");
  EXPECT_EQ(bad.status, kExitError);
  EXPECT_NE(bad.err.find("(b = 1"), std::string::npos) << bad.err;
}

// A tiny database with the values whose printing matters.
TEST(SqlCommand, PrintsAHeaderAndTabSeparatedRowsOrJson) {
  ScratchDir dir;
  const std::string path = dir.File("sql.db");
  MakeDb(path, false, 0);
  ScratchDb(path).Exec(
      "INSERT INTO IPropio (IdIPropio, IdCliente, Precio, Superficie, FechaAlta, "
      "FechaActualizacion, Notas, Exclusividad, Huecos) VALUES "
      "(1, 3, 125000, 80.5, '2024-03-01', '2024-03-05 17:45:00', 'Dos\tlíneas\nvistas "
      "al mar', 1, 3), (2, NULL, NULL, NULL, NULL, NULL, NULL, 0, NULL)");
  Result r = RunSql(path, "SELECT IdIPropio, IdCliente, Precio, Superficie, FechaAlta, "
                          "FechaActualizacion, Notas, Exclusividad FROM IPropio "
                          "ORDER BY IdIPropio");
  ASSERT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(r.out,
            "IdIPropio\tIdCliente\tPrecio\tSuperficie\tFechaAlta\tFechaActualizacion\tNotas\t"
            "Exclusividad\n"
            "1\t3\t125000\t80.5\t2024-03-01\t2024-03-05 17:45:00\tDos\\tlíneas\\nvistas al mar\t1\n"
            "2\t\t\t\t\t\t\t0\n");
  EXPECT_EQ(r.err, "");
  r = RunSql(path, "SELECT IdIPropio, Precio, Superficie, FechaActualizacion, Exclusividad, "
                   "Notas FROM IPropio WHERE IdIPropio >= 1 ORDER BY IdIPropio DESC", true);
  ASSERT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(nlohmann::json::parse(r.out), nlohmann::json::parse(R"([
      {"IdIPropio": 2, "Precio": null, "Superficie": null, "FechaActualizacion": null,
       "Exclusividad": false, "Notas": null},
      {"IdIPropio": 1, "Precio": 125000.0, "Superficie": 80.5,
       "FechaActualizacion": "2024-03-05 17:45:00", "Exclusividad": true,
       "Notas": "Dos\tlíneas\nvistas al mar"}])"));
  r = RunSql(path, "SELECT IdIPropio FROM IPropio WHERE IdIPropio = 99", true);
  EXPECT_EQ(nlohmann::json::parse(r.out), nlohmann::json::array());
}

// The tool itself: a call without an option the subcommand requires is refused, naming it.
TEST(ToolArguments, AMissingRequiredOptionIsNamed) {
  const std::pair<const char*, const char*> calls[] = {
      {"cross --db x.db --id 1 --to Demandas", "--from"},
      {"query cross --db x.db --id 1 --from Demandas", "--to"},
      {"match --from Demandas", "--db"}};
  for (const auto& [args, missing] : calls) {
    FILE* tool = popen((std::string(CP_TOOL) + " " + args + " 2>&1").c_str(), "r");
    ASSERT_NE(tool, nullptr);
    std::string printed;
    for (int c; (c = std::fgetc(tool)) != EOF;) printed += static_cast<char>(c);
    EXPECT_EQ(WEXITSTATUS(pclose(tool)), kExitError) << args;
    EXPECT_NE(printed.find(std::string(missing) + " is required"), std::string::npos) << printed;
  }
}

// The DAO suite and the SQLite tests pin the numbers; the tool prints them on standard error.
TEST(SqlCommand, FailuresGiveTheDaoMessage) {
  const Result r = RunSql(ScratchDir().File("falta.db"), "SELECT * FROM IPropio");
  EXPECT_EQ(r.status, kExitError);
  EXPECT_EQ(r.out, "");
  EXPECT_EQ(r.err.rfind("Error 3024: ", 0), 0u) << r.err;
}

}  // namespace
}  // namespace cp::cli
