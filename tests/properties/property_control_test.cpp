// The property control as the user and the dialog see it: the entity's set-up, the search
// field combos, the pickers, the keys, the number masks, the tabs, saved selections and the
// user's default location.
#include <gtest/gtest.h>

#include <optional>

#include "common/scripted_list_picker.h"
#include "criteria/cfield_linker.h"
#include "platform/form/label.h"
#include "platform/form/property_bag.h"
#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

using form::ControlContainer;

std::vector<std::string> Items(const form::ComboBox& cbo) {
  std::vector<std::string> items;
  for (int i = 0; i < cbo.ListCount(); ++i) items.push_back(cbo.List(i));
  return items;
}

// The value a picker instance received for a property, or nullopt when it was never set.
std::optional<Variant> Received(const ListPickerRecording& r, const std::string& name) {
  std::optional<Variant> value;
  for (const ListPickerStep& s : r.steps)
    if (s.kind == ListPickerStep::Kind::SetProperty && s.name == name) value = s.value;
  return value;
}

const std::vector<std::string> kNumberOps = {"Menor o Igual", "Igual", "Mayor o Igual"};
const std::vector<std::string> kTextOps = {"Al principio", "En todo el texto", "Al final"};

TEST_F(PropertyTest, EntitySetsTableSearchFieldsAndRangeBoxes) {
  const struct {
    const char* entity;
    const char* table;
    const char* key;
    const char* number;
    bool upperBoxes;
  } cases[] = {{"Inm. Propios", "IPropio", "IdIPropio", "Nº Inmueble", true},
               {"Demandas", "Demanda", "IdDemanda", "Nº Demanda", false},
               {"Inm. Archivados", "IArchivado", "IdIArchivado", "Nº Inmueble", true},
               {"Inm. Vendidos", "IVendido", "IdIVendido", "Nº Inmueble", true}};
  // One dialog window through all of them: each change of entity undoes the previous one.
  for (const auto& t : cases) {
    sel_->setEntidad(t.entity);
    EXPECT_TRUE(Dlg().SeleccionInm1Control().Visible());
    EXPECT_EQ(Inm().Tabla(), t.table);
    EXPECT_EQ(Inm().CampoId(), t.key);
    EXPECT_FALSE(Inm().Cruzando());
    EXPECT_EQ(Items(Cbo("cboEn")), (std::vector<std::string>{t.number, "Propietario", "Notas"}));
    EXPECT_EQ(Cbo("cboEn").ListIndex(), 0);
    EXPECT_EQ(Items(Cbo("cboOpPalabras")), kNumberOps);
    EXPECT_EQ(Cbo("cboOpPalabras").Text(), "Igual");
    EXPECT_EQ(Inm().PalabraEn(), t.number);
    for (const char* upper : {"lbly1", "lbly2"})
      EXPECT_EQ(Box().Item(upper).Visible(), t.upperBoxes) << upper;
    EXPECT_EQ(Box().Item("txtPrecio", 1).Visible(), t.upperBoxes) << t.entity;
    EXPECT_EQ(Box().Item("txtSuper", 1).Visible(), t.upperBoxes) << t.entity;
    EXPECT_EQ(Box().Get<form::Label>("lbly1").Caption(), "y");
  }
}

TEST_F(PropertyTest, SearchFieldKeepsTheChosenMannerExceptTheFirstRow) {
  sel_->setEntidad("Inm. Propios");
  auto& en = Cbo("cboEn");
  auto& op = Cbo("cboOpPalabras");
  op.setListIndex(2);  // "Mayor o Igual"
  en.setText("Notas");
  EXPECT_EQ(Items(op), kTextOps);
  EXPECT_EQ(op.Text(), "Al final");
  op.setListIndex(0);  // "Al principio" comes back as the middle row
  en.setText("Propietario");
  EXPECT_EQ(op.Text(), "En todo el texto");
  en.setText("Nº Inmueble");
  EXPECT_EQ(Items(op), kNumberOps);
  EXPECT_EQ(op.Text(), "Igual");
  EXPECT_EQ(Inm().PalabraEn(), "Nº Inmueble");
}

