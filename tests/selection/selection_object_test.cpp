// The selection object and its dialog as the host sees them: entity list, showing, accepting,
// cancelling, the close box, routing to the criteria controls, late binding.
#include "platform/automation/registry.h"
#include "platform/dao/database_object.h"
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

}  // namespace
}  // namespace cp::testing
