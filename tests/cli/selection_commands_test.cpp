// where, cross and their query forms as scripts see them, on a small demo database.
#include "cli/selection_commands.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>

#include "platform/core/error.h"
#include "sample/host_query.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using namespace testing;
using Sets = std::vector<std::string>;

class SelectionCommandsTest : public DemoDbTest<200> {
 protected:

  static Result RunWhere(WhereOptions o) {
    if (o.db.empty()) o.db = db_;
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

};

TEST_F(SelectionCommandsTest, WorkedExampleToTheCharacter) {
  const Result r = RunWhere({.entity = "Clientes", .sets = {"dtpAlta(0)=2024-03-01",
      "txtPalabras=garcia", "cboOpPalabras=Al principio", "cboEn=Apellido"}});
  EXPECT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(r.out, " ( Cliente.FechaAlta >= #03/01/24# )  AND Cliente.Apellidos LIKE 'garcia*'\n");
  EXPECT_EQ(r.err, "");
}

TEST_F(SelectionCommandsTest, ConditionsRunAndQueryPrintsTheRows) {
  const std::vector<std::pair<std::string, Sets>> cases = {
      {"Agencias", {"txtPalabras=a", "cboEn=Nº Teléfono"}},
      {"Agencias", {}},
      {"Inm. Vendidos", {"cboEn=Propietario", "txtPalabras=garcía", "chkTransmitido=0"}},
      {"Demandas", {"txtPais=España", "txtProvincia=Madrid", "txtPrecio(0)=150.000",
                    "txtSuper(0)=90", "txtBanios=2", "chkNuevo=1", "cboEn=Notas",
                    "txtPalabras=luz"}},
  };
  for (const auto& [entity, sets] : cases) {
    const Result where = RunWhere({.entity = entity, .sets = sets});
    ASSERT_EQ(where.status, kExitOk) << entity << ": " << where.err;
    const std::string condition = where.out.substr(0, where.out.size() - 1);
    EXPECT_EQ(sets.empty(), condition.empty()) << entity;
    const Result query = RunWhere({.entity = entity, .sets = sets, .query = true});
    EXPECT_EQ(query.out, where.out + Rows(entity, condition)) << entity;
  }
}

TEST_F(SelectionCommandsTest, SavedSelectionRoundTrip) {
  const Result first = RunWhere({.entity = "Clientes", .sets = {"dtpTransmision(1)=2031-01-01",
      "txtCategorias=Vip", "chkCategorias=0", "txtPalabras=O'Brien", "cboEn=Notas"},
      .json = true});
  ASSERT_EQ(first.status, kExitOk) << first.err;
  const auto json = nlohmann::json::parse(first.out);
  EXPECT_EQ(json["entidad"], "Clientes");
  EXPECT_EQ(json["seleccion"][1], nlohmann::json::parse(R"(["dtpTransmision", 1, "2031-01-01"])"));
  const std::string file = dir_->File("saved.json");
  std::ofstream(file) << first.out;
  EXPECT_EQ(nlohmann::json::parse(RunWhere({.entity = "Clientes", .restore = file,
                                            .json = true}).out), json);
  // A plain array of triples is accepted too, and later --set values apply on top.
  std::ofstream(file) << R"([["tbsSelec", 0, ""], ["txtPalabras", -1, "ruiz"]])";
  EXPECT_EQ(RunWhere({.entity = "Clientes", .restore = file, .sets = {"cboEn=Apellido"}}).out,
            "Cliente.Apellidos LIKE '*ruiz*'\n");
}

TEST_F(SelectionCommandsTest, FailuresExitWithTwoAndPrintNothing) {
  const WhereOptions cases[] = {
      {.entity = "Abogados", .possible = {"Abogados", "Clientes"}},  // no criteria control
      {.entity = "Notarios"},
      {.entity = "Clientes", .restore = dir_->File("no-existe.json")},
      {.db = dir_->File("no-existe.db"), .entity = "Clientes"},
  };
  for (const WhereOptions& o : cases) {
    const Result r = RunWhere(o);
    EXPECT_EQ(r.status, kExitError) << o.entity << o.db;
    EXPECT_EQ(r.out, "") << o.entity;
    EXPECT_FALSE(r.err.empty()) << o.entity;
  }
  for (const char* set : {"txtNoExiste=1", "dtpAlta=2024-01-01", "chkCategorias=x",
                          "dtpAlta(0)=31-12-2024", "sinIgual", "txtPalabras(x)=1"}) {
    const Result r = RunWhere({.entity = "Clientes", .sets = {set}});
    EXPECT_EQ(r.status, kExitError) << set;
    EXPECT_FALSE(r.err.empty()) << set;
  }
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
