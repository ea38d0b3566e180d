// The selection object and its dialog as the host sees them: entity list, showing, accepting,
// cancelling, the close box, routing to the criteria controls, late binding.
#include "platform/automation/registry.h"
#include "platform/dao/database_object.h"
#include "platform/form/ss_tab.h"
#include "tests/selection/selection_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using form::TextBox;
using Names = std::vector<std::string>;

Names Items(const form::ComboBox& list) {
  Names items;
  for (int i = 0; i < list.ListCount(); ++i) items.push_back(list.List(i));
  return items;
}
Variant List(const Names& names) {
  Array2D a(0, static_cast<int>(names.size()) - 1, 0, 0);
  for (std::size_t i = 0; i < names.size(); ++i) a.at(static_cast<int>(i), 0) = Variant(names[i]);
  return Variant(std::move(a));
}
TextBox& Words(frmSeleccion& d) { return d.SeleccionCli1().Controls().Get<TextBox>("txtPalabras"); }

TEST_F(SelectionTest, EntityListAndTheControlEachEntityShows) {
  frmSeleccion& dlg = sel_->Dialog();
  EXPECT_EQ(dlg.cboEntidad().ListIndex(), -1);
  // A name outside the catalogue is stored, then refused, and shows neither control.
  EXPECT_NE(CaughtError([&] { sel_->setEntidad("Notarios"); }).number(), 0);
  EXPECT_EQ(sel_->Entidad(), "Notarios");
  EXPECT_FALSE(dlg.SeleccionCli1Control().Visible());
  EXPECT_FALSE(dlg.SeleccionInm1Control().Visible());
  sel_->setEntidad("");  // the first of the list
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_TRUE(dlg.SeleccionInm1Control().Visible());

  sel_->setEntidadesPosibles(Variant::Null());
  EXPECT_EQ(dlg.cboEntidad().ListCount(), 8);
  sel_->setEntidadesPosibles(List({"Agencias", "Notarios"}));
  EXPECT_EQ(Items(dlg.cboEntidad()), (Names{"Agencias", "Notarios"}));
  sel_->setEntidad("");
  EXPECT_EQ(sel_->Entidad(), "Agencias");
  EXPECT_EQ(dlg.SeleccionCli1().Tabla(), "Agencia");
  // The list is cleared before the value is read.
  sel_->setEntidadesPosibles(Variant::Null());
  EXPECT_EQ(CaughtError([&] { sel_->setEntidadesPosibles(Variant("Clientes")); }).number(),
            err::kTypeMismatch);
  EXPECT_EQ(dlg.cboEntidad().ListCount(), 0);
}

// "Abogados": no control is set up for it and accepting raises nothing, but the
// new-selection button clears the contact control and activation focuses it.
TEST_F(SelectionTest, ContactEntityOutsideTheShortGroup) {
  sel_->setEntidadesPosibles(List({"Abogados"}));
  sel_->setEntidad("Abogados");
  frmSeleccion& dlg = sel_->Dialog();
  EXPECT_FALSE(dlg.SeleccionCli1Control().Visible());
  EXPECT_FALSE(Show([](frmSeleccion& d) {
    EXPECT_TRUE(Words(d).HasFocus());
    Words(d).setText("x");
    Press(d, "cmdAceptar");
    EXPECT_TRUE(d.Loaded());  // nothing raised, the dialog stays open
    Press(d, "cmdNuevo");
    EXPECT_EQ(Words(d).Text(), "");
  }));
  // Agencies accept, but the new-selection button and activation do nothing.
  sel_->setEntidadesPosibles(Variant::Null());
  sel_->setEntidad("Agencias");
  EXPECT_TRUE(Show([](frmSeleccion& d) {
    EXPECT_EQ(d.SeleccionCli1().Controls().ActiveControl(), nullptr);
    Words(d).setText("norte");
    Press(d, "cmdNuevo");
    EXPECT_EQ(Words(d).Text(), "norte");
    Press(d, "cmdAceptar");
  }));
  EXPECT_EQ(sel_->SQLW(), "Agencia.Alias LIKE '*norte*'");
}

