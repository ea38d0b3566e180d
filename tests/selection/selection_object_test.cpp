// The selection object and its dialog as the host sees them: entity list, showing, accepting,
// cancelling, the close box, routing to the criteria controls, late binding.
#include "platform/automation/registry.h"
#include "platform/dao/database_object.h"
#include "platform/form/ss_tab.h"
#include "tests/selection/selection_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using form::CheckBox;
using form::ComboBox;
using form::TextBox;

std::vector<std::string> Items(const ComboBox& list) {
  std::vector<std::string> items;
  for (int i = 0; i < list.ListCount(); ++i) items.push_back(list.List(i));
  return items;
}

Variant Names(const std::vector<std::string>& names) {
  Array2D a(0, static_cast<int>(names.size()) - 1, 0, 0);
  for (std::size_t i = 0; i < names.size(); ++i) a.at(static_cast<int>(i), 0) = Variant(names[i]);
  return Variant(std::move(a));
}

TEST_F(SelectionTest, EntityList) {
  frmSeleccion& dlg = sel_->Dialog();
  EXPECT_EQ(Items(dlg.cboEntidad()),
            (std::vector<std::string>{"Inm. Propios", "Inm. Ajenos", "Inm. Archivados",
                                      "Inm. Vendidos", "Agencias", "Clientes",
                                      "Clientes Archivados", "Demandas"}));
  EXPECT_EQ(dlg.cboEntidad().ListIndex(), -1);
  sel_->setEntidadesPosibles(Variant::Null());
  EXPECT_EQ(dlg.cboEntidad().ListCount(), 8);
  sel_->setEntidadesPosibles(Names({"Clientes", "Notarios"}));
  EXPECT_EQ(Items(dlg.cboEntidad()), (std::vector<std::string>{"Clientes", "Notarios"}));
  // The list is cleared before the value is read.
  for (const Variant& bad : {Variant("Clientes"), Variant()}) {
    sel_->setEntidadesPosibles(Variant::Null());
    EXPECT_EQ(CaughtError([&] { sel_->setEntidadesPosibles(bad); }).number(), err::kTypeMismatch);
    EXPECT_EQ(dlg.cboEntidad().ListCount(), 0);
  }
}

TEST_F(SelectionTest, EmptyEntityTakesTheFirstOfTheList) {
  sel_->setEntidad("");
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_TRUE(sel_->Dialog().SeleccionInm1Control().Visible());
  EXPECT_EQ(sel_->Dialog().SeleccionInm1().Tabla(), "IPropio");

  CSeleccion other;
  other.setEntidadesPosibles(Names({"Agencias", "Clientes"}));
  other.setEntidad("");
  EXPECT_EQ(other.Entidad(), "Agencias");
  EXPECT_EQ(other.Dialog().SeleccionCli1().Tabla(), "Agencia");
}

TEST_F(SelectionTest, UnknownEntityIsStoredThenRefused) {
  EXPECT_NE(CaughtError([&] { sel_->setEntidad("Notarios"); }).number(), 0);
  EXPECT_EQ(sel_->Entidad(), "Notarios");
  EXPECT_FALSE(sel_->Dialog().SeleccionCli1Control().Visible());
  EXPECT_FALSE(sel_->Dialog().SeleccionInm1Control().Visible());
}

TEST_F(SelectionTest, AcceptStoresTheResultsAndUnloads) {
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(Show([](frmSeleccion& dlg) {
    Cli(dlg).Get<TextBox>("txtPalabras").setText("ruiz");
    dlg.chkGuardar().setValue(1);
    Press(dlg, "cmdAceptar");
    EXPECT_FALSE(dlg.Loaded());
  }));
  EXPECT_EQ(sel_->SQLW(), "Cliente.Alias LIKE '*ruiz*'");
  EXPECT_TRUE(sel_->GuardarSeleccion());
  ASSERT_TRUE(sel_->Seleccion().IsArray());

  // The next showing starts from a fresh window: default list, nothing chosen, unticked.
  EXPECT_FALSE(Show([](frmSeleccion& dlg) {
    EXPECT_EQ(dlg.cboEntidad().ListIndex(), -1);
    EXPECT_EQ(dlg.cboEntidad().ListCount(), 8);
    EXPECT_EQ(dlg.chkGuardar().Value(), 0);
    EXPECT_EQ(Cli(dlg).Get<TextBox>("txtPalabras").Text(), "");
    Press(dlg, "cmdCancelar");
  }));
  // Cancel keeps the earlier results.
  EXPECT_EQ(sel_->SQLW(), "Cliente.Alias LIKE '*ruiz*'");
  EXPECT_TRUE(sel_->GuardarSeleccion());
  EXPECT_EQ(sel_->Entidad(), "Clientes");
}

