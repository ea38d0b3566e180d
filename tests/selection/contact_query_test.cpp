// Contact selections from the host's call to the returned condition, and the rows it finds.
#include <gtest/gtest.h>

#include "common/scripted_list_picker.h"
#include "platform/form/keys.h"
#include "tests/selection/selection_fixture.h"

namespace cp::testing {
namespace {

using form::CheckBox;
using form::ComboBox;
using form::DTPicker;
using form::TextBox;

class ContactQueryTest : public SelectionTest {
 protected:
  // Accepts the dialog for entity after letting fill set the contact control's inputs.
  std::string Accept(const std::string& entity,
                     const std::function<void(form::ControlContainer&)>& fill) {
    sel_->setEntidad(entity);
    EXPECT_TRUE(Show([&](frmSeleccion& dlg) {
      fill(Cli(dlg));
      Press(dlg, "cmdAceptar");
    }));
    return sel_->SQLW();
  }
};

TEST_F(ContactQueryTest, WorkedExample) {
  const std::string sql = Accept("Clientes", [](form::ControlContainer& c) {
    c.Get<DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(2024, 3, 1)));
    c.Get<TextBox>("txtPalabras").setText("garcia");
    c.Get<ComboBox>("cboOpPalabras").setText("Al principio");
    c.Get<ComboBox>("cboEn").setText("Apellido");
  });
  EXPECT_EQ(sql, " ( Cliente.FechaAlta >= #03/01/24# )  AND Cliente.Apellidos LIKE 'garcia*'");
  EXPECT_EQ(sel_->Entidad(), "Clientes");
  // Jet compares text without case: "garcia ruiz" and the later time of the same day count.
  EXPECT_EQ(Clients(sql), (std::vector<long>{2}));
}

TEST_F(ContactQueryTest, WorkedExampleByPhone) {
  const std::string sql = Accept("Clientes", [](form::ControlContainer& c) {
    c.Get<TextBox>("txtPalabras").setText("555");
    c.Get<ComboBox>("cboOpPalabras").setText("En todo el texto");
    c.Get<ComboBox>("cboEn").setText("Nº Teléfono");
  });
  EXPECT_EQ(sql, "Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*555*')");
  EXPECT_EQ(Clients(sql), (std::vector<long>{2}));
}

TEST_F(ContactQueryTest, EverySearchField) {
  struct Case {
    const char* field;
    const char* word;
    int position;  // cboOpPalabras list index
    const char* sql;
    std::vector<long> ids;
  } cases[] = {
      // Case folds but accents count: "García" is not "garcia".
      {"Archivar Como", "garcia", 0, "Cliente.Alias LIKE 'garcia*'", {2}},
      {"Archivar Como", "GARCÍA", 0, "Cliente.Alias LIKE 'GARCÍA*'", {1}},
      {"Apellido", "garcia", 2, "Cliente.Apellidos LIKE '*garcia'", {3, 5}},
      {"Notas", "o'brien", 1, "Cliente.Notas LIKE '*o''brien*'", {2}},
      {"Correo Electrónico", "garcia", 1,
       "Cliente.IdCliente In (SELECT IdCliente FROM CorreoECli Where Numero LIKE '*garcia*')",
       {3}},
      {"Introducido por", "ana", 0, "(Cliente.IdUsuario = 3)", {1, 3}},
      {"Introducido por", "nadie", 0, "(Cliente.IdUsuario = -1)", {}},
      {"Población", "*vila", -1, "(Cliente.IdPoblacion = 1)", {1, 5}},
  };
  for (const Case& k : cases) {
    const std::string sql = Accept("Clientes", [&](form::ControlContainer& c) {
      c.Get<TextBox>("txtPalabras").setText(k.word);
      if (k.position >= 0) c.Get<ComboBox>("cboOpPalabras").setListIndex(k.position);
      c.Get<ComboBox>("cboEn").setText(k.field);
    });
    EXPECT_EQ(sql, k.sql) << k.field;
    EXPECT_EQ(Clients(sql), k.ids) << k.field;
  }
}

TEST_F(ContactQueryTest, EmptyAndPartialInputs) {
  EXPECT_EQ(Accept("Clientes", [](form::ControlContainer&) {}), "");

  const std::string upper = Accept("Clientes", [](form::ControlContainer& c) {
    c.Get<DTPicker>("dtpActualiza", 1).setValue(Variant(MakeDate(2024, 12, 31)));
    c.Get<DTPicker>("dtpAlta", 0).setValue(Variant::Null());  // unchecked adds nothing
  });
  EXPECT_EQ(upper, " ( Cliente.FechaActualizacion <= #12/31/24# ) ");

  // Without a chosen position the words are searched anywhere in the field.
  const std::string anywhere = Accept("Clientes", [](form::ControlContainer& c) {
    c.Get<TextBox>("txtPalabras").setText("ruiz");
    c.Get<ComboBox>("cboEn").setText("Apellido");
  });
  EXPECT_EQ(anywhere, "Cliente.Apellidos LIKE '*ruiz*'");
  EXPECT_EQ(Clients(anywhere), (std::vector<long>{2, 5}));
}

