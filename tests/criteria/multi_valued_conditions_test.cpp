// The multi-valued builders: each case's text to the character and, where the text stands
// alone, the rows it selects for every position an item can take in a "A; B; " field.
#include "criteria/mseleccion.h"
#include "platform/form/command_button.h"
#include "tests/criteria/criteria_fixture.h"

namespace cp::testing {
namespace {

using MultiValuedConditionsTest = CriteriaTest;

// The four patterns of one item in column C.
std::string Patterns(const std::string& c, const std::string& x) {
  return "( (" + c + " = '" + x + "; ')  OR (" + c + " LIKE '" + x + ";*')  OR (" + c +
         " LIKE '*; " + x + "; ')  OR (" + c + " LIKE '*; " + x + ";*') )";
}

TEST_F(MultiValuedConditionsTest, TextAndRowsOfEveryBuilder) {
  auto numA = [&](std::string from, std::string to, bool nulls) {
    return [=, this](std::string& w) {
      SQL_NumA({&Text(from), &Text(to)}, w, "IPropio", "Huecos", nulls);
    };
  };
  // The list gets its closing semicolon whatever it finds.
  auto ids = [&](std::string lista, std::string after, std::string table = "Zona",
                 std::string field = "IdZona") {
    return [=](std::string& w) {
      std::string list = lista;
      SQL_TablaIdAux(list, w, "IPropio", field, table, "Nombre");
      EXPECT_EQ(list, after);
    };
  };
  auto any = [&](std::string text, bool empties) {
    return [=, this](std::string& w) {
      SQL_TablaMultiString(Text(text), "Demanda", "TipoInmueble", w, empties);
    };
  };
  auto every = [&](std::string text, bool empties) {
    return [=, this](std::string& w) {
      SQL_TablaMultiStringAnd(Text(text), "Demanda", "TipoInmueble", w, empties);
    };
  };
  const std::string h = "IPropio.Huecos", z = "IPropio.IdZona", t = "Demanda.TipoInmueble";
  const std::string piso = Patterns(t, "Piso"), local = Patterns(t, "Local");
  const std::string pisoLocal = "(" + piso + " OR " + local + ")";
  const std::string zn = "( (" + z + " Is Null) ";
  auto zones = [&](std::initializer_list<const char*> ids) {
    std::string s = zn;
    for (const char* id : ids) s += " OR (" + z + " = " + id + ") ";
    return s + ")";
  };

  CheckCases({
      {"openings between 1 and 3", numA("1", "3", false), "", " (" + h + " BETWEEN 1 AND 3) ",
       Ids{1, 2, 6, 8}},
      {"openings up to 4 or unknown, joined", numA("", "4", true), "C",
       "C AND  ((" + h + " <= 4 OR IsNull(" + h + ")) ) "},
      {"openings up to 4", numA("", "4", false), "", " (" + h + " <= 4) ", Ids{1, 2, 3, 6, 7, 8}},
      {"openings from 2, joined", numA("2", "", false), "C", "C AND  (" + h + " >= 2) "},
      {"openings from 4 or unknown, letters ignored", numA("4", "x", true), "",
       " ((" + h + " >= 4 OR IsNull(" + h + ")) ) ", Ids{3, 4, 5, 9}},
      {"openings, nothing typed", numA("", "", true), "C", "C"},
      {"zones by name, an empty zone passes", ids("Madrid; Sevilla", "Madrid; Sevilla;"), "",
       zones({"4", "9"}), Ids{1, 2, 3, 7, 8, 9}},
      {"zone with its semicolon, joined", ids("Madrid;", "Madrid;"), "C", "C AND " + zones({"4"})},
      {"quote, and an unknown zone", ids("O'Donnell;Nowhere", "O'Donnell;Nowhere;"), "",
       zones({"6", "-1"})},
      {"empty item", ids("Madrid;;", "Madrid;;"), "", zones({"4", "-1"})},
      {"no zones", ids("", ""), "C", "C"},
      {"text ids are quoted, found or not",
       ids("Beta; Gamma", "Beta; Gamma;", "Codigo", "IdCodigo"), "",
       "( (IPropio.IdCodigo Is Null)  OR (IPropio.IdCodigo = 'B2')  OR "
       "(IPropio.IdCodigo = '-1') )"},
      {"any of Piso: alone, first, last, inside, in capitals; never Pisos or Mi Piso",
       any("Piso", false), "", "(" + piso + ")", Ids{1, 2, 3, 4, 9}},
      {"any of Piso; Local", any("Piso; Local", false), "", pisoLocal, Ids{1, 2, 3, 4, 8, 9}},
      {"spaces trimmed", any("  Piso ;Local ;  ", false), "", pisoLocal},
      {"any, joined", any("Piso; Local", false), "C", "C AND " + pisoLocal},
      {"any of piso or an empty field (not a Null one)", any("piso", true), "",
       "(" + Patterns(t, "piso") + " OR (" + t + " = ''))", Ids{1, 2, 3, 4, 6, 9}},
      {"only empty items", any(";;", false), "",
       "(" + Patterns(t, "") + " OR " + Patterns(t, "") + ")"},
      {"quote and bar in an item", any("O'Donnell|2", false), "",
       "(" + Patterns(t, "O''Donnell' + chr(124) + '2") + ")"},
      {"any, blank items", any(" ; ", true), "C", "C"},
      {"every one of Piso; Local", every("Piso; Local", false), "",
       "(" + piso + " AND " + local + ")", Ids{2, 3, 4}},
      {"every, joined", every("Piso", true), "C", "C AND (" + piso + ")"},
      {"every item, nothing typed: only empty fields", every("", true), "", " (" + t + "='')",
       Ids{6}},
      {"every, a bare semicolon, joined", every(";", true), "C", "C AND  (" + t + "='')"},
      {"every, nothing typed, no empties", every("", false), "C", "C"},
  });
}

// These two builders report their errors themselves and leave the condition as it was.
TEST_F(MultiValuedConditionsTest, ErrorsAreReportedAndLeaveTheCondition) {
  auto numA = [&](form::Control& to) {
    return [p = &to, this](std::string& w) { SQL_NumA({&Text("1"), p}, w, "T", "H", true); };
  };
  struct Row { std::string name; std::function<void(std::string&)> build; long number; };
  const Row rows[] = {
      {"overflow", numA(Text("99999999999")), 6},
      {"a button", numA(form_.AddCommandButton("cmdA")), 438},
      {"one element", [&](std::string& w) { SQL_NumA({&Text("1")}, w, "T", "H", true); }, 340},
      {"names lookup fails after the list changed",
       [&](std::string& w) {
         std::string lista = "Madrid";
         SQL_TablaIdAux(lista, w, "T", "IdZona", "NoExiste", "Nombre");
         EXPECT_EQ(lista, "Madrid;");
       }, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    messenger_->ClearShown();
    std::string where = "C";
    row.build(where);
    EXPECT_EQ(where, "C");
    ASSERT_EQ(messenger_->shown().size(), 1u);
    const std::string& text = messenger_->shown()[0].text;
    const std::string routine = row.number ? "SQL_NumA" : "SQL_TablaIdAux";
    EXPECT_EQ(text.rfind("Error en la rutina: " + routine + " de MSeleccion\r\n", 0), 0u) << text;
    if (row.number) {
      EXPECT_NE(text.find("Número del error: " + std::to_string(row.number)), std::string::npos);
    }
    EXPECT_NE(Log().find(" " + routine + " de MSeleccion ["), std::string::npos);
  }
  EXPECT_NE(Log().find("SQL_NumA de MSeleccion [6] "), std::string::npos);
}

}  // namespace
}  // namespace cp::testing
