// The demo data: deterministic, with multi-valued and check-box columns in the stored
// conventions and every id pointing at an existing row.
#include "sample/demo_data.h"

#include <gtest/gtest.h>

#include <array>
#include <regex>
#include <set>

#include "sample/schema.h"
#include "tests/cli/test_db.h"
#include "tests/support/errors.h"

namespace cp::cli {
namespace {

using namespace testing;

TEST(DemoData, SameSeedGivesTheSameRowsAndAnotherSeedOtherRows) {
  MemorySink a, b, c;
  GenerateDemoData(a, {120, 7});
  GenerateDemoData(b, {120, 7});
  GenerateDemoData(c, {120, 8});
  ASSERT_EQ(a.tables().size(), SchemaTables().size());
  for (const auto& [name, table] : a.tables()) {
    EXPECT_EQ(table.columns, b.tables().at(name).columns) << name;
    EXPECT_EQ(table.rows, b.tables().at(name).rows) << name;
  }
  EXPECT_NE(a.tables().at("IPropio").rows, c.tables().at("IPropio").rows);
  EXPECT_NE(a.tables().at("Cliente").rows, c.tables().at("Cliente").rows);
  EXPECT_EQ(cp::testing::ErrorNumberOf([] { (void)SizesFor(-1); }), err::kInvalidProcedureCall);
}

// One demo file, shared by the checks below.
class DemoFile : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir;
    MakeDb(dir_->File("demo.db"), true, 600);
    db_ = new ScratchDb(dir_->File("demo.db"));
  }
  static void TearDownTestSuite() {
    delete db_;
    delete dir_;
  }
  static long long Count(const std::string& from) {
    return db_->Count("SELECT count(*) FROM " + from);
  }
  static inline ScratchDir* dir_ = nullptr;
  static inline ScratchDb* db_ = nullptr;
};

TEST_F(DemoFile, MultiValuedColumnsEndEachItemWithSemicolonBlank) {
  const char* cases[][3] = {{"Cliente", "Categorias", "TipoCategoria"},
                            {"Demanda", "Categorias", "TipoCategoriaI"},
                            {"Demanda", "Provincia", "Provincia"}, {"Demanda", "Zona", "Zona"},
                            {"Demanda", "TipoInmueble", "TipoInmueble"},
                            {"IAjeno", "Categorias", "TipoCategoriaI"}};
  for (const auto& [table, column, lookup] : cases) {
    SCOPED_TRACE(std::string(table) + "." + column);
    std::set<std::string> known;
    for (const auto& row : db_->Rows(std::string("SELECT Nombre FROM ") + lookup))
      known.insert(row[0]);
    int filled = 0, several = 0;
    for (const auto& row : db_->Rows(std::string("SELECT ") + column + " FROM " + table)) {
      const std::string& v = row[0];
      if (v == kNullText || v.empty()) continue;
      ++filled;
      int items = 0;
      for (std::size_t start = 0; start < v.size(); ++items) {
        const std::size_t end = v.find("; ", start);
        ASSERT_NE(end, std::string::npos) << v;
        EXPECT_TRUE(known.count(v.substr(start, end - start))) << v;
        start = end + 2;
      }
      several += items > 1;
    }
    EXPECT_GT(filled, 0);
    EXPECT_GT(several, 0);
  }
  // Real files also hold lists emptied through the form, which the "empty" criteria match.
  EXPECT_GT(Count("IPropio WHERE Categorias = ''"), 0);
  EXPECT_GT(Count("Demanda WHERE Categorias = ''"), 0);
}

TEST_F(DemoFile, CheckBoxesHoldTheThreeStatesAndNoNullWhereCrossingReads) {
  for (const std::string t : {"IPropio", "IAjeno", "IArchivado", "Demanda"}) {
    for (const std::string c : {"Amueblado", "Nuevo", "Trastero", "Transmitido"}) {
      SCOPED_TRACE(t + "." + c);
      EXPECT_EQ(Count(t + " WHERE " + c + " NOT IN (0, 1, 2)"), 0);
      EXPECT_EQ(db_->Count("SELECT count(DISTINCT " + c + ") FROM " + t), 3);
      // Old filed records keep some empty check boxes; crossing reads the other tables.
      EXPECT_EQ(Count(t + " WHERE " + c + " IS NULL") > 0, t == "IArchivado");
    }
  }
}

