// Contact selections from the host's call to the returned condition, and the rows it finds.
#include "tests/selection/selection_fixture.h"

namespace cp::testing {
namespace {

using form::CheckBox;
using form::ComboBox;
using form::DTPicker;
using form::TextBox;
using Fill = std::function<void(form::ControlContainer&)>;

class ContactQueryTest : public SelectionTest {
 protected:
  // Accepts the dialog for entity after letting fill set the contact control's inputs.
  std::string Accept(const std::string& entity, const Fill& fill) {
    sel_->setEntidad(entity);
    EXPECT_TRUE(Show([&](frmSeleccion& dlg) {
      fill(Cli(dlg));
      Press(dlg, "cmdAceptar");
    }));
    return sel_->SQLW();
  }
};

// Words in a field; position is cboOpPalabras' list index, -1 for none chosen.
Fill Words(const char* word, int position, const char* field) {
  return [=](form::ControlContainer& c) {
    c.Get<TextBox>("txtPalabras").setText(word);
    if (position >= 0) c.Get<ComboBox>("cboOpPalabras").setListIndex(position);
    c.Get<ComboBox>("cboEn").setText(field);
  };
}

TEST_F(ContactQueryTest, ConditionAndRowsOfEachInput) {
  struct Case { const char* entity; Fill fill; const char* sql; std::vector<long> ids; };
  const Case cases[] = {
      {"Clientes", [](form::ControlContainer& c) {
         c.Get<DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(2024, 3, 1)));
         Words("garcia", 0, "Apellido")(c);
       },
       " ( Cliente.FechaAlta >= #03/01/24# )  AND Cliente.Apellidos LIKE 'garcia*'", {2}},
      {"Clientes", Words("555", 1, "Nº Teléfono"),
       "Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*555*')", {2}},
      {"Clientes Archivados", Words("600", -1, "Nº Teléfono"),
       "Cliente.IdCliente In (SELECT IdCliente FROM TfnoCli WHERE Numero LIKE '*600*')", {1, 4}},
      {"Clientes", Words("garcia", 2, "Apellido"), "Cliente.Apellidos LIKE '*garcia'", {3, 5}},
      {"Clientes", Words("o'brien", 1, "Notas"), "Cliente.Notas LIKE '*o''brien*'", {2}},
      {"Clientes", Words("garcia", 1, "Correo Electrónico"),
       "Cliente.IdCliente In (SELECT IdCliente FROM CorreoECli Where Numero LIKE '*garcia*')",
       {3}},
      {"Clientes", Words("ana", 0, "Introducido por"), "(Cliente.IdUsuario = 3)", {1, 3}},
      {"Clientes", Words("nadie", 0, "Introducido por"), "(Cliente.IdUsuario = -1)", {}},
      {"Clientes", Words("*vila", -1, "Población"), "(Cliente.IdPoblacion = 1)", {1, 5}},
      {"Clientes", [](form::ControlContainer&) {}, "", {1, 2, 3, 4, 5}},
      {"Clientes", [](form::ControlContainer& c) {
         c.Get<DTPicker>("dtpActualiza", 1).setValue(Variant(MakeDate(2024, 12, 31)));
         c.Get<DTPicker>("dtpAlta", 0).setValue(Variant::Null());  // unchecked adds nothing
       },
       " ( Cliente.FechaActualizacion <= #12/31/24# ) ", {}},
      // The grey state left by a new selection chooses "any category".
      {"Clientes", [](form::ControlContainer& c) {
         EXPECT_EQ(c.Get<CheckBox>("chkCategorias").Value(), 2);
         c.Get<TextBox>("txtCategorias").setText("Inversor; Vip;");
       }, nullptr, {1, 2, 3}},
      {"Clientes", [](form::ControlContainer& c) {
         c.Get<TextBox>("txtCategorias").setText("Inversor; Vip;");
         c.Get<CheckBox>("chkCategorias").setValue(1);
       }, nullptr, {2}},
      // Dates come first, then categories, then words.
      {"Agencias", [](form::ControlContainer& c) {
         c.Get<TextBox>("txtPalabras").setText("x");
         c.Get<TextBox>("txtCategorias").setText("Vip");
         c.Get<DTPicker>("dtpTransmision", 1).setValue(Variant(MakeDate(2030, 1, 2)));
         c.Get<DTPicker>("dtpAlta", 0).setValue(Variant(MakeDate(1999, 5, 6)));
       },
       " ( Agencia.FechaAlta >= #05/06/99# )  AND (Agencia.FechaEnvioAnotaciones <= "
       "#01/02/30# )  AND (( (Agencia.Categorias = 'Vip; ')  OR (Agencia.Categorias LIKE "
       "'Vip;*')  OR (Agencia.Categorias LIKE '*; Vip; ')  OR (Agencia.Categorias LIKE "
       "'*; Vip;*') )) AND Agencia.Alias LIKE '*x*'", {}},
  };
  for (const Case& k : cases) {
    const std::string sql = Accept(k.entity, k.fill);
    SCOPED_TRACE(sql);
    if (k.sql) {
      EXPECT_EQ(sql, k.sql);
    }
    if (k.entity == std::string("Agencias")) continue;
    EXPECT_EQ(sel_->Entidad(), k.entity);
    EXPECT_EQ(Clients(sql.empty() ? "1 = 1" : sql), k.ids);
  }
}

TEST_F(ContactQueryTest, EntityOutsideTheCatalogueKeepsThePreviousTable) {
  SeleccionCli control;
  control.setSelecEn("Procuradores");
  control.setSelecEn("Notarios");
  EXPECT_EQ(control.Tabla(), "Procurador");
  EXPECT_EQ(control.TablaTelefonos(), "TfnoProcurador");
}

}  // namespace
}  // namespace cp::testing
