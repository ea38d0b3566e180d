// The field linker over the zones of the fixture database: splitting the typed text, ids and
// the condition they make (run on SQLite), the names in use, validation and choosing through
// the scripted picker, and the errors raised or reported.
#include "criteria/cfield_linker.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "common/scripted_list_picker.h"
#include "tests/criteria/criteria_fixture.h"

namespace cp::testing {
namespace {

// Zones in use through BZona: Madrid (4) in two towns of Madrid province, O'Donnell (6) in
// Madrid, Sevilla (9) in Sevilla province, Norte|Sur (7) in France. Ávila (5) is in Zona
// but no row uses it.
const char* const kGeography = R"SQL(
INSERT INTO Pais (IdPais, Nombre) VALUES (1, 'España'), (2, 'Francia');
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (10, 'Madrid'), (11, 'Sevilla'),
  (13, 'Gironde'), (14, 'Ávila');
INSERT INTO PrPa (IdProvincia, IdPais) VALUES (10, 1), (11, 1), (13, 2);
INSERT INTO BZona (IdZona, IdPais, IdProvincia, IdPoblacion) VALUES (4, 1, 10, 100),
  (6, 1, 10, 100), (4, 1, 10, 101), (9, 1, 11, 102), (7, 2, 13, 104);
)SQL";

class FieldLinkerTest : public CriteriaTest {
 protected:
  static void SetUpTestSuite() {
    CriteriaTest::SetUpTestSuite();
    sqlite::NativeDatabase db(path_, sqlite::NativeDatabase::Mode::OpenExisting);
    db.ExecuteNative(kGeography);
  }

  void SetUp() override {
    CriteriaTest::SetUp();
    zona_.Init("BZona", "Zona", "IdZona", "Nombre", ";");
  }

  // The error box of the handler names the label and the number.
  bool Reported(const std::string& label, long number) const {
    for (const auto& shown : messenger_->shown()) {
      if (shown.text.find("Error en la rutina: " + label + "\r\n") != std::string::npos &&
          shown.text.find("Número del error: " + std::to_string(number)) != std::string::npos)
        return true;
    }
    return false;
  }

  std::set<std::string> Names(const std::string& sql) {
    std::set<std::string> names;
    dao::Recordset rs = BD()->OpenRecordset(sql);
    for (; !rs.Eof(); rs.MoveNext()) names.insert(CStr(rs.Fields(0).Value()));
    return names;
  }