TEST_F(SelectionTest, CloseBoxReturnsThePreviousResult) {
  EXPECT_FALSE(Show([](frmSeleccion&) {}));  // first showing, closed: False
  sel_->setEntidad("Agencias");
  EXPECT_TRUE(Show([](frmSeleccion& dlg) { Press(dlg, "cmdAceptar"); }));
  const Variant saved = sel_->Seleccion();
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(Show([](frmSeleccion& dlg) {
    Cli(dlg).Get<TextBox>("txtPalabras").setText("nada");
  }));  // closed with the close box: the previous True, nothing stored
  EXPECT_EQ(sel_->SQLW(), "");
  EXPECT_EQ(sel_->Seleccion(), saved);
  EXPECT_FALSE(sel_->GuardarSeleccion());
}

TEST_F(SelectionTest, ContactEntitiesOutsideTheShortGroup) {
  sel_->setEntidadesPosibles(Names({"Clientes", "Abogados", "Notarios"}));
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(sel_->Dialog().SeleccionCli1Control().Visible());
  // A listed name outside every group leaves the visible control as it was.
  sel_->setEntidad("Notarios");
  EXPECT_TRUE(sel_->Dialog().SeleccionCli1Control().Visible());
  EXPECT_EQ(sel_->Dialog().SeleccionCli1().Tabla(), "Cliente");

  // "Abogados": no control is set up for it and accepting raises nothing, but the
  // new-selection button clears the contact control and activation focuses it.
  frmSeleccion& dlg = sel_->Dialog();
  dlg.Unload();
  dlg.SeleccionCli1Control();  // reload
  sel_->setEntidadesPosibles(Names({"Abogados"}));
  sel_->setEntidad("Abogados");
  EXPECT_FALSE(dlg.SeleccionCli1Control().Visible());
  EXPECT_FALSE(dlg.SeleccionInm1Control().Visible());
  EXPECT_EQ(dlg.SeleccionCli1().Tabla(), "");
  EXPECT_FALSE(Show([](frmSeleccion& d) {
    EXPECT_TRUE(Cli(d).Get<TextBox>("txtPalabras").HasFocus());
    Cli(d).Get<TextBox>("txtPalabras").setText("x");
    Press(d, "cmdAceptar");
    EXPECT_TRUE(d.Loaded());  // nothing raised, the dialog stays open
    Press(d, "cmdNuevo");
    EXPECT_EQ(Cli(d).Get<TextBox>("txtPalabras").Text(), "");
  }));
}

TEST_F(SelectionTest, AgenciesAcceptButNewSelectionAndActivationDoNothing) {
  sel_->setEntidad("Agencias");
  EXPECT_TRUE(Show([](frmSeleccion& d) {
    EXPECT_EQ(Cli(d).ActiveControl(), nullptr);
    Cli(d).Get<TextBox>("txtPalabras").setText("norte");
    Press(d, "cmdNuevo");
    EXPECT_EQ(Cli(d).Get<TextBox>("txtPalabras").Text(), "norte");
    Press(d, "cmdAceptar");
  }));
  EXPECT_EQ(sel_->SQLW(), "Agencia.Alias LIKE '*norte*'");
}

TEST_F(SelectionTest, SavedSelectionRoundTrip) {
  sel_->setEntidad("Clientes");
  ASSERT_TRUE(Show([](frmSeleccion& d) {
    auto& c = Cli(d);
    c.Get<form::DTPicker>("dtpAlta", 1).setValue(Variant(MakeDate(2024, 3, 1)));
    c.Get<TextBox>("txtCategorias").setText("Vip");
    c.Get<CheckBox>("chkCategorias").setValue(1);
    c.Get<TextBox>("txtPalabras").setText("garcia");
    c.Get<ComboBox>("cboOpPalabras").setListIndex(2);
    c.Get<ComboBox>("cboEn").setText("Apellido");
    Press(d, "cmdAceptar");
  }));
  const std::string first = sel_->SQLW();
  const Variant saved = sel_->Seleccion();

  CSeleccion again;
  again.setEntidad("Clientes");
  again.setSeleccion(saved);
  EXPECT_EQ(again.Seleccion(), saved);
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(
      [](frmSeleccion& d) { d.Controls().Get<form::CommandButton>("cmdAceptar").Press(); }));
  ASSERT_TRUE(again.mtdMostrar());
  EXPECT_EQ(again.SQLW(), first);
  EXPECT_EQ(again.Seleccion(), saved);
}

TEST_F(SelectionTest, SelectionBeforeEntityReachesNoControl) {
  SeleccionCli source;
  source.Controls().Get<TextBox>("txtPalabras").setText("garcia");
  const Variant saved = source.SelecAnt();
  sel_->setSeleccion(saved);
  EXPECT_EQ(sel_->Seleccion(), saved);
  EXPECT_EQ(sel_->Dialog().SeleccionCli1().Palabra(), "");
  sel_->setEntidad("Clientes");
  sel_->setSeleccion(saved);
  EXPECT_EQ(sel_->Dialog().SeleccionCli1().Palabra(), "garcia");
}

