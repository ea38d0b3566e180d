// The location boxes of the property control driven as a user drives them: typing, leaving a
// box, Shift+Enter and the picker buttons.
#include "properties/location_cascade.h"

#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

// España: Madrid (towns Madrid, Alcalá de Henares), Sevilla (Dos Hermanas, Sevilla), Toledo
// (Talavera). Francia: Gironde (Burdeos). The province Ávila and the zone Playa are used by
// no join row.
const char* const kGeography = R"SQL(
INSERT INTO Pais (IdPais, Nombre) VALUES (1, 'España'), (2, 'Francia');
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (10, 'Madrid'), (11, 'Sevilla'),
  (12, 'Toledo'), (13, 'Gironde'), (14, 'Ávila');
INSERT INTO PrPa (IdProvincia, IdPais) VALUES (10, 1), (11, 1), (12, 1), (13, 2);
INSERT INTO Poblacion (IdPoblacion, Nombre) VALUES (100, 'Madrid'), (101, 'Alcalá de Henares'),
  (102, 'Dos Hermanas'), (103, 'Talavera'), (104, 'Burdeos'), (105, 'Sevilla');
INSERT INTO PoPrPa (IdPoblacion, IdProvincia, IdPais) VALUES (100, 10, 1), (101, 10, 1),
  (102, 11, 1), (103, 12, 1), (104, 13, 2), (105, 11, 1);
INSERT INTO Zona (IdZona, Nombre) VALUES (20, 'Centro'), (21, 'Chamberí'), (22, 'O''Donnell'),
  (23, 'Triana'), (24, 'Casco Antiguo'), (25, 'Playa');
INSERT INTO BZona (IdZona, IdPais, IdProvincia, IdPoblacion) VALUES (20, 1, 10, 100),
  (21, 1, 10, 100), (22, 1, 10, 100), (24, 1, 10, 101), (23, 1, 11, 105), (20, 1, 11, 105),
  (24, 2, 13, 104);
)SQL";

const char* const kBoxes[] = {"txtPais", "txtProvincia", "txtPoblacion", "txtZona"};
const char* const kButtons[] = {"cmdPais", "cmdProvincia", "cmdPoblacion", "cmdZona"};
const std::string kPaises = "SELECT DISTINCT Nombre FROM Pais ";
const std::string kZonas =
    "SELECT DISTINCT Nombre FROM Zona  INNER JOIN BZona ON BZona.IdZona = Zona.IdZona";
const std::string kZonasOf =
    "SELECT DISTINCT Zona.Nombre FROM Zona INNER JOIN BZona ON BZona.IdZona = Zona.IdZona "
    " WHERE IdPais = ";

class LocationCascadeTest : public CommonTest {
 protected:
  static void SetUpTestSuite() { path_ = ScratchDb::Create("cp_location", kGeography); }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }
  void SetUp() override {
    CommonTest::SetUp();
    setBD(dao::OpenDatabase(path_));
    setPathDB(path_);
    // The general tab's inputs in the control's order, with the pickers beside their boxes.
    c_.AddTextBox("txtInmueble");
    c_.AddTextBox("txtOperacion");
    for (int level = 0; level < 4; ++level) {
      c_.AddTextBox(kBoxes[level]);
      c_.AddCommandButton(kButtons[level]);
    }
    c_.AddTextBox("txtPalabras");
    cascade_ = std::make_unique<LocationCascade>(c_);
  }
  void TearDown() override {
    cascade_.reset();
    setBD(nullptr);
    setPathDB("");
    CommonTest::TearDown();
  }

  form::TextBox& Box(const std::string& name) { return c_.Get<form::TextBox>(name); }
  form::CommandButton& Button(const std::string& name) {
    return c_.Get<form::CommandButton>(name);
  }
  std::string Text(const std::string& name) { return Box(name).Text(); }
  std::vector<std::string> Texts() {
    return {Text(kBoxes[0]), Text(kBoxes[1]), Text(kBoxes[2]), Text(kBoxes[3])};
  }
  // False when leaving is refused.
  bool Leave() { return cp::testing::Leave(c_); }
  void TypeAndLeave(const std::string& name, const std::string& text) {
    Type(c_, name, text);
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
  // A location as a restored selection leaves it: the given names, nothing changed.
  void Restore(const std::vector<std::string>& names) {
    for (std::size_t level = 0; level < names.size(); ++level)
      cascade_->Restore(kBoxes[level], names[level]);
  }
  void RestoreMadrid() { Restore({"España;", "Madrid;", "Madrid;", "Centro;"}); }
  bool Focused(const std::string& name) { return c_.ActiveControl() == &Box(name); }
  Variant Picked(const std::string& property) { return cp::testing::Picked(picker_, property); }

  ScriptedListPickerRegistration picker_;
  form::Form c_{"SeleccionInm"};
  std::unique_ptr<LocationCascade> cascade_;
  static inline std::string path_;
};

