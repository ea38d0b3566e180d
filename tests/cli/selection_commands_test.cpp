// where, cross and their query forms as scripts see them, on a small demo database.
#include "cli/selection_commands.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>

#include "cli/commands.h"
#include "common/error_log.h"
#include "platform/core/error.h"
#include "sample/host_query.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::ScratchDb;
using testing::ScratchDir;

using testing::Result;

class SelectionCommandsTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir();
    db_ = dir_->File("demo.db");
    std::ostringstream out, err;
    ASSERT_EQ(InitDb({db_, true, 200}, out, err), kExitOk) << err.str();
    setErrLogPath(dir_->File(""));
  }
  static void TearDownTestSuite() {
    setErrLogPath("");
    delete dir_;
  }

  Result RunWhere(WhereOptions o) {
    o.db = db_;
    std::ostringstream out, err;
    const int status = Where(o, out, err);
    return {status, out.str(), err.str()};
  }

  // The keys the host query returns, read with plain SQLite from the Jet text that our
  // engine translated (through the tool itself).
  std::vector<std::string> Rows(const std::string& entity, const std::string& condition) {
    std::ostringstream out, err;
    EXPECT_EQ(Sql({db_, false, HostQuery(entity, condition)}, out, err), kExitOk) << err.str();
    std::vector<std::string> lines;
    std::istringstream in(out.str());
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
  }

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string db_;
};

TEST_F(SelectionCommandsTest, WorkedExampleToTheCharacter) {
  WhereOptions o;
  o.entity = "Clientes";
  o.sets = {"dtpAlta(0)=2024-03-01", "txtPalabras=garcia", "cboOpPalabras=Al principio",
            "cboEn=Apellido"};
  const Result r = RunWhere(o);
  EXPECT_EQ(r.status, kExitOk) << r.err;
  EXPECT_EQ(r.out, " ( Cliente.FechaAlta >= #03/01/24# )  AND Cliente.Apellidos LIKE 'garcia*'\n");
  EXPECT_EQ(r.err, "");
}

TEST_F(SelectionCommandsTest, ConditionsRunAndQueryPrintsTheRows) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"Agencias", {"txtPalabras=a", "cboEn=Nº Teléfono"}},
      {"Agencias", {"txtPalabras=.es", "cboEn=Correo Electrónico", "cboOpPalabras=Al final"}},
      {"Agencias", {"txtPalabras=Ma", "cboEn=Población", "cboOpPalabras=Al principio"}},
      {"Clientes", {"txtCategorias=Inversor; Particular;", "chkCategorias=1"}},
      {"Clientes Archivados", {"dtpActualiza(0)=2020-01-01", "dtpActualiza(1)=2025-12-31"}},
      {"Agencias", {}},
      {"Inm. Propios", {"txtPais=España", "txtHuecos=3", "chkAmueblado=1", "cboEn=Nº Inmueble",
                        "cboOpPalabras=Mayor o Igual", "txtPalabras=20"}},
      {"Inm. Ajenos", {"txtPrecio(0)=100.000", "txtPrecio(1)=400.000", "txtSuper(0)=60",
                       "chkExclusiva=0", "chkCaducado=1", "chkIntBolsa=1"}},
      {"Inm. Archivados", {"txtCategorias=Lujo", "chkCategorias=1", "txtTipos=Piso; Ático",
                           "dtpAlta(0)=2010-01-01"}},
      {"Inm. Vendidos", {"cboEn=Propietario", "txtPalabras=garcía", "chkTransmitido=0"}},
      {"Demandas", {"txtPais=España", "txtProvincia=Madrid", "txtPrecio(0)=150.000",
                    "txtSuper(0)=90", "txtBanios=2", "chkNuevo=1", "cboEn=Notas",
                    "txtPalabras=luz"}},
      {"Demandas", {"txtCalefaccion=No se sabe", "txtCategorias=Lujo; Terraza",
                    "chkCategorias=1", "chkIntAgencia=0"}},
  };
  for (const auto& [entity, sets] : cases) {
    WhereOptions o;
    o.entity = entity;
    o.sets = sets;
    const Result where = RunWhere(o);
    ASSERT_EQ(where.status, kExitOk) << entity << ": " << where.err;
    EXPECT_EQ(where.err, "") << entity;
    const std::string condition = where.out.substr(0, where.out.size() - 1);
    EXPECT_EQ(sets.empty(), condition.empty()) << entity;
    const auto rows = Rows(entity, condition);

    o.query = true;
    const Result query = RunWhere(o);
    ASSERT_EQ(query.status, kExitOk) << query.err;
    std::string expected = where.out;
    for (const auto& line : rows) expected += line + "\n";
    EXPECT_EQ(query.out, expected) << entity;
  }
}

