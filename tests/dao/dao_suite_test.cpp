// The DAO-like API over every engine: typed values, traversal, searching, table definitions,
// late-bound fields and the errors a Jet user sees.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/dao/dao_errors.h"
#include "tests/dao/backend.h"
#include "tests/support/errors.h"

namespace cp::dao::testing {
namespace {

using ::testing::HasSubstr;

const std::string kLongMemo(20000, 'n');

class DaoSuite : public ::testing::TestWithParam<BackendParam> {
 protected:
  void SetUp() override {
    backend_ = GetParam().make();
    connection_ = backend_->CreateDatabase();
    const auto& b = *backend_;
    Native("CREATE TABLE Zona (IdZona " + b.AutoIncrementKey() + ", Nombre " +
           b.Declare(dbText, 50) + ", Orden " + b.Declare(dbLong) + ")");
    const std::vector<std::pair<Variant, Variant>> zonas = {
        {"Madrid", std::int32_t{3}}, {"ávila", std::int32_t{1}}, {"Málaga", std::int32_t{2}},
        {"O'Donnell", Variant::Null()}, {"Ávila Norte", std::int32_t{5}}};
    for (const auto& [nombre, orden] : zonas)
      Native("INSERT INTO Zona (Nombre, Orden) VALUES (" + b.Literal(nombre) + ", " +
             b.Literal(orden) + ")");

    Native("CREATE TABLE Muestra (Id " + b.PlainKey() + ", Nombre " + b.Declare(dbText, 40) +
           ", Notas " + b.Declare(dbMemo) + ", Plantas " + b.Declare(dbInteger) + ", Nivel " +
           b.Declare(dbByte) + ", Cantidad " + b.Declare(dbLong) + ", Activo " +
           b.Declare(dbBoolean) + ", Superficie " + b.Declare(dbDouble) + ", Precio " +
           b.Declare(dbCurrency) + ", Alta " + b.Declare(dbDate) + ")");
    InsertMuestra({std::int32_t{1}, "Piso; Local; ", kLongMemo, std::int16_t{3}, std::int16_t{7},
                   std::int32_t{123456}, true, 85.5, 150000.25, MakeDate(2005, 3, 7)});
    InsertMuestra({std::int32_t{2}, Variant::Null(), Variant::Null(), Variant::Null(),
                   Variant::Null(), Variant::Null(), Variant::Null(), Variant::Null(),
                   Variant::Null(), Variant::Null()});
    InsertMuestra({std::int32_t{3}, "Ático", "", std::int16_t{-2}, std::int16_t{0},
                   std::int32_t{-7}, false, 0.0, 12.0, MakeDate(2031, 12, 31, 14, 30, 5)});
    db_ = OpenDatabase(connection_);
  }

  void Native(const std::string& sql) { backend_->Execute(connection_, sql); }

  void InsertMuestra(const std::vector<Variant>& values) {
    std::string sql = "INSERT INTO Muestra VALUES (";
    for (std::size_t i = 0; i < values.size(); ++i)
      sql += (i ? ", " : "") + backend_->Literal(values[i]);
    Native(sql + ")");
  }

  std::vector<std::string> Names(Recordset& rs) {
    std::vector<std::string> names;
    for (; !rs.Eof(); rs.MoveNext()) names.push_back(rs.Fields("Nombre").Value().AsString());
    return names;
  }