TEST_F(LocationCascadeTest, SeveralNamesLockTheLevelsBelowUntilOneNameIsLeft) {
  const std::pair<int, const char*> rows[] = {
      {0, "España;Francia"}, {1, "Madrid; Sevilla"}, {2, "Madrid;Talavera;"}};
  for (const auto& [locked, several] : rows) {
    SCOPED_TRACE(kBoxes[locked]);
    Type(c_, kBoxes[locked], several);
    for (int level = 0; level < 4; ++level) {
      EXPECT_EQ(Box(kBoxes[level]).Enabled(), level <= locked) << kBoxes[level];
      EXPECT_EQ(Button(kButtons[level]).Enabled(), level <= locked) << kButtons[level];
    }
    EXPECT_EQ(Text("txtZona"), "") << "locking clears nothing";
    Box(kBoxes[locked]).setText("Madrid");
    EXPECT_TRUE(Box("txtZona").Enabled() && Button("cmdZona").Enabled());
    Box(kBoxes[locked]).setText("Madrid;Toledo");
    Box(kBoxes[locked]).setText("");
    EXPECT_TRUE(Box("txtZona").Enabled()) << "an empty box unlocks too";
  }
}

TEST_F(LocationCascadeTest, AnotherUpperNameClearsTheLevelsBelowAndEmptyingClearsNothing) {
  const struct { std::string box, typed; std::vector<std::string> after; } rows[] = {
      {"txtPais", "Francia", {"Francia", "", "", ""}},
      {"txtPais", "", {"", "Madrid;", "Madrid;", "Centro;"}},
      {"txtProvincia", "Sevilla", {"España;", "Sevilla", "", ""}},
      {"txtPoblacion", "Alcalá de Henares", {"España;", "Madrid;", "Alcalá de Henares", ""}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.box + " <- '" + row.typed + "'");
    RestoreMadrid();
    TypeAndLeave(row.box, row.typed);
    EXPECT_EQ(Texts(), row.after);
  }
  EXPECT_EQ(picker_.InstanceCount(), 0);
}

TEST_F(LocationCascadeTest, ValidationNarrowsEachLevelByTheIdsOfTheFilledLevelsAbove) {
  const struct { std::vector<std::string> upper; std::string box, sql; } rows[] = {
      {{}, "txtPais", kPaises},
      {{"España", "Madrid", "Madrid"}, "txtZona",
       kZonas + " WHERE  IdPais = 1 AND IdProvincia = 10 AND IdPoblacion = 100"},
      {{"", "Sevilla", ""}, "txtZona", kZonas + " WHERE  IdProvincia = 11"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.box + " after " + std::to_string(row.upper.size()) + " levels");
    Restore({"", "", "", ""});
    for (std::size_t level = 0; level < row.upper.size(); ++level)
      TypeAndLeave(kBoxes[level], row.upper[level]);
    picker_.setAnswer(ListPickerAnswer::Cancel());
    const int before = picker_.InstanceCount();
    TypeAndLeave(row.box, "Ninguna Parte");
    ASSERT_EQ(picker_.InstanceCount(), before + 1) << "an unknown name opens the picker";
    EXPECT_EQ(Picked("SQLSentencia"), Variant(row.sql));
    EXPECT_EQ(Picked("Seleccionar"), Variant("Ninguna Parte"));
    // Cancelling keeps the user in the box with the text as typed.
    EXPECT_TRUE(Focused(row.box));
    EXPECT_EQ(Text(row.box), "Ninguna Parte");
    Box(row.box).setText("");
    Leave();
  }
  // A name outside the upper level is picked again; the picked text stands.
  RestoreMadrid();
  picker_.setAnswer(ListPickerAnswer::Accept("Talavera;"));
  Type(c_, "txtPoblacion", "Burdeos");
  EXPECT_TRUE(Leave());
  EXPECT_EQ(Texts(), (std::vector<std::string>{"España;", "Madrid;", "Talavera;", ""}));
  EXPECT_EQ(cascade_->Poblacion().PreviousValue(), "Talavera;");
  // The user accepts the very text he typed: still not a name in use, so he stays.
  picker_.setAnswer(ListPickerAnswer::Accept("Playa"));
  Type(c_, "txtZona", "Playa");
  EXPECT_FALSE(Leave());
  EXPECT_TRUE(Focused("txtZona"));
}

