// The condition that the property control hands to the host, built from inputs filled in as
// a user fills them, and the rows it selects on SQLite.
#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

using form::ControlContainer;

// The worked example: país, huecos, amueblado and a number search, in the panel's order.
void WorkedExample(ControlContainer& c, const std::string& words) {
  Type(c, "txtHuecos", "3");
  c.Get<form::CheckBox>("chkAmueblado").setValue(1);
  c.Get<form::ComboBox>("cboEn").setListIndex(0);
  c.Get<form::ComboBox>("cboOpPalabras").setListIndex(2);  // "Mayor o Igual"
  Type(c, "txtPalabras", words);
  Type(c, "txtPais", "España");
}

TEST_F(PropertyTest, WorkedExampleOverOwnProperties) {
  const std::string sqlw = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    WorkedExample(dlg.SeleccionInm1().Controls(), "120");
  });
  EXPECT_EQ(sqlw,
            "( (IPropio.IdPais Is Null)  OR (IPropio.IdPais = 1) ) AND  ( (IPropio.Huecos>=3) OR "
            "IsNull(IPropio.Huecos))  AND ( (IPropio.Amueblado = 1) OR (IPropio.Amueblado=2)) "
            "AND IPropio.IdIPropio>=120");
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_EQ(Own(sqlw), std::vector<long>{});
  // The same inputs from number 1 on: Spanish (or no país), three or more gaps (or unknown),
  // furnished or indifferent.
  const std::string fromOne = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    WorkedExample(dlg.SeleccionInm1().Controls(), "1");
  });
  EXPECT_EQ(Own(fromOne), (std::vector<long>{1, 4}));
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, WorkedExampleOverDemands) {
  const std::string sqlw = Accept(
      "Demandas", [](frmSeleccion& dlg) { WorkedExample(dlg.SeleccionInm1().Controls(), "120"); });
  EXPECT_EQ(sqlw,
            "(( (Demanda.Pais = 'España; ')  OR (Demanda.Pais LIKE 'España;*')  OR "
            "(Demanda.Pais LIKE '*; España; ')  OR (Demanda.Pais LIKE '*; España;*') )) AND  ( "
            "(Demanda.Huecos<=3) OR IsNull(Demanda.Huecos))  AND ( (Demanda.Amueblado = 1) OR "
            "(Demanda.Amueblado=2)) AND Demanda.IdDemanda>=120");
  EXPECT_EQ(Demands(sqlw), std::vector<long>{});
  const std::string fromOne = Accept(
      "Demandas", [](frmSeleccion& dlg) { WorkedExample(dlg.SeleccionInm1().Controls(), "1"); });
  EXPECT_EQ(Demands(fromOne), (std::vector<long>{1, 2, 5, 6}));
}

