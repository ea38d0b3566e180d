// The location boxes of the property control driven as a user drives them: typing, leaving a
// box, Shift+Enter and the picker buttons.
#include "properties/location_cascade.h"

#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"
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
const std::string kPaises = "SELECT DISTINCT Nombre FROM Pais ";
const std::string kProvincias =
    "SELECT DISTINCT Nombre FROM Provincia  INNER JOIN PrPa"
    " ON PrPa.IdProvincia = Provincia.IdProvincia";
const std::string kPoblaciones =
    "SELECT DISTINCT Nombre FROM Poblacion  INNER JOIN PoPrPa"
    " ON PoPrPa.IdPoblacion = Poblacion.IdPoblacion";
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
    for (int level = 0; level < 4; ++level) {
      EXPECT_TRUE(Box(kBoxes[level]).Enabled()) << kBoxes[level];
      EXPECT_TRUE(Button(kButtons[level]).Enabled()) << kButtons[level];
    }
    Box(kBoxes[locked]).setText("Madrid;Toledo");
    Box(kBoxes[locked]).setText("");
    EXPECT_TRUE(Box("txtZona").Enabled()) << "an empty box unlocks too";
  }
  Type(c_, "txtZona", "Centro;Chamberí");
  for (int level = 0; level < 4; ++level) EXPECT_TRUE(Box(kBoxes[level]).Enabled());
}

