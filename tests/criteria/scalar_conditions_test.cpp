// The scalar builders: their text to the character, the edge cases, and the rows their
// conditions select on the SQLite engine.
#include "common/messages.h"
#include "criteria/mseleccion.h"
#include "platform/form/command_button.h"
#include "tests/criteria/criteria_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using ScalarConditionsTest = CriteriaTest;
using Ids = std::vector<long>;

TEST_F(ScalarConditionsTest, DatePairOpensWithBlankParenthesisThenJoinsWithAnd) {
  std::string where;
  SQL_Fecha(Picker(0, MakeDate(2005, 3, 7)), "T", "Fecha", where);
  EXPECT_EQ(where, " ( T.Fecha >= #03/07/05# ) ");
  SQL_Fecha(Picker(1, MakeDate(2005, 12, 31)), "T", "Fecha", where);
  EXPECT_EQ(where, " ( T.Fecha >= #03/07/05# )  AND (T.Fecha <= #12/31/05# ) ");

  std::string upperOnly;
  SQL_Fecha(Picker(1, MakeDate(2031, 1, 2, 23, 59, 0)), "T", "Fecha", upperOnly);
  EXPECT_EQ(upperOnly, " ( T.Fecha <= #01/02/31# ) ") << "time of day dropped";
  std::string otherIndex;
  SQL_Fecha(Picker(2, MakeDate(2005, 3, 7)), "T", "Fecha", otherIndex);
  EXPECT_EQ(otherIndex, " ( T.Fecha) ");
}

TEST_F(ScalarConditionsTest, UncheckedDatePickerAddsNothing) {
  std::string where = "X";
  SQL_Fecha(Picker(0, Variant::Null()), "T", "Fecha", where);
  std::string empty;
  SQL_Fecha(Picker(1, Variant::Null()), "T", "Fecha", empty);
  EXPECT_EQ(where, "X");
  EXPECT_EQ(empty, "");
}

TEST_F(ScalarConditionsTest, TodayCheckBoxComparesUpToTodayOrStrictlyAfter) {
  struct Row {
    int value;
    std::string before, after;
  };
  const Row rows[] = {
      {form::vbChecked, "", " (T.Fecha <= #11/15/26# ) "},
      {form::vbUnchecked, "", " (T.Fecha > #11/15/26# ) "},
      {form::vbChecked, "C", "C AND (T.Fecha <= #11/15/26# ) "},
      {form::vbUnchecked, "C", "C AND (T.Fecha > #11/15/26# ) "},
      {form::vbGrayed, "", ""},
      {form::vbGrayed, "C", "C"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.value) + " after '" + row.before + "'");
    std::string where = row.before;
    SQL_FechaHoy(Check(row.value), "T", "Fecha", where);
    EXPECT_EQ(where, row.after);
  }
}

TEST_F(ScalarConditionsTest, InListInsertsTheListVerbatim) {
  struct Row {
    int value;
    std::string before, after;
  };
  const Row rows[] = {
      {form::vbUnchecked, "C", "C AND (T.Id NOT IN (3,7)) "},
      {form::vbChecked, "C", "C AND (T.Id IN (3,7)) "},
      {form::vbChecked, "", " ( T.Id IN (3,7)) "},
      {form::vbUnchecked, "", " ( T.Id NOT IN (3,7)) "},
      {form::vbGrayed, "C", "C"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.value) + " after '" + row.before + "'");
    std::string where = row.before;
    SQL_InLista(Check(row.value), "(3,7)", "T", "Id", where);
    EXPECT_EQ(where, row.after);
  }
}

