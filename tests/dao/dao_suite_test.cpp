// The DAO-like API over every engine: typed values, traversal, searching, table definitions,
// late-bound fields and the errors a Jet user sees.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/dao/dao_errors.h"
#include "tests/dao/backend.h"
#include "tests/support/errors.h"

namespace cp::dao::testing {
namespace {

using ::testing::HasSubstr;
using cp::testing::CaughtError;
using cp::testing::ErrorNumberOf;
using Names = std::vector<std::string>;

const std::string kLongMemo(20000, 'n');

struct ColumnCase {
  const char* name;
  int type;
  long size;
  Variant first, third;  // the values in rows 1 and 3 (row 2 is all Null)
};

const std::vector<ColumnCase> kMuestra = {
    {"Id", dbLong, 4, std::int32_t{1}, std::int32_t{3}},
    {"Nombre", dbText, 40, "Piso; Local; ", "Ático"}, {"Notas", dbMemo, 0, kLongMemo, ""},
    {"Plantas", dbInteger, 2, std::int16_t{3}, std::int16_t{-2}},
    {"Nivel", dbByte, 1, std::int16_t{7}, std::int16_t{0}},
    {"Cantidad", dbLong, 4, std::int32_t{123456}, std::int32_t{-7}},
    {"Activo", dbBoolean, 1, true, false}, {"Superficie", dbDouble, 8, 85.5, 0.0},
    {"Precio", dbCurrency, 8, 150000.25, 12.0},
    {"Alta", dbDate, 8, MakeDate(2005, 3, 7), MakeDate(2031, 12, 31, 14, 30, 5)},
};

class DaoSuite : public ::testing::TestWithParam<BackendParam> {
 protected:
  void SetUp() override {
    backend_ = GetParam().make();
    connection_ = backend_->CreateDatabase();
    const TestBackend& b = *backend_;
    Native("CREATE TABLE Zona (IdZona " + b.AutoIncrementKey() + ", Nombre " +
           b.Declare(dbText, 50) + ", Orden " + b.Declare(dbLong) + ")");
    for (const auto& [nombre, orden] : std::vector<std::pair<std::string, std::string>>{
             {"Madrid", "3"}, {"ávila", "1"}, {"Málaga", "2"}, {"O'Donnell", "NULL"},
             {"Ávila Norte", "5"}})
      Native("INSERT INTO Zona (Nombre, Orden) VALUES (" + b.Literal(nombre) + ", " + orden + ")");
    std::string create = "CREATE TABLE Muestra (Id " + b.PlainKey();
    std::string first, null = "2", third;
    for (const ColumnCase& c : kMuestra) {
      if (std::string(c.name) != "Id") {
        create += std::string(", ") + c.name + " " + b.Declare(c.type, c.size);
        null += ", NULL";
      }
      first += (first.empty() ? "" : ", ") + b.Literal(c.first);
      third += (third.empty() ? "" : ", ") + b.Literal(c.third);
    }
    Native(create + ")");
    for (const std::string& row : {first, null, third})
      Native("INSERT INTO Muestra VALUES (" + row + ")");
    db_ = OpenDatabase(connection_);
  }

  void Native(const std::string& sql) { backend_->Execute(connection_, sql); }
  static Names NamesOf(Recordset& rs) {
    Names names;
    for (; !rs.Eof(); rs.MoveNext()) names.push_back(rs.Fields("Nombre").Value().AsString());
    return names;
  }