TEST_F(SelectionTest, AcceptStoresTheResultsCancelAndTheCloseBoxKeepThem) {
  EXPECT_FALSE(Show([](frmSeleccion&) {}));  // first showing, closed: False
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(Show([](frmSeleccion& dlg) {
    Words(dlg).setText("ruiz");
    dlg.chkGuardar().setValue(1);
    Press(dlg, "cmdAceptar");
    EXPECT_FALSE(dlg.Loaded());
  }));
  const std::string accepted = "Cliente.Alias LIKE '*ruiz*'";
  EXPECT_EQ(sel_->SQLW(), accepted);
  EXPECT_TRUE(sel_->GuardarSeleccion());
  const Variant saved = sel_->Seleccion();
  ASSERT_TRUE(saved.IsArray());
  EXPECT_TRUE(Show([](frmSeleccion& dlg) { Words(dlg).setText("nada"); }))
      << "closed with the close box: the previous True";
  EXPECT_EQ(sel_->Seleccion(), saved);
  // The next showing starts from a fresh window: default list, nothing chosen, unticked.
  EXPECT_FALSE(Show([](frmSeleccion& dlg) {
    EXPECT_EQ(dlg.cboEntidad().ListIndex(), -1);
    EXPECT_EQ(dlg.chkGuardar().Value(), 0);
    EXPECT_EQ(Words(dlg).Text(), "");
    Press(dlg, "cmdCancelar");
  }));
  EXPECT_EQ(sel_->SQLW(), accepted);
  EXPECT_TRUE(sel_->GuardarSeleccion());
  EXPECT_EQ(sel_->Entidad(), "Clientes");
}

TEST_F(SelectionTest, FailingAcceptIsReportedAndRaisesNothing) {
  sel_->setEntidad("Clientes");
  EXPECT_FALSE(Show([](frmSeleccion& d) {
    Words(d).setText("x");
    d.SeleccionCli1().Controls().Get<form::ComboBox>("cboEn").setListIndex(-1);
    Press(d, "cmdAceptar");  // no search field: the builder fails
    EXPECT_TRUE(d.Loaded());
  }));
  ASSERT_EQ(messenger_->shown().size(), 1u);
  EXPECT_NE(messenger_->shown()[0].text.find("cmdAceptar_Click en frmSeleccion"),
            std::string::npos);
  EXPECT_EQ(sel_->SQLW(), "");
}

TEST_F(SelectionTest, ReachableByProgIdAndByName) {
  RegisterCSeleccion();
  std::shared_ptr<Dispatch> obj = CreateObject("CriterioPredios.CSeleccion");
  ASSERT_TRUE(obj);
  obj->SetProperty("BD", Variant(std::make_shared<dao::DatabaseObject>(BD())));
  obj->SetProperty("gvuser", Variant(7));  // names are matched whatever their case
  obj->SetProperty("Entidad", Variant("Clientes"));
  EXPECT_EQ(obj->GetProperty("gVUser"), Variant(7));
  static_cast<CSeleccion&>(*obj).Dialog().SeleccionCli1().setPalabra("ruiz");
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>(
      [](frmSeleccion& d) { d.Controls().Get<form::CommandButton>("cmdAceptar").Press(); }));
  EXPECT_EQ(obj->CallMethod("mtdMostrar"), Variant(true));
  EXPECT_EQ(obj->GetProperty("SQLW"), Variant("Cliente.Alias LIKE '*ruiz*'"));
  EXPECT_EQ(CaughtError([&] { obj->GetProperty("PathDB"); }).number(), err::kPropertyNotFound);
  EXPECT_EQ(CaughtError([&] { obj->SetProperty("BD", Variant("demo.db")); }).number(),
            err::kTypeMismatch);
}

// Where the contact control puts the caret when the dialog opens on it or switches to it.
TEST_F(SelectionTest, ContactFocusGoesToTheWordsOnlyFromTheGeneralTab) {
  // the tab the selection was saved on, the tab the user then clicks (-1: none), where the
  // caret is after switching back to the contacts
  const std::tuple<int, int, const char*> rows[] = {
      {1, -1, "cboEn"}, {0, -1, "txtPalabras"}, {0, 1, "dtpAlta"}, {1, 0, "cboEn"}};
  for (const auto& [savedTab, clickedTab, focus] : rows) {
    SCOPED_TRACE(focus);
    messenger_->ClearShown();
    sel_->setEntidad("Clientes");
    sel_->setSeleccion(Saved({{"tbsSelec", std::to_string(savedTab), ""},
                              {"txtPalabras", "-1", "garcia"}}));
    Show([&](frmSeleccion& dlg) {
      form::ControlContainer& cli = Cli(dlg);
      auto& tabs = cli.Get<form::SSTab>("tbsSelec");
      if (clickedTab >= 0) tabs.setTab(clickedTab);
      if (tabs.Tab() == 0) cli.Item("cboEn").SetFocus();
      // Switching to a contact entity shows the control again, which puts the caret back.
      dlg.cboEntidad().setText("Inm. Propios");
      dlg.cboEntidad().setText("Clientes");
      const form::Control* active = cli.ActiveControl();
      EXPECT_EQ(active ? active->Name() : "(none)", focus);
      Press(dlg, "cmdCancelar");
    });
    EXPECT_TRUE(messenger_->shown().empty()) << messenger_->shown().front().text;
  }
}

}  // namespace
}  // namespace cp::testing
