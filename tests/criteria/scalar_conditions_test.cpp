// The scalar builders: each case's text to the character and, where the text stands alone,
// the rows it selects. The joining code is shared, so one joined case per builder.
#include "criteria/mseleccion.h"
#include "platform/form/command_button.h"
#include "tests/criteria/criteria_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using ScalarConditionsTest = CriteriaTest;
using Build = std::function<void(std::string&)>;
// A builder call as a case's step on the condition w.
#define W(...) Build([=, this](std::string& w) { __VA_ARGS__; })

TEST_F(ScalarConditionsTest, TextAndRowsOfEveryBuilder) {
  const int on = form::vbChecked, off = form::vbUnchecked, grey = form::vbGrayed;
  const char* const P = "IPropio";
  auto fecha = [&](int i, Variant v) { return W(SQL_Fecha(Picker(i, v), P, "FechaAlta", w)); };
  auto hoy = [&](int v) { return W(SQL_FechaHoy(Check(v), P, "FechaAlta", w)); };
  auto inLista = [&](int v) { return W(SQL_InLista(Check(v), "(4,9)", P, "IdZona", w)); };
  auto buscar = [&](std::string p) {
    return W(SQL_BuscarAux(p, w, P, "IdUsuario", "Usuario", "Nombre"));
  };
  // The range builder qualifies the caller's field names; a value it cannot take leaves them.
  auto entre = [&](std::string t, bool nulls) -> Build {
    return [=, this](std::string& w) {
      std::string low = "PrecioMinimo", high = "PrecioMaximo", before = w;
      SQL_NumEntre(Text(t), w, "Demanda", low, high, nulls);
      EXPECT_EQ(low, w == before ? "PrecioMinimo" : "Demanda.PrecioMinimo");
      EXPECT_EQ(high, w == before ? "PrecioMaximo" : "Demanda.PrecioMaximo");
    };
  };
  auto numOp = [&](std::string t, std::string op, bool nulls) {
    return W(SQL_NumOp(Text(t), w, P, "Huecos", nulls, op));
  };
  auto checkInt = [&](int v, bool or2) {
    return W(SQL_CheckInt(Check(v), w, P, "Amueblado", or2));
  };
  auto checkBool = [&](int v) { return W(SQL_CheckBool(Check(v), w, P, "Exclusividad")); };
  auto between = [](std::string n) {
    return "(" + n + " BETWEEN Demanda.PrecioMinimo AND Demanda.PrecioMaximo)";
  };
  const std::string inRange = between("150000");

  CheckCases({
      {"date pair opens with a blank parenthesis, then joins with AND",
       [&](std::string& w) {
         fecha(0, MakeDate(2005, 3, 7))(w);
         fecha(1, MakeDate(2005, 12, 31))(w);
       }, "", " ( IPropio.FechaAlta >= #03/07/05# )  AND (IPropio.FechaAlta <= #12/31/05# ) ",
       Ids{2, 3}},
      {"upper date alone drops the time of day", fecha(1, MakeDate(2031, 1, 2, 23, 59, 0)), "",
       " ( IPropio.FechaAlta <= #01/02/31# ) "},
      {"third element", fecha(2, MakeDate(2005, 3, 7)), "", " ( IPropio.FechaAlta) "},
      {"unchecked lower date", fecha(0, Variant::Null()), "X", "X"},
      {"today passed", hoy(on), "", " (IPropio.FechaAlta <= #11/15/26# ) ",
       Ids{1, 2, 3, 4, 5, 6, 7}},
      {"still to come", hoy(off), "", " (IPropio.FechaAlta > #11/15/26# ) ", Ids{8}},
      {"today grey", hoy(grey), "", ""},
      {"in list", inLista(on), "", " ( IPropio.IdZona IN (4,9)) ", Ids{1, 2, 7, 8}},
      {"not in list: Null ids drop out, as in Jet", inLista(off), "",
       " ( IPropio.IdZona NOT IN (4,9)) ", Ids{4, 5, 6}},
      {"not in list, joined", inLista(off), "C", "C AND (IPropio.IdZona NOT IN (4,9)) "},
      {"list grey", inLista(grey), "C", "C"},
      {"user search: PÉREZ matches pérez", buscar("'*pérez'"), "",
       "(IPropio.IdUsuario = 3 OR  (IPropio.IdUsuario = 8) )", Ids{1, 2, 6, 7}},
      {"user search, one match, joined", buscar("'Juan'"), "C", "C AND (IPropio.IdUsuario = 5)"},
      {"user search without match", buscar("'Nadie*'"), "", "(IPropio.IdUsuario = -1)", Ids{}},
      {"value in range", entre("150000", false), "", inRange, Ids{1, 2}},
      {"thousands point, joined", entre("150.000", false), "C", "C AND " + inRange},
      {"value in range, open bounds accepted", entre("150000", true), "",
       " ( " + inRange + " OR (IsNull(Demanda.PrecioMinimo) AND (Demanda.PrecioMaximo>= 150000))"
       " OR (IsNull(Demanda.PrecioMaximo) AND (Demanda.PrecioMinimo<= 150000)) OR "
       "(IsNull(Demanda.PrecioMinimo) AND IsNull(Demanda.PrecioMaximo)) )", Ids{1, 2, 5, 7, 9}},
      {"range: letters", entre("abc", true), "C", "C"},
      {"range: a date is not numeric",
       [&](std::string& w) {
         std::string low = "Min", high = "Max";
         SQL_NumEntre(Picker(-1, MakeDate(2020, 1, 1)), w, "T", low, high, false);
         EXPECT_EQ(low, "Min");
       }, "", ""},
      {"at least 3 openings", numOp("3", ">=", false), "", " (IPropio.Huecos>=3) ",
       Ids{2, 3, 5, 8}},
      {"operator kept verbatim, joined", numOp("2,5", "<=", false), "C",
       "C AND  (IPropio.Huecos<=2) "},
      {"spaced operator", numOp("1.000", " = ", false), "", " (IPropio.Huecos = 1000) "},
      {"operator, empty", numOp("", ">=", true), "C", "C"},
      {"furnished", checkInt(on, false), "", " (IPropio.Amueblado = 1) ", Ids{2, 5, 8}},
      {"unfurnished", checkInt(off, false), "C", "C AND  (IPropio.Amueblado = 0) "},
      {"unfurnished or either", checkInt(off, true), "",
       "( (IPropio.Amueblado = 0) OR (IPropio.Amueblado=2)) ", Ids{1, 3, 6, 7}},
      {"furnished grey", checkInt(grey, true), "C", "C"},
      {"exclusive", checkBool(on), "", " (IPropio.Exclusividad = TRUE) ", Ids{2, 4, 6, 8}},
      {"not exclusive, alone", checkBool(off), "", " (IPropio.Exclusividad = FALSE) ",
       Ids{1, 3, 5, 7, 9}},
      {"exclusive grey", checkBool(grey), "", ""},
      {"a chain opens with the first filled criterion only",
       [&](std::string& w) {
         for (const Build& b : {checkBool(grey), numOp("", ">=", true), hoy(on),
                                checkInt(on, false), fecha(0, Variant::Null())})
           b(w);
       }, "", " (IPropio.FechaAlta <= #11/15/26# )  AND  (IPropio.Amueblado = 1) ", Ids{2, 5}},
  });
}

TEST_F(ScalarConditionsTest, ErrorsReachTheCallerAndLeaveTheCondition) {
  std::string where = "C", low = "Min", high = "Max";
  auto& button = form_.AddCommandButton("cmdX");
  EXPECT_EQ(CaughtError([&] { SQL_NumEntre(button, where, "T", low, high, false); }).number(),
            438);
  EXPECT_EQ(CaughtError([&] {
              SQL_NumEntre(Text("99999999999"), where, "T", low, high, false);
            }).number(), 6);
  EXPECT_THROW(SQL_NumOp(Text("4294967296"), where, "T", "Huecos", false, ">="), Error);
  EXPECT_THROW(SQL_BuscarAux("'x'", where, "T", "IdUsuario", "NoExiste", "Nombre"), Error);
  setBD(nullptr);
  EXPECT_EQ(CaughtError([&] {
              SQL_BuscarAux("'x'", where, "T", "IdUsuario", "Usuario", "Nombre");
            }).number(), 91);
  EXPECT_EQ(where + low + high, "CMinMax");
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

}  // namespace
}  // namespace cp::testing