TEST_F(PropertyTest, UntouchedInputsGiveTheEmptyConditionForEveryEntity) {
  for (const char* entity :
       {"Inm. Propios", "Inm. Ajenos", "Inm. Archivados", "Inm. Vendidos", "Demandas"}) {
    EXPECT_EQ(Accept(entity, [](frmSeleccion&) {}), "") << entity;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

struct QueryCase {
  const char* name;
  const char* entity;
  std::function<void(ControlContainer&)> input;
  std::vector<long> ids;
};

// One criterion at a time, typed into its box or clicked, and the rows it lets through.
TEST_F(PropertyTest, EachCriterionSelectsTheExpectedRows) {
  const auto words = [](const char* field, int manner, const char* text) {
    return [=](ControlContainer& c) {
      c.Get<form::ComboBox>("cboEn").setText(field);
      c.Get<form::ComboBox>("cboOpPalabras").setListIndex(manner);
      Type(c, "txtPalabras", text);
    };
  };
  const auto typed = [](const char* box, const char* text, int index = -1) {
    return [=](ControlContainer& c) { Type(c, box, text, index); };
  };
  const auto ticked = [](const char* box, int value) {
    return [=](ControlContainer& c) { c.Get<form::CheckBox>(box).setValue(value); };
  };
  const std::vector<QueryCase> cases = {
      // Lookup names: rows without an id always pass, unknown names match nothing else.
      {"operation", "Inm. Propios", typed("txtOperacion", "Alquiler"), {2, 7}},
      {"types, two names", "Inm. Propios", typed("txtTipos", "Piso; Chalet"), {1, 3, 4, 7}},
      {"unknown país", "Inm. Propios", typed("txtPais", "Marte"), {}},
      {"agency", "Inm. Propios", typed("txtAgencias", "Casas Luna"), {2, 4}},
      {"agent", "Inm. Propios", typed("txtUsuarios", "Ana Pérez"), {1, 3, 4, 7}},
      {"access", "Inm. Propios", typed("txtAcceso", "Portero"), {3, 4}},
      {"property kind", "Inm. Propios", typed("txtInmueble", "Ático"), {3}},
      {"heating with unknown",
       "Inm. Propios",
       typed("txtCalefaccion", "Gas natural;No se sabe"),
       {2, 4, 7}},
      {"heating unknown alone",
       "Inm. Propios",
       typed("txtCalefaccion", "No se sabe"),
       {1, 2, 3, 4, 7}},
      // Categories: any of them, or all of them when chkCategorias is ticked.
      {"any category", "Inm. Propios", typed("txtCategorias", "Reformado; Vistas"), {1, 2, 4, 7}},
      {"all categories",
       "Inm. Propios",
       [](ControlContainer& c) {
         Type(c, "txtCategorias", "Reformado; Vistas");
         c.Get<form::CheckBox>("chkCategorias").setValue(1);
       },
       {1}},
      {"demand, all categories",
       "Demandas",
       [](ControlContainer& c) {
         Type(c, "txtCategorias", "Reformado");
         c.Get<form::CheckBox>("chkCategorias").setValue(1);
       },
       {1, 5}},
      // Ranges: a property's price within the typed bounds; a demand's bounds around one price.
      {"price range",
       "Inm. Propios",
       [](ControlContainer& c) {
         Type(c, "txtPrecio", "100000", 0);
         Type(c, "txtPrecio", "200.000", 1);
       },
       {1, 4, 7}},
      {"price upper bound only", "Inm. Propios", typed("txtPrecio", "100.000", 1), {2, 4}},
      {"surface lower bound", "Inm. Propios", typed("txtSuper", "80", 0), {1, 3, 4}},
      {"demand around a price", "Demandas", typed("txtPrecio", "150.000", 0), {1, 4, 5, 6}},
      {"demand around a surface", "Demandas", typed("txtSuper", "100", 0), {1, 6}},
      // Counts: at least so many in a property, at most so many asked by a demand.
      {"property gaps", "Inm. Propios", typed("txtHuecos", "3"), {1, 3, 4}},
      {"demand gaps", "Demandas", typed("txtHuecos", "2"), {1, 2, 4, 6}},
      {"lifts", "Inm. Propios", typed("txtAscensor", "2"), {3, 4}},
      {"demand location list", "Demandas", typed("txtProvincia", "Madrid"), {1, 5}},
      {"demand types", "Demandas", typed("txtTipos", "Local"), {2}},
      // Check boxes: indifferent rows (2) pass the features, but not Transmitido.
      {"furnished", "Inm. Propios", ticked("chkAmueblado", 1), {1, 2, 4, 7}},
      {"not new", "Inm. Propios", ticked("chkNuevo", 0), {1, 3, 7}},
      {"transmitted", "Inm. Propios", ticked("chkTransmitido", 1), {2}},
      {"not exclusive", "Inm. Propios", ticked("chkExclusiva", 0), {2, 3, 7}},
      {"expired", "Inm. Propios", ticked("chkCaducado", 1), {2}},
      {"not expired yet", "Inm. Propios", ticked("chkCaducado", 0), {3}},
      {"of interest to the pool", "Inm. Propios", ticked("chkIntBolsa", 1), {1, 3, 4, 7}},
      {"of interest to the agency", "Inm. Propios", ticked("chkIntAgencia", 1), {3}},
      {"date from",
       "Inm. Propios",
       [](ControlContainer& c) {
         ShowTab(c, 4);
         c.Get<form::DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(2026, 1, 1)));
       },
       {1, 7}},
      {"transmission up to",
       "Inm. Propios",
       [](ControlContainer& c) {
         ShowTab(c, 4);
         c.Get<form::DTPicker>("dtpTransmision", 1).setValue(Variant(MakeDate(2026, 3, 3)));
       },
       {2}},
      // Free words: number, owner and notes.
      {"number up to", "Inm. Propios", words("Nº Inmueble", 0, "2"), {1, 2}},
      {"number, fraction rounds", "Inm. Propios", words("Nº Inmueble", 1, "2,5"), {2}},
      {"owner starts with", "Inm. Propios", words("Propietario", 0, "garcía"), {1, 4}},
      {"owner anywhere, quoted", "Inm. Propios", words("Propietario", 1, "o'brien"), {2, 7}},
      {"notes end", "Inm. Propios", words("Notas", 2, "parque"), {1}},
      {"notes start, not end", "Inm. Propios", words("Notas", 2, "Luminoso"), {}},
      {"demand notes", "Demandas", words("Notas", 1, "PISO"), {1}},
  };
  for (const QueryCase& t : cases) {
    const std::string sqlw =
        Accept(t.entity, [&](frmSeleccion& dlg) { t.input(dlg.SeleccionInm1().Controls()); });
    const bool demand = std::string(t.entity) == "Demandas";
    EXPECT_EQ(demand ? Demands(sqlw) : Own(sqlw), t.ids) << t.name << ": " << sqlw;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, NonNumericWordWithANumberFieldComparesWithMinusOne) {
  const std::string sqlw = Accept("Demandas", [](frmSeleccion& dlg) {
    Type(dlg.SeleccionInm1().Controls(), "txtPalabras", "doce");  // "Igual" is preselected
  });
  EXPECT_EQ(sqlw, "Demanda.IdDemanda=-1");
  EXPECT_EQ(Demands(sqlw), std::vector<long>{});
  EXPECT_TRUE(messenger_->shown().empty());
}

TEST_F(PropertyTest, WordsJoinWithAndWithoutALeadingBlank) {
  const std::string sqlw = Accept("Inm. Ajenos", [](frmSeleccion& dlg) {
    ControlContainer& c = dlg.SeleccionInm1().Controls();
    c.Get<form::CheckBox>("chkComercial").setValue(0);
    c.Get<form::ComboBox>("cboEn").setText("Propietario");
    c.Get<form::ComboBox>("cboOpPalabras").setListIndex(2);
    Type(c, "txtPalabras", "Ann");
  });
  EXPECT_EQ(sqlw,
            "( (IAjeno.Comercial = 0) OR (IAjeno.Comercial=2)) AND Cliente.Alias LIKE '*Ann'");
}

TEST_F(PropertyTest, GreyedBoxesAddNothingWhateverTheirFlags) {
  const char* boxes[] = {"chkExclusiva", "chkAmueblado",  "chkNuevo",       "chkTrastero",
                         "chkComercial", "chkIndustrial", "chkTransmitido", "chkCaducado",
                         "chkIntBolsa",  "chkIntAgencia"};
  const std::string sqlw = Accept("Inm. Propios", [&](frmSeleccion& dlg) {
    ControlContainer& c = dlg.SeleccionInm1().Controls();
    for (const char* name : boxes) {
      auto& box = c.Get<form::CheckBox>(name);
      box.setValue(1);
      ShowTab(c, box.Parent()->Index());
      box.SetFocus();
      box.SendKeyDown(form::vbKeyDelete, 0);
    }
  });
  EXPECT_EQ(sqlw, "");
}

TEST_F(PropertyTest, AFailingWordSearchKeepsTheConditionBuiltBeforeIt) {
  const std::string sqlw = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    ControlContainer& c = dlg.SeleccionInm1().Controls();
    Type(c, "txtAltura", "3");
    Type(c, "txtPalabras", "99999999999");  // beyond a 32-bit number
  });
  EXPECT_EQ(sqlw, " ( (IPropio.Altura>=3) OR IsNull(IPropio.Altura)) ");
  EXPECT_EQ(Reports(), std::vector<std::string>{"SQL_cboEn de SeleccionInm"});
}

TEST_F(PropertyTest, AFailingCriterionEndsTheConditionWhereItStood) {
  const std::string sqlw = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    ControlContainer& c = dlg.SeleccionInm1().Controls();
    Type(c, "txtOperacion", "Venta");
    Type(c, "txtHuecos", "99999999999");  // numeric, but beyond a 32-bit number
    c.Get<form::CheckBox>("chkAmueblado").setValue(1);
  });
  EXPECT_EQ(sqlw, "( (IPropio.IdOperacion Is Null)  OR (IPropio.IdOperacion = 1) )");
  EXPECT_EQ(Reports(), std::vector<std::string>{"SQLSeleccion de SeleccionInm"});
}

}  // namespace
}  // namespace cp::testing
