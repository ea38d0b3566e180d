// The demo data: deterministic, in the proportions of a real file, with multi-valued and
// check-box columns in the stored conventions and every id pointing at an existing row.
#include "cli/demo_data.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>
#include <sstream>

#include "cli/commands.h"
#include "cli/schema.h"
#include "platform/core/error.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::kNullText;
using testing::PlainDb;
using testing::ScratchDir;

const char* const kPropertyTables[] = {"IPropio", "IAjeno", "IArchivado", "IVendido"};
const char* const kCheckBoxes[] = {"Amueblado", "Nuevo",      "Trastero",
                                   "Comercial", "Industrial", "Transmitido"};

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
}

TEST(DemoData, SizesFollowTheProportionsOfARealFile) {
  struct Case {
    int n;
    DemoSizes expected;
  } cases[] = {
      {600, {600, 150, 150, 150, 300, 300, 25, 20}},
      {2000, {2000, 500, 500, 500, 1000, 1000, 83, 66}},
      // Small files still have enough contacts to own the properties and fill the lists.
      {0, {0, 0, 0, 0, 0, 20, 10, 10}},
      {10, {10, 2, 2, 2, 5, 20, 10, 10}},
  };
  for (const Case& c : cases) {
    const DemoSizes s = SizesFor(c.n);
    EXPECT_EQ(s.own_properties, c.expected.own_properties) << c.n;
    EXPECT_EQ(s.other_agency_properties, c.expected.other_agency_properties) << c.n;
    EXPECT_EQ(s.archived_properties, c.expected.archived_properties) << c.n;
    EXPECT_EQ(s.sold_properties, c.expected.sold_properties) << c.n;
    EXPECT_EQ(s.demands, c.expected.demands) << c.n;
    EXPECT_EQ(s.clients, c.expected.clients) << c.n;
    EXPECT_EQ(s.agencies, c.expected.agencies) << c.n;
    EXPECT_EQ(s.other_contacts, c.expected.other_contacts) << c.n;
  }
  try {
    SizesFor(-1);
    FAIL() << "a negative size was accepted";
  } catch (const Error& e) {
    EXPECT_EQ(e.number(), err::kInvalidProcedureCall);
  }
}

// One demo file of the fixture's size, shared by the checks below.
class DemoFile : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir;
    path_ = dir_->File("demo.db");
    std::ostringstream out, err;
    ASSERT_EQ(InitDb({path_, true, 600}, out, err), kExitOk) << err.str();
  }
  static void TearDownTestSuite() {
    delete dir_;
    dir_ = nullptr;
  }
  static PlainDb Db() { return PlainDb(path_); }

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string path_;
};

TEST_F(DemoFile, HoldsTheRowCountsOfItsSize) {
  const DemoSizes s = SizesFor(600);
  const std::pair<const char*, int> counts[] = {{"IPropio", s.own_properties},
                                                {"IAjeno", s.other_agency_properties},
                                                {"IArchivado", s.archived_properties},
                                                {"IVendido", s.sold_properties},
                                                {"Demanda", s.demands},
                                                {"Cliente", s.clients},
                                                {"Agencia", s.agencies + 1},
                                                {"Abogado", s.other_contacts},
                                                {"Procurador", s.other_contacts},
                                                {"ClienteContArch", s.other_contacts}};
  PlainDb db = Db();
  for (const auto& [table, n] : counts)
    EXPECT_EQ(db.Count(std::string("SELECT count(*) FROM ") + table), n) << table;
  for (const char* lookup : {"Pais", "Provincia", "Poblacion", "Zona", "BZona", "TfnoCli",
                             "CorreoECli", "TfnoAgencia", "Usuario"})
    EXPECT_GT(db.Count(std::string("SELECT count(*) FROM ") + lookup), 0) << lookup;
}

