// The list picker bridge against the scripted picker: the property protocol as a sequence,
// the result rules, the modal flag and every failure the user sees.
#include "common/list_picker.h"
#include "common/scripted_list_picker.h"
#include "common/shared_state.h"
#include "platform/automation/registry.h"
#include "platform/core/conversions.h"
#include "platform/dao/connect.h"
#include "platform/sqlite/native.h"
#include "tests/common/common_fixture.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {
namespace {

class ListPickerTest : public CommonTest {
 protected:
  static void SetUpTestSuite() {
    scratch_ = new ScratchDir;
    path_ = scratch_->File("listas.sqlite");
    sqlite::NativeDatabase db(path_, sqlite::NativeDatabase::Mode::CreateIfMissing);
    db.ExecuteNative(
        "CREATE TABLE Zona (IdZona INTEGER PRIMARY KEY AUTOINCREMENT, Nombre VARCHAR(50));"
        "CREATE TABLE Destino (IdDestino INTEGER PRIMARY KEY, Destino VARCHAR(50));"
        "CREATE TABLE PrPa (IdProvincia INTEGER, IdPais INTEGER);"
        "INSERT INTO Zona (Nombre) VALUES ('Centro'), ('Norte');");
  }
  static void TearDownTestSuite() { delete scratch_; }

  void SetUp() override {
    CommonTest::SetUp();
    ASSERT_FALSE(IsProgIdRegistered(kListPickerProgId)) << "a test left the picker registered";
  }

  // The picker over Zona.Nombre as the zone button opens it, with a statement.
  static std::string OpenZones(const std::string& text) {
    return VerListadoMult(text, "Zona", "Nombre", false, false, false, 3000, "Zonas",
                          "SELECT DISTINCT Nombre FROM Zona");
  }

  // The text of the one box shown.
  std::string OnlyMessage() const {
    EXPECT_EQ(messenger_->shown().size(), 1u);
    return messenger_->shown().empty() ? "" : messenger_->shown().front().text;
  }

  static inline ScratchDir* scratch_ = nullptr;
  static inline std::string path_;
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database_{DatabaseSlot(),
                                                                dao::OpenDatabase(path_)};
  ProcessSlot<std::string>::Scoped pathDB_{PathDBSlot(), path_};
};

// A table-definition field as the picker receives it: an object whose Name reads back.
std::string FieldName(const Variant& value) {
  if (!value.IsObject() || !value.AsObject()) return "<not an object>";
  return CStr(value.AsObject()->GetProperty("Name"));
}

std::string GenericText(const std::string& label, long number, const std::string& description) {
  return "Error en la rutina: " + label + "\r\nTexto del error: " + description +
         "\r\nNúmero del error: " + std::to_string(number) +
         "\r\n¿Desea enviar la información sobre el error al soporte técnico de Norvak?";
}

// What the bridge works out before showing the list: the field objects, whether new rows get
// an id from the engine, the statement only when there is one; the modal flag is up only
// while the list shows.
TEST_F(ListPickerTest, HandsThePickerTheFieldsTheNewIdRuleAndTheStatement) {
  struct Row {
    std::string tabla, campo, sql, keyName;
    Variant newId;
    std::vector<std::string> names;
  };
  const std::vector<std::string> common = {"TipoLista", "TituloForm", "tabla", "BDatos", "campo",
                                           "IdCampo"};
  auto with = [&](std::vector<std::string> tail) {
    std::vector<std::string> names = common;
    names.insert(names.end(), tail.begin(), tail.end());
    return names;
  };
  const Row rows[] = {
      {"Zona", "Nombre", "SELECT Nombre FROM Zona", "IdZona", Variant(std::int16_t{-1}),
       with({"SQLSentencia", "Seleccionar", "nuevoId", "Op_Nuevo", "Op_Borrar", "Op_Modificar",
             "anchura", "mtdMostrar"})},
      // IdDestino is not auto-increment.
      {"Destino", "Destino", "", "IdDestino", Variant(std::int16_t{0}),
       with({"Seleccionar", "nuevoId", "Op_Nuevo", "Op_Borrar", "Op_Modificar", "anchura",
             "mtdMostrar"})},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.tabla);
    setgModalAbierto(false);
    ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Norte; Sur; "));
    EXPECT_EQ(VerListadoMult("Centro; ", row.tabla, row.campo, true, false, true, 2500, "T",
                             row.sql),
              "Norte; Sur; ");
    const auto& instance = *picker.LastInstance();
    ASSERT_EQ(instance.Names(), row.names);
    const auto value = [&](const std::string& name) {
      for (const auto& step : instance.steps)
        if (step.name == name) return step.value;
      return Variant();
    };
    EXPECT_EQ(FieldName(value("campo")), row.campo);
    EXPECT_EQ(FieldName(value("IdCampo")), row.keyName);
    EXPECT_EQ(std::vector<Variant>({value("nuevoId"), value("BDatos"), value("Seleccionar"),
                                    value("anchura"), value("Op_Borrar")}),
              std::vector<Variant>({row.newId, Variant(path_), Variant("Centro; "),
                                    Variant(std::int16_t{2500}), Variant(false)}));
    EXPECT_FALSE(instance.steps.front().modal_flag);
    EXPECT_TRUE(instance.steps.back().modal_flag) << "gModalAbierto is True while the list is up";
    EXPECT_FALSE(gModalAbierto()) << "restored to what it was";
  }
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(ListPickerTest, CancelOrNullGivesBackExactlyTheTextPassedIn) {
  const ListPickerAnswer answers[] = {ListPickerAnswer::Cancel(),
                                      ListPickerAnswer::Cancel("Norte; Oeste; "),
                                      ListPickerAnswer::ReturnNull()};
  for (const auto& answer : answers) {
    ScriptedListPickerRegistration picker(answer);
    EXPECT_EQ(OpenZones("Centro;  norte ; "), "Centro;  norte ; ");
  }
  EXPECT_TRUE(messenger_->shown().empty()) << "a cancel is no error";
}

TEST_F(ListPickerTest, FailureInsideTheListIsReportedClearsTheTextAndLeavesModalFlagSet) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Fail(3021, "No hay registro actual."));
  EXPECT_EQ(OpenZones("Centro; "), "");
  EXPECT_EQ(OnlyMessage(),
            GenericText("VerListadoMult de RutinasErr", 3021, "No hay registro actual."));
  EXPECT_TRUE(gModalAbierto()) << "the flag stays set when the list fails";
}

