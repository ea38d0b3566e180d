// The multi-valued builders: text to the character, their trap, and the rows selected on
// the SQLite engine for every position an item can take in a "A; B; " field.
#include "criteria/mseleccion.h"
#include "platform/form/command_button.h"
#include "tests/criteria/criteria_fixture.h"

namespace cp::testing {
namespace {

using MultiValuedConditionsTest = CriteriaTest;
using Ids = std::vector<long>;

// The four patterns of one item in column C.
std::string Patterns(const std::string& c, const std::string& x) {
  return "( (" + c + " = '" + x + "; ')  OR (" + c + " LIKE '" + x + ";*')  OR (" + c +
         " LIKE '*; " + x + "; ')  OR (" + c + " LIKE '*; " + x + ";*') )";
}

TEST_F(MultiValuedConditionsTest, NumberPairWrapsItsFragment) {
  struct Row {
    std::string from, to;
    bool nulls;
    std::string before, after;
  };
  const Row rows[] = {
      {"2", "4", false, "", " (T.Habitaciones BETWEEN 2 AND 4) "},
      {"", "4", true, "C", "C AND  ((T.Habitaciones <= 4 OR IsNull(T.Habitaciones)) ) "},
      {"", "4", false, "", " (T.Habitaciones <= 4) "},
      {"2", "", false, "C", "C AND  (T.Habitaciones >= 2) "},
      {"2", "x", true, "", " ((T.Habitaciones >= 2 OR IsNull(T.Habitaciones)) ) "},
      {"5", "1", false, "", " (T.Habitaciones BETWEEN 5 AND 1) "},
      {"2,5", "3,5", false, "", " (T.Habitaciones BETWEEN 2 AND 4) "},
      {"", "", true, "C", "C"},
      {"a", "b", true, "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.from + ".." + row.to);
    std::vector<form::Control*> pair = {&Text(row.from), &Text(row.to)};
    std::string where = row.before;
    SQL_NumA(pair, where, "T", "Habitaciones", row.nulls);
    EXPECT_EQ(where, row.after);
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(MultiValuedConditionsTest, NumberPairErrorsAreReportedAndLeaveTheCondition) {
  struct Row {
    std::string name;
    std::function<std::vector<form::Control*>()> pair;
    long number;
  };
  const Row rows[] = {
      {"overflow", [&] { return std::vector<form::Control*>{&Text("1"), &Text("99999999999")}; }, 6},
      {"a button", [&] {
         return std::vector<form::Control*>{&Text("1"), &form_.AddCommandButton("cmdA")};
       }, 438},
      {"one element", [&] { return std::vector<form::Control*>{&Text("1")}; }, 340},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    messenger_->ClearShown();
    std::string where = "C";
    SQL_NumA(row.pair(), where, "T", "Habitaciones", true);
    EXPECT_EQ(where, "C");
    ASSERT_EQ(messenger_->shown().size(), 1u);
    EXPECT_NE(messenger_->shown()[0].text.find("Error en la rutina: SQL_NumA de MSeleccion\r\n"),
              std::string::npos);
    EXPECT_NE(messenger_->shown()[0].text.find("Número del error: " + std::to_string(row.number)),
              std::string::npos);
  }
  EXPECT_NE(Log().find("SQL_NumA de MSeleccion [6] "), std::string::npos);
}

TEST_F(MultiValuedConditionsTest, NamesBecomeIdsAndTheListGetsItsSemicolon) {
  std::string lista = "Madrid; Sevilla", where;
  SQL_TablaIdAux(lista, where, "T", "IdZona", "Zona", "Nombre");
  EXPECT_EQ(where, "( (T.IdZona Is Null)  OR (T.IdZona = 4)  OR (T.IdZona = 9) )");
  EXPECT_EQ(lista, "Madrid; Sevilla;");

  struct Row {
    std::string lista, listaAfter, before, after;
  };
  const Row rows[] = {
      {"Madrid;", "Madrid;", "C", "C AND ( (T.IdZona Is Null)  OR (T.IdZona = 4) )"},
      {"  ÁVILA  ", "  ÁVILA  ;", "", "( (T.IdZona Is Null)  OR (T.IdZona = 5) )"},
      {"O'Donnell;Nowhere", "O'Donnell;Nowhere;", "",
       "( (T.IdZona Is Null)  OR (T.IdZona = 6)  OR (T.IdZona = -1) )"},
      {"Norte|Sur", "Norte|Sur;", "", "( (T.IdZona Is Null)  OR (T.IdZona = 7) )"},
      {"Madrid;;", "Madrid;;", "",
       "( (T.IdZona Is Null)  OR (T.IdZona = 4)  OR (T.IdZona = -1) )"},
      {"", "", "C", "C"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.lista);
    std::string list = row.lista, w = row.before;
    SQL_TablaIdAux(list, w, "T", "IdZona", "Zona", "Nombre");
    EXPECT_EQ(w, row.after);
    EXPECT_EQ(list, row.listaAfter);
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(MultiValuedConditionsTest, TextIdsAreQuotedFoundOrNot) {
  std::string lista = "Beta; Gamma", where;
  SQL_TablaIdAux(lista, where, "T", "IdCodigo", "Codigo", "Nombre");
  EXPECT_EQ(where, "( (T.IdCodigo Is Null)  OR (T.IdCodigo = 'B2')  OR (T.IdCodigo = '-1') )");
}

TEST_F(MultiValuedConditionsTest, NamesLookupFailureIsReportedAfterTheListChanged) {
  std::string lista = "Madrid", where = "C";
  SQL_TablaIdAux(lista, where, "T", "IdZona", "NoExiste", "Nombre");
  EXPECT_EQ(where, "C");
  EXPECT_EQ(lista, "Madrid;");
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_EQ(messenger_->shown()[0].text.rfind(
                "Error en la rutina: SQL_TablaIdAux de MSeleccion\r\n", 0),
            0u);
  EXPECT_NE(Log().find(" SQL_TablaIdAux de MSeleccion ["), std::string::npos);
}

TEST_F(MultiValuedConditionsTest, AnyItemGivesFourPatternsPerItem) {
  const std::string c = "T.Tipo";
  const std::string pisoLocal = "(" + Patterns(c, "Piso") + " OR " + Patterns(c, "Local") + ")";
  EXPECT_EQ(pisoLocal,
            "(( (T.Tipo = 'Piso; ')  OR (T.Tipo LIKE 'Piso;*')  OR (T.Tipo LIKE '*; Piso; ')  OR "
            "(T.Tipo LIKE '*; Piso;*') ) OR ( (T.Tipo = 'Local; ')  OR (T.Tipo LIKE 'Local;*')  OR "
            "(T.Tipo LIKE '*; Local; ')  OR (T.Tipo LIKE '*; Local;*') ))");
  struct Row {
    std::string text;
    bool empties;
    std::string before, after;
  };
  const Row rows[] = {
      {"Piso; Local", false, "", pisoLocal},
      {"Piso; Local;", false, "", pisoLocal},
      {"  Piso ;Local ;  ", false, "", pisoLocal},
      {"Piso; Local", false, "C", "C AND " + pisoLocal},
      {"Piso", true, "", "(" + Patterns(c, "Piso") + " OR (T.Tipo = ''))"},
      {"Piso;;Local", false, "",
       "(" + Patterns(c, "Piso") + " OR " + Patterns(c, "") + " OR " + Patterns(c, "Local") + ")"},
      {"O'Donnell|2", false, "", "(" + Patterns(c, "O''Donnell' + chr(124) + '2") + ")"},
      {"", true, "C", "C"},
      {" ; ", true, "C", "C"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    std::string where = row.before;
    SQL_TablaMultiString(Text(row.text), "T", "Tipo", where, row.empties);
    EXPECT_EQ(where, row.after);
  }
  std::string emptyItem;
  SQL_TablaMultiString(Text(";;"), "T", "Tipo", emptyItem, false);
  EXPECT_NE(emptyItem.find("(T.Tipo = '; ')"), std::string::npos);
  EXPECT_NE(emptyItem.find("(T.Tipo LIKE '*; ;*')"), std::string::npos);
}

TEST_F(MultiValuedConditionsTest, EveryItemJoinsWithAndAndTreatsEmptiesItsOwnWay) {
  const std::string c = "T.Tipo";
  const std::string both = "(" + Patterns(c, "Piso") + " AND " + Patterns(c, "Local") + ")";
  struct Row {
    std::string text;
    bool empties;
    std::string before, after;
  };
  const Row rows[] = {
      {"Piso; Local", false, "", both},
      {"Piso; Local;", true, "", both},
      {"Piso", true, "C", "C AND (" + Patterns(c, "Piso") + ")"},
      {"", true, "", " (T.Tipo='')"},
      {";", true, "C", "C AND  (T.Tipo='')"},
      {"", false, "C", "C"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    std::string where = row.before;
    SQL_TablaMultiStringAnd(Text(row.text), "T", "Tipo", where, row.empties);
    EXPECT_EQ(where, row.after);
  }
}

TEST_F(MultiValuedConditionsTest, ConditionsSelectTheRowsJetWould) {
  struct Row {
    std::string name;
    std::function<void(std::string&)> build;
    Ids expected;
    bool onDemands;
  };
  const Row rows[] = {
      {"any of Piso: alone, first, last, inside and in capitals; never Pisos or Mi Piso",
       [&](std::string& w) { SQL_TablaMultiString(Text("Piso"), "Demanda", "TipoInmueble", w, false); },
       Ids{1, 2, 3, 4, 9}, true},
      {"any of Piso; Local",
       [&](std::string& w) {
         SQL_TablaMultiString(Text("Piso; Local;"), "Demanda", "TipoInmueble", w, false);
       },
       Ids{1, 2, 3, 4, 8, 9}, true},
      {"any of Piso or an empty field (not a Null one)",
       [&](std::string& w) { SQL_TablaMultiString(Text("piso"), "Demanda", "TipoInmueble", w, true); },
       Ids{1, 2, 3, 4, 6, 9}, true},
      {"every one of Piso; Local",
       [&](std::string& w) {
         SQL_TablaMultiStringAnd(Text("Piso; Local"), "Demanda", "TipoInmueble", w, false);
       },
       Ids{2, 3, 4}, true},
      {"every item, nothing typed: only empty fields",
       [&](std::string& w) { SQL_TablaMultiStringAnd(Text(""), "Demanda", "TipoInmueble", w, true); },
       Ids{6}, true},
      {"accented item in any case",
       [&](std::string& w) { SQL_TablaMultiString(Text("ÁTICO"), "Demanda", "TipoInmueble", w, false); },
       Ids{4}, true},
      {"quote in an item, first and last position",
       [&](std::string& w) { SQL_TablaMultiString(Text("O'Donnell"), "Demanda", "Zona", w, false); },
       Ids{1, 7}, true},
      {"bar in an item",
       [&](std::string& w) { SQL_TablaMultiString(Text("Norte|Sur"), "Demanda", "Zona", w, false); },
       Ids{2}, true},
      {"accented capitals equal",
       [&](std::string& w) { SQL_TablaMultiString(Text("Ávila"), "Demanda", "Zona", w, false); },
       Ids{9, 10}, true},
      {"openings between 1 and 3",
       [&](std::string& w) {
         std::vector<form::Control*> pair = {&Text("1"), &Text("3")};
         SQL_NumA(pair, w, "IPropio", "Huecos", false);
       },
       Ids{1, 2, 6, 8}, false},
      {"openings from 4, or unknown",
       [&](std::string& w) {
         std::vector<form::Control*> pair = {&Text("4"), &Text("")};
         SQL_NumA(pair, w, "IPropio", "Huecos", true);
       },
       Ids{3, 4, 5, 9}, false},
      {"openings between 3 and 1: as given, nothing",
       [&](std::string& w) {
         std::vector<form::Control*> pair = {&Text("3"), &Text("1")};
         SQL_NumA(pair, w, "IPropio", "Huecos", false);
       },
       Ids{}, false},
      {"zones by name, empty zone passes",
       [&](std::string& w) {
         std::string lista = "madrid; ávila";
         SQL_TablaIdAux(lista, w, "IPropio", "IdZona", "Zona", "Nombre");
       },
       Ids{1, 3, 4, 7, 9}, false},
      {"unknown zone: only rows without zone",
       [&](std::string& w) {
         std::string lista = "Marte";
         SQL_TablaIdAux(lista, w, "IPropio", "IdZona", "Zona", "Nombre");
       },
       Ids{3, 9}, false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    std::string where;
    row.build(where);
    ASSERT_FALSE(where.empty());
    EXPECT_EQ(row.onDemands ? Demands(where) : Properties(where), row.expected) << where;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

}  // namespace
}  // namespace cp::testing