  CFieldLinker zona_;
};

// The value a picker instance received for one of its properties.
Variant PickerProperty(const ScriptedListPickerRegistration& picker, const std::string& name) {
  for (const auto& step : picker.LastInstance()->steps) {
    if (step.name == name) return step.value;
  }
  return Variant();
}

void ExpectLinkerError(const std::function<void()>& call, long number, const std::string& text) {
  try {
    call();
    ADD_FAILURE() << "no error raised";
  } catch (const Error& e) {
    EXPECT_EQ(e.number(), number);
    EXPECT_EQ(e.description(), text);
    EXPECT_EQ(e.source(), "CFieldLinker");
  }
}

TEST_F(FieldLinkerTest, EveryMemberButInitAndFormatValueNeedsInit) {
  CFieldLinker linker;
  std::string result = "Zonas";
  const std::pair<const char*, std::function<void()>> members[] = {
      {"Value", [&] { (void)linker.Value(); }},
      {"setValue", [&] { linker.setValue("Madrid"); }},
      {"PreviousValue", [&] { (void)linker.PreviousValue(); }},
      {"setPreviousValue", [&] { linker.setPreviousValue("Madrid"); }},
      {"Filter", [&] { (void)linker.Filter(); }},
      {"setFilter", [&] { linker.setFilter("IdPais = 1"); }},
      {"MoreValues", [&] { (void)linker.MoreValues(); }},
      {"IsEmpty", [&] { (void)linker.IsEmpty(); }},
      {"ValuesCount", [&] { (void)linker.ValuesCount(); }},
      {"ID", [&] { (void)linker.ID(); }},
      {"GenerarCondicionSQL", [&] { (void)linker.GenerarCondicionSQL(); }},
      {"Choose", [&] { (void)linker.Choose("Zonas"); }},
      {"Validate", [&] { (void)linker.Validate(result); }},
  };
  for (const auto& [name, call] : members) {
    SCOPED_TRACE(name);
    ExpectLinkerError(call, 20001, "The instance is not initialized yet.");
  }
  EXPECT_EQ(result, "Zonas") << "a refused Validate leaves its argument alone";
  EXPECT_EQ(linker.FormatValue("Madrid", ""), "Madrid") << "no separator before Init";
  EXPECT_TRUE(messenger_->shown().empty()) << "raised to the caller, not reported";
}

TEST_F(FieldLinkerTest, InitTwiceRaises20000AndKeepsTheFirstBinding) {
  ExpectLinkerError([&] { zona_.Init("PrPa", "Provincia", "IdProvincia", "Nombre", ","); },
                    20000, "The instance is already initialized.");
  zona_.setValue("Madrid,Sevilla");
  EXPECT_FALSE(zona_.MoreValues()) << "still split at ';'";
  EXPECT_EQ(zona_.ID(), -2) << "still looked up in Zona";
}

TEST_F(FieldLinkerTest, InitStartsEmptyAndMissingArgumentsBecomeEmptyText) {
  EXPECT_EQ(zona_.Value(), "");
  EXPECT_EQ(zona_.PreviousValue(), "");
  EXPECT_TRUE(zona_.IsEmpty());
  EXPECT_FALSE(zona_.MoreValues());
  EXPECT_EQ(zona_.ValuesCount(), -1);
  EXPECT_EQ(zona_.GenerarCondicionSQL(), "");

  CFieldLinker bare;
  bare.Init("Zona", "Zona");
  EXPECT_EQ(bare.UsedValuesQuery(), "SELECT DISTINCT  FROM Zona ");
  bare.setValue("Madrid;Sevilla");
  EXPECT_FALSE(bare.MoreValues()) << "no separator: the whole text is one name";
}

TEST_F(FieldLinkerTest, InitWithNullIsReportedAndLeavesTheLinkerUnbound) {
  CFieldLinker linker;
  linker.Init("Zona", "Zona", "IdZona", Variant::Null(), ";");
  EXPECT_TRUE(Reported("Init() method of CFieldLinker class", 94));
  ExpectLinkerError([&] { (void)linker.Value(); }, 20001, "The instance is not initialized yet.");
}

TEST_F(FieldLinkerTest, SettingValueSplitsAtTheSeparator) {
  struct Row {
    std::string text;
    bool empty;
    bool more;
    int count;
  };
  const Row rows[] = {
      {"", true, false, -1},
      {"   ", true, false, -1},
      {";", true, false, -1},
      {" ; ", true, false, -1},
      {"Madrid", false, false, 0},
      {"Madrid;", false, false, 0},
      {" Madrid ; ", false, false, 0},
      {"Madrid;Sevilla", false, true, 1},
      {"Madrid; Sevilla;", false, true, 1},
      {"Madrid;;Sevilla", false, true, 2},
      {";;", false, true, 1},
      {"Madrid;;", false, true, 1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE("'" + row.text + "'");
    zona_.setValue(row.text);
    EXPECT_EQ(zona_.Value(), row.text) << "kept as typed";
    EXPECT_EQ(zona_.IsEmpty(), row.empty);
    EXPECT_EQ(zona_.MoreValues(), row.more);
    EXPECT_EQ(zona_.ValuesCount(), row.count) << "one less than the number of names";
  }
}

TEST_F(FieldLinkerTest, IdOfEachNameFollowsJetComparison) {
  struct Row {
    std::string text;
    std::optional<int> index;
    std::int32_t id;
  };
  const Row rows[] = {
      {"Madrid", std::nullopt, 4},
      {"  madrid ;", std::nullopt, 4},
      {"MADRID", 0, 4},
      {"ávila", std::nullopt, 5},
      {"O'Donnell", std::nullopt, 6},
      {"Norte|Sur;", std::nullopt, 7},
      {"Centro", std::nullopt, -2},
      {"Madrid;Sevilla", 0, 4},
      {"Madrid; Sevilla", 1, 9},
      {"Madrid;Centro", 1, -2},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE("'" + row.text + "'");
    zona_.setValue(row.text);
    EXPECT_EQ(zona_.ID(row.index), row.id);
  }
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(FieldLinkerTest, IdWithoutIndexOnSeveralNamesIsMinusOneWithoutQuerying) {
  EXPECT_EQ(zona_.NameLookupQuery("O'Donnell"),
            "SELECT IdZona FROM   Zona WHERE  Nombre = 'O''Donnell'");
  zona_.setValue("Madrid;Sevilla");
  setBD(nullptr);  // any query would now fail and be reported
  EXPECT_EQ(zona_.ID(), -1);
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(FieldLinkerTest, ConditionComparesTheUnqualifiedIdFieldAndSelectsTheRows) {
  struct Row {
    std::string text;
    std::string condition;
    std::vector<long> properties;  // IPropio rows it selects
  };
  const Row rows[] = {
      {"", "", {}},
      {"Madrid", "(IdZona=4)", {1, 7}},
      {"Madrid;", "(IdZona=4)", {1, 7}},
      {"Madrid;Sevilla", "((IdZona=4) OR (IdZona=9))", {1, 2, 7, 8}},
      {"Centro", "(IdZona=-2)", {}},
      {"madrid; Centro; ÁVILA;", "((IdZona=4) OR (IdZona=-2) OR (IdZona=5))", {1, 4, 7}},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE("'" + row.text + "'");
    zona_.setValue(row.text);
    const std::string condition = zona_.GenerarCondicionSQL();
    EXPECT_EQ(condition, row.condition);
    if (!condition.empty()) {
      EXPECT_EQ(Properties(condition), row.properties);
    }
  }
}

TEST_F(FieldLinkerTest, UsedValuesQueryJoinsTheMainTableAndAddsTheFilter) {
  EXPECT_EQ(zona_.UsedValuesQuery(),
            "SELECT DISTINCT Nombre FROM Zona  INNER JOIN BZona ON BZona.IdZona = Zona.IdZona");
  EXPECT_EQ(Names(zona_.UsedValuesQuery()),
            (std::set<std::string>{"Madrid", "Norte|Sur", "O'Donnell", "Sevilla"}))
      << "Ávila is in Zona but no row uses it";

  zona_.setFilter("IdPais = 1 AND IdProvincia = 10");
  EXPECT_EQ(zona_.Filter(), "IdPais = 1 AND IdProvincia = 10");
  EXPECT_EQ(zona_.UsedValuesQuery(),
            "SELECT DISTINCT Nombre FROM Zona  INNER JOIN BZona ON BZona.IdZona = Zona.IdZona"
            " WHERE  IdPais = 1 AND IdProvincia = 10");
  EXPECT_EQ(Names(zona_.UsedValuesQuery()), (std::set<std::string>{"Madrid", "O'Donnell"}));

  CFieldLinker pais;
  pais.Init("Pais", "Pais", "IdPais", "Nombre", ";");
  EXPECT_EQ(pais.UsedValuesQuery(), "SELECT DISTINCT Nombre FROM Pais ");
  pais.setFilter("IdPais = 2");
  EXPECT_EQ(pais.UsedValuesQuery(), "SELECT DISTINCT Nombre FROM Pais  WHERE  IdPais = 2");
  EXPECT_EQ(Names(pais.UsedValuesQuery()), (std::set<std::string>{"Francia"}));
}

TEST_F(FieldLinkerTest, ChooseHandsThePickerTheNamesInUseAndReturnsItsAnswer) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Madrid; O'Donnell; "));
  zona_.setValue("Madrid");
  zona_.setFilter("IdProvincia = 10");
  EXPECT_EQ(zona_.Choose("Zonas"), "Madrid; O'Donnell; ");
  EXPECT_EQ(zona_.Value(), "Madrid") << "the caller puts the answer in the box";
  EXPECT_EQ(PickerProperty(picker, "Seleccionar"), Variant("Madrid"));
  EXPECT_EQ(PickerProperty(picker, "tabla"), Variant("Zona"));
  EXPECT_EQ(PickerProperty(picker, "TituloForm"), Variant("Zonas"));
  EXPECT_EQ(PickerProperty(picker, "SQLSentencia"), Variant(zona_.UsedValuesQuery()));
  EXPECT_EQ(PickerProperty(picker, "anchura"), Variant(std::int16_t{3000}));
  for (const char* op : {"Op_Nuevo", "Op_Borrar", "Op_Modificar"})
    EXPECT_EQ(PickerProperty(picker, op), Variant(false)) << op;

  picker.setAnswer(ListPickerAnswer::Cancel("Sevilla; "));
  EXPECT_EQ(zona_.Choose("Otro título", 2000), "Madrid");
  EXPECT_EQ(PickerProperty(picker, "TituloForm"), Variant("Otro título"));
  EXPECT_EQ(PickerProperty(picker, "anchura"), Variant(std::int16_t{2000}));
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(FieldLinkerTest, ValidateGivesTheDatabaseSpellingWhenEveryNameIsInUse) {
  ScriptedListPickerRegistration picker;
  struct Row {
    std::string text;
    std::string filter;
    std::string result;
  };
  const Row rows[] = {
      {"madrid", "", "Madrid;"},
      {" MADRID ; o'donnell", "IdProvincia = 10", "Madrid; O'Donnell;"},
      {"norte|sur;", "", "Norte|Sur;"},
      {"Sevilla;Madrid;", "IdPais = 1", "Sevilla; Madrid;"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE("'" + row.text + "'");
    zona_.setValue(row.text);
    zona_.setFilter(row.filter);
    std::string result = "Zonas";
    EXPECT_TRUE(zona_.Validate(result));
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(zona_.Value(), row.text) << "the typed text stands";
  }
  EXPECT_EQ(picker.InstanceCount(), 0);
}

TEST_F(FieldLinkerTest, ValidateOpensThePickerForTheFirstNameNotInUse) {
  struct Row {
    std::string name;
    std::string text;
    std::string filter;
    ListPickerAnswer answer;
    bool valid;
    std::string result;
  };
  const Row rows[] = {
      {"unused name, user picks", "Ávila", "", ListPickerAnswer::Accept("Madrid;"), true,
       "Madrid;"},
      {"unknown name, user cancels", "Centro", "", ListPickerAnswer::Cancel("Madrid;"), false,
       "Centro"},
      {"user accepts the same text", "Centro", "", ListPickerAnswer::Accept("Centro"), false,
       "Centro"},
      {"second name outside the filter", "Madrid;Sevilla", "IdProvincia = 10",
       ListPickerAnswer::Accept("O'Donnell; "), true, "O'Donnell; "},
      {"empty name between separators", "Madrid;;Sevilla", "", ListPickerAnswer::Accept("Sevilla;"),
       true, "Sevilla;"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    ScriptedListPickerRegistration picker(row.answer);
    zona_.setValue(row.text);
    zona_.setFilter(row.filter);
    std::string result = "Zonas";
    EXPECT_EQ(zona_.Validate(result), row.valid);
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(zona_.Value(), row.valid ? row.result : row.text);
    ASSERT_EQ(picker.InstanceCount(), 1);
    EXPECT_EQ(PickerProperty(picker, "TituloForm"), Variant("Zonas"))
        << "the title comes in through the result";
    EXPECT_EQ(PickerProperty(picker, "Seleccionar"), Variant(row.text));
    EXPECT_EQ(PickerProperty(picker, "SQLSentencia"), Variant(zona_.UsedValuesQuery()));
  }
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(FieldLinkerTest, FailuresInsideMembersAreReportedWithEnglishLabels) {
  zona_.setValue("Madrid");
  EXPECT_EQ(zona_.ID(1), 0) << "past the names";
  EXPECT_TRUE(Reported("ID property [Get] of CFieldLinker class", 9));

  zona_.setValue(" ; ");
  setBD(nullptr);
  std::string result = "Zonas";
  EXPECT_TRUE(zona_.Validate(result)) << "an empty text needs no query";
  EXPECT_EQ(result, "");
  EXPECT_EQ(zona_.Value(), " ; ");

  zona_.setValue("Madrid;Sevilla");
  result = "Zonas";
  EXPECT_FALSE(zona_.Validate(result));
  EXPECT_EQ(result, "") << "keeps what it held when the failure came";
  EXPECT_TRUE(Reported("Validate() method of CFieldLinker class", 91));
  EXPECT_EQ(zona_.GenerarCondicionSQL(), "((IdZona=0) OR (IdZona=0))")
      << "each failed look-up is reported by ID itself";
  EXPECT_TRUE(Reported("ID property [Get] of CFieldLinker class", 91));
  EXPECT_EQ(zona_.Value(), "Madrid;Sevilla");
}

TEST_F(FieldLinkerTest, FormatValueBuildsTheStoredMultiValueText) {
  std::string s;
  for (const char* name : {"Madrid", "Sevilla", "O'Donnell"}) s = zona_.FormatValue(name, s);
  EXPECT_EQ(s, "Madrid; Sevilla; O'Donnell;");
  EXPECT_EQ(zona_.FormatValue("", ""), ";");
}

}  // namespace
}  // namespace cp::testing