TEST_F(DemoFile, EveryIdRefersToAnExistingRowAndLocationsAgreeWithTheJoinTables) {
  std::vector<std::array<std::string, 3>> refs = {{"PoPrPa", "IdProvincia", "Provincia"},
                                                  {"BZona", "IdZona", "Zona"},
                                                  {"TfnoCli", "IdCliente", "Cliente"},
                                                  {"Demanda", "IdCliente", "Cliente"},
                                                  {"Demanda", "IdAliasInmueble", "AliasInmueble"},
                                                  {"Abogado", "IdPoblacion", "Poblacion"}};
  for (const std::string t : {"IPropio", "IAjeno", "IArchivado", "IVendido"}) {
    for (const std::string lookup : {"Zona", "TipoInmueble", "Operacion", "Agencia", "Cliente"})
      refs.push_back({t, "Id" + lookup, lookup});
    EXPECT_EQ(Count(t + " x WHERE IdPoblacion IS NOT NULL AND NOT EXISTS (SELECT 1 FROM PoPrPa j "
                        "WHERE j.IdPoblacion = x.IdPoblacion AND j.IdProvincia = x.IdProvincia "
                        "AND j.IdPais = x.IdPais)"), 0) << t;
    EXPECT_EQ(Count(t + " x WHERE IdZona IS NOT NULL AND NOT EXISTS (SELECT 1 FROM BZona j "
                        "WHERE j.IdZona = x.IdZona AND j.IdPoblacion = x.IdPoblacion)"), 0) << t;
  }
  for (const auto& [table, column, target] : refs)
    EXPECT_EQ(Count(table + " WHERE " + column + " IS NOT NULL AND " + column + " NOT IN (SELECT " +
                    column + " FROM " + target + ")"), 0) << table << "." << column;
  EXPECT_EQ(Count("IPropio WHERE IdCliente IS NULL"), 0);
  // A zone name such as "Centro" serves several towns through BZona, as in real files.
  EXPECT_GT(Count("BZona b JOIN Zona z ON z.IdZona = b.IdZona WHERE z.Nombre = 'Centro'"), 1);
}

TEST_F(DemoFile, DatesAreIsoTextAndTypicalValuesAreThere) {
  const std::regex iso(R"(\d{4}-\d{2}-\d{2}( \d{2}:\d{2}:\d{2})?)");
  for (const std::string c : {"FechaAlta", "FechaActualizacion", "FechaBaja", "FechaTransmision"})
    for (const auto& row : db_->Rows("SELECT " + c + " FROM IVendido WHERE " + c + " IS NOT NULL"))
      ASSERT_TRUE(std::regex_match(row[0], iso)) << c << " " << row[0];
  EXPECT_GT(Count("IPropio WHERE FechaActualizacion LIKE '% __:__:__'"), 0);
  // Expiry dates on both sides of the data's present, for the "caducado" criterion.
  EXPECT_GT(Count("IPropio WHERE FechaBaja < '2025-12-31'"), 0);
  EXPECT_GT(Count("IPropio WHERE FechaBaja > '2025-12-31'"), 0);
  EXPECT_GT(Count("IPropio WHERE Precio IS NULL OR Huecos IS NULL"), 0);
  EXPECT_GT(db_->Count("SELECT length(Notas) FROM Cliente WHERE IdCliente = 7"), 20000);
  EXPECT_EQ(db_->Scalar("SELECT Calefaccion FROM Calefaccion WHERE IdCalefaccion = 1"),
            "No se sabe");
  EXPECT_EQ(Count("Agencia WHERE IdAgencia >= 1000000"), 1);
  EXPECT_GT(Count("Cliente WHERE Alias LIKE '%''%'"), 0);
}

}  // namespace
}  // namespace cp::cli
