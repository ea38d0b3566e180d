// The location boxes of the property control driven as a user drives them: typing, leaving a
// box, Shift+Enter and the picker buttons, with the picker answered by the scripted list
// component and messages read from the scripted messenger.
#include "tests/support/scratch_db.h"
#include "properties/location_cascade.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <set>

#include "common/scripted_list_picker.h"
#include "common/shared_state.h"
#include "criteria/cfield_linker.h"
#include "platform/core/conversions.h"
#include "platform/dao/connect.h"
#include "platform/form/command_button.h"
#include "platform/form/control_container.h"
#include "platform/form/keys.h"
#include "platform/form/text_box.h"
#include "platform/sqlite/native.h"
#include "tests/common/common_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

// España: Madrid (towns Madrid, Alcalá de Henares), Sevilla (Dos Hermanas, Sevilla), Toledo
// (Talavera), Barcelona (L'Hospitalet). Francia: Gironde (Burdeos). Portugal has no
// province; the province Ávila and the zone Playa are used by no join row.
const char* const kGeography = R"SQL(
INSERT INTO Pais (IdPais, Nombre) VALUES (1, 'España'), (2, 'Francia'), (3, 'Portugal');
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (10, 'Madrid'), (11, 'Sevilla'),
  (12, 'Toledo'), (13, 'Gironde'), (14, 'Ávila'), (15, 'Barcelona');
INSERT INTO PrPa (IdProvincia, IdPais) VALUES (10, 1), (11, 1), (12, 1), (13, 2), (15, 1);
INSERT INTO Poblacion (IdPoblacion, Nombre) VALUES (100, 'Madrid'), (101, 'Alcalá de Henares'),
  (102, 'Dos Hermanas'), (103, 'Talavera'), (104, 'Burdeos'), (105, 'Sevilla'),
  (106, 'L''Hospitalet');
INSERT INTO PoPrPa (IdPoblacion, IdProvincia, IdPais) VALUES (100, 10, 1), (101, 10, 1),
  (102, 11, 1), (103, 12, 1), (104, 13, 2), (105, 11, 1), (106, 15, 1);
INSERT INTO Zona (IdZona, Nombre) VALUES (20, 'Centro'), (21, 'Chamberí'), (22, 'O''Donnell'),
  (23, 'Triana'), (24, 'Casco Antiguo'), (25, 'Playa'), (26, 'Collblanc');
INSERT INTO BZona (IdZona, IdPais, IdProvincia, IdPoblacion) VALUES (20, 1, 10, 100),
  (21, 1, 10, 100), (22, 1, 10, 100), (24, 1, 10, 101), (23, 1, 11, 105), (20, 1, 11, 105),
  (24, 2, 13, 104), (26, 1, 15, 106);
)SQL";

const char* const kBoxes[] = {"txtPais", "txtProvincia", "txtPoblacion", "txtZona"};
const char* const kButtons[] = {"cmdPais", "cmdProvincia", "cmdPoblacion", "cmdZona"};