TEST_F(ContactQueryTest, DatesComeFirstThenCategoriesThenWords) {
  const std::string sql = Accept("Agencias", [](form::ControlContainer& c) {
    c.Get<TextBox>("txtPalabras").setText("x");
    c.Get<TextBox>("txtCategorias").setText("Vip");
    c.Get<DTPicker>("dtpTransmision", 1).setValue(Variant(MakeDate(2030, 1, 2)));
    c.Get<DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(1999, 5, 6)));
  });
  EXPECT_EQ(sql,
            " ( Agencia.FechaAlta >= #05/06/99# )  AND (Agencia.FechaEnvioAnotaciones <= "
            "#01/02/30# )  AND (( (Agencia.Categorias = 'Vip; ')  OR (Agencia.Categorias LIKE "
            "'Vip;*')  OR (Agencia.Categorias LIKE '*; Vip; ')  OR (Agencia.Categorias LIKE "
            "'*; Vip;*') )) AND Agencia.Alias LIKE '*x*'");
}

TEST_F(ContactQueryTest, CategoriesAnyOrAll) {
  // The grey state left by a new selection chooses "any category".
  const std::string any = Accept("Clientes", [](form::ControlContainer& c) {
    EXPECT_EQ(c.Get<CheckBox>("chkCategorias").Value(), 2);
    c.Get<TextBox>("txtCategorias").setText("Inversor; Vip;");
  });
  EXPECT_EQ(Clients(any), (std::vector<long>{1, 2, 3}));
  const std::string all = Accept("Clientes", [](form::ControlContainer& c) {
    c.Get<TextBox>("txtCategorias").setText("Inversor; Vip;");
    c.Get<CheckBox>("chkCategorias").setValue(1);
  });
  EXPECT_EQ(Clients(all), (std::vector<long>{2}));
  EXPECT_NE(all.find(") AND ("), std::string::npos);
}

TEST_F(ContactQueryTest, ArchivedClientsShareTheClientsTable) {
  const std::string sql = Accept("Clientes Archivados", [](form::ControlContainer& c) {
    c.Get<TextBox>("txtPalabras").setText("600");
    c.Get<ComboBox>("cboEn").setText("Nº Teléfono");
  });
  EXPECT_EQ(sql, "Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*600*')");
  EXPECT_EQ(Clients(sql), (std::vector<long>{1, 4}));
}

TEST_F(ContactQueryTest, EntityOutsideTheCatalogueKeepsThePreviousTable) {
  SeleccionCli control;
  control.setSelecEn("Procuradores");
  control.setSelecEn("Notarios");
  EXPECT_EQ(control.Tabla(), "Procurador");
  EXPECT_EQ(control.CampoId(), "IdProcurador");
  EXPECT_EQ(control.TablaTelefonos(), "TfnoProcurador");
  EXPECT_EQ(control.TablaCorreos(), "CorreoEProcurador");
}

TEST_F(ContactQueryTest, CategoryPickerReplacesTheTextAndShiftEnterOpensIt) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Vip; "));
  SeleccionCli control;
  auto& txt = control.Controls().Get<TextBox>("txtCategorias");
  txt.setText("Inversor; ");
  txt.SetFocus();
  int key = form::vbKeyReturn, shift = 0;
  txt.KeyDown.Fire(key, shift);  // Enter alone does nothing
  EXPECT_EQ(picker.InstanceCount(), 0);
  shift = form::vbShiftMask;
  txt.KeyDown.Fire(key, shift);
  ASSERT_EQ(picker.InstanceCount(), 1);
  EXPECT_EQ(txt.Text(), "Vip; ");
  EXPECT_TRUE(txt.HasFocus());
  const auto steps = picker.LastInstance()->Names();
  ASSERT_GE(steps.size(), 3u);
  EXPECT_EQ(steps[1], "TituloForm");

  // Cancelling keeps the text; a failing picker clears it, as the bridge does.
  picker.setAnswer(ListPickerAnswer::Cancel("Otra; "));
  control.cmdCategorias_Click();
  EXPECT_EQ(txt.Text(), "Vip; ");
  picker.setAnswer(ListPickerAnswer::Fail(5, "roto"));
  control.cmdCategorias_Click();
  EXPECT_EQ(txt.Text(), "");
}

}  // namespace
}  // namespace cp::testing