  std::unique_ptr<TestBackend> backend_;
  std::string connection_;
  std::shared_ptr<Database> db_;
};

TEST_P(DaoSuite, ColumnsComeWithTheirDaoTypeAndTypedValues) {
  auto rs = db_->OpenRecordset("SELECT * FROM Muestra ORDER BY Id");
  ASSERT_EQ(rs.FieldCount(), static_cast<int>(kMuestra.size()));
  for (std::size_t i = 0; i < kMuestra.size(); ++i) {
    SCOPED_TRACE(kMuestra[i].name);
    const Field f = rs.Fields(static_cast<int>(i));
    // The server keeps names in lower case; DAO looks names up ignoring case.
    EXPECT_TRUE(SameName(f.Name(), kMuestra[i].name)) << f.Name();
    EXPECT_EQ(f.Type(), kMuestra[i].type);
    EXPECT_EQ(f.Size(), kMuestra[i].size);
    EXPECT_EQ(f.Value(), kMuestra[i].first) << f.Value().TypeName();
  }
  rs.MoveNext();
  for (const auto& c : kMuestra) {
    if (std::string(c.name) == "Id") continue;
    EXPECT_TRUE(rs.Fields(c.name).Value().IsNull()) << c.name;
    EXPECT_EQ(rs.Fields(c.name).Type(), c.type) << "a Null keeps its column's type";
  }
  rs.MoveNext();
  for (const auto& c : kMuestra) EXPECT_EQ(rs.Fields(c.name).Value(), c.third) << c.name;
  // Expressions take the type of their values; a table column keeps its declared type.
  auto ex = db_->OpenRecordset("SELECT IdZona * 2 AS Doble, IdZona + 0.5 AS Medio, "
                               "Nombre & '!' AS Marcado, Orden FROM Zona ORDER BY IdZona");
  const std::vector<std::tuple<const char*, int, Variant>> expressions = {
      {"Doble", dbLong, std::int32_t{2}}, {"Medio", dbDouble, 1.5},
      {"Marcado", dbText, "Madrid!"}, {"Orden", dbLong, std::int32_t{3}}};
  for (const auto& [name, type, value] : expressions) {
    EXPECT_EQ(ex.Fields(name).Type(), type) << name;
    EXPECT_EQ(ex.Fields(name).Value(), value) << name;
  }
  // A field the recordset does not have is not in the collection.
  for (auto lookup : std::vector<std::function<void()>>{
           [&] { ex.Fields("Nada"); }, [&] { ex.Fields(4); }, [&] { ex.Fields(-1); }}) {
    const Error e = CaughtError(lookup);
    EXPECT_EQ(e.number(), daoerr::kItemNotFound);
    EXPECT_EQ(e.description(), "Elemento no encontrado en esta colección.");
  }
}

TEST_P(DaoSuite, SnapshotCountsRewindsAndStopsAtEof) {
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona ORDER BY IdZona");
  EXPECT_EQ(rs.Type(), dbOpenSnapshot);
  EXPECT_EQ(rs.RecordCount(), 5) << "known as soon as the snapshot opens";
  EXPECT_FALSE(rs.Bof());
  EXPECT_EQ(NamesOf(rs), (Names{"Madrid", "ávila", "Málaga", "O'Donnell", "Ávila Norte"}));
  EXPECT_TRUE(rs.Eof());
  EXPECT_EQ(ErrorNumberOf([&] { rs.MoveNext(); }), daoerr::kNoCurrentRecord);
  const Error atEof = CaughtError([&] { rs.Fields("Nombre").Value(); });
  EXPECT_EQ(atEof.number(), daoerr::kNoCurrentRecord);
  EXPECT_EQ(atEof.description(), "No hay registro activo.");
  rs.MoveFirst();
  EXPECT_EQ(rs.Fields("nombre").Value(), Variant("Madrid"));
  EXPECT_EQ(rs.RecordCount(), 5);
}

TEST_P(DaoSuite, ForwardOnlyCountsRowsReachedAndCannotGoBack) {
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona ORDER BY IdZona", dbOpenForwardOnly);
  EXPECT_EQ(rs.Type(), dbOpenForwardOnly);
  EXPECT_EQ(rs.RecordCount(), 1);
  rs.MoveNext();
  EXPECT_EQ(rs.RecordCount(), 2);
  EXPECT_EQ(rs.Fields(0).Value(), Variant("ávila"));
  EXPECT_EQ(ErrorNumberOf([&] { rs.MoveFirst(); }), daoerr::kNotForThisType);
  EXPECT_EQ(ErrorNumberOf([&] { rs.FindFirst("Nombre = 'Madrid'"); }), daoerr::kNotForThisType);
  EXPECT_EQ(NamesOf(rs), (Names{"ávila", "Málaga", "O'Donnell", "Ávila Norte"}));
  EXPECT_EQ(rs.RecordCount(), 5);
  EXPECT_EQ(ErrorNumberOf([&] { rs.Fields("Nombre").Value(); }), daoerr::kNoCurrentRecord);
}

TEST_P(DaoSuite, EmptyResultIsAtBothEndsAndAFieldFollowsTheRecordUntilClose) {
  for (auto type : {dbOpenSnapshot, dbOpenForwardOnly}) {
    auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona WHERE IdZona = -1", type);
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(ErrorNumberOf([&] { rs.Fields("Nombre").Value(); }), daoerr::kNoCurrentRecord);
    EXPECT_EQ(ErrorNumberOf([&] { rs.MoveNext(); }), daoerr::kNoCurrentRecord);
    if (type == dbOpenSnapshot) {
      EXPECT_EQ(ErrorNumberOf([&] { rs.MoveFirst(); }), daoerr::kNoCurrentRecord);
    }

    auto full = db_->OpenRecordset("SELECT IdZona, Nombre FROM Zona ORDER BY IdZona", type);
    const Field nombre = full.Fields("NOMBRE");
    EXPECT_EQ(nombre.Value(), Variant("Madrid"));
    full.MoveNext();
    EXPECT_EQ(nombre.Value(), Variant("ávila"));
    full.Close();
    EXPECT_EQ(ErrorNumberOf([&] { nombre.Value(); }), daoerr::kObjectInvalid);
    EXPECT_EQ(ErrorNumberOf([&] { full.Eof(); }), daoerr::kObjectInvalid);
    EXPECT_EQ(ErrorNumberOf([&] { full.Close(); }), daoerr::kObjectInvalid);
  }
}

TEST_P(DaoSuite, FindFirstSearchesFromTheTopWithJetRules) {
  const std::vector<std::pair<const char*, int>> zonas = {  // id found, 0: no match
      {"Nombre = 'MADRID'", 1},   {"Nombre = 'ÁVILA'", 2},  {"Nombre LIKE 'ÁVILA*'", 2},
      {"Nombre = 'O''Donnell'", 4}, {"IsNull(Orden)", 4}, {"Orden >= 4 AND Nombre LIKE 'á*'", 5},
      {"Nombre = 'Cádiz'", 0},
  };
  auto rs = db_->OpenRecordset("SELECT IdZona, Nombre, Orden FROM Zona ORDER BY IdZona");
  for (const auto& [criterion, id] : zonas) {
    rs.MoveFirst();
    rs.MoveNext();
    rs.MoveNext();  // start on the third row: the search must still begin at the first
    rs.FindFirst(criterion);
    EXPECT_EQ(rs.NoMatch(), id == 0) << criterion;
    EXPECT_EQ(rs.Fields("IdZona").Value(), Variant(std::int32_t{id ? id : 3})) << criterion;
  }
  // Dates, numbers and Yes/No compare as stored; two-digit year 29 is 2029, 30 is 1930.
  const std::vector<std::pair<const char*, int>> muestra = {
      {"Alta > #01/01/29#", 3}, {"Alta > #01/01/30#", 1},
      {"Alta >= #03/07/05# AND Alta < #03/08/05#", 1},
      {"Activo = FALSE", 3},    {"Activo = TRUE", 1}, {"IsNull(Alta)", 2},
      {"Precio > 1000", 1},     {"Nivel = 0", 3},     {"Notas = ''", 3},
  };
  auto ms = db_->OpenRecordset("SELECT * FROM Muestra ORDER BY Id");
  for (const auto& [criterion, id] : muestra) {
    ms.FindFirst(criterion);
    EXPECT_FALSE(ms.NoMatch()) << criterion;
    EXPECT_EQ(ms.Fields("Id").Value(), Variant(std::int32_t{id})) << criterion;
  }
  const Error e = CaughtError([&] { rs.FindFirst("Poblacion = 'Madrid'"); });
  EXPECT_EQ(e.number(), daoerr::kUnknownFieldInExpression);
  EXPECT_THAT(e.description(), HasSubstr("Poblacion"));
  EXPECT_EQ(e.source(), kRecordsetSource);
}

TEST_P(DaoSuite, TableDefinitionsGiveTypesSizesAndAutoIncrement) {
  const TableDef muestra = db_->TableDefs("muestra");
  EXPECT_TRUE(SameName(muestra.Name(), "Muestra")) << muestra.Name();
  ASSERT_EQ(muestra.FieldCount(), static_cast<int>(kMuestra.size()));
  for (const auto& c : kMuestra) {
    const Field f = muestra.Fields(c.name);
    EXPECT_EQ(f.Type(), c.type) << c.name;
    EXPECT_EQ(f.Size(), c.size) << c.name;
    EXPECT_EQ(f.Attributes() & dbAutoIncrField, 0) << c.name << ": not numbered by the engine";
  }
  const TableDef zona = db_->TableDefs("Zona");
  EXPECT_NE(zona.Fields("IdZona").Attributes() & dbAutoIncrField, 0);
  EXPECT_EQ(zona.Fields("Nombre").Attributes() & dbAutoIncrField, 0);
  EXPECT_TRUE(SameName(zona.Fields(0).Name(), "IdZona"));
  EXPECT_EQ(ErrorNumberOf([&] { db_->TableDefs("Nada"); }), daoerr::kItemNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { zona.Fields("Provincia"); }), daoerr::kItemNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { zona.Fields("IdZona").Value(); }), daoerr::kInvalidOperation);
}