class LocationCascadeTest : public CommonTest {
 protected:
  static void SetUpTestSuite() {
    path_ = ScratchDb::Create("cp_location", kGeography);
  }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }

  void SetUp() override {
    CommonTest::SetUp();
    setBD(dao::OpenDatabase(path_));
    setPathDB(path_);
    // The general tab's inputs in the control's order, with the pickers beside their boxes.
    controls_.AddTextBox("txtInmueble");
    controls_.AddTextBox("txtOperacion");
    for (int level = 0; level < 4; ++level) {
      controls_.AddTextBox(kBoxes[level]);
      controls_.AddCommandButton(kButtons[level]);
    }
    controls_.AddTextBox("txtPalabras");
    cascade_ = std::make_unique<LocationCascade>(controls_);
  }
  void TearDown() override {
    cascade_.reset();
    setBD(nullptr);
    setPathDB("");
    CommonTest::TearDown();
  }

  form::TextBox& Box(const std::string& name) { return controls_.Get<form::TextBox>(name); }
  form::CommandButton& Button(const std::string& name) {
    return controls_.Get<form::CommandButton>(name);
  }
  std::string Text(const std::string& name) { return Box(name).Text(); }

  // The user puts the caret in the box and types its whole text (the box is not left).
  void Type(const std::string& name, const std::string& text) {
    Box(name).SetFocus();
    Box(name).setText(text);
  }
  // The user leaves the box that has the focus for the words box; false when refused.
  bool Leave() { return Box("txtPalabras").SetFocus(); }
  void TypeAndLeave(const std::string& name, const std::string& text) {
    Type(name, text);
    Leave();
  }
  void Click(const std::string& name) {
    Button(name).SetFocus();
    Button(name).Press();
  }
  void ShiftEnter(const std::string& name, int shift = form::vbShiftMask) {
    Box(name).SetFocus();
    Box(name).SendKeyDown(form::vbKeyReturn, shift);
  }
  // A location as a restored selection leaves it: canonical names, nothing changed.
  void RestoreMadrid() {
    cascade_->Restore("txtPais", "España;");
    cascade_->Restore("txtProvincia", "Madrid;");
    cascade_->Restore("txtPoblacion", "Madrid;");
    cascade_->Restore("txtZona", "Centro;");
  }
  bool Focused(const std::string& name) { return controls_.ActiveControl() == &Box(name); }

  // What the last picker instance received for a property; Empty when it was not set.
  Variant Picked(const std::string& property) {
    Variant value;
    if (!picker_.LastInstance()) return value;
    for (const auto& step : picker_.LastInstance()->steps) {
      if (step.name == property) value = step.value;
    }
    return value;
  }
  std::set<std::string> Names(const std::string& sql) {
    std::set<std::string> names;
    dao::Recordset rs = BD()->OpenRecordset(sql);
    for (; !rs.Eof(); rs.MoveNext()) names.insert(CStr(rs.Fields(0).Value()));
    return names;
  }
  bool Reported(const std::string& label) {
    for (const auto& shown : messenger_->shown()) {
      if (shown.text.find("Error en la rutina: " + label + "\r\n") != std::string::npos)
        return true;
    }
    return false;
  }

  ScriptedListPickerRegistration picker_;
  form::Form controls_{"SeleccionInm"};
  std::unique_ptr<LocationCascade> cascade_;
  static inline std::string path_;
};

const std::string kProvincias =
    "SELECT DISTINCT Nombre FROM Provincia  INNER JOIN PrPa"
    " ON PrPa.IdProvincia = Provincia.IdProvincia";
const std::string kPoblaciones =
    "SELECT DISTINCT Nombre FROM Poblacion  INNER JOIN PoPrPa"
    " ON PoPrPa.IdPoblacion = Poblacion.IdPoblacion";
const std::string kZonas =
    "SELECT DISTINCT Nombre FROM Zona  INNER JOIN BZona ON BZona.IdZona = Zona.IdZona";

TEST_F(LocationCascadeTest, SeveralNamesLockTheLevelsBelowUntilOneNameIsLeft) {
  struct Row {
    int level;
    std::string several;
  };
  const Row rows[] = {{0, "España;Francia"}, {1, "Madrid; Sevilla"}, {2, "Madrid;Talavera;"}};
  for (const Row& row : rows) {
    SCOPED_TRACE(kBoxes[row.level]);
    Type(kBoxes[row.level], row.several);
    for (int level = 0; level < 4; ++level) {
      const bool enabled = level <= row.level;
      EXPECT_EQ(Box(kBoxes[level]).Enabled(), enabled) << kBoxes[level];
      EXPECT_EQ(Button(kButtons[level]).Enabled(), enabled) << kButtons[level];
    }
    EXPECT_EQ(Text("txtZona"), "") << "locking clears nothing";
    Box(kBoxes[row.level]).setText("Madrid");
    for (int level = 0; level < 4; ++level) {
      EXPECT_TRUE(Box(kBoxes[level]).Enabled()) << kBoxes[level];
      EXPECT_TRUE(Button(kButtons[level]).Enabled()) << kButtons[level];
    }
    Box(kBoxes[row.level]).setText("Madrid;Toledo");
    Box(kBoxes[row.level]).setText("");
    EXPECT_TRUE(Box("txtZona").Enabled()) << "an empty box unlocks too";
    Box(kBoxes[row.level]).setText("");
  }
  Type("txtZona", "Centro;Chamberí");
  for (int level = 0; level < 4; ++level) EXPECT_TRUE(Box(kBoxes[level]).Enabled());
}

