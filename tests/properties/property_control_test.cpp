// The property control as the user and the dialog see it: the entity's set-up, the search
// field, the pickers, the keys, the number masks, saved selections and the user's default
// location.
#include <gtest/gtest.h>

#include "properties/location_cascade.h"
#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

using Texts = std::vector<std::string>;
Texts Items(const form::ComboBox& cbo) {
  Texts items;
  for (int i = 0; i < cbo.ListCount(); ++i) items.push_back(cbo.List(i));
  return items;
}
const Texts kNumberOps = {"Menor o Igual", "Igual", "Mayor o Igual"};

TEST_F(PropertyTest, EntitySetsTableAndSearchFieldsAndTheSearchFieldKeepsItsManner) {
  const struct { const char *entity, *table, *key, *number; bool upper; } cases[] = {
      {"Inm. Propios", "IPropio", "IdIPropio", "Nº Inmueble", true},
      {"Demandas", "Demanda", "IdDemanda", "Nº Demanda", false}};
  // One dialog window through all of them: each change of entity undoes the previous one.
  for (const auto& t : cases) {
    SCOPED_TRACE(t.entity);
    sel_->setEntidad(t.entity);
    EXPECT_EQ(Inm().Tabla(), t.table);
    EXPECT_EQ(Inm().CampoId(), t.key);
    EXPECT_EQ(Items(Cbo("cboEn")), (Texts{t.number, "Propietario", "Notas"}));
    EXPECT_EQ(Box().Item("txtPrecio", 1).Visible(), t.upper);
  }
  sel_->setEntidad("Inm. Propios");
  auto &en = Cbo("cboEn"), &op = Cbo("cboOpPalabras");
  op.setListIndex(2);  // "Mayor o Igual"
  en.setText("Notas");
  EXPECT_EQ(Items(op), (Texts{"Al principio", "En todo el texto", "Al final"}));
  EXPECT_EQ(op.Text(), "Al final");
  op.setListIndex(0);  // "Al principio" comes back as the middle row
  en.setText("Propietario");
  EXPECT_EQ(op.Text(), "En todo el texto");
  en.setText("Nº Inmueble");
  EXPECT_EQ(Items(op), kNumberOps);
  EXPECT_EQ(op.Text(), "Igual");
  EXPECT_EQ(Inm().PalabraEn(), "Nº Inmueble");
}

TEST_F(PropertyTest, PickerButtonsFillTheirOwnBoxWithWhatTheListGivesBack) {
  ScriptedListPickerRegistration picker;
  sel_->setEntidad("Inm. Ajenos");
  auto db = dao::OpenDatabase(path_);
  std::set<std::string> filled;
  int buttons = 0;
  for (form::Control* c : Box().Controls()) {
    const std::string button = c->Name();
    if (c->TypeName() != "CommandButton" ||
        LocationCascade::IsLocationBox("txt" + button.substr(3)))
      continue;
    SCOPED_TRACE(button);
    ++buttons;
    if (c->Parent()->Name() == "fraSelec") ShowTab(c->Parent()->Index());
    for (form::Control* t : Box().Controls())  // every box shows its own name
      if (t->TypeName() == "TextBox") static_cast<form::TextBox*>(t)->setText(t->Name() + "; ");
    const std::string chosen = "Elegido " + button + "; ";
    picker.setAnswer(ListPickerAnswer::Accept(chosen));
    Box().Get<form::CommandButton>(button).Press();
    auto* target = dynamic_cast<form::TextBox*>(Box().ActiveControl());
    ASSERT_NE(target, nullptr) << "the picker focuses its box";
    EXPECT_EQ(target->Text(), chosen);
    EXPECT_EQ(Picked(picker, "Seleccionar"), Variant(target->Name() + "; "));
    filled.insert(target->Name());
    const Variant sql = Picked(picker, "SQLSentencia");  // its own statement runs on the database
    if (!sql.IsEmpty()) { EXPECT_NO_THROW(db->OpenRecordset(sql.AsString()).Close()); }
  }
  EXPECT_EQ(filled.size(), static_cast<std::size_t>(buttons)) << "one box per button";
  EXPECT_GE(buttons, 8);
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, KeysOpenPickersAndGreyCheckBoxes) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Venta; "));
  sel_->setEntidad("Inm. Propios");
  auto& operacion = Txt("txtOperacion");
  operacion.SetFocus();
  operacion.SendKeyDown(65, form::vbShiftMask);  // Shift+A
  EXPECT_EQ(picker.InstanceCount(), 0);
  operacion.SendKeyDown(form::vbKeyReturn, form::vbShiftMask);
  EXPECT_EQ(operacion.Text(), "Venta; ");

  // Delete greys the criteria check boxes; "all categories" is no criterion of its own.
  for (form::Control* c : Box().Controls()) {
    if (c->TypeName() != "CheckBox") continue;
    auto& box = *static_cast<form::CheckBox*>(c);
    for (int start : {0, 1}) {
      box.setValue(start);
      ShowTab(box.Parent()->Index());
      box.SetFocus();
      box.SendKeyDown(form::vbKeyEscape, 0);
      EXPECT_EQ(box.Value(), start) << c->Name();
      box.SendKeyDown(form::vbKeyDelete, 0);
      EXPECT_EQ(box.Value(), c->Name() == "chkCategorias" ? start : 2) << c->Name();
    }
  }
}