  std::unique_ptr<TestBackend> backend_;
  std::string connection_;
  std::shared_ptr<Database> db_;
};

struct ColumnCase {
  const char* name;
  int type;
  long size;
  Variant first;  // value in row Id = 1
  Variant third;  // value in row Id = 3
};

const std::vector<ColumnCase>& MuestraColumns() {
  static const std::vector<ColumnCase> cases = {
      {"Id", dbLong, 4, std::int32_t{1}, std::int32_t{3}},
      {"Nombre", dbText, 40, "Piso; Local; ", "Ático"},
      {"Notas", dbMemo, 0, kLongMemo, ""},
      {"Plantas", dbInteger, 2, std::int16_t{3}, std::int16_t{-2}},
      {"Nivel", dbByte, 1, std::int16_t{7}, std::int16_t{0}},
      {"Cantidad", dbLong, 4, std::int32_t{123456}, std::int32_t{-7}},
      {"Activo", dbBoolean, 1, true, false},
      {"Superficie", dbDouble, 8, 85.5, 0.0},
      {"Precio", dbCurrency, 8, 150000.25, 12.0},
      {"Alta", dbDate, 8, MakeDate(2005, 3, 7), MakeDate(2031, 12, 31, 14, 30, 5)},
  };
  return cases;
}

TEST_P(DaoSuite, ColumnsComeWithTheirDaoTypeAndTypedValues) {
  auto rs = db_->OpenRecordset("SELECT * FROM Muestra ORDER BY Id");
  ASSERT_EQ(rs.FieldCount(), static_cast<int>(MuestraColumns().size()));
  const auto& cases = MuestraColumns();
  for (std::size_t i = 0; i < cases.size(); ++i) {
    SCOPED_TRACE(cases[i].name);
    const Field f = rs.Fields(static_cast<int>(i));
    // The server keeps names in lower case; DAO looks names up ignoring case.
    EXPECT_TRUE(SameName(f.Name(), cases[i].name)) << f.Name();
    EXPECT_EQ(f.Type(), cases[i].type);
    EXPECT_EQ(f.Size(), cases[i].size);
    EXPECT_EQ(f.Value(), cases[i].first) << f.Value().TypeName();
  }
  rs.MoveNext();
  for (const auto& c : cases) {
    if (std::string(c.name) == "Id") continue;
    EXPECT_TRUE(rs.Fields(c.name).Value().IsNull()) << c.name;
    EXPECT_EQ(rs.Fields(c.name).Type(), c.type) << "a Null keeps its column's type";
  }
  rs.MoveNext();
  for (const auto& c : cases) EXPECT_EQ(rs.Fields(c.name).Value(), c.third) << c.name;
}

TEST_P(DaoSuite, ExpressionColumnsTakeTheTypeOfTheirValues) {
  auto rs = db_->OpenRecordset(
      "SELECT IdZona * 2 AS Doble, IdZona + 0.5 AS Medio, Nombre & '!' AS Marcado, Orden "
      "FROM Zona ORDER BY IdZona");
  EXPECT_EQ(rs.Fields("Doble").Type(), dbLong);
  EXPECT_EQ(rs.Fields("Doble").Value(), Variant(std::int32_t{2}));
  EXPECT_EQ(rs.Fields("Medio").Type(), dbDouble);
  EXPECT_EQ(rs.Fields("Medio").Value(), Variant(1.5));
  EXPECT_EQ(rs.Fields("Marcado").Type(), dbText);
  EXPECT_EQ(rs.Fields("Marcado").Value(), Variant("Madrid!"));
  EXPECT_EQ(rs.Fields("Orden").Type(), dbLong) << "a table column keeps its declared type";
}

TEST_P(DaoSuite, SnapshotCountsRewindsAndStopsAtEof) {
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona ORDER BY IdZona");
  EXPECT_EQ(rs.Type(), dbOpenSnapshot);
  EXPECT_EQ(rs.RecordCount(), 5) << "known as soon as the snapshot opens";
  EXPECT_FALSE(rs.Bof());
  EXPECT_EQ(Names(rs), (std::vector<std::string>{"Madrid", "ávila", "Málaga", "O'Donnell",
                                                 "Ávila Norte"}));
  EXPECT_TRUE(rs.Eof());
  EXPECT_EQ(cp::testing::CaughtError([&] { rs.MoveNext(); }).number(), daoerr::kNoCurrentRecord);
  const Error atEof = cp::testing::CaughtError([&] { rs.Fields("Nombre").Value(); });
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
  EXPECT_EQ(cp::testing::CaughtError([&] { rs.MoveFirst(); }).number(), daoerr::kNotForThisType);
  EXPECT_EQ(cp::testing::CaughtError([&] { rs.FindFirst("Nombre = 'Madrid'"); }).number(),
            daoerr::kNotForThisType);
  EXPECT_EQ(Names(rs), (std::vector<std::string>{"ávila", "Málaga", "O'Donnell", "Ávila Norte"}));
  EXPECT_EQ(rs.RecordCount(), 5);
  EXPECT_EQ(cp::testing::CaughtError([&] { rs.Fields("Nombre").Value(); }).number(), daoerr::kNoCurrentRecord);
}

TEST_P(DaoSuite, EmptyResultIsAtBothEnds) {
  for (auto type : {dbOpenSnapshot, dbOpenForwardOnly}) {
    auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona WHERE IdZona = -1", type);
    EXPECT_TRUE(rs.Eof());
    EXPECT_TRUE(rs.Bof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(cp::testing::CaughtError([&] { rs.Fields("Nombre").Value(); }).number(), daoerr::kNoCurrentRecord);
    EXPECT_EQ(cp::testing::CaughtError([&] { rs.MoveNext(); }).number(), daoerr::kNoCurrentRecord);
  }
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona WHERE IdZona = -1");
  EXPECT_EQ(cp::testing::CaughtError([&] { rs.MoveFirst(); }).number(), daoerr::kNoCurrentRecord);
}

TEST_P(DaoSuite, FieldFollowsTheCurrentRecordUntilClose) {
  for (auto type : {dbOpenSnapshot, dbOpenForwardOnly}) {
    auto rs = db_->OpenRecordset("SELECT IdZona, Nombre FROM Zona ORDER BY IdZona", type);
    const Field nombre = rs.Fields("NOMBRE");
    EXPECT_EQ(nombre.Value(), Variant("Madrid"));
    rs.MoveNext();
    EXPECT_EQ(nombre.Value(), Variant("ávila"));
    rs.Close();
    EXPECT_EQ(cp::testing::CaughtError([&] { nombre.Value(); }).number(), daoerr::kObjectInvalid);
    EXPECT_EQ(cp::testing::CaughtError([&] { rs.Eof(); }).number(), daoerr::kObjectInvalid);
    EXPECT_EQ(cp::testing::CaughtError([&] { rs.Close(); }).number(), daoerr::kObjectInvalid);
  }
}

TEST_P(DaoSuite, UnknownFieldIsNotInTheCollection) {
  auto rs = db_->OpenRecordset("SELECT IdZona, Nombre FROM Zona");
  for (auto lookup : std::vector<std::function<void()>>{[&] { rs.Fields("Orden"); },
                                                         [&] { rs.Fields(2); },
                                                         [&] { rs.Fields(-1); }}) {
    const Error e = cp::testing::CaughtError(lookup);
    EXPECT_EQ(e.number(), daoerr::kItemNotFound);
    EXPECT_EQ(e.description(), "Elemento no encontrado en esta colección.");
  }
}

struct FindCase {
  const char* criterion;
  int expectedId;  // 0: no match
};

TEST_P(DaoSuite, FindFirstSearchesFromTheTopWithJetTextRules) {
  const std::vector<FindCase> cases = {
      {"Nombre = 'MADRID'", 1},        {"Nombre = 'ÁVILA'", 2},
      {"Nombre = 'málaga'", 3},        {"Nombre LIKE 'ÁVILA*'", 2},
      {"Nombre LIKE '*norte'", 5},     {"Nombre = 'O''Donnell'", 4},
      {"IsNull(Orden)", 4},            {"Orden > 2", 1},
      {"Orden >= 4 AND Nombre LIKE 'á*'", 5},
      {"Nombre = 'Cádiz'", 0},         {"Orden > 100", 0},
  };
  auto rs = db_->OpenRecordset("SELECT IdZona, Nombre, Orden FROM Zona ORDER BY IdZona");
  for (const auto& c : cases) {
    SCOPED_TRACE(c.criterion);
    rs.MoveFirst();
    rs.MoveNext();
    rs.MoveNext();  // start on the third row: the search must still begin at the first
    rs.FindFirst(c.criterion);
    EXPECT_EQ(rs.NoMatch(), c.expectedId == 0);
    const int expected = c.expectedId == 0 ? 3 : c.expectedId;  // no match stays put
    EXPECT_EQ(rs.Fields("IdZona").Value(), Variant(std::int32_t{expected}));
  }
}

TEST_P(DaoSuite, FindFirstComparesDatesNumbersAndYesNoAsStored) {
  const std::vector<FindCase> cases = {
      {"Alta > #01/01/29#", 3},   // two-digit year 29 is 2029
      {"Alta > #01/01/30#", 1},   // 30 is 1930
      {"Alta >= #03/07/05# AND Alta < #03/08/05#", 1},
      {"Activo = FALSE", 3},      {"Activo = TRUE", 1},
      {"IsNull(Alta)", 2},        {"Precio > 1000", 1},
      {"Nivel = 0", 3},           {"Notas = ''", 3},
  };
  auto rs = db_->OpenRecordset("SELECT * FROM Muestra ORDER BY Id");
  for (const auto& c : cases) {
    rs.FindFirst(c.criterion);
    EXPECT_FALSE(rs.NoMatch()) << c.criterion;
    EXPECT_EQ(rs.Fields("Id").Value(), Variant(std::int32_t{c.expectedId})) << c.criterion;
  }
}

TEST_P(DaoSuite, FindFirstNamesAnUnknownColumn) {
  auto rs = db_->OpenRecordset("SELECT IdZona, Nombre FROM Zona");
  const Error e = cp::testing::CaughtError([&] { rs.FindFirst("Poblacion = 'Madrid'"); });
  EXPECT_EQ(e.number(), daoerr::kUnknownFieldInExpression);
  EXPECT_THAT(e.description(), HasSubstr("Poblacion"));
  EXPECT_EQ(e.source(), kRecordsetSource);
}

TEST_P(DaoSuite, TableDefinitionsGiveTypesSizesAndAutoIncrement) {
  const TableDef muestra = db_->TableDefs("muestra");
  EXPECT_TRUE(SameName(muestra.Name(), "Muestra")) << muestra.Name();
  ASSERT_EQ(muestra.FieldCount(), static_cast<int>(MuestraColumns().size()));
  for (const auto& c : MuestraColumns()) {
    const Field f = muestra.Fields(c.name);
    EXPECT_EQ(f.Type(), c.type) << c.name;
    EXPECT_EQ(f.Size(), c.size) << c.name;
    EXPECT_EQ(f.Attributes() & dbAutoIncrField, 0) << c.name << ": not numbered by the engine";
  }
  const TableDef zona = db_->TableDefs("Zona");
  EXPECT_NE(zona.Fields("IdZona").Attributes() & dbAutoIncrField, 0);
  EXPECT_EQ(zona.Fields("Nombre").Attributes() & dbAutoIncrField, 0);
  EXPECT_TRUE(SameName(zona.Fields(0).Name(), "IdZona"));

  EXPECT_EQ(cp::testing::CaughtError([&] { db_->TableDefs("Nada"); }).number(), daoerr::kItemNotFound);
  EXPECT_EQ(cp::testing::CaughtError([&] { zona.Fields("Provincia"); }).number(), daoerr::kItemNotFound);
  EXPECT_EQ(cp::testing::CaughtError([&] { zona.Fields("IdZona").Value(); }).number(), daoerr::kInvalidOperation);
}

TEST_P(DaoSuite, FieldAnswersLateBoundPropertyReads) {
  std::shared_ptr<Dispatch> key = std::make_shared<Field>(db_->TableDefs("Zona").Fields("IdZona"));
  const Variant asProperty(key);  // how the list picker receives it
  Dispatch& field = *asProperty.AsObject();
  EXPECT_TRUE(SameName(field.GetProperty("name").AsString(), "IdZona"));
  EXPECT_EQ(field.GetProperty("TYPE"), Variant(std::int16_t{dbLong}));
  EXPECT_EQ(field.GetProperty("Size"), Variant(std::int32_t{4}));
  EXPECT_NE(field.GetProperty("Attributes").AsLong() & dbAutoIncrField, 0);
  EXPECT_EQ(cp::testing::CaughtError([&] { field.GetProperty("Caption"); }).number(), err::kPropertyNotFound);
  EXPECT_EQ(cp::testing::CaughtError([&] { field.SetProperty("Name", "Otro"); }).number(), daoerr::kReadOnly);
  EXPECT_EQ(cp::testing::CaughtError([&] { field.CallMethod("Refresh"); }).number(), err::kPropertyNotFound);

  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona WHERE IdZona = 3");
  Field nombre = rs.Fields("Nombre");
  EXPECT_EQ(nombre.GetProperty("Value"), Variant("Málaga"));
  EXPECT_EQ(nombre.GetProperty("Size"), Variant(std::int32_t{50}));
}

struct ErrorCase {
  const char* sql;
  long number;
  const char* culprit;
};

TEST_P(DaoSuite, EngineErrorsBecomeDaoErrorsNamingTheCulprit) {
  const std::vector<ErrorCase> cases = {
      {"SELECT * FROM Nada", daoerr::kTableNotFound, "'Nada'"},
      {"SELECT Fantasma FROM Zona", daoerr::kTooFewParameters, "Fantasma"},
      {"SELECT Zona.Fantasma FROM Zona", daoerr::kTooFewParameters, "Fantasma"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.sql);
    const Error e = cp::testing::CaughtError([&] { db_->OpenRecordset(c.sql); });
    EXPECT_EQ(e.number(), c.number);
    EXPECT_THAT(e.description(), HasSubstr(c.culprit));
    EXPECT_EQ(e.source(), kDatabaseSource);
  }
  const Error table = cp::testing::CaughtError([&] { db_->OpenRecordset("SELECT * FROM Nada"); });
  EXPECT_EQ(table.description(),
            "El motor de base de datos no encuentra la tabla o consulta de entrada 'Nada'. "
            "Asegúrese de que existe y de que su nombre está escrito correctamente.");
}

TEST_P(DaoSuite, EngineRejectsBadSyntaxAndWrites) {
  // Straight to the engine: SQL that a translator would never produce.
  auto engine = OpenEngine(connection_);
  const Error syntax = cp::testing::CaughtError([&] { engine->Query("SELECT Nombre FROM Zona WHERE Orden >"); });
  EXPECT_EQ(syntax.number(), daoerr::kSyntaxInQuery);
  EXPECT_THAT(syntax.description(), HasSubstr("Orden >"));
  EXPECT_EQ(cp::testing::CaughtError([&] { engine->Query("DELETE FROM Zona"); }).number(),
            daoerr::kInvalidOperation);
  auto rs = db_->OpenRecordset("SELECT IdZona FROM Zona");
  EXPECT_EQ(rs.RecordCount(), 5) << "the rejected statement wrote nothing";
}

TEST_P(DaoSuite, ClosedDatabaseIsNoLongerValid) {
  EXPECT_EQ(db_->Name(), connection_);
  auto rs = db_->OpenRecordset("SELECT Nombre FROM Zona ORDER BY IdZona");
  db_->Close();
  EXPECT_EQ(rs.Fields("Nombre").Value(), Variant("Madrid")) << "open recordsets keep their rows";
  EXPECT_EQ(cp::testing::CaughtError([&] { db_->OpenRecordset("SELECT * FROM Zona"); }).number(),
            daoerr::kObjectInvalid);
  EXPECT_EQ(cp::testing::CaughtError([&] { db_->Name(); }).number(), daoerr::kObjectInvalid);
  EXPECT_EQ(cp::testing::CaughtError([&] { db_->Close(); }).number(), daoerr::kObjectInvalid);
}

INSTANTIATE_TEST_SUITE_P(Engines, DaoSuite, ::testing::ValuesIn(AllBackends()),
                         [](const auto& info) { return info.param.name; });

}  // namespace
}  // namespace cp::dao::testing