TEST_F(PropertyTest, PickerButtonsFillTheirBoxWithWhatTheListGivesBack) {
  const char* cases[][2] = {{"cmdAcceso", "txtAcceso"},         {"cmdAgencias", "txtAgencias"},
                            {"cmdAgentes", "txtUsuarios"},      {"cmdCalefaccion", "txtCalefaccion"},
                            {"cmdCategorias", "txtCategorias"}, {"cmdInmueble", "txtInmueble"},
                            {"cmdOperacion", "txtOperacion"},   {"cmdTipos", "txtTipos"}};
  ScriptedListPickerRegistration picker;
  sel_->setEntidad("Inm. Ajenos");
  auto db = dao::OpenDatabase(path_);
  for (const auto& [button, box] : cases) {
    auto& target = Txt(box);
    ShowTab(Box(), target.Parent()->Index());
    target.setText("Antes; ");
    picker.setAnswer(ListPickerAnswer::Accept(std::string("Elegido ") + button + "; "));
    Box().Get<form::CommandButton>(button).Press();
    EXPECT_EQ(target.Text(), std::string("Elegido ") + button + "; ");
    EXPECT_TRUE(target.HasFocus()) << button;
    const ListPickerRecording& r = *picker.LastInstance();
    EXPECT_EQ(Received(r, "Seleccionar")->AsString(), "Antes; ");
    for (const char* op : {"Op_Nuevo", "Op_Borrar", "Op_Modificar"})
      EXPECT_FALSE(CBool(*Received(r, op)));
    // A statement of its own must run on the agency's database.
    if (const auto sql = Received(r, "SQLSentencia")) {
      EXPECT_NO_THROW(db->OpenRecordset(sql->AsString()).Close()) << button;
    }
    // Cancelling leaves the text as it was.
    picker.setAnswer(ListPickerAnswer::Cancel("Otro; "));
    Box().Get<form::CommandButton>(button).Press();
    EXPECT_EQ(target.Text(), std::string("Elegido ") + button + "; ");
  }
  EXPECT_EQ(picker.InstanceCount(), 16);
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, ShiftEnterOpensThePickerOfOperationAndPropertyKind) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Venta; "));
  sel_->setEntidad("Inm. Propios");
  auto& operacion = Txt("txtOperacion");
  operacion.SetFocus();
  operacion.SendKeyDown(form::vbKeyReturn, 0);   // Enter alone
  operacion.SendKeyDown(65, form::vbShiftMask);  // Shift+A
  EXPECT_EQ(picker.InstanceCount(), 0);
  operacion.SendKeyDown(form::vbKeyReturn, form::vbShiftMask);
  EXPECT_EQ(picker.InstanceCount(), 1);
  EXPECT_EQ(operacion.Text(), "Venta; ");
  EXPECT_EQ(Received(*picker.LastInstance(), "TituloForm")->AsString(), "Operación");

  picker.setAnswer(ListPickerAnswer::Accept("Ático; "));
  auto& inmueble = Txt("txtInmueble");
  inmueble.SetFocus();
  inmueble.SendKeyDown(form::vbKeyReturn, form::vbShiftMask | form::vbCtrlMask);
  EXPECT_EQ(picker.InstanceCount(), 2);
  EXPECT_EQ(inmueble.Text(), "Ático; ");
  EXPECT_TRUE(inmueble.HasFocus());

  // Boxes without the shortcut ignore it.
  ShowTab(Box(), 2);
  Txt("txtAltura").SetFocus();
  Txt("txtAltura").SendKeyDown(form::vbKeyReturn, form::vbShiftMask);
  EXPECT_EQ(picker.InstanceCount(), 2);
}