TEST_F(PropertyTest, LeavingAPriceOrSurfaceBoxMasksItsNumber) {
  const std::pair<const char*, const char*> cases[] = {
      {"1.234.567", "1.234.567"}, {"2,5", "3"}, {"0", ""}, {"-1500", "-1.500"}, {"12a", ""}};
  sel_->setEntidad("Inm. Propios");
  for (const auto& [typed, shown] : cases)
    for (const char* name : {"txtPrecio", "txtSuper"})
      for (int index : {0, 1}) {
        Type(Box(), name, typed, index);
        EXPECT_EQ(Txt(name, index).Text(), typed) << "no mask while typing";
        Leave(Box());
        EXPECT_EQ(Txt(name, index).Text(), shown) << name << "(" << index << ") " << typed;
      }
}

TEST_F(PropertyTest, EmptySavedSelectionShowsTheUserLocation) {
  const struct { std::int32_t user; Texts location; } cases[] = {
      {3, {"España", "Ávila", "Ávila"}}, {4, {"España", "", ""}}, {99, {"", "", ""}}};
  for (const auto& t : cases) {
    SCOPED_TRACE(t.user);
    sel_ = std::make_unique<CSeleccion>();
    sel_->setgVUser(t.user);
    sel_->setEntidad("Inm. Propios");
    Txt("txtHuecos").setText("2");
    sel_->setSeleccion(Variant());
    EXPECT_EQ((Texts{Txt("txtPais").Text(), Txt("txtProvincia").Text(),
                     Txt("txtPoblacion").Text()}), t.location);
    // The location restores as unchanged: its linker's previous value is the name.
    EXPECT_EQ(Inm().Location().Pais().PreviousValue(), t.location[0]);
    // A restore clears first; with no location there is nothing to restore.
    EXPECT_EQ(Txt("txtHuecos").Text(), t.location[0].empty() ? "2" : "");
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, RestoreStopsAtAnEntryThatFitsNoInput) {
  Array2D saved(0, 4, 0, 2);
  const char* rows[][3] = {{"tbsSelec", "2", ""}, {"txtHuecos", "-1", "3"},
                           {"txtPrecio", "1", "250.000"},
                           {"txtPrecio", "7", "1"},  // no such element
                           {"txtAltura", "-1", "2"}};
  for (int i = 0; i < 5; ++i)
    for (int j = 0; j < 3; ++j) saved.at(i, j) = Variant(std::string(rows[i][j]));
  sel_->setEntidad("Inm. Propios");
  Txt("txtBanios").setText("1");
  sel_->setSeleccion(Variant(std::move(saved)));
  EXPECT_EQ(Reports(), Texts{"VerSelAnt de SeleccionInm"});
  EXPECT_EQ((Texts{Txt("txtBanios").Text(), Txt("txtHuecos").Text(), Txt("txtPrecio", 1).Text(),
                   Txt("txtAltura").Text()}),
            (Texts{"", "3", "250.000", ""}));  // cleared first, stopped before the last
  EXPECT_EQ(Inm().Pestania(), 2);
  EXPECT_EQ(Inm().NumSelecAnt(), 4);
  // Something that is no saved selection is reported, not raised to the host.
  messenger_->ClearShown();
  sel_->setSeleccion(Variant(std::string("txtHuecos=3")));
  EXPECT_EQ(Reports(), Texts{"Let de SelectAnt de SeleccionInm"});
  EXPECT_EQ(Txt("txtHuecos").Text(), "3");
}

}  // namespace
}  // namespace cp::testing