TEST_F(LocationCascadeTest, AnotherUpperNameClearsTheLevelsBelowAndEmptyingClearsNothing) {
  struct Row {
    std::string box;
    std::string typed;
    std::vector<std::string> after;  // país, provincia, población, zona
  };
  const Row rows[] = {
      {"txtPais", "Francia", {"Francia", "", "", ""}},
      {"txtPais", "", {"", "Madrid;", "Madrid;", "Centro;"}},
      {"txtPais", "España;", {"España;", "Madrid;", "Madrid;", "Centro;"}},
      {"txtProvincia", "Sevilla", {"España;", "Sevilla", "", ""}},
      {"txtProvincia", "", {"España;", "", "Madrid;", "Centro;"}},
      {"txtPoblacion", "Alcalá de Henares", {"España;", "Madrid;", "Alcalá de Henares", ""}},
      {"txtPoblacion", "Madrid;", {"España;", "Madrid;", "Madrid;", "Centro;"}},
      {"txtZona", "Chamberí", {"España;", "Madrid;", "Madrid;", "Chamberí"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.box + " <- '" + row.typed + "'");
    RestoreMadrid();
    TypeAndLeave(row.box, row.typed);
    for (int level = 0; level < 4; ++level) EXPECT_EQ(Text(kBoxes[level]), row.after[level]);
  }
  EXPECT_EQ(picker_.InstanceCount(), 0);
}

TEST_F(LocationCascadeTest, ValidationNarrowsEachLevelByTheIdsOfTheFilledLevelsAbove) {
  struct Row {
    std::vector<std::string> upper;  // texts typed into the levels above, in order
    std::string box;
    std::string title;
    std::string sql;
  };
  const Row rows[] = {
      {{}, "txtPais", "Paises", "SELECT DISTINCT Nombre FROM Pais "},
      {{"España"}, "txtProvincia", "Provincias", kProvincias + " WHERE  IdPais = 1"},
      {{"Francia", "Gironde"}, "txtPoblacion", "Poblaciones",
       kPoblaciones + " WHERE  IdPais = 2 AND IdProvincia = 13"},
      {{"España", "Madrid", "Madrid"}, "txtZona", "Zonas",
       kZonas + " WHERE  IdPais = 1 AND IdProvincia = 10 AND IdPoblacion = 100"},
      {{"", "Sevilla", ""}, "txtZona", "Zonas", kZonas + " WHERE  IdProvincia = 11"},
      {{"", ""}, "txtPoblacion", "Poblaciones", kPoblaciones},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.box + " after " + std::to_string(row.upper.size()) + " levels");
    for (int level = 0; level < 4; ++level) cascade_->Restore(kBoxes[level], "");
    for (std::size_t level = 0; level < row.upper.size(); ++level)
      TypeAndLeave(kBoxes[level], row.upper[level]);
    picker_.setAnswer(ListPickerAnswer::Cancel());
    const int before = picker_.InstanceCount();
    TypeAndLeave(row.box, "Ninguna Parte");
    ASSERT_EQ(picker_.InstanceCount(), before + 1) << "an unknown name opens the picker";
    EXPECT_EQ(Picked("TituloForm"), Variant(row.title));
    EXPECT_EQ(Picked("SQLSentencia"), Variant(row.sql));
    EXPECT_EQ(Picked("Seleccionar"), Variant("Ninguna Parte"));
    // Cancelling keeps the user in the box with the text as typed.
    EXPECT_TRUE(Focused(row.box));
    EXPECT_EQ(Text(row.box), "Ninguna Parte");
    Box(row.box).setText("");
    Leave();
  }
}