TEST_F(PropertyTest, DeleteGreysTheTenCriteriaCheckBoxes) {
  sel_->setEntidad("Inm. Propios");
  for (form::Control* c : Box().Controls()) {
    if (c->TypeName() != "CheckBox" || c->Name() == "chkCategorias") continue;
    auto& box = *static_cast<form::CheckBox*>(c);
    for (int start : {0, 1}) {
      box.setValue(start);
      ShowTab(Box(), box.Parent()->Index());
      box.SetFocus();
      box.SendKeyDown(form::vbKeyEscape, 0);
      EXPECT_EQ(box.Value(), start) << c->Name();
      box.SendKeyDown(form::vbKeyDelete, 0);
      EXPECT_EQ(box.Value(), 2) << c->Name();
    }
  }
  // "All categories" is no criterion of its own: Delete leaves it.
  auto& todas = Chk("chkCategorias");
  todas.setValue(1);
  ShowTab(Box(), 1);
  todas.SetFocus();
  todas.SendKeyDown(form::vbKeyDelete, 0);
  EXPECT_EQ(todas.Value(), 1);
}

TEST_F(PropertyTest, LeavingAPriceOrSurfaceBoxMasksItsNumber) {
  const struct {
    const char* typed;
    const char* shown;
  } cases[] = {{"150000", "150.000"},
               {"1.234.567", "1.234.567"},
               {"  95 ", "95"},
               {"2,5", "3"},
               {"0", ""},
               {"-1500", "-1.500"},
               {"abc", ""},
               {"12a", ""},
               {"", ""}};
  sel_->setEntidad("Inm. Propios");
  for (const auto& t : cases) {
    for (const char* name : {"txtPrecio", "txtSuper"}) {
      for (int index : {0, 1}) {
        Type(Box(), name, t.typed, index);
        EXPECT_EQ(Txt(name, index).Text(), t.typed) << "no mask while typing";
        Leave(Box());
        EXPECT_EQ(Txt(name, index).Text(), t.shown) << name << "(" << index << ") " << t.typed;
      }
    }
  }
}

TEST_F(PropertyTest, TabClickShowsItsFrameAndFocusesItsFirstInput) {
  const struct {
    int tab;
    const char* first;
    int index;
  } cases[] = {{2, "txtAltura", -1},
               {1, "txtCategorias", -1},
               {4, "dtpAlta", 0},
               {3, "txtAgencias", -1},
               {0, "txtInmueble", -1}};
  sel_->setEntidad("Demandas");
  for (const auto& t : cases) {
    ShowTab(Box(), t.tab);
    for (int frame = 0; frame < 5; ++frame)
      EXPECT_EQ(Box().Item("fraSelec", frame).Visible(), frame == t.tab) << t.tab << " " << frame;
    EXPECT_EQ(Box().ActiveControl(), &Box().Item(t.first, t.index)) << t.first;
  }
  EXPECT_EQ(Box().Get<form::SSTab>("tbsSelec").TabCaption(2), " Características ");
}

TEST_F(PropertyTest, ShowingTheDialogFocusesTheFirstCriterion) {
  sel_->setEntidad("Inm. Vendidos");
  // The window is freed once the loop ends, so the name is read inside it.
  std::string focused = "(nada)";
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
    if (const form::Control* c = dlg.SeleccionInm1().Controls().ActiveControl()) focused = c->Name();
  }));
  sel_->mtdMostrar();
  EXPECT_EQ(focused, "txtInmueble");
}