TEST_F(LocationCascadeTest, PickersNarrowByTheLevelsAboveAndFocusTheirBox) {
  const struct { std::string box, title, sql; } rows[] = {
      {"txtPais", "Paises", kPaises},
      {"txtProvincia", "Provincias",
       "SELECT DISTINCT Nombre FROM Provincia  INNER JOIN PrPa ON PrPa.IdProvincia = "
       "Provincia.IdProvincia WHERE  IdPais = 1"},
      {"txtPoblacion", "Poblaciones",
       "SELECT DISTINCT Nombre FROM Poblacion  INNER JOIN PoPrPa ON PoPrPa.IdPoblacion = "
       "Poblacion.IdPoblacion WHERE  IdPais = 1 AND IdProvincia = 10"},
      {"txtZona", "Zonas", kZonasOf + "1 AND IdProvincia = 10 AND IdPoblacion = 100"},
  };
  for (int level = 0; level < 4; ++level) {
    const auto& row = rows[level];
    SCOPED_TRACE(row.box);
    RestoreMadrid();
    picker_.setAnswer(ListPickerAnswer::Accept("Elegido; "));
    const std::string shown = Text(row.box);
    Click(kButtons[level]);
    EXPECT_EQ(Picked("TituloForm"), Variant(row.title));
    EXPECT_EQ(Picked("SQLSentencia"), Variant(row.sql));
    EXPECT_EQ(Picked("Seleccionar"), Variant(shown)) << "the box's text";
    EXPECT_EQ(Text(row.box), "Elegido; ");
    EXPECT_TRUE(Focused(row.box));
    // Shift+Enter in the box runs the same picker; Ctrl+Enter does not.
    const int before = picker_.InstanceCount();
    ShiftEnter(row.box, form::vbCtrlMask);
    EXPECT_EQ(picker_.InstanceCount(), before);
    ShiftEnter(row.box);
    EXPECT_EQ(picker_.InstanceCount(), before + 1);
    Box(row.box).setText("");
    Leave();
  }
  // Without a población the zone picker shows the whole Zona table; the país is not looked up.
  Restore({"Atlántida", "", "", "Centro;"});
  Click("cmdZona");
  EXPECT_EQ(Picked("tabla"), Variant("Zona"));
  EXPECT_EQ(Text("txtZona"), "Elegido; ");
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

// A known país but an unknown provincia: the zone picker stops there.
TEST_F(LocationCascadeTest, ZonePickerStopsAtTheFirstLevelItCannotFind) {
  Restore({"España;", "Ávila;", "Madrid;", "Centro;"});
  Click("cmdZona");
  EXPECT_EQ(picker_.InstanceCount(), 0) << "nothing is listed";
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_EQ(messenger_->shown()[0].text, "Provincia incorrecto.");
  EXPECT_TRUE(Focused("txtProvincia"));
  EXPECT_EQ(Text("txtZona"), "Centro;");
}

TEST_F(LocationCascadeTest, RestoredLocationCountsAsUnchanged) {
  RestoreMadrid();
  for (const char* box : kBoxes) {
    Box(box).SetFocus();
    EXPECT_TRUE(Leave()) << box;
  }
  EXPECT_EQ(Texts(), (std::vector<std::string>{"España;", "Madrid;", "Madrid;", "Centro;"}));
  EXPECT_EQ(cascade_->Poblacion().GenerarCondicionSQL(), "(IdPoblacion=100)");
  EXPECT_EQ(picker_.InstanceCount(), 0);

  cascade_->Restore("TXTPROVINCIA", "Sevilla; Toledo;");
  EXPECT_FALSE(Box("txtPoblacion").Enabled()) << "the box's change ran";
  EXPECT_EQ(Text("txtPoblacion"), "Madrid;") << "a restore clears nothing";

  EXPECT_EQ(CaughtError([&] { cascade_->Restore("txtOperacion", "Venta"); }).number(),
            err::kInvalidProcedureCall);

  // Destroying the cascade disconnects its handlers.
  cascade_.reset();
  Type(c_, "txtPais", "España;Francia");
  EXPECT_TRUE(Box("txtProvincia").Enabled());
}

}  // namespace
}  // namespace cp::testing
