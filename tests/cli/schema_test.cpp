// The schema that init-db writes: the DAO types and auto-increment keys the component relies
// on, lookup indexes, and a plain SQLite file that other tools can write.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/commands.h"
#include "platform/dao/connect.h"
#include "platform/dao/database.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::ScratchDb;
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
  static inline ScratchDir* dir_ = nullptr;
  static inline std::string path_;
};

TEST_F(SchemaFile, ColumnsReadAsTheirDaoTypesAndKeysAreNumberedByTheEngine) {
  struct Case {
    const char *table, *column;
    int type;
    bool autoIncrement;
  } cases[] = {{"IPropio", "Precio", dao::dbCurrency, false},
               {"Demanda", "SuperficieMaxima", dao::dbDouble, false},
               {"AliasInmueble", "Activo", dao::dbBoolean, false},
               {"IPropio", "Amueblado", dao::dbInteger, false},
               {"Cliente", "FechaEnvioAnotaciones", dao::dbDate, false},
               {"Demanda", "Notas", dao::dbMemo, false},
               {"TfnoCli", "Numero", dao::dbText, false},
               {"IPropio", "IdCliente", dao::dbLong, false},
               {"PrPa", "IdPais", dao::dbLong, false},
               {"TipoCategoriaI", "IdTipoCategoriaI", dao::dbLong, true},
               {"IPropio", "IdIPropio", dao::dbLong, true},
               {"Demanda", "IdDemanda", dao::dbLong, true}};
  auto db = dao::OpenDatabase(path_);
  for (const Case& c : cases) {
    auto field = db->TableDefs(c.table).Fields(c.column);
    EXPECT_EQ(field.Type(), c.type) << c.table << "." << c.column;
    // The list picker decides whether it may number new rows from this attribute.
    EXPECT_EQ((field.Attributes() & dao::dbAutoIncrField) != 0, c.autoIncrement)
        << c.table << "." << c.column;
  }
  EXPECT_EQ(db->TableDefs("Pais").Fields("Nombre").Size(), 50);
  EXPECT_EQ(db->TableDefs("Demanda").Fields("Categorias").Size(), 255);
}

TEST_F(SchemaFile, LookupNamesAndIdsAreIndexed) {
  const char* indexed[][2] = {{"Zona", "Nombre"},   {"AliasInmueble", "Inmueble"},
                              {"BZona", "IdPoblacion"}, {"CorreoECliContArch", "IdClienteContArch"},
                              {"IVendido", "IdAgencia"}, {"Cliente", "IdPoblacion"}};
  ScratchDb db(path_);
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
  ScratchDb db(path_);
  // Only tables and indexes, no views or triggers, and nothing that needs our own collations
  // or functions: the stock shell reads and writes it.
  EXPECT_EQ(db.Count("SELECT count(*) FROM sqlite_master WHERE type NOT IN ('table','index')"), 0);
  EXPECT_EQ(db.Count("SELECT count(*) FROM sqlite_master WHERE upper(sql) LIKE '%COLLATE%'"), 0);
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