TEST_F(PropertyTest, EmptySavedSelectionShowsTheUserLocation) {
  const struct {
    std::int32_t user;
    std::vector<std::string> location;  // país, provincia, población
  } cases[] = {{3, {"España", "Ávila", "Ávila"}},
               {4, {"España", "", ""}},
               {5, {"", "", ""}},
               {99, {"", "", ""}}};
  for (const auto& t : cases) {
    sel_ = std::make_unique<CSeleccion>();
    sel_->setgVUser(t.user);
    sel_->setEntidad("Inm. Propios");
    Txt("txtHuecos").setText("2");
    sel_->setSeleccion(Variant());
    EXPECT_EQ(Txt("txtPais").Text(), t.location[0]) << t.user;
    EXPECT_EQ(Txt("txtProvincia").Text(), t.location[1]) << t.user;
    EXPECT_EQ(Txt("txtPoblacion").Text(), t.location[2]) << t.user;
    // The location restores as unchanged: its linker's previous value is the name.
    EXPECT_EQ(Inm().Location().Pais().PreviousValue(), t.location[0]);
    // A restore clears first; with no location there is nothing to restore.
    EXPECT_EQ(Txt("txtHuecos").Text(), t.location[0].empty() ? "2" : "") << t.user;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, NewSelectionClearsEveryInputButTheCombos) {
  const std::string sqlw = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    ControlContainer& c = dlg.SeleccionInm1().Controls();
    Type(c, "txtOperacion", "Venta");
    Type(c, "txtPrecio", "5", 1);
    c.Get<form::CheckBox>("chkNuevo").setValue(0);
    c.Get<form::CheckBox>("chkCategorias").setValue(1);
    c.Get<form::DTPicker>("dtpActualiza", 1).setValue(Variant(MakeDate(2026, 1, 1)));
    c.Get<form::ComboBox>("cboEn").setText("Notas");
    Type(c, "txtPalabras", "terraza");
    dlg.Controls().Get<form::CommandButton>("cmdNuevo").Press();
  });
  EXPECT_EQ(sqlw, "");
  // What the saved selection still holds: the tab, the grey boxes and the combos' rows.
  std::vector<std::string> kept;
  const Array2D& saved = sel_->Seleccion().AsArray();
  for (int i = 0; i <= saved.UBound(1); ++i) {
    const std::string name = saved.at(i, 0).AsString();
    const std::string value = saved.at(i, 2).AsString();
    if (name.rfind("chk", 0) == 0)
      EXPECT_EQ(value, "2") << name;
    else
      kept.push_back(name + "=" + value);
  }
  EXPECT_EQ(kept, (std::vector<std::string>{"tbsSelec=", "cboEn=2", "cboOpPalabras=1"}));
}

TEST_F(PropertyTest, SavedSelectionFollowsTheControlOrderAndRestoresElsewhere) {
  const std::string first = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    ControlContainer& c = dlg.SeleccionInm1().Controls();
    Type(c, "txtPalabras", "Luminoso");
    c.Get<form::ComboBox>("cboEn").setText("Notas");
    c.Get<form::ComboBox>("cboOpPalabras").setListIndex(0);
    c.Get<form::CheckBox>("chkExclusiva").setValue(1);
    c.Get<form::DTPicker>("dtpAlta", 1).setValue(Variant(MakeDate(2026, 12, 31)));
    // Leaving país and zona validates them; the names stay as typed.
    Type(c, "txtPais", "España");
    Type(c, "txtZona", "Centro");
    Type(c, "txtInmueble", "Piso");
    Type(c, "txtSuper", "100", 1);
    Leave(c);
  });
  EXPECT_EQ(Own(first), std::vector<long>{1});
  std::vector<std::string> order;
  const Array2D& saved = sel_->Seleccion().AsArray();
  for (int i = 0; i <= saved.UBound(1); ++i) {
    const std::string name = saved.at(i, 0).AsString();
    if (name.rfind("chk", 0) == 0 && saved.at(i, 2).AsString() == "2") continue;  // grey
    order.push_back(name + "(" + std::to_string(saved.at(i, 1).AsInteger()) +
                    ")=" + saved.at(i, 2).AsString());
  }
  EXPECT_EQ(order, (std::vector<std::string>{"tbsSelec(0)=", "txtInmueble(-1)=Piso",
                                             "txtPais(-1)=España", "txtZona(-1)=Centro",
                                             "txtSuper(1)=100", "chkExclusiva(-1)=1",
                                             "dtpAlta(1)=2026-12-31", "txtPalabras(-1)=Luminoso",
                                             "cboEn(-1)=2", "cboOpPalabras(-1)=0"}));

  // Another object with the saved array shows the same inputs and gives the same condition.
  const Variant kept = sel_->Seleccion();
  sel_ = std::make_unique<CSeleccion>();
  sel_->setEntidad("Inm. Propios");
  sel_->setSeleccion(kept);
  EXPECT_EQ(Txt("txtPais").Text(), "España");
  EXPECT_EQ(Txt("txtZona").Text(), "Centro");
  EXPECT_EQ(Txt("txtSuper", 1).Text(), "100");
  EXPECT_EQ(Cbo("cboOpPalabras").Text(), "Al principio");
  // The restored location counts as unchanged: leaving país keeps the zone below it.
  EXPECT_EQ(Inm().Location().Pais().PreviousValue(), "España");
  Txt("txtPais").SetFocus();
  Leave(Box());
  EXPECT_EQ(Txt("txtZona").Text(), "Centro");
  // Accepted as restored (setting the entity again would reset the search field).
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(
      [](frmSeleccion& dlg) { dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press(); }));
  EXPECT_TRUE(sel_->mtdMostrar());
  EXPECT_EQ(sel_->SQLW(), first);
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(PropertyTest, RestoreStopsAtAnEntryThatFitsNoInput) {
  Array2D saved(0, 4, 0, 2);
  const char* rows[][3] = {{"tbsSelec", "2", ""},
                           {"txtHuecos", "-1", "3"},
                           {"txtPrecio", "1", "250.000"},
                           {"txtPrecio", "7", "1"},  // no such element
                           {"txtAltura", "-1", "2"}};
  for (int i = 0; i < 5; ++i)
    for (int j = 0; j < 3; ++j) saved.at(i, j) = Variant(std::string(rows[i][j]));
  sel_->setEntidad("Inm. Propios");
  Txt("txtBanios").setText("1");
  sel_->setSeleccion(Variant(std::move(saved)));
  EXPECT_EQ(Reports(), std::vector<std::string>{"VerSelAnt de SeleccionInm"});
  EXPECT_EQ(Txt("txtBanios").Text(), "");  // cleared first
  EXPECT_EQ(Txt("txtHuecos").Text(), "3");
  EXPECT_EQ(Txt("txtPrecio", 1).Text(), "250.000");
  EXPECT_EQ(Txt("txtAltura").Text(), "");
  EXPECT_EQ(Inm().Pestania(), 2);
  EXPECT_EQ(Inm().NumSelecAnt(), 4);

  // Something that is no saved selection is reported, not raised to the host.
  messenger_->ClearShown();
  sel_->setSeleccion(Variant(std::string("txtHuecos=3")));
  EXPECT_EQ(Reports(), std::vector<std::string>{"Let de SelectAnt de SeleccionInm"});
  EXPECT_EQ(Txt("txtHuecos").Text(), "3");
}