TEST_F(DemoFile, IsTheSameFileOnEveryRun) {
  ScratchDir other;
  const std::string again = other.File("otra.db");
  std::ostringstream out, err;
  ASSERT_EQ(InitDb({again, true, 600}, out, err), kExitOk) << err.str();
  PlainDb a = Db(), b(again);
  for (const SchemaTable& t : SchemaTables()) {
    const std::string sql = "SELECT * FROM \"" + t.name + "\" ORDER BY rowid";
    EXPECT_EQ(a.Rows(sql), b.Rows(sql)) << t.name;
  }
}

struct MultiValued {
  const char *table, *column, *lookup, *name;
};

TEST_F(DemoFile, MultiValuedColumnsEndEachItemWithSemicolonBlank) {
  std::vector<MultiValued> cases = {{"Cliente", "Categorias", "TipoCategoria", "Nombre"},
                                    {"Agencia", "Categorias", "TipoCategoria", "Nombre"},
                                    {"Abogado", "Categorias", "TipoCategoria", "Nombre"},
                                    {"Demanda", "Categorias", "TipoCategoriaI", "Nombre"},
                                    {"Demanda", "Pais", "Pais", "Nombre"},
                                    {"Demanda", "Provincia", "Provincia", "Nombre"},
                                    {"Demanda", "Poblacion", "Poblacion", "Nombre"},
                                    {"Demanda", "Zona", "Zona", "Nombre"},
                                    {"Demanda", "TipoInmueble", "TipoInmueble", "Nombre"}};
  for (const char* p : kPropertyTables)
    cases.push_back({p, "Categorias", "TipoCategoriaI", "Nombre"});
  PlainDb db = Db();
  for (const MultiValued& c : cases) {
    std::set<std::string> known;
    for (const auto& row : db.Rows(std::string("SELECT ") + c.name + " FROM " + c.lookup))
      known.insert(row[0]);
    int filled = 0, several = 0;
    for (const auto& row : db.Rows(std::string("SELECT ") + c.column + " FROM " + c.table)) {
      const std::string& v = row[0];
      if (v == kNullText || v.empty()) continue;
      ++filled;
      ASSERT_GE(v.size(), 2u);
      EXPECT_EQ(v.substr(v.size() - 2), "; ") << c.table << "." << c.column << " = " << v;
      int items = 0;
      for (std::size_t start = 0; start < v.size(); ++items) {
        const std::size_t end = v.find("; ", start);
        ASSERT_NE(end, std::string::npos) << v;
        const std::string item = v.substr(start, end - start);
        EXPECT_TRUE(known.count(item))
            << c.table << "." << c.column << " item '" << item << "' is not in " << c.lookup;
        start = end + 2;
      }
      several += items > 1;
    }
    EXPECT_GT(filled, 0) << c.table << "." << c.column;
    if (std::string(c.column) != "Pais") {
      EXPECT_GT(several, 0) << c.table << "." << c.column;
    }
  }
  // Real files also hold lists emptied through the form, which the "empty" criteria match.
  EXPECT_GT(db.Count("SELECT count(*) FROM IPropio WHERE Categorias = ''"), 0);
  EXPECT_GT(db.Count("SELECT count(*) FROM Demanda WHERE Categorias = ''"), 0);
}

TEST_F(DemoFile, CheckBoxColumnsHoldOnlyTheThreeStates) {
  PlainDb db = Db();
  long long nulls = 0;
  for (const char* table : {"IPropio", "IAjeno", "IArchivado", "IVendido", "Demanda"}) {
    for (const char* column : kCheckBoxes) {
      const std::string c = column, t = table;
      EXPECT_EQ(db.Count("SELECT count(*) FROM " + t + " WHERE " + c + " NOT IN (0, 1, 2)"), 0)
          << t << "." << c;
      EXPECT_EQ(db.Count("SELECT count(DISTINCT " + c + ") FROM " + t), 3) << t << "." << c;
      const long long n = db.Count("SELECT count(*) FROM " + t + " WHERE " + c + " IS NULL");
      // Crossing reads own and other agencies' properties and demands, and stops at a Null
      // check box: those tables have none.
      if (t == "IPropio" || t == "IAjeno" || t == "Demanda") {
        EXPECT_EQ(n, 0) << t << "." << c;
      }
      nulls += n;
    }
    EXPECT_EQ(db.Count(std::string("SELECT count(*) FROM ") + table +
                       " WHERE Exclusividad NOT IN (0, 1) OR Exclusividad IS NULL"),
              0);
  }
  EXPECT_GT(nulls, 0) << "old filed records keep some empty check boxes";
}

