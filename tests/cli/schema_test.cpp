// The schema that init-db writes: every table and column the component reads, the types the
// DAO-like API needs, auto-increment lookup keys, lookup indexes, and a plain SQLite file.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "cli/commands.h"
#include "platform/dao/connect.h"
#include "platform/dao/database.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::PlainDb;
using testing::ScratchDir;

class SchemaFile : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir;
    path_ = dir_->File("vacia.db");
    std::ostringstream out, err;
    ASSERT_EQ(InitDb({path_, false, 0}, out, err), kExitOk) << err.str();
  }
  static void TearDownTestSuite() {
    delete dir_;
    dir_ = nullptr;
  }

  // Column name -> declared type, as SQLite reports the table.
  static std::map<std::string, std::string> Columns(const std::string& table) {
    std::map<std::string, std::string> out;
    for (const auto& row : PlainDb(path_).Rows("PRAGMA table_info(\"" + table + "\")"))
      out[row[1]] = row[2];
    return out;
  }

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string path_;
};

struct TableColumns {
  const char* table;
  std::vector<const char*> columns;
};

// What the component reads: the entity catalogue (table, key, phone and e-mail tables), the
// contact search fields, the property and demand criteria, the crossing joins, the lookups.
const std::vector<TableColumns>& ReadByTheComponent() {
  static const std::vector<const char*> kContact = {"Alias",
                                                    "Organizacion",
                                                    "Apellidos",
                                                    "Calle",
                                                    "IdPoblacion",
                                                    "IdProvincia",
                                                    "IdPais",
                                                    "Notas",
                                                    "NIF",
                                                    "PagWeb",
                                                    "IdUsuario",
                                                    "Categorias",
                                                    "FechaAlta",
                                                    "FechaActualizacion",
                                                    "FechaEnvioAnotaciones"};
  static const std::vector<const char*> kFeatures = {"IdOperacion",
                                                     "IdAliasInmueble",
                                                     "IdCalefaccion",
                                                     "IdAgencia",
                                                     "IdUsuario",
                                                     "IdAcceso",
                                                     "IdDestino",
                                                     "Categorias",
                                                     "Superficie",
                                                     "Huecos",
                                                     "Exterior",
                                                     "Ascensor",
                                                     "Garaje",
                                                     "Altura",
                                                     "Aseos",
                                                     "Banios",
                                                     "Exclusividad",
                                                     "Amueblado",
                                                     "Nuevo",
                                                     "Trastero",
                                                     "Comercial",
                                                     "Industrial",
                                                     "Transmitido",
                                                     "FechaBaja",
                                                     "FechaAlta",
                                                     "FechaActualizacion",
                                                     "FechaTransmision",
                                                     "Notas",
                                                     "IdCliente"};
  static const std::vector<TableColumns> tables = [] {
    std::vector<TableColumns> t = {
        {"Pais", {"IdPais", "Nombre"}},
        {"Provincia", {"IdProvincia", "Nombre"}},
        {"Poblacion", {"IdPoblacion", "Nombre"}},
        {"Zona", {"IdZona", "Nombre"}},
        {"PrPa", {"IdProvincia", "IdPais"}},
        {"PoPrPa", {"IdPoblacion", "IdProvincia", "IdPais"}},
        {"BZona", {"IdZona", "IdPais", "IdProvincia", "IdPoblacion"}},
        {"TipoInmueble", {"IdTipoInmueble", "Nombre"}},
        {"Operacion", {"IdOperacion", "Operacion"}},
        {"AliasInmueble", {"IdAliasInmueble", "Inmueble", "Activo"}},
        {"Inmueble", {"IdInmueble", "Inmueble"}},
        {"Calefaccion", {"IdCalefaccion", "Calefaccion"}},
        {"Acceso", {"IdAcceso", "Acceso"}},
        {"TipoCategoria", {"IdTipoCategoria", "Nombre"}},
        {"TipoCategoriaI", {"IdTipoCategoriaI", "Nombre"}},
        {"Usuario", {"IdUsuario", "Nombre", "IdPoblacion", "IdProvincia", "IdPais"}},
    };
    const char* contacts[][4] = {
        {"Cliente", "IdCliente", "TfnoCli", "CorreoECli"},
        {"Abogado", "IdAbogado", "TfnoAbogado", "CorreoEAbogado"},
        {"Agencia", "IdAgencia", "TfnoAgencia", "CorreoEAgencia"},
        {"ClienteContrario", "IdClienteContrario", "TfnoCliCont", "CorreoECliCont"},
        {"Procurador", "IdProcurador", "TfnoProcurador", "CorreoEProcurador"},
        {"ClienteContArch", "IdClienteContArch", "TfnoCliContArch", "CorreoECliContArch"}};
    for (const auto& c : contacts) {
      TableColumns table{c[0], {c[1]}};
      table.columns.insert(table.columns.end(), kContact.begin(), kContact.end());
      t.push_back(table);
      t.push_back({c[2], {c[1], "Numero"}});
      t.push_back({c[3], {c[1], "Numero"}});
    }
    for (const char* p : {"IPropio", "IAjeno", "IArchivado", "IVendido"}) {
      TableColumns table{
          p, {"IdPais", "IdProvincia", "IdPoblacion", "IdZona", "IdTipoInmueble", "Precio"}};
      table.columns.insert(table.columns.end(), kFeatures.begin(), kFeatures.end());
      t.push_back(table);
    }
    t.back().columns.push_back("IdIVendido");
    t[t.size() - 2].columns.push_back("IdIArchivado");
    t[t.size() - 3].columns.push_back("IdIAjeno");
    t[t.size() - 4].columns.push_back("IdIPropio");
    TableColumns demand{"Demanda",
                        {"IdDemanda", "Pais", "Provincia", "Poblacion", "Zona", "TipoInmueble",
                         "PrecioMinimo", "PrecioMaximo", "SuperficieMaxima"}};
    demand.columns.insert(demand.columns.end(), kFeatures.begin(), kFeatures.end());
    t.push_back(demand);
    return t;
  }();
  return tables;
}