TEST_F(LocationCascadeTest, AnotherUpperNameClearsTheLevelsBelowAndEmptyingClearsNothing) {
  const struct { std::string box, typed; std::vector<std::string> after; } rows[] = {
      {"txtPais", "Francia", {"Francia", "", "", ""}},
      {"txtPais", "", {"", "Madrid;", "Madrid;", "Centro;"}},
      {"txtProvincia", "Sevilla", {"España;", "Sevilla", "", ""}},
      {"txtPoblacion", "Alcalá de Henares", {"España;", "Madrid;", "Alcalá de Henares", ""}},
      {"txtPoblacion", "Madrid;", {"España;", "Madrid;", "Madrid;", "Centro;"}},
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
  const struct { std::vector<std::string> upper; std::string box, title, sql; } rows[] = {
      {{}, "txtPais", "Paises", kPaises},
      {{"España"}, "txtProvincia", "Provincias", kProvincias + " WHERE  IdPais = 1"},
      {{"España", "Madrid", "Madrid"}, "txtZona", "Zonas",
       kZonas + " WHERE  IdPais = 1 AND IdProvincia = 10 AND IdPoblacion = 100"},
      {{"", "Sevilla", ""}, "txtZona", "Zonas", kZonas + " WHERE  IdProvincia = 11"},
      {{"", ""}, "txtPoblacion", "Poblaciones", kPoblaciones},
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
    EXPECT_EQ(Picked("TituloForm"), Variant(row.title));
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
  EXPECT_EQ(Picked("SQLSentencia"),
            Variant(kPoblaciones + " WHERE  IdPais = 1 AND IdProvincia = 10"));
  EXPECT_EQ(Names(Picked("SQLSentencia").AsString()),
            (std::set<std::string>{"Madrid", "Alcalá de Henares"}));
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
      {"txtProvincia", "Provincias", kProvincias + " WHERE  IdPais = 1"},
      {"txtPoblacion", "Poblaciones", kPoblaciones + " WHERE  IdPais = 1 AND IdProvincia = 10"},
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
    if (level < 3) { EXPECT_EQ(Text("txtZona"), "Centro;") << "nothing cleared before leaving"; }
    picker_.setAnswer(ListPickerAnswer::Cancel("Otro; "));
    Box(row.box).setText("Madrid;");
    Click(kButtons[level]);
    EXPECT_EQ(Text(row.box), "Madrid;") << "cancelling keeps the text";
    // Shift+Enter in the box runs the same picker; plain or Ctrl+Enter, or Shift+Delete, not.
    const int before = picker_.InstanceCount();
    ShiftEnter(row.box, 0);
    ShiftEnter(row.box, form::vbCtrlMask);
    Box(row.box).SendKeyDown(form::vbKeyDelete, form::vbShiftMask);
    EXPECT_EQ(picker_.InstanceCount(), before);
    ShiftEnter(row.box);
    ASSERT_EQ(picker_.InstanceCount(), before + 1);
    EXPECT_EQ(Picked("TituloForm"), Variant(row.title));
    EXPECT_TRUE(Focused(row.box));
    Box(row.box).setText("");
    Leave();
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(LocationCascadeTest, ZonePickerListsTheZonesOfTheTypedLocation) {
  // Without a población the picker shows the whole Zona table, and the país is not looked up.
  Restore({"Atlántida", "", "", "Centro;"});
  picker_.setAnswer(ListPickerAnswer::Accept("Playa; "));
  Click("cmdZona");
  EXPECT_EQ(Picked("TituloForm"), Variant("Zonas"));
  EXPECT_EQ(Picked("tabla"), Variant("Zona"));
  EXPECT_EQ(Picked("Seleccionar"), Variant("Centro;"));
  EXPECT_EQ(Picked("anchura"), Variant(std::int16_t{3000}));
  EXPECT_EQ(Text("txtZona"), "Playa; ");
  EXPECT_TRUE(Focused("txtZona"));
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
  using Names3 = std::vector<std::string>;
  const struct { Names3 location; std::string ids; std::set<std::string> zones; } rows[] = {
      {{"españa", "sevilla", "SEVILLA"}, "1 AND IdProvincia = 11 AND IdPoblacion = 105",
       {"Centro", "Triana"}},
      {{"España;", "Barcelona;", "L'Hospitalet;"}, "1 AND IdProvincia = 15 AND IdPoblacion = 106",
       {"Collblanc"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.location[2]);
    Restore(row.location);
    picker_.setAnswer(ListPickerAnswer::Accept("Centro; "));
    Click("cmdZona");
    EXPECT_EQ(Picked("SQLSentencia"), Variant(kZonasOf + row.ids));
    EXPECT_EQ(Names(kZonasOf + row.ids), row.zones);
    EXPECT_EQ(Text("txtZona"), "Centro; ");
    EXPECT_TRUE(Focused("txtZona"));
    Box("txtZona").setText("");
    Leave();
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(LocationCascadeTest, ZonePickerStopsAtTheFirstLevelItCannotFind) {
  const struct { std::vector<std::string> location; std::string message, focus; } rows[] = {
      {{"Atlántida;", "Madrid;", "Madrid;"}, "País incorrecto.", "txtPais"},
      {{"España;", "Ávila;", "Madrid;"}, "Provincia incorrecto.", "txtProvincia"},
      {{"España;", "Madrid;", "Burdeos;"}, "Población incorrecta.", "txtPoblacion"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.message + " " + row.location[0]);
    messenger_->ClearShown();
    Restore({row.location[0], row.location[1], row.location[2], "Centro;"});
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

TEST_F(LocationCascadeTest, PickerFailuresAreReportedUnderTheirLabels) {
  // The país picker keeps the label of the demand form it came from.
  const char* const labels[] = {"cmdPais_Click de FichaDemanda", "cmdProvincia_Click",
                                "cmdPoblacion_Click", "cmdZona_Click"};
  for (int level = 0; level < 4; ++level) {
    messenger_->ClearShown();
    // A hidden box cannot take the focus that the picker gives it.
    Box(kBoxes[level]).setVisible(false);
    Click(kButtons[level]);
    const std::string label = labels[level] + std::string(level ? " de SeleccionInm" : "");
    EXPECT_EQ(Reports(*messenger_), std::vector<std::string>{label});
    Box(kBoxes[level]).setVisible(true);
  }
}

TEST_F(LocationCascadeTest, RestoredLocationCountsAsUnchanged) {
  RestoreMadrid();
  for (const char* box : kBoxes) {
    Box(box).SetFocus();
    EXPECT_TRUE(Leave()) << box;
  }
  EXPECT_EQ(Texts(), (std::vector<std::string>{"España;", "Madrid;", "Madrid;", "Centro;"}));
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
  EXPECT_EQ(CaughtError([&] { cascade_->Restore("txtOperacion", "Venta"); }).number(),
            err::kInvalidProcedureCall);

  // Destroying the cascade disconnects its handlers.
  cascade_.reset();
  Type(c_, "txtPais", "España;Francia");
  EXPECT_TRUE(Box("txtProvincia").Enabled());
  picker_.setAnswer(ListPickerAnswer::Accept("x"));
  Click("cmdPais");
  EXPECT_EQ(picker_.InstanceCount(), 0);
}

}  // namespace
}  // namespace cp::testing