TEST_F(SelectionCommandsTest, SavedSelectionRoundTrip) {
  WhereOptions o;
  o.entity = "Clientes";
  o.sets = {"dtpTransmision(1)=2031-01-01", "txtCategorias=Vip", "chkCategorias=0",
            "txtPalabras=O'Brien", "cboEn=Notas", "cboOpPalabras=Al final"};
  o.json = true;
  const Result first = RunWhere(o);
  ASSERT_EQ(first.status, kExitOk) << first.err;
  const auto json = nlohmann::json::parse(first.out);
  EXPECT_EQ(json["entidad"], "Clientes");
  EXPECT_EQ(json["seleccion"][0], nlohmann::json::parse(R"(["tbsSelec", 0, ""])"));
  EXPECT_EQ(json["seleccion"][1], nlohmann::json::parse(R"(["dtpTransmision", 1, "2031-01-01"])"));

  const std::string file = dir_->File("saved.json");
  std::ofstream(file) << first.out;
  WhereOptions again;
  again.entity = "Clientes";
  again.restore = file;
  again.json = true;
  const Result second = RunWhere(again);
  ASSERT_EQ(second.status, kExitOk) << second.err;
  EXPECT_EQ(nlohmann::json::parse(second.out), json);

  // A plain array of triples is accepted too, and later --set values apply on top.
  std::ofstream(file) << R"([["tbsSelec", 0, ""], ["txtPalabras", -1, "ruiz"]])";
  again.json = false;
  again.sets = {"cboEn=Apellido"};
  EXPECT_EQ(RunWhere(again).out, "Cliente.Apellidos LIKE '*ruiz*'\n");
}

TEST_F(SelectionCommandsTest, Failures) {
  WhereOptions abogados;
  abogados.entity = "Abogados";
  abogados.possible = {"Abogados", "Clientes"};
  Result r = RunWhere(abogados);
  EXPECT_EQ(r.status, kExitError);
  EXPECT_EQ(r.out, "");
  EXPECT_NE(r.err.find("Abogados"), std::string::npos);

  WhereOptions unknown;
  unknown.entity = "Notarios";
  r = RunWhere(unknown);
  EXPECT_EQ(r.status, kExitError);
  EXPECT_NE(r.err.find("Text"), std::string::npos) << r.err;

  WhereOptions badSet;
  badSet.entity = "Clientes";
  for (const char* set : {"txtNoExiste=1", "dtpAlta=2024-01-01", "chkCategorias=x",
                          "dtpAlta(0)=31-12-2024", "sinIgual", "txtPalabras(x)=1"}) {
    badSet.sets = {set};
    r = RunWhere(badSet);
    EXPECT_EQ(r.status, kExitError) << set;
    EXPECT_EQ(r.out, "") << set;
    EXPECT_FALSE(r.err.empty()) << set;
  }

  WhereOptions missingFile;
  missingFile.entity = "Clientes";
  missingFile.restore = dir_->File("no-existe.json");
  EXPECT_EQ(RunWhere(missingFile).status, kExitError);
  std::ostringstream out, err;
  WhereOptions missingDb;
  missingDb.db = dir_->File("no-existe.db");
  missingDb.entity = "Clientes";
  EXPECT_EQ(Where(missingDb, out, err), kExitError);
  EXPECT_NE(err.str().find("no-existe.db"), std::string::npos);
}

TEST_F(SelectionCommandsTest, HostQueryJoinsTheOwnerForProperties) {
  EXPECT_EQ(HostQuery("Clientes", ""), "SELECT Cliente.* FROM Cliente");
  EXPECT_EQ(HostQuery("Demandas", "Demanda.IdDemanda=3"),
            "SELECT Demanda.* FROM Demanda LEFT JOIN Cliente ON Cliente.IdCliente = "
            "Demanda.IdCliente WHERE Demanda.IdDemanda=3");
  EXPECT_THROW(HostQuery("Notarios", ""), cp::Error);
  EXPECT_EQ(Rows("Inm. Propios", "Cliente.Alias LIKE '*a*'").size() > 1, true);
}

}  // namespace
}  // namespace cp::cli