TEST_F(PropertyTest, WrittenPropertiesAreTheTabAndThreeCaptions) {
  SeleccionInm control;
  control.setNomTab2("Extras");
  control.setPestania(3);
  form::PropertyBag bag;
  control.WriteProperties(bag);
  for (const char* key : {"Pestania", "NomTab0", "NomTab1", "NomTab2"})
    EXPECT_TRUE(bag.Contains(key)) << key;
  EXPECT_FALSE(bag.Contains("NomTab3"));
  EXPECT_FALSE(bag.Contains("NomTab4"));
  SeleccionInm other;
  other.ReadProperties(bag);
  EXPECT_EQ(other.Pestania(), 3);
  EXPECT_EQ(other.NomTab2(), "Extras");
  EXPECT_EQ(other.NomTab(4), " Fechas ");
  EXPECT_TRUE(other.Controls().Item("fraSelec", 3).Visible());
  EXPECT_FALSE(other.Controls().Item("fraSelec", 0).Visible());
}

TEST_F(PropertyTest, FreshControlStartsEmptyGreyAndUnchecked) {
  SeleccionInm control;
  for (form::Control* c : control.Controls().Controls()) {
    const std::string type = c->TypeName();
    if (type == "TextBox") {
      EXPECT_EQ(static_cast<form::TextBox*>(c)->Text(), "") << c->Name();
    } else if (type == "CheckBox") {
      EXPECT_EQ(static_cast<form::CheckBox*>(c)->Value(), 2) << c->Name();
    } else if (type == "DTPicker") {
      EXPECT_TRUE(static_cast<form::DTPicker*>(c)->Value().IsNull()) << c->Name();
    }
  }
  EXPECT_EQ(control.SelecWhere(), "");
  EXPECT_EQ(control.NumSelecAnt(), -1);
}

}  // namespace
}  // namespace cp::testing