TEST_F(DemoFile, EveryIdRefersToAnExistingRow) {
  struct Reference {
    std::string table, column, target, key;
  };
  std::vector<Reference> refs = {
      {"PrPa", "IdProvincia", "Provincia", "IdProvincia"},
      {"PrPa", "IdPais", "Pais", "IdPais"},
      {"PoPrPa", "IdPoblacion", "Poblacion", "IdPoblacion"},
      {"PoPrPa", "IdProvincia", "Provincia", "IdProvincia"},
      {"PoPrPa", "IdPais", "Pais", "IdPais"},
      {"BZona", "IdZona", "Zona", "IdZona"},
      {"BZona", "IdPoblacion", "Poblacion", "IdPoblacion"},
      {"Usuario", "IdPoblacion", "Poblacion", "IdPoblacion"},
      {"TfnoCli", "IdCliente", "Cliente", "IdCliente"},
      {"CorreoECli", "IdCliente", "Cliente", "IdCliente"},
      {"TfnoAgencia", "IdAgencia", "Agencia", "IdAgencia"},
      {"CorreoECliContArch", "IdClienteContArch", "ClienteContArch", "IdClienteContArch"},
      {"TfnoProcurador", "IdProcurador", "Procurador", "IdProcurador"},
      {"Demanda", "IdCliente", "Cliente", "IdCliente"},
      {"Demanda", "IdOperacion", "Operacion", "IdOperacion"},
      {"Demanda", "IdAliasInmueble", "AliasInmueble", "IdAliasInmueble"},
      {"Demanda", "IdCalefaccion", "Calefaccion", "IdCalefaccion"},
      {"Demanda", "IdAgencia", "Agencia", "IdAgencia"},
      {"Demanda", "IdUsuario", "Usuario", "IdUsuario"},
      {"Demanda", "IdAcceso", "Acceso", "IdAcceso"}};
  for (const char* contact :
       {"Cliente", "Agencia", "Abogado", "ClienteContrario", "Procurador", "ClienteContArch"}) {
    refs.push_back({contact, "IdPais", "Pais", "IdPais"});
    refs.push_back({contact, "IdProvincia", "Provincia", "IdProvincia"});
    refs.push_back({contact, "IdPoblacion", "Poblacion", "IdPoblacion"});
    refs.push_back({contact, "IdUsuario", "Usuario", "IdUsuario"});
  }
  for (const char* p : kPropertyTables) {
    for (const char* lookup :
         {"Pais", "Provincia", "Poblacion", "Zona", "TipoInmueble", "Operacion", "AliasInmueble",
          "Calefaccion", "Agencia", "Usuario", "Acceso"})
      refs.push_back({p, std::string("Id") + lookup, lookup, std::string("Id") + lookup});
    refs.push_back({p, "IdCliente", "Cliente", "IdCliente"});
  }
  PlainDb db = Db();
  for (const Reference& r : refs) {
    const std::string sql = "SELECT count(*) FROM " + r.table + " WHERE " + r.column +
                            " IS NOT NULL AND " + r.column + " NOT IN (SELECT " + r.key + " FROM " +
                            r.target + ")";
    EXPECT_EQ(db.Count(sql), 0) << r.table << "." << r.column << " -> " << r.target;
  }
  // The owner is always known, so the owner join of the host query finds a client.
  EXPECT_EQ(db.Count("SELECT count(*) FROM IPropio WHERE IdCliente IS NULL"), 0);
}