TEST_F(ListPickerTest, MissingTableFieldOrKeyFieldIsReportedAndClearsTheText) {
  struct Row {
    std::string name, tabla, campo;
    std::vector<std::string> namesSet;  // what reached the picker before the failure
  };
  const std::vector<std::string> upToTable = {"TipoLista", "TituloForm", "tabla", "BDatos"};
  std::vector<std::string> upToField = upToTable;
  upToField.push_back("campo");
  const Row rows[] = {
      {"no Id + table-name field", "PrPa", "IdPais", upToField},
      {"no such field", "Zona", "Alias", upToTable},
      {"no such table", "Planeta", "Nombre", upToTable},
  };
  ScriptedListPickerRegistration picker;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    messenger_->ClearShown();
    EXPECT_EQ(VerListadoMult("Centro; ", row.tabla, row.campo, false, false, false, 3000, "T", ""),
              "");
    EXPECT_EQ(picker.LastInstance()->Names(), row.namesSet);
    EXPECT_EQ(OnlyMessage().rfind("Error en la rutina: VerListadoMult de RutinasErr\r\n", 0), 0u);
    EXPECT_EQ(messenger_->shown()[0].flags, 0x1034);
    EXPECT_FALSE(gModalAbierto()) << "the list was never shown";
  }
}

TEST_F(ListPickerTest, NoSharedDatabaseIsReportedAsObjectNotSet) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("x"));
  setBD(nullptr);
  EXPECT_EQ(OpenZones("Centro; "), "");
  EXPECT_EQ(OnlyMessage(), GenericText("VerListadoMult de RutinasErr", 91,
                                            "Variable de objeto o bloque With no establecido"));
}

TEST_F(ListPickerTest, UnregisteredPickerShowsTheLibraryMessageThenTheFirstAssignment) {
  EXPECT_EQ(OpenZones("Centro; "), "");
  ASSERT_EQ(messenger_->shown().size(), 2u);
  EXPECT_EQ(messenger_->shown()[0].text,
            GenericText("La librería NListado.CListado no está registrada correctamente.", 429,
                        "El componente ActiveX no puede crear el objeto"));
  EXPECT_EQ(messenger_->shown()[1].text,
            GenericText("VerListadoMult de RutinasErr", 91,
                        "Variable de objeto o bloque With no establecido"));
  EXPECT_FALSE(gModalAbierto());
  const std::string logged = "05/03/24 09:07:02 La librería NListado.CListado no está registrada "
                             "correctamente. [429] El componente ActiveX no puede crear el objeto\n";
  EXPECT_EQ(Log().substr(0, logged.size()), logged);
  // Once the library is registered, the same button works.
  messenger_->ClearShown();
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Norte; "));
  EXPECT_EQ(OpenZones("Centro; "), "Norte; ");
  EXPECT_TRUE(messenger_->shown().empty());
}

// A factory that cannot create gets the library message above; one that fails, this one.
TEST_F(ListPickerTest, CreatingAnObjectThatFailsReportsTheFailureAndGivesNothing) {
  ScopedProgId broken("Prueba.Rota", []() -> std::shared_ptr<Dispatch> {
    throw Error(5, "Llamada a procedimiento o argumento no válidos", "Prueba.Rota");
  });
  EXPECT_EQ(CrearObjeto("Prueba.Rota"), nullptr);
  EXPECT_EQ(OnlyMessage(), GenericText("CrearObjeto() de RutinasErr (Prueba.Rota).", 5,
                                       "Llamada a procedimiento o argumento no válidos"));
}

}  // namespace
}  // namespace cp::testing