TEST_F(LocationCascadeTest, ANameOutsideTheUpperLevelIsPickedAgain) {
  RestoreMadrid();
  picker_.setAnswer(ListPickerAnswer::Accept("Talavera;"));
  Type("txtPoblacion", "Burdeos");
  EXPECT_TRUE(Leave()) << "the picked text stands";
  EXPECT_EQ(Picked("SQLSentencia"),
            Variant(kPoblaciones + " WHERE  IdPais = 1 AND IdProvincia = 10"));
  EXPECT_EQ(Names(Picked("SQLSentencia").AsString()),
            (std::set<std::string>{"Madrid", "Alcalá de Henares"}));
  EXPECT_EQ(Text("txtPoblacion"), "Talavera;");
  EXPECT_EQ(Text("txtZona"), "") << "a changed población clears the zone";
  EXPECT_EQ(cascade_->Poblacion().PreviousValue(), "Talavera;");

  // The user accepts the very text he typed: still not a name in use, so he stays.
  picker_.setAnswer(ListPickerAnswer::Accept("Playa"));
  Type("txtZona", "Playa");
  EXPECT_FALSE(Leave());
  EXPECT_TRUE(Focused("txtZona"));
}

TEST_F(LocationCascadeTest, UpperLevelPickersNarrowByTheLevelsAboveAndFocusTheirBox) {
  struct Row {
    std::string button;
    std::string box;
    std::string title;
    std::string table;
    std::string sql;
  };
  const Row rows[] = {
      {"cmdPais", "txtPais", "Paises", "Pais", "SELECT DISTINCT Nombre FROM Pais "},
      {"cmdProvincia", "txtProvincia", "Provincias", "Provincia",
       kProvincias + " WHERE  IdPais = 1"},
      {"cmdPoblacion", "txtPoblacion", "Poblaciones", "Poblacion",
       kPoblaciones + " WHERE  IdPais = 1 AND IdProvincia = 10"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.button);
    RestoreMadrid();
    picker_.setAnswer(ListPickerAnswer::Accept("Elegido; "));
    const std::string shown = Text(row.box);
    Click(row.button);
    EXPECT_EQ(Picked("TituloForm"), Variant(row.title));
    EXPECT_EQ(Picked("tabla"), Variant(row.table));
    EXPECT_EQ(Picked("SQLSentencia"), Variant(row.sql));
    EXPECT_EQ(Picked("Seleccionar"), Variant(shown)) << "the box's text";
    EXPECT_EQ(Picked("anchura"), Variant(std::int16_t{3000}));
    EXPECT_EQ(Text(row.box), "Elegido; ");
    EXPECT_TRUE(Focused(row.box));
    EXPECT_EQ(Text("txtZona"), "Centro;") << "nothing is cleared before the box is left";
    picker_.setAnswer(ListPickerAnswer::Cancel("Otro; "));
    Box(row.box).setText("Madrid;");
    Click(row.button);
    EXPECT_EQ(Text(row.box), "Madrid;") << "cancelling keeps the text";
    Box(row.box).setText("");
    Leave();
  }
}

TEST_F(LocationCascadeTest, ZonePickerWithoutPoblacionListsEveryZone) {
  picker_.setAnswer(ListPickerAnswer::Accept("Playa; "));
  Box("txtPais").setText("Atlántida");
  Box("txtZona").setText("Centro;");
  Click("cmdZona");
  ASSERT_EQ(picker_.InstanceCount(), 1);
  EXPECT_EQ(picker_.LastInstance()->Names(),
            (std::vector<std::string>{"TipoLista", "TituloForm", "tabla", "BDatos", "campo",
                                      "IdCampo", "Seleccionar", "nuevoId", "Op_Nuevo",
                                      "Op_Borrar", "Op_Modificar", "anchura", "mtdMostrar"}))
      << "no statement: the picker shows the whole Zona table";
  EXPECT_EQ(Picked("TituloForm"), Variant("Zonas"));
  EXPECT_EQ(Picked("tabla"), Variant("Zona"));
  EXPECT_EQ(Picked("Seleccionar"), Variant("Centro;"));
  EXPECT_EQ(Picked("anchura"), Variant(std::int16_t{3000}));
  EXPECT_EQ(Text("txtZona"), "Playa; ");
  EXPECT_TRUE(Focused("txtZona"));
  EXPECT_TRUE(messenger_->shown().empty()) << "the país is not looked up";
}