TEST_F(SchemaFile, HasEveryTableAndColumnTheComponentReads) {
  for (const TableColumns& t : ReadByTheComponent()) {
    const auto columns = Columns(t.table);
    ASSERT_FALSE(columns.empty()) << "missing table " << t.table;
    for (const char* c : t.columns) EXPECT_TRUE(columns.count(c)) << t.table << "." << c;
  }
}

TEST_F(SchemaFile, EveryLookupAndEntityKeyIsAutoIncrement) {
  const char* keys[][2] = {{"Pais", "IdPais"},
                           {"Provincia", "IdProvincia"},
                           {"Poblacion", "IdPoblacion"},
                           {"Zona", "IdZona"},
                           {"TipoInmueble", "IdTipoInmueble"},
                           {"Operacion", "IdOperacion"},
                           {"AliasInmueble", "IdAliasInmueble"},
                           {"Inmueble", "IdInmueble"},
                           {"Calefaccion", "IdCalefaccion"},
                           {"Acceso", "IdAcceso"},
                           {"TipoCategoria", "IdTipoCategoria"},
                           {"TipoCategoriaI", "IdTipoCategoriaI"},
                           {"Usuario", "IdUsuario"},
                           {"Agencia", "IdAgencia"},
                           {"Cliente", "IdCliente"},
                           {"IPropio", "IdIPropio"},
                           {"Demanda", "IdDemanda"}};
  // The list picker decides whether it may number new rows from this attribute.
  auto db = dao::OpenDatabase(path_);
  for (const auto& [table, key] : keys) {
    EXPECT_EQ(db->TableDefs(table).Fields(key).Attributes() & dao::dbAutoIncrField,
              dao::dbAutoIncrField)
        << table << "." << key;
    EXPECT_EQ(db->TableDefs(table).Fields(key).Type(), dao::dbLong) << table << "." << key;
  }
  // Join tables and ordinary id columns are not numbered by the engine.
  EXPECT_EQ(db->TableDefs("PrPa").Fields("IdPais").Attributes() & dao::dbAutoIncrField, 0);
  EXPECT_EQ(db->TableDefs("IPropio").Fields("IdCliente").Attributes() & dao::dbAutoIncrField, 0);
}

