// The field linker over the zones of the fixture database: splitting the typed text, ids and
// the condition they make, the names in use, validation through the scripted picker, errors.
#include "criteria/cfield_linker.h"

#include "common/scripted_list_picker.h"
#include "tests/criteria/criteria_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

// Zones in use through BZona: Madrid (4) in two towns of Madrid province, O'Donnell (6) in
// Madrid, Sevilla (9) in Sevilla province, Norte|Sur (7) in France; Ávila (5) unused.
const char* const kGeography = R"SQL(
INSERT INTO BZona (IdZona, IdPais, IdProvincia, IdPoblacion) VALUES (4, 1, 10, 100),
  (6, 1, 10, 100), (4, 1, 10, 101), (9, 1, 11, 102), (7, 2, 13, 104);
)SQL";

class FieldLinkerTest : public CriteriaTest {
 protected:
  static void SetUpTestSuite() {
    CriteriaTest::SetUpTestSuite();
    sqlite::NativeDatabase(path_, sqlite::NativeDatabase::Mode::OpenExisting)
        .ExecuteNative(kGeography);
  }
  void SetUp() override {
    CriteriaTest::SetUp();
    zona_.Init("BZona", "Zona", "IdZona", "Nombre", ";");
  }
  // The error box of the handler names the label and the number.
  bool Reported(const std::string& label, long number) const {
    for (const auto& shown : messenger_->shown())
      if (shown.text.find("Error en la rutina: " + label + "\r\n") != std::string::npos &&
          shown.text.find("Número del error: " + std::to_string(number)) != std::string::npos)
        return true;
    return false;
  }
  CFieldLinker zona_;
};


TEST_F(FieldLinkerTest, InitGuardsEveryMemberAndBindsOnce) {
  CFieldLinker linker;
  std::string result = "Zonas";
  const std::pair<const char*, std::function<void()>> members[] = {
      {"Value", [&] { (void)linker.Value(); }}, {"setValue", [&] { linker.setValue("Madrid"); }},
      {"PreviousValue", [&] { (void)linker.PreviousValue(); }},
      {"setPreviousValue", [&] { linker.setPreviousValue("Madrid"); }},
      {"Filter", [&] { (void)linker.Filter(); }},
      {"setFilter", [&] { linker.setFilter("IdPais = 1"); }},
      {"MoreValues", [&] { (void)linker.MoreValues(); }},
      {"IsEmpty", [&] { (void)linker.IsEmpty(); }},
      {"ValuesCount", [&] { (void)linker.ValuesCount(); }}, {"ID", [&] { (void)linker.ID(); }},
      {"GenerarCondicionSQL", [&] { (void)linker.GenerarCondicionSQL(); }},
      {"Choose", [&] { (void)linker.Choose("Zonas"); }},
      {"Validate", [&] { (void)linker.Validate(result); }},
      {"UsedValuesQuery", [&] { (void)linker.UsedValuesQuery(); }},
      {"NameLookupQuery", [&] { (void)linker.NameLookupQuery("Madrid"); }},
  };
  for (const auto& [name, call] : members) {
    SCOPED_TRACE(name);
    EXPECT_EQ(CaughtError(call).number(), 20001);
  }
  EXPECT_EQ(result, "Zonas") << "a refused Validate leaves its argument alone";
  EXPECT_TRUE(messenger_->shown().empty()) << "raised to the caller, not reported";

  // Init with Null is reported and leaves the linker unbound.
  linker.Init("Zona", "Zona", "IdZona", Variant::Null(), ";");
  EXPECT_TRUE(Reported("Init() method of CFieldLinker class", 94));
  EXPECT_EQ(CaughtError([&] { (void)linker.Value(); }).number(), 20001);

  // A second Init raises and keeps the first binding.
  const Error again =
      CaughtError([&] { zona_.Init("PrPa", "Provincia", "IdProvincia", "Nombre", ","); });
  EXPECT_EQ(again.number(), 20000);
  EXPECT_EQ(again.source(), "CFieldLinker");
  zona_.setValue("Madrid,Sevilla");
  EXPECT_FALSE(zona_.MoreValues()) << "still split at ';'";
  EXPECT_EQ(zona_.ID(), -2) << "still looked up in Zona";
}