TEST_F(LocationCascadeTest, ZonePickerListsTheZonesOfTheTypedLocation) {
  struct Row {
    std::string pais, provincia, poblacion;
    std::string sql;
    std::set<std::string> zones;
  };
  const std::string head =
      "SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona "
      " WHERE IdPais = ";
  const Row rows[] = {
      {"España;", "Madrid;", "Madrid;", head + "1 AND IdProvincia = 10 AND IdPoblacion = 100",
       {"Centro", "Chamberí", "O'Donnell"}},
      {"españa", "sevilla", "SEVILLA", head + "1 AND IdProvincia = 11 AND IdPoblacion = 105",
       {"Centro", "Triana"}},
      {"Francia;", "Gironde;", "Burdeos;", head + "2 AND IdProvincia = 13 AND IdPoblacion = 104",
       {"Casco Antiguo"}},
      {"España;", "Barcelona;", "L'Hospitalet;",
       head + "1 AND IdProvincia = 15 AND IdPoblacion = 106", {"Collblanc"}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.poblacion);
    cascade_->Restore("txtPais", row.pais);
    cascade_->Restore("txtProvincia", row.provincia);
    cascade_->Restore("txtPoblacion", row.poblacion);
    picker_.setAnswer(ListPickerAnswer::Accept("Centro; "));
    Click("cmdZona");
    EXPECT_EQ(Picked("SQLSentencia"), Variant(row.sql));
    EXPECT_EQ(Names(row.sql), row.zones);
    EXPECT_EQ(Text("txtZona"), "Centro; ");
    EXPECT_TRUE(Focused("txtZona"));
    Box("txtZona").setText("");
    Leave();
  }
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(LocationCascadeTest, ZonePickerStopsAtTheFirstLevelItCannotFind) {
  struct Row {
    std::string pais, provincia, poblacion;
    std::string message;
    std::string focus;
  };
  const Row rows[] = {
      {"Atlántida;", "Madrid;", "Madrid;", "País incorrecto.", "txtPais"},
      {"España; ", "Madrid;", "Madrid;", "País incorrecto.", "txtPais"},
      {"España", "Gironde", "Burdeos", "Provincia incorrecto.", "txtProvincia"},
      {"España;", "Ávila;", "Madrid;", "Provincia incorrecto.", "txtProvincia"},
      {"España;", "Madrid;", "Burdeos;", "Población incorrecta.", "txtPoblacion"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.pais + " / " + row.provincia + " / " + row.poblacion);
    messenger_->ClearShown();
    cascade_->Restore("txtPais", row.pais);
    cascade_->Restore("txtProvincia", row.provincia);
    cascade_->Restore("txtPoblacion", row.poblacion);
    cascade_->Restore("txtZona", "Centro;");
    const int before = picker_.InstanceCount();
    Click("cmdZona");
    EXPECT_EQ(picker_.InstanceCount(), before) << "nothing is listed";
    ASSERT_EQ(messenger_->shown().size(), 1u);
    EXPECT_EQ(messenger_->shown()[0].text, row.message);
    EXPECT_EQ(messenger_->shown()[0].flags, 0);
    EXPECT_EQ(messenger_->shown()[0].title, "");
    EXPECT_TRUE(Focused(row.focus));
    EXPECT_EQ(Text("txtZona"), "Centro;");
    Box(row.focus).setText("");
    Leave();
  }
}

TEST_F(LocationCascadeTest, ShiftEnterInABoxRunsItsPicker) {
  RestoreMadrid();
  const std::pair<const char*, const char*> rows[] = {
      {"txtPais", "Paises"},
      {"txtProvincia", "Provincias"},
      {"txtPoblacion", "Poblaciones"},
      {"txtZona", "Zonas"}};
  for (const auto& [box, title] : rows) {
    SCOPED_TRACE(box);
    picker_.setAnswer(ListPickerAnswer::Cancel());
    int before = picker_.InstanceCount();
    ShiftEnter(box, 0);
    ShiftEnter(box, form::vbCtrlMask);
    Box(box).SendKeyDown(form::vbKeyDelete, form::vbShiftMask);
    EXPECT_EQ(picker_.InstanceCount(), before) << "plain or Ctrl+Enter opens nothing";
    ShiftEnter(box);
    ASSERT_EQ(picker_.InstanceCount(), before + 1);
    EXPECT_EQ(Picked("TituloForm"), Variant(title));
    EXPECT_TRUE(Focused(box));
  }
  EXPECT_TRUE(messenger_->shown().empty());
  EXPECT_EQ(Text("txtZona"), "Centro;");
}

TEST_F(LocationCascadeTest, PickerFailuresAreReportedUnderTheirLabels) {
  const std::pair<const char*, const char*> rows[] = {
      {"cmdPais", "cmdPais_Click de FichaDemanda"},
      {"cmdProvincia", "cmdProvincia_Click de SeleccionInm"},
      {"cmdPoblacion", "cmdPoblacion_Click de SeleccionInm"},
      {"cmdZona", "cmdZona_Click de SeleccionInm"}};
  for (int level = 0; level < 4; ++level) {
    SCOPED_TRACE(rows[level].first);
    messenger_->ClearShown();
    // A hidden box cannot take the focus that the picker gives it.
    Box(kBoxes[level]).setVisible(false);
    Click(rows[level].first);
    EXPECT_TRUE(Reported(rows[level].second));
    Box(kBoxes[level]).setVisible(true);
  }
}

TEST_F(LocationCascadeTest, RestoredLocationCountsAsUnchanged) {
  RestoreMadrid();
  for (const char* box : kBoxes) {
    SCOPED_TRACE(box);
    Box(box).SetFocus();
    EXPECT_TRUE(Leave());
  }
  EXPECT_EQ(Text("txtPais"), "España;");
  EXPECT_EQ(Text("txtProvincia"), "Madrid;");
  EXPECT_EQ(Text("txtPoblacion"), "Madrid;");
  EXPECT_EQ(Text("txtZona"), "Centro;");
  EXPECT_EQ(cascade_->Zona().PreviousValue(), "Centro;");
  EXPECT_EQ(cascade_->Poblacion().GenerarCondicionSQL(), "(IdPoblacion=100)");
  EXPECT_EQ(picker_.InstanceCount(), 0);

  cascade_->Restore("TXTPROVINCIA", "Sevilla; Toledo;");
  EXPECT_EQ(cascade_->Provincia().PreviousValue(), "Sevilla; Toledo;");
  EXPECT_TRUE(cascade_->Provincia().MoreValues());
  EXPECT_FALSE(Box("txtPoblacion").Enabled()) << "the box's change ran";
  EXPECT_EQ(Text("txtPoblacion"), "Madrid;") << "a restore clears nothing";

  for (const char* name : {"txtPais", "TXTPROVINCIA", "txtpoblacion", "txtZona"})
    EXPECT_TRUE(LocationCascade::IsLocationBox(name)) << name;
  for (const char* name : {"cmdPais", "txtZonas", "txtOperacion"})
    EXPECT_FALSE(LocationCascade::IsLocationBox(name)) << name;
  EXPECT_EQ(CaughtError([&] { cascade_->Restore("txtOperacion", "Venta"); }).number(), err::kInvalidProcedureCall);
}

TEST_F(LocationCascadeTest, DestroyingTheCascadeDisconnectsItsHandlers) {
  cascade_.reset();
  Type("txtPais", "España;Francia");
  EXPECT_TRUE(Box("txtProvincia").Enabled());
  picker_.setAnswer(ListPickerAnswer::Accept("x"));
  Click("cmdPais");
  EXPECT_EQ(picker_.InstanceCount(), 0);
}

}  // namespace
}  // namespace cp::testing