TEST_F(ScalarConditionsTest, AuxiliarySearchWritesEveryMatchingIdOrMinusOne) {
  std::string where;
  SQL_BuscarAux("'*pérez'", where, "T", "IdUsuario", "Usuario", "Nombre");
  EXPECT_EQ(where, "(T.IdUsuario = 3 OR  (T.IdUsuario = 8) )") << "PÉREZ matches pérez";

  std::string one = "C";
  SQL_BuscarAux("'Juan'", one, "T", "IdUsuario", "Usuario", "Nombre");
  EXPECT_EQ(one, "C AND (T.IdUsuario = 5)");

  std::string none;
  SQL_BuscarAux("'Nadie*'", none, "T", "IdUsuario", "Usuario", "Nombre");
  EXPECT_EQ(none, "(T.IdUsuario = -1)");
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(ScalarConditionsTest, AuxiliarySearchLetsDatabaseErrorsReachTheCaller) {
  std::string where = "C";
  EXPECT_THROW(SQL_BuscarAux("'x'", where, "T", "IdUsuario", "NoExiste", "Nombre"), Error);
  EXPECT_EQ(where, "C");
  setBD(nullptr);
  EXPECT_EQ(CaughtError([&] { SQL_BuscarAux("'x'", where, "T", "IdUsuario", "Usuario", "Nombre"); }).number(), 91);
  EXPECT_EQ(where, "C");
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(ScalarConditionsTest, ValueInsideStoredRangeQualifiesTheCallersFieldNames) {
  struct Row {
    std::string text;
    bool nulls;
    std::string before, after;
  };
  const Row rows[] = {
      {"150000", false, "", "(150000 BETWEEN T.Min AND T.Max)"},
      {"150.000", false, "C", "C AND (150000 BETWEEN T.Min AND T.Max)"},
      {"2,5", false, "", "(2 BETWEEN T.Min AND T.Max)"},
      {"3,5", false, "", "(4 BETWEEN T.Min AND T.Max)"},
      {"-7", false, "", "(-7 BETWEEN T.Min AND T.Max)"},
      {"150000", true, "",
       " ( (150000 BETWEEN T.Min AND T.Max) OR (IsNull(T.Min) AND (T.Max>= 150000)) OR "
       "(IsNull(T.Max) AND (T.Min<= 150000)) OR (IsNull(T.Min) AND IsNull(T.Max)) )"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    std::string where = row.before, low = "Min", high = "Max";
    SQL_NumEntre(Text(row.text), where, "T", low, high, row.nulls);
    EXPECT_EQ(where, row.after);
    EXPECT_EQ(low, "T.Min");
    EXPECT_EQ(high, "T.Max");
  }
}

TEST_F(ScalarConditionsTest, NonNumericValueLeavesConditionAndFieldNamesAlone) {
  for (const std::string text : {"", "abc", "1e3", "1.50", " "}) {
    SCOPED_TRACE(text);
    std::string where = "C", low = "Min", high = "Max";
    SQL_NumEntre(Text(text), where, "T", low, high, true);
    EXPECT_EQ(where, "C");
    EXPECT_EQ(low, "Min");
    EXPECT_EQ(high, "Max");
  }
  std::string where, low = "Min", high = "Max";
  SQL_NumEntre(Picker(-1, MakeDate(2020, 1, 1)), where, "T", low, high, false);
  EXPECT_EQ(where, "") << "a date is not numeric";
  EXPECT_EQ(low, "Min");
}

TEST_F(ScalarConditionsTest, RangeBuilderErrorsPropagateBeforeTouchingAnything) {
  std::string where = "C", low = "Min", high = "Max";
  auto& button = form_.AddCommandButton("cmdX");
  EXPECT_EQ(CaughtError([&] { SQL_NumEntre(button, where, "T", low, high, false); }).number(), 438);
  EXPECT_EQ(CaughtError([&] { SQL_NumEntre(Text("99999999999"), where, "T", low, high, false); }).number(), 6);
  EXPECT_EQ(where, "C");
  EXPECT_EQ(low, "Min");
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(ScalarConditionsTest, NumberAgainstOperatorKeepsOperatorVerbatim) {
  struct Row {
    std::string text, op;
    bool nulls;
    std::string before, after;
  };
  const Row rows[] = {
      {"3", ">=", true, "", " ( (T.Huecos>=3) OR IsNull(T.Huecos)) "},
      {"3", ">=", false, "", " (T.Huecos>=3) "},
      {"2,5", "<=", false, "C", "C AND  (T.Huecos<=2) "},
      {"1.000", " = ", false, "", " (T.Huecos = 1000) "},
      {"", ">=", true, "C", "C"},
      {"tres", ">=", true, "C", "C"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    std::string where = row.before;
    SQL_NumOp(Text(row.text), where, "T", "Huecos", row.nulls, row.op);
    EXPECT_EQ(where, row.after);
  }
  std::string where = "C";
  EXPECT_THROW(SQL_NumOp(Text("4294967296"), where, "T", "Huecos", false, ">="), Error);
  EXPECT_EQ(where, "C");
}

TEST_F(ScalarConditionsTest, TriStateChecksAndGreyNeverChangesTheCondition) {
  struct Row {
    int value;
    bool either;
    std::string intAfter, boolAfter;
  };
  const Row rows[] = {
      {form::vbChecked, true, "( (T.Amueblado = 1) OR (T.Amueblado=2)) ", " (T.Amueblado = TRUE) "},
      {form::vbChecked, false, " (T.Amueblado = 1) ", " (T.Amueblado = TRUE) "},
      {form::vbUnchecked, true, "( (T.Amueblado = 0) OR (T.Amueblado=2)) ",
       " (T.Amueblado = FALSE) "},
      {form::vbUnchecked, false, " (T.Amueblado = 0) ", " (T.Amueblado = FALSE) "},
      {form::vbGrayed, true, "", ""},
      {form::vbGrayed, false, "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.value) + (row.either ? " either" : ""));
    std::string asInt, asBool;
    auto& box = Check(row.value);
    SQL_CheckInt(box, asInt, "T", "Amueblado", row.either);
    SQL_CheckBool(box, asBool, "T", "Amueblado");
    EXPECT_EQ(asInt, row.intAfter);
    EXPECT_EQ(asBool, row.boolAfter);
    std::string joined = "C";
    SQL_CheckInt(box, joined, "T", "Amueblado", row.either);
    EXPECT_EQ(joined, row.intAfter.empty() ? "C" : "C AND " + row.intAfter);
  }
  std::string where;
  SQL_CheckBool(Check(form::vbUnchecked), where, "T", "Caducado");
  EXPECT_EQ(where, " (T.Caducado = FALSE) ");
}

// The builders one after another, as a query generator calls them: only the first filled
// criterion opens the text.
TEST_F(ScalarConditionsTest, ChainOfBuildersJoinsEachFilledCriterionOnce) {
  std::string where;
  SQL_CheckBool(Check(form::vbGrayed), where, "T", "Exclusividad");
  SQL_NumOp(Text(""), where, "T", "Huecos", true, ">=");
  SQL_FechaHoy(Check(form::vbChecked), "T", "FechaAlta", where);
  SQL_CheckInt(Check(form::vbChecked), where, "T", "Amueblado", false);
  SQL_Fecha(Picker(0, Variant::Null()), "T", "FechaAlta", where);
  EXPECT_EQ(where, " (T.FechaAlta <= #11/15/26# )  AND  (T.Amueblado = 1) ");
}

// What the conditions select on the SQLite engine: the rows Jet returns.
TEST_F(ScalarConditionsTest, ConditionsSelectTheRowsJetWould) {
  struct Row {
    std::string name;
    std::function<void(std::string&)> build;
    Ids demands, properties;  // one of the two is checked, see `onDemands`
    bool onDemands;
  };
  const Row rows[] = {
      {"dates from 7 March to 31 December 2005",
       [&](std::string& w) {
         SQL_Fecha(Picker(0, MakeDate(2005, 3, 7)), "IPropio", "FechaAlta", w);
         SQL_Fecha(Picker(1, MakeDate(2005, 12, 31)), "IPropio", "FechaAlta", w);
       },
       {}, Ids{2, 3}, false},
      {"today passed",
       [&](std::string& w) { SQL_FechaHoy(Check(form::vbChecked), "IPropio", "FechaAlta", w); },
       {}, Ids{1, 2, 3, 4, 5, 6, 7}, false},
      {"still to come",
       [&](std::string& w) { SQL_FechaHoy(Check(form::vbUnchecked), "IPropio", "FechaAlta", w); },
       {}, Ids{8}, false},
      {"in list",
       [&](std::string& w) { SQL_InLista(Check(form::vbChecked), "(4,9)", "IPropio", "IdZona", w); },
       {}, Ids{1, 2, 7, 8}, false},
      {"not in list (Null ids drop out, as in Jet)",
       [&](std::string& w) {
         SQL_InLista(Check(form::vbUnchecked), "(4,9)", "IPropio", "IdZona", w);
       },
       {}, Ids{4, 5, 6}, false},
      {"user search",
       [&](std::string& w) {
         SQL_BuscarAux("'*pérez'", w, "IPropio", "IdUsuario", "Usuario", "Nombre");
       },
       {}, Ids{1, 2, 6, 7}, false},
      {"user search without match",
       [&](std::string& w) {
         SQL_BuscarAux("'Nadie'", w, "IPropio", "IdUsuario", "Usuario", "Nombre");
       },
       {}, Ids{}, false},
      {"price inside the demand's range",
       [&](std::string& w) {
         std::string low = "PrecioMinimo", high = "PrecioMaximo";
         SQL_NumEntre(Text("150.000"), w, "Demanda", low, high, false);
       },
       Ids{1, 2}, {}, true},
      {"price inside the range, open bounds accepted",
       [&](std::string& w) {
         std::string low = "PrecioMinimo", high = "PrecioMaximo";
         SQL_NumEntre(Text("150000"), w, "Demanda", low, high, true);
       },
       Ids{1, 2, 5, 7, 9}, {}, true},
      {"at least 3 openings",
       [&](std::string& w) { SQL_NumOp(Text("3"), w, "IPropio", "Huecos", false, ">="); },
       {}, Ids{2, 3, 5, 8}, false},
      {"at most 2 openings or unknown",
       [&](std::string& w) { SQL_NumOp(Text("2"), w, "IPropio", "Huecos", true, "<="); },
       {}, Ids{1, 4, 6, 7, 9}, false},
      {"furnished",
       [&](std::string& w) { SQL_CheckInt(Check(form::vbChecked), w, "IPropio", "Amueblado", false); },
       {}, Ids{2, 5, 8}, false},
      {"furnished or either",
       [&](std::string& w) { SQL_CheckInt(Check(form::vbChecked), w, "IPropio", "Amueblado", true); },
       {}, Ids{2, 3, 5, 7, 8}, false},
      {"unfurnished or either",
       [&](std::string& w) {
         SQL_CheckInt(Check(form::vbUnchecked), w, "IPropio", "Amueblado", true);
       },
       {}, Ids{1, 3, 6, 7}, false},
      {"exclusive",
       [&](std::string& w) { SQL_CheckBool(Check(form::vbChecked), w, "IPropio", "Exclusividad"); },
       {}, Ids{2, 4, 6, 8}, false},
      {"not exclusive",
       [&](std::string& w) {
         SQL_CheckBool(Check(form::vbUnchecked), w, "IPropio", "Exclusividad");
       },
       {}, Ids{1, 3, 5, 7, 9}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::string where;
    row.build(where);
    ASSERT_FALSE(where.empty());
    if (row.onDemands) {
      EXPECT_EQ(Demands(where), row.demands) << where;
    } else {
      EXPECT_EQ(Properties(where), row.properties) << where;
    }
  }
}

}  // namespace
}  // namespace cp::testing