TEST_F(FieldLinkerTest, SettingValueSplitsAtTheSeparator) {
  const struct { std::string text; bool empty, more; int count; } rows[] = {
      {" ; ", true, false, -1},          {" Madrid ; ", false, false, 0},
      {"Madrid; Sevilla;", false, true, 1}, {"Madrid;;Sevilla", false, true, 2},
      {";;", false, true, 1},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE("'" + row.text + "'");
    zona_.setValue(row.text);
    EXPECT_EQ(zona_.Value(), row.text) << "kept as typed";
    EXPECT_EQ(zona_.IsEmpty(), row.empty);
    EXPECT_EQ(zona_.MoreValues(), row.more);
    EXPECT_EQ(zona_.ValuesCount(), row.count) << "one less than the number of names";
  }
  std::string s;
  for (const char* name : {"Madrid", "Sevilla", "O'Donnell"}) s = zona_.FormatValue(name, s);
  EXPECT_EQ(s, "Madrid; Sevilla; O'Donnell;");
  EXPECT_EQ(zona_.FormatValue("", ""), ";");
}

TEST_F(FieldLinkerTest, IdsAndConditionFollowJetComparison) {
  const struct { std::string text; std::optional<int> index; std::int32_t id; } rows[] = {
      {"  madrid ;", {}, 4}, {"ávila", {}, 5},          {"O'Donnell", {}, 6},
      {"Centro", {}, -2},    {"Madrid; Sevilla", 1, 9}, {"Madrid;Centro", 1, -2},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE("'" + row.text + "'");
    zona_.setValue(row.text);
    EXPECT_EQ(zona_.ID(row.index), row.id);
  }
  // The condition compares the unqualified id field; the rows are those of IPropio.
  const struct { std::string text, condition; Ids rows; } conds[] = {
      {"", "", {}},
      {"Madrid;", "(IdZona=4)", {1, 7}},
      {"Madrid;Sevilla", "((IdZona=4) OR (IdZona=9))", {1, 2, 7, 8}},
      {"madrid; Centro; ÁVILA;", "((IdZona=4) OR (IdZona=-2) OR (IdZona=5))", {1, 4, 7}},
  };
  for (const auto& c : conds) {
    SCOPED_TRACE("'" + c.text + "'");
    zona_.setValue(c.text);
    EXPECT_EQ(zona_.GenerarCondicionSQL(), c.condition);
    if (!c.condition.empty()) { EXPECT_EQ(Rows(c.condition), c.rows); }
  }
  EXPECT_TRUE(messenger_->shown().empty());

  // Without an index, several names give -1 without querying.
  EXPECT_EQ(zona_.NameLookupQuery("O'Donnell"),
            "SELECT IdZona FROM   Zona WHERE  Nombre = 'O''Donnell'");
  zona_.setValue("Madrid;Sevilla");
  setBD(nullptr);  // any query would now fail and be reported
  EXPECT_EQ(zona_.ID(), -1);
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(FieldLinkerTest, ChooseReturnsThePickersAnswerOrTheValueOnCancel) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Madrid; O'Donnell; "));
  zona_.setValue("Madrid");
  zona_.setFilter("IdProvincia = 10");
  EXPECT_EQ(zona_.Choose("Zonas"), "Madrid; O'Donnell; ");
  EXPECT_EQ(zona_.Value(), "Madrid") << "the caller puts the answer in the box";

  picker.setAnswer(ListPickerAnswer::Cancel("Sevilla; "));
  EXPECT_EQ(zona_.Choose("Otro título", 2000), "Madrid");
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(FieldLinkerTest, ValidateGivesTheDatabaseSpellingOrOpensThePicker) {
  // No answer: every name is in use and the picker stays closed.
  const struct {
    std::string text, filter;
    std::optional<ListPickerAnswer> answer;
    std::string result;
  } rows[] = {
      {"madrid", "", {}, "Madrid;"},
      {"Sevilla; MADRID ; o'donnell", "IdPais = 1", {}, "Sevilla; Madrid; O'Donnell;"},
      {"Ávila", "", ListPickerAnswer::Accept("Madrid;"), "Madrid;"},  // unused: the user picks
      {"Madrid;;Sevilla", "", ListPickerAnswer::Accept("Sevilla;"), "Sevilla;"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    ScriptedListPickerRegistration picker(row.answer.value_or(ListPickerAnswer::Cancel()));
    zona_.setValue(row.text);
    zona_.setFilter(row.filter);
    std::string result = "Zonas";
    EXPECT_TRUE(zona_.Validate(result));
    EXPECT_EQ(result, row.result);
    EXPECT_EQ(zona_.Value(), row.answer ? row.result : row.text);
    EXPECT_EQ(picker.InstanceCount(), row.answer ? 1 : 0);
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

}  // namespace
}  // namespace cp::testing