TEST_P(DaoSuite, FieldAnswersLateBoundPropertyReads) {
  std::shared_ptr<Dispatch> key = std::make_shared<Field>(db_->TableDefs("Zona").Fields("IdZona"));
  const Variant asProperty(key);  // how the list picker receives it
  Dispatch& field = *asProperty.AsObject();
  EXPECT_TRUE(SameName(field.GetProperty("name").AsString(), "IdZona"));
  EXPECT_EQ(field.GetProperty("TYPE"), Variant(std::int16_t{dbLong}));
  EXPECT_EQ(field.GetProperty("Size"), Variant(std::int32_t{4}));
  EXPECT_NE(field.GetProperty("Attributes").AsLong() & dbAutoIncrField, 0);
  EXPECT_EQ(ErrorNumberOf([&] { field.GetProperty("Caption"); }), err::kPropertyNotFound);
  EXPECT_EQ(ErrorNumberOf([&] { field.SetProperty("Name", "Otro"); }), daoerr::kReadOnly);
  EXPECT_EQ(ErrorNumberOf([&] { field.CallMethod("Refresh"); }), err::kPropertyNotFound);
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona WHERE IdZona = 3");
  Field nombre = rs.Fields("Nombre");
  EXPECT_EQ(nombre.GetProperty("Value"), Variant("Málaga"));
  EXPECT_EQ(nombre.GetProperty("Size"), Variant(std::int32_t{50}));
}