TEST_F(SelectionTest, CruzarLeavesTheDialogResultAlone) {
  sel_->setEntidad("Agencias");
  ASSERT_TRUE(Show([](frmSeleccion& d) {
    d.chkGuardar().setValue(1);
    Press(d, "cmdAceptar");
  }));
  std::int32_t id = 1;
  std::string to = "Clientes", from = "Demandas";
  sel_->Cruzar(id, to, from);  // a contact entity still goes to the property control
  EXPECT_EQ(sel_->Entidad(), "Clientes");
  EXPECT_TRUE(sel_->Seleccion().IsArray());
  EXPECT_EQ(sel_->Seleccion().AsArray().at(0, 0), Variant("tbsSelec"));
  EXPECT_TRUE(sel_->GuardarSeleccion());
  EXPECT_TRUE(Show([](frmSeleccion&) {}));  // closed: still the accepted result
}

TEST_F(SelectionTest, ReachableByProgIdAndByName) {
  RegisterCSeleccion();
  std::shared_ptr<Dispatch> obj = CreateObject("CriterioPredios.CSeleccion");
  ASSERT_TRUE(obj);
  obj->SetProperty("BD", Variant(std::make_shared<dao::DatabaseObject>(BD())));
  obj->SetProperty("gvuser", Variant(7));
  obj->SetProperty("EntidadesPosibles", Names({"Clientes", "Agencias"}));
  obj->SetProperty("Entidad", Variant("Clientes"));
  EXPECT_EQ(obj->GetProperty("Entidad"), Variant("Clientes"));
  EXPECT_EQ(obj->GetProperty("gVUser"), Variant(7));
  auto& dlg = static_cast<CSeleccion&>(*obj).Dialog();
  dlg.SeleccionCli1().setPalabra("ruiz");
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(
      [](frmSeleccion& d) { d.Controls().Get<form::CommandButton>("cmdAceptar").Press(); }));
  EXPECT_EQ(obj->CallMethod("mtdMostrar"), Variant(true));
  EXPECT_EQ(obj->GetProperty("SQLW"), Variant("Cliente.Alias LIKE '*ruiz*'"));
  EXPECT_EQ(obj->GetProperty("GuardarSeleccion"), Variant(false));
  EXPECT_EQ(CaughtError([&] { obj->GetProperty("PathDB"); }).number(), err::kPropertyNotFound);
  EXPECT_EQ(CaughtError([&] { obj->SetProperty("BD", Variant("demo.db")); }).number(), err::kTypeMismatch);
}

TEST_F(SelectionTest, FailingAcceptIsReportedAndRaisesNothing) {
  sel_->setEntidad("Clientes");
  EXPECT_FALSE(Show([](frmSeleccion& d) {
    Cli(d).Get<TextBox>("txtPalabras").setText("x");
    Cli(d).Get<ComboBox>("cboEn").setListIndex(-1);  // no search field: the builder fails
    Press(d, "cmdAceptar");
    EXPECT_TRUE(d.Loaded());
  }));
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_NE(messenger_->shown()[0].text.find("cmdAceptar_Click en frmSeleccion"),
            std::string::npos);
  EXPECT_EQ(sel_->SQLW(), "");
}

// Where the contact control puts the caret when the dialog opens on it or switches to it.
TEST_F(SelectionTest, ContactFocusGoesToTheWordsOnlyFromTheGeneralTab) {
  struct Row {
    const char* name;
    int savedTab;    // the tab the selection was saved on
    int clickedTab;  // the tab the user then clicks, -1 for none
    const char* focus;  // where the caret is after switching back to the contacts
  };
  const Row rows[] = {
      {"reopened on Fechas", 1, -1, "cboEn"},
      {"reopened on General", 0, -1, "txtPalabras"},
      {"General, user moved to Fechas", 0, 1, "dtpAlta"},
      {"Fechas, user moved to General", 1, 0, "cboEn"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    messenger_->ClearShown();
    sel_->setEntidad("Clientes");
    sel_->setSeleccion(Saved({{"tbsSelec", std::to_string(row.savedTab), ""},
                              {"txtPalabras", "-1", "garcia"}}));
    Show([&](frmSeleccion& dlg) {
      form::ControlContainer& cli = Cli(dlg);
      auto& tabs = cli.Get<form::SSTab>("tbsSelec");
      if (row.clickedTab >= 0) tabs.setTab(row.clickedTab);
      if (tabs.Tab() == 0) cli.Item("cboEn").SetFocus();
      // Switching to a contact entity shows the control again, which puts the caret back.
      dlg.cboEntidad().setText("Inm. Propios");
      dlg.cboEntidad().setText("Clientes");
      const form::Control* active = cli.ActiveControl();
      EXPECT_EQ(active ? active->Name() : "(none)", row.focus);
      Press(dlg, "cmdCancelar");
    });
    EXPECT_TRUE(messenger_->shown().empty()) << messenger_->shown().front().text;
  }
}

}  // namespace
}  // namespace cp::testing