TEST_F(DemoFile, LocationsAgreeWithTheJoinTables) {
  PlainDb db = Db();
  for (const char* p : kPropertyTables) {
    const std::string t = p;
    EXPECT_EQ(db.Count("SELECT count(*) FROM " + t +
                       " x WHERE IdPoblacion IS NOT NULL AND NOT "
                       "EXISTS (SELECT 1 FROM PoPrPa j WHERE j.IdPoblacion = x.IdPoblacion AND "
                       "j.IdProvincia = x.IdProvincia AND j.IdPais = x.IdPais)"),
              0)
        << t;
    EXPECT_EQ(db.Count("SELECT count(*) FROM " + t +
                       " x WHERE IdZona IS NOT NULL AND NOT "
                       "EXISTS (SELECT 1 FROM BZona j WHERE j.IdZona = x.IdZona AND "
                       "j.IdPoblacion = x.IdPoblacion)"),
              0)
        << t;
  }
  EXPECT_EQ(db.Count("SELECT count(*) FROM Usuario WHERE IdPoblacion IS NULL"), 0);
  // A zone name such as "Centro" serves several towns through BZona, as in real files.
  EXPECT_GT(db.Count("SELECT count(*) FROM BZona b JOIN Zona z ON z.IdZona = b.IdZona "
                     "WHERE z.Nombre = 'Centro'"),
            1);
  EXPECT_EQ(db.Count("SELECT count(*) - count(DISTINCT Nombre) FROM Zona"), 0);
}

TEST_F(DemoFile, DatesAreIsoTextAndTypicalValuesAreThere) {
  PlainDb db = Db();
  const std::regex iso(R"(\d{4}-\d{2}-\d{2}( \d{2}:\d{2}:\d{2})?)");
  for (const char* table : {"IPropio", "IVendido", "Demanda", "Cliente"}) {
    for (const SchemaTable& t : SchemaTables()) {
      if (t.name != table) continue;
      for (const SchemaColumn& c : t.columns) {
        if (c.type != "DATETIME") continue;
        for (const auto& row :
             db.Rows("SELECT " + c.name + " FROM " + t.name + " WHERE " + c.name + " IS NOT NULL"))
          ASSERT_TRUE(std::regex_match(row[0], iso)) << t.name << "." << c.name << " " << row[0];
      }
    }
  }
  EXPECT_GT(db.Count("SELECT count(*) FROM IPropio WHERE FechaActualizacion LIKE '% __:__:__'"), 0);
  // Expiry dates on both sides of the data's present, for the "caducado" criterion.
  EXPECT_GT(db.Count("SELECT count(*) FROM IPropio WHERE FechaBaja < '2025-12-31'"), 0);
  EXPECT_GT(db.Count("SELECT count(*) FROM IPropio WHERE FechaBaja > '2025-12-31'"), 0);
  // Nulls where real files have them.
  for (const char* column : {"Precio", "Superficie", "IdZona", "IdAgencia", "Notas", "Huecos"})
    EXPECT_GT(db.Count(std::string("SELECT count(*) FROM IPropio WHERE ") + column + " IS NULL"), 0)
        << column;
  EXPECT_GT(db.Count("SELECT length(Notas) FROM Cliente WHERE IdCliente = 7"), 20000);
  EXPECT_EQ(db.Scalar("SELECT Calefaccion FROM Calefaccion WHERE IdCalefaccion = 1"), "No se sabe");
  EXPECT_EQ(db.Count("SELECT count(DISTINCT Activo) FROM AliasInmueble"), 2);
  EXPECT_EQ(db.Count("SELECT count(*) FROM Agencia WHERE IdAgencia >= 1000000"), 1);
  EXPECT_GT(db.Count("SELECT count(*) FROM Cliente WHERE Alias LIKE '%''%'"), 0);
  EXPECT_GT(db.Count("SELECT count(*) FROM Poblacion WHERE Nombre LIKE '%á%' OR Nombre LIKE '%ó%'"),
            0);
}

}  // namespace
}  // namespace cp::cli