TEST_P(DaoSuite, EngineErrorsBecomeDaoErrorsNamingTheCulprit) {
  for (const char* sql : {"SELECT * FROM Nada", "SELECT Fantasma FROM Zona",
                          "SELECT Zona.Fantasma FROM Zona"}) {
    const Error e = CaughtError([&] { db_->OpenRecordset(sql); });
    const bool table = std::string(sql).find("Nada") != std::string::npos;
    EXPECT_EQ(e.number(), table ? daoerr::kTableNotFound : daoerr::kTooFewParameters) << sql;
    EXPECT_THAT(e.description(), HasSubstr(table ? "'Nada'" : "Fantasma"));
    EXPECT_EQ(e.source(), kDatabaseSource);
    if (table) {
      EXPECT_EQ(e.description(),
                "El motor de base de datos no encuentra la tabla o consulta de entrada 'Nada'. "
                "Asegúrese de que existe y de que su nombre está escrito correctamente.");
    }
  }
  // Straight to the engine: SQL that a translator would never produce.
  auto engine = OpenEngine(connection_);
  const Error syntax = CaughtError([&] { engine->Query("SELECT Nombre FROM Zona WHERE Orden >"); });
  EXPECT_EQ(syntax.number(), daoerr::kSyntaxInQuery);
  EXPECT_THAT(syntax.description(), HasSubstr("Orden >"));
  EXPECT_EQ(ErrorNumberOf([&] { engine->Query("DELETE FROM Zona"); }), daoerr::kInvalidOperation);
  EXPECT_EQ(db_->OpenRecordset("SELECT IdZona FROM Zona").RecordCount(), 5)
      << "the rejected statement wrote nothing";
}

TEST_P(DaoSuite, ClosedDatabaseIsNoLongerValid) {
  EXPECT_EQ(db_->Name(), connection_);
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona ORDER BY IdZona");
  db_->Close();
  EXPECT_EQ(rs.Fields("Nombre").Value(), Variant("Madrid")) << "open recordsets keep their rows";
  EXPECT_EQ(ErrorNumberOf([&] { db_->OpenRecordset("SELECT * FROM Zona"); }),
            daoerr::kObjectInvalid);
  EXPECT_EQ(ErrorNumberOf([&] { db_->Name(); }), daoerr::kObjectInvalid);
  EXPECT_EQ(ErrorNumberOf([&] { db_->Close(); }), daoerr::kObjectInvalid);
}

INSTANTIATE_TEST_SUITE_P(Engines, DaoSuite, ::testing::ValuesIn(AllBackends()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace cp::dao::testing
