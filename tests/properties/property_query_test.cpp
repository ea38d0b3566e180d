// The condition that the property control hands to the host, built from inputs filled in as
// a user fills them, and the rows it selects.
#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

using Input = std::function<void(ControlContainer&)>;

// País, huecos, amueblado and a number search, in the panel's order.
Input WorkedExample(const std::string& words) {
  return [=](ControlContainer& c) {
    Type(c, "txtHuecos", "3");
    c.Get<form::CheckBox>("chkAmueblado").setValue(1);
    c.Get<form::ComboBox>("cboEn").setListIndex(0);
    c.Get<form::ComboBox>("cboOpPalabras").setListIndex(2);  // "Mayor o Igual"
    Type(c, "txtPalabras", words);
    Type(c, "txtPais", "España");
  };
}

TEST_F(PropertyTest, WorkedExampleOverOwnPropertiesAndDemands) {
  const std::string own = Accept("Inm. Propios", WorkedExample("120"));
  EXPECT_EQ(own,
            "( (IPropio.IdPais Is Null)  OR (IPropio.IdPais = 1) ) AND  ( (IPropio.Huecos>=3) OR "
            "IsNull(IPropio.Huecos))  AND ( (IPropio.Amueblado = 1) OR (IPropio.Amueblado=2)) "
            "AND IPropio.IdIPropio>=120");
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_EQ(Own(own), Ids{});
  // From number 1 on: Spanish (or no país), three or more gaps (or unknown), furnished or
  // indifferent.
  EXPECT_EQ(Own(Accept("Inm. Propios", WorkedExample("1"))), (Ids{1, 4}));

  const std::string demands = Accept("Demandas", WorkedExample("120"));
  EXPECT_EQ(demands,
            "(( (Demanda.Pais = 'España; ')  OR (Demanda.Pais LIKE 'España;*')  OR "
            "(Demanda.Pais LIKE '*; España; ')  OR (Demanda.Pais LIKE '*; España;*') )) AND  ( "
            "(Demanda.Huecos<=3) OR IsNull(Demanda.Huecos))  AND ( (Demanda.Amueblado = 1) OR "
            "(Demanda.Amueblado=2)) AND Demanda.IdDemanda>=120");
  EXPECT_EQ(Demands(demands), Ids{});
  EXPECT_EQ(Demands(Accept("Demandas", WorkedExample("1"))), (Ids{1, 2, 5, 6}));
  // Untouched inputs give the empty condition for every entity.
  for (const char* entity :
       {"Inm. Propios", "Inm. Ajenos", "Inm. Archivados", "Inm. Vendidos", "Demandas"})
    EXPECT_EQ(Accept(entity, [](ControlContainer&) {}), "") << entity;
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

// One criterion at a time, typed into its box or clicked, and the rows it lets through. The
// generated crossing tests cover the criteria that a cross fills (places, types, operation,
// heating, categories, prices, surfaces, counts and features).
TEST_F(PropertyTest, EachCriterionSelectsTheExpectedRows) {
  const auto words = [](const char* field, int manner, const char* text) -> Input {
    return [=](ControlContainer& c) {
      c.Get<form::ComboBox>("cboEn").setText(field);
      c.Get<form::ComboBox>("cboOpPalabras").setListIndex(manner);
      Type(c, "txtPalabras", text);
    };
  };
  const auto typed = [](const char* box, const char* text, int index = -1) -> Input {
    return [=](ControlContainer& c) { Type(c, box, text, index); };
  };
  const auto ticked = [](const char* box, int value, Input also = {}) -> Input {
    return [=](ControlContainer& c) {
      if (also) also(c);
      c.Get<form::CheckBox>(box).setValue(value);
    };
  };
  const auto dated = [](const char* picker, int index, int y, int m, int d) -> Input {
    return [=](ControlContainer& c) {
      c.Get<form::SSTab>("tbsSelec").setTab(4);
      c.Get<form::DTPicker>(picker, index).setValue(Variant(MakeDate(y, m, d)));
    };
  };
  const char *own = "Inm. Propios", *dem = "Demandas";
  const struct { const char *name, *entity; Input input; Ids ids; } cases[] = {
      // Lookup names: rows without an id always pass, unknown names match nothing else.
      {"types, two names", own, typed("txtTipos", "Piso; Chalet"), {1, 3, 4, 7}},
      {"unknown país", own, typed("txtPais", "Marte"), {}},
      {"agency", own, typed("txtAgencias", "Casas Luna"), {2, 4}},
      {"agent", own, typed("txtUsuarios", "Ana Pérez"), {1, 3, 4, 7}},
      {"access", own, typed("txtAcceso", "Portero"), {3, 4}},
      {"property kind", own, typed("txtInmueble", "Ático"), {3}},
      {"heating unknown alone", own, typed("txtCalefaccion", "No se sabe"), {1, 2, 3, 4, 7}},
      // Categories: any of them, or all of them when chkCategorias is ticked.
      {"any category", own, typed("txtCategorias", "Reformado; Vistas"), {1, 2, 4, 7}},
      {"all categories", own,
       ticked("chkCategorias", 1, typed("txtCategorias", "Reformado; Vistas")), {1}},
      // A property's price within the typed bounds.
      {"price range", own,
       [](ControlContainer& c) {
         Type(c, "txtPrecio", "100000", 0);
         Type(c, "txtPrecio", "200.000", 1);
       }, {1, 4, 7}},
      // At least so many gaps, or unknown; a demand's lists hold the typed names.
      {"property gaps", own, typed("txtHuecos", "3"), {1, 3, 4}},
      {"demand location list", dem, typed("txtProvincia", "Madrid"), {1, 5}},
      {"demand types", dem, typed("txtTipos", "Local"), {2}},
      // Check boxes: indifferent rows (2) pass the features, but not Transmitido.
      {"transmitted", own, ticked("chkTransmitido", 1), {2}},
      {"expired", own, ticked("chkCaducado", 1), {2}},
      {"of interest to the pool", own, ticked("chkIntBolsa", 1), {1, 3, 4, 7}},
      {"of interest to the agency", own, ticked("chkIntAgencia", 1), {3}},
      {"date from", own, dated("dtpAlta", 0, 2026, 1, 1), {1, 7}},
      {"transmission up to", own, dated("dtpTransmision", 1, 2026, 3, 3), {2}},
      // Free words: number, owner and notes.
      {"number up to", own, words("Nº Inmueble", 0, "2"), {1, 2}},
      {"owner starts with", own, words("Propietario", 0, "garcía"), {1, 4}},
      {"owner anywhere, quoted", own, words("Propietario", 1, "o'brien"), {2, 7}},
      {"notes end", own, words("Notas", 2, "parque"), {1}},
      {"demand notes", dem, words("Notas", 1, "PISO"), {1}},
  };
  for (const auto& t : cases) {
    const std::string sqlw = Accept(t.entity, t.input);
    EXPECT_EQ(t.entity == dem ? Demands(sqlw) : Own(sqlw), t.ids) << t.name << ": " << sqlw;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

// The exact condition for a few inputs, and the reports of a criterion that fails.
TEST_F(PropertyTest, ConditionTextsAndFailingCriteria) {
  const struct { const char *entity, *sqlw, *report; Input input; } cases[] = {
      {"Demandas", "Demanda.IdDemanda=-1", "",  // a word for a number field ("Igual")
       [](ControlContainer& c) { Type(c, "txtPalabras", "doce"); }},
      {"Inm. Ajenos",  // the words join with AND, without a leading blank
       "( (IAjeno.Comercial = 0) OR (IAjeno.Comercial=2)) AND Cliente.Alias LIKE '*Ann'", "",
       [](ControlContainer& c) {
         c.Get<form::CheckBox>("chkComercial").setValue(0);
         c.Get<form::ComboBox>("cboEn").setText("Propietario");
         c.Get<form::ComboBox>("cboOpPalabras").setListIndex(2);
         Type(c, "txtPalabras", "Ann");
       }},
      {"Inm. Propios",  // a failing word search keeps the condition built before it
       " ( (IPropio.Altura>=3) OR IsNull(IPropio.Altura)) ", "SQL_cboEn de SeleccionInm",
       [](ControlContainer& c) {
         Type(c, "txtAltura", "3");
         Type(c, "txtPalabras", "99999999999");  // beyond a 32-bit number
       }},
      {"Inm. Propios",  // a failing criterion ends the condition where it stood
       "( (IPropio.IdOperacion Is Null)  OR (IPropio.IdOperacion = 1) )",
       "SQLSeleccion de SeleccionInm",
       [](ControlContainer& c) {
         Type(c, "txtOperacion", "Venta");
         Type(c, "txtHuecos", "99999999999");  // numeric, but beyond a 32-bit number
         c.Get<form::CheckBox>("chkAmueblado").setValue(1);
       }},
  };
  for (const auto& t : cases) {
    messenger_->ClearShown();
    const std::string sqlw = Accept(t.entity, t.input);
    EXPECT_EQ(sqlw, t.sqlw);
    EXPECT_EQ(Reports(), *t.report ? std::vector<std::string>{t.report}
                                   : std::vector<std::string>{});
  }
}

}  // namespace
}  // namespace cp::testing