TEST_F(SchemaFile, ColumnTypesReadAsTheirDaoTypes) {
  struct Case {
    const char *table, *column;
    int type;
  } cases[] = {{"IPropio", "Precio", dao::dbCurrency},
               {"Demanda", "PrecioMinimo", dao::dbCurrency},
               {"IPropio", "Superficie", dao::dbDouble},
               {"Demanda", "SuperficieMaxima", dao::dbDouble},
               {"IPropio", "Exclusividad", dao::dbBoolean},
               {"AliasInmueble", "Activo", dao::dbBoolean},
               {"IPropio", "Amueblado", dao::dbInteger},
               {"IPropio", "Huecos", dao::dbInteger},
               {"IPropio", "FechaAlta", dao::dbDate},
               {"Cliente", "FechaEnvioAnotaciones", dao::dbDate},
               {"Cliente", "Notas", dao::dbMemo},
               {"Demanda", "Notas", dao::dbMemo},
               {"Cliente", "Alias", dao::dbText},
               {"Demanda", "Zona", dao::dbText},
               {"TfnoCli", "Numero", dao::dbText},
               {"IPropio", "IdZona", dao::dbLong}};
  auto db = dao::OpenDatabase(path_);
  for (const Case& c : cases)
    EXPECT_EQ(db->TableDefs(c.table).Fields(c.column).Type(), c.type) << c.table << "." << c.column;
  EXPECT_EQ(db->TableDefs("Pais").Fields("Nombre").Size(), 50);
  EXPECT_EQ(db->TableDefs("Demanda").Fields("Categorias").Size(), 255);
}

TEST_F(SchemaFile, LookupNamesAndIdsAreIndexed) {
  const char* indexed[][2] = {{"Pais", "Nombre"},
                              {"Provincia", "Nombre"},
                              {"Poblacion", "Nombre"},
                              {"Zona", "Nombre"},
                              {"TipoInmueble", "Nombre"},
                              {"Operacion", "Operacion"},
                              {"AliasInmueble", "Inmueble"},
                              {"Calefaccion", "Calefaccion"},
                              {"Acceso", "Acceso"},
                              {"Usuario", "Nombre"},
                              {"TipoCategoriaI", "Nombre"},
                              {"Agencia", "Alias"},
                              {"PrPa", "IdPais"},
                              {"PoPrPa", "IdProvincia"},
                              {"BZona", "IdPoblacion"},
                              {"TfnoCli", "IdCliente"},
                              {"CorreoECliContArch", "IdClienteContArch"},
                              {"IPropio", "IdCliente"},
                              {"IAjeno", "IdZona"},
                              {"IVendido", "IdAgencia"},
                              {"Demanda", "IdCliente"},
                              {"Cliente", "IdPoblacion"}};
  PlainDb db(path_);
  for (const auto& [table, column] : indexed) {
    bool found = false;
    for (const auto& index : db.Rows(std::string("PRAGMA index_list(\"") + table + "\")")) {
      const auto cols = db.Rows("PRAGMA index_info(\"" + index[1] + "\")");
      if (cols.size() == 1 && cols[0][2] == column) found = true;
    }
    EXPECT_TRUE(found) << "no index on " << table << "." << column;
  }
}

TEST_F(SchemaFile, StaysAPlainSqliteFile) {
  PlainDb db(path_);
  // Only tables and indexes, no views or triggers, and nothing that needs our own collations
  // or functions: the stock shell reads and writes it.
  EXPECT_EQ(db.Count("SELECT count(*) FROM sqlite_master WHERE type NOT IN ('table','index')"), 0);
  EXPECT_EQ(db.Count("SELECT count(*) FROM sqlite_master WHERE upper(sql) LIKE '%COLLATE%'"), 0);
  EXPECT_EQ(db.Scalar("PRAGMA integrity_check"), "ok");
  // A row written by another tool with only a few named columns is valid: the rest default or
  // accept Null (Yes/No columns default to 0).
  db.Exec("INSERT INTO IPropio (IdCliente, Precio) VALUES (1, 125000)");
  db.Exec("INSERT INTO AliasInmueble (Inmueble) VALUES ('Buhardilla')");
  db.Exec("INSERT INTO Demanda (IdCliente) VALUES (1)");
  EXPECT_EQ(db.Scalar("SELECT Exclusividad FROM IPropio"), "0");
  EXPECT_EQ(db.Scalar("SELECT Activo FROM AliasInmueble"), "0");
  EXPECT_EQ(db.Scalar("SELECT IdIPropio FROM IPropio"), "1");
  EXPECT_EQ(db.Scalar("SELECT Amueblado FROM Demanda"), testing::kNullText);
  db.Exec("DELETE FROM IPropio; DELETE FROM AliasInmueble; DELETE FROM Demanda;");
}

}  // namespace
}  // namespace cp::cli
