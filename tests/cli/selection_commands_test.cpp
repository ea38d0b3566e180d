// where, cross and their query forms as scripts see them, on a small demo database.
#include "cli/selection_commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <nlohmann/json.hpp>

#include "common/error_log.h"
#include "platform/core/error.h"
#include "sample/host_query.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using namespace testing;
using Sets = std::vector<std::string>;

class SelectionCommandsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir();
    db_ = dir_->File("demo.db");
    MakeDb(db_, true, 200);
    setErrLogPath(dir_->File(""));
  }
  static void TearDownTestSuite() {
    setErrLogPath("");
    delete dir_;
  }

  static Result RunWhere(const std::string& entity, const Sets& sets, bool json = false,
                         const std::string& restore = "", bool query = false) {
    WhereOptions o;
    o.db = db_;
    o.entity = entity;
    o.sets = sets;
    o.json = json;
    o.restore = restore;
    o.query = query;
    return RunCommand([&](auto& out, auto& err) { return Where(o, out, err); });
  }

  // The host query's output for a condition, through the sql subcommand.
  static std::string Rows(const std::string& entity, const std::string& condition) {
    const Result r = RunCommand([&](auto& out, auto& err) {
      return Sql({db_, false, HostQuery(entity, condition)}, out, err);
    });
    EXPECT_EQ(r.status, kExitOk) << r.err;
    return r.out;
  }

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string db_;
};

TEST_F(SelectionCommandsTest, WorkedExampleToTheCharacter) {
  const Result r = RunWhere("Clientes", {"dtpAlta(0)=2024-03-01", "txtPalabras=garcia",
                                         "cboOpPalabras=Al principio", "cboEn=Apellido"});
  EXPECT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(r.out, " ( Cliente.FechaAlta >= #03/01/24# )  AND Cliente.Apellidos LIKE 'garcia*'\n");
  EXPECT_EQ(r.err, "");
}

TEST_F(SelectionCommandsTest, ConditionsRunAndQueryPrintsTheRows) {
  const std::vector<std::pair<std::string, Sets>> cases = {
      {"Agencias", {"txtPalabras=a", "cboEn=Nº Teléfono"}},
      {"Clientes", {"txtCategorias=Inversor; Particular;", "chkCategorias=1"}},
      {"Agencias", {}},
      {"Inm. Propios", {"txtPais=España", "txtHuecos=3", "chkAmueblado=1", "cboEn=Nº Inmueble",
                        "cboOpPalabras=Mayor o Igual", "txtPalabras=20"}},
      {"Inm. Vendidos", {"cboEn=Propietario", "txtPalabras=garcía", "chkTransmitido=0"}},
      {"Demandas", {"txtPais=España", "txtProvincia=Madrid", "txtPrecio(0)=150.000",
                    "txtSuper(0)=90", "txtBanios=2", "chkNuevo=1", "cboEn=Notas",
                    "txtPalabras=luz"}},
  };
  for (const auto& [entity, sets] : cases) {
    const Result where = RunWhere(entity, sets);
    ASSERT_EQ(where.status, kExitOk) << entity << ": " << where.err;
    EXPECT_EQ(where.err, "") << entity;
    const std::string condition = where.out.substr(0, where.out.size() - 1);
    EXPECT_EQ(sets.empty(), condition.empty()) << entity;
    const Result query = RunWhere(entity, sets, false, "", true);
    ASSERT_EQ(query.status, kExitOk) << query.err;
    EXPECT_EQ(query.out, where.out + Rows(entity, condition)) << entity;
  }
  // The owner's columns can be searched: the host query joins Cliente.
  const std::string owned = Rows("Inm. Propios", "Cliente.Alias LIKE '*a*'");
  EXPECT_GT(std::count(owned.begin(), owned.end(), '\n'), 1);
}

TEST_F(SelectionCommandsTest, SavedSelectionRoundTrip) {
  const Result first = RunWhere("Clientes", {"dtpTransmision(1)=2031-01-01", "txtCategorias=Vip",
      "chkCategorias=0", "txtPalabras=O'Brien", "cboEn=Notas", "cboOpPalabras=Al final"}, true);
  ASSERT_EQ(first.status, kExitOk) << first.err;
  const auto json = nlohmann::json::parse(first.out);
  EXPECT_EQ(json["entidad"], "Clientes");
  EXPECT_EQ(json["seleccion"][0], nlohmann::json::parse(R"(["tbsSelec", 0, ""])"));
  EXPECT_EQ(json["seleccion"][1], nlohmann::json::parse(R"(["dtpTransmision", 1, "2031-01-01"])"));
  const std::string file = dir_->File("saved.json");
  std::ofstream(file) << first.out;
  const Result second = RunWhere("Clientes", {}, true, file);
  ASSERT_EQ(second.status, kExitOk) << second.err;
  EXPECT_EQ(nlohmann::json::parse(second.out), json);
  // A plain array of triples is accepted too, and later --set values apply on top.
  std::ofstream(file) << R"([["tbsSelec", 0, ""], ["txtPalabras", -1, "ruiz"]])";
  EXPECT_EQ(RunWhere("Clientes", {"cboEn=Apellido"}, false, file).out,
            "Cliente.Apellidos LIKE '*ruiz*'\n");
}

TEST_F(SelectionCommandsTest, Failures) {
  WhereOptions abogados;
  abogados.db = db_;
  abogados.entity = "Abogados";
  abogados.possible = {"Abogados", "Clientes"};
  Result r = RunCommand([&](auto& out, auto& err) { return Where(abogados, out, err); });
  EXPECT_EQ(r.status, kExitError);
  EXPECT_EQ(r.out, "");
  EXPECT_NE(r.err.find("Abogados"), std::string::npos);
  r = RunWhere("Notarios", {});
  EXPECT_EQ(r.status, kExitError);
  EXPECT_NE(r.err.find("Text"), std::string::npos) << r.err;
  for (const char* set : {"txtNoExiste=1", "dtpAlta=2024-01-01", "chkCategorias=x",
                          "dtpAlta(0)=31-12-2024", "sinIgual", "txtPalabras(x)=1"}) {
    r = RunWhere("Clientes", {set});
    EXPECT_EQ(r.status, kExitError) << set;
    EXPECT_EQ(r.out, "") << set;
    EXPECT_FALSE(r.err.empty()) << set;
  }
  EXPECT_EQ(RunWhere("Clientes", {}, false, dir_->File("no-existe.json")).status, kExitError);
  WhereOptions missingDb;
  missingDb.db = dir_->File("no-existe.db");
  missingDb.entity = "Clientes";
  r = RunCommand([&](auto& out, auto& err) { return Where(missingDb, out, err); });
  EXPECT_EQ(r.status, kExitError);
  EXPECT_NE(r.err.find("no-existe.db"), std::string::npos);
}

TEST(HostQuery, JoinsTheOwnerForProperties) {
  EXPECT_EQ(HostQuery("Clientes", ""), "SELECT Cliente.* FROM Cliente");
  EXPECT_EQ(HostQuery("Demandas", "Demanda.IdDemanda=3"),
            "SELECT Demanda.* FROM Demanda LEFT JOIN Cliente ON Cliente.IdCliente = "
            "Demanda.IdCliente WHERE Demanda.IdDemanda=3");
  EXPECT_THROW(HostQuery("Notarios", ""), cp::Error);
}

}  // namespace
}  // namespace cp::cli
