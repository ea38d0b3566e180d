#pragma once
// The property control's tests: an agency database whose properties and demands have known
// values for every criterion, and a CSeleccion whose dialog a script drives as the user.
#include <functional>
#include <string>

#include "common/scripted_list_picker.h"
#include "criteria/cfield_linker.h"
#include "platform/core/conversions.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/keys.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "selection/c_seleccion.h"
#include "selection/modal_runner.h"
#include "tests/support/host_test.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {

using Ids = std::vector<long>;
using form::ControlContainer;

// Lookups, users, owners, five own properties, other agencies' properties 1 and 7, and
// demands 1-6. Property 7 exists both as own and as other agency's, with different values.
inline const char* const kPropertyRows = R"SQL(
INSERT INTO Pais (IdPais, Nombre) VALUES (1, 'España'), (2, 'Francia');
INSERT INTO Provincia (IdProvincia, Nombre) VALUES (1, 'Madrid'), (2, 'Ávila');
INSERT INTO PrPa (IdProvincia, IdPais) VALUES (1, 1), (2, 1);
INSERT INTO Poblacion (IdPoblacion, Nombre) VALUES (1, 'Madrid'), (2, 'Ávila'), (3, 'Alcobendas');
INSERT INTO PoPrPa (IdPoblacion, IdProvincia, IdPais) VALUES (1, 1, 1), (2, 2, 1), (3, 1, 1);
INSERT INTO Zona (IdZona, Nombre) VALUES (1, 'Centro'), (2, 'Norte');
INSERT INTO BZona (IdZona, IdPais, IdProvincia, IdPoblacion) VALUES (1, 1, 1, 1), (2, 1, 1, 1);
INSERT INTO TipoInmueble (IdTipoInmueble, Nombre) VALUES (1, 'Piso'), (2, 'Local'), (3, 'Chalet');
INSERT INTO Operacion (IdOperacion, Operacion) VALUES (1, 'Venta'), (2, 'Alquiler');
INSERT INTO AliasInmueble (IdAliasInmueble, Inmueble, Activo) VALUES (1, 'Piso', 1),
  (2, 'Ático', 1), (3, 'Nave', 0);
INSERT INTO Inmueble (IdInmueble, Inmueble) VALUES (1, 'Piso'), (2, 'Ático');
INSERT INTO Calefaccion (IdCalefaccion, Calefaccion) VALUES (1, 'No se sabe'),
  (2, 'Gas natural'), (3, 'Eléctrica');
INSERT INTO Acceso (IdAcceso, Acceso) VALUES (1, 'Sin llaves'), (2, 'Llaves'), (3, 'Portero');
INSERT INTO TipoCategoriaI (IdTipoCategoriaI, Nombre) VALUES (1, 'Reformado'), (2, 'Vistas');
INSERT INTO Agencia (IdAgencia, Alias) VALUES (1, 'Agencia Sol'), (2, 'Casas Luna');
INSERT INTO Usuario (IdUsuario, Nombre, IdPoblacion, IdProvincia, IdPais) VALUES
  (3, 'Ana Pérez', 2, 2, 1), (4, 'Luis Gil', NULL, NULL, 1), (5, 'Sin Sitio', NULL, NULL, NULL);
INSERT INTO Cliente (IdCliente, Alias) VALUES (1, 'García, Luis'), (2, 'O''Brien, Ann');

INSERT INTO IPropio (IdIPropio, IdCliente, IdPais, IdProvincia, IdPoblacion, IdZona,
  IdTipoInmueble, IdOperacion, IdAliasInmueble, IdCalefaccion, IdAgencia, IdUsuario, IdAcceso,
  IdDestino, Categorias, Precio, Superficie, Huecos, Exterior, Ascensor, Garaje, Altura, Aseos,
  Banios, Exclusividad, Amueblado, Nuevo, Trastero, Comercial, Industrial, Transmitido,
  FechaBaja, FechaAlta, FechaActualizacion, FechaTransmision, Notas) VALUES
  (1, 1, 1, 1, 1, 1, 1, 1, 1, 3, 1, 3, 2, 1, 'Reformado; Vistas; ', 150000, 90, 3, 2, 1, 1, 4,
   1, 2, 1, 1, 0, 2, 0, 0, 2, NULL, '2026-01-10', '2026-02-01', NULL, 'Luminoso, junto al parque'),
  (2, 2, 1, 2, 2, NULL, 2, 2, 3, 1, 2, 4, 1, 2, 'Vistas; ', 90000, 60, 2, 1, 0, 0, 1,
   1, 1, 0, 2, 1, 1, 1, 0, 1, '2026-11-01', '2025-06-30', NULL, '2026-03-03', 'Local en esquina'),
  (3, NULL, 2, NULL, NULL, NULL, 3, 1, 2, 3, 1, 3, 3, 3, '', 400000, 200, NULL, NULL, NULL, NULL,
   NULL, NULL, NULL, 0, 0, 2, 0, 2, 1, 0, '2027-01-01', '2024-12-31', NULL, NULL, NULL),
  (4, 1, 1, 1, 3, 2, 1, 1, 1, NULL, NULL, NULL, 3, 1, 'Reformado; ', NULL, NULL, 5, 3, 2, 2, 7,
   2, 3, 1, 1, 1, 0, 0, 0, 0, NULL, NULL, NULL, NULL, 'Ático con terraza'),
  (7, 2, 1, 2, 2, NULL, 1, 2, 1, 1, 1, 3, 2, 1, 'Vistas; ', 120000, 75, 2, 1, 1, 0, 2,
   1, 1, 0, 1, 0, 1, 0, 0, 0, NULL, '2026-05-05', NULL, NULL, NULL);

INSERT INTO IAjeno (IdIAjeno, IdPais, IdProvincia, IdPoblacion, IdZona, IdTipoInmueble,
  IdOperacion, IdAliasInmueble, IdCalefaccion, Categorias, Precio, Superficie, Huecos, Exterior,
  Ascensor, Garaje, Altura, Aseos, Banios, Amueblado, Nuevo, Trastero, Comercial, Industrial)
VALUES
  (1, 2, NULL, NULL, NULL, 3, 2, 2, 3, 'Reformado; ', 700, 50, 1, 1, 0, 0, 0, 1, 1, 1, 1, 1, 0, 0),
  (7, 1, 1, 3, 2, 2, 1, 2, 2, '', 250000, 110, 4, 2, 1, 1, 3, 1, 2, 0, 1, 0, 1, 0);

INSERT INTO Demanda (IdDemanda, IdCliente, Pais, Provincia, Poblacion, Zona, TipoInmueble,
  IdOperacion, IdAliasInmueble, IdCalefaccion, IdAgencia, IdUsuario, IdAcceso, IdDestino,
  Categorias, PrecioMinimo, PrecioMaximo, Superficie, SuperficieMaxima, Huecos, Exterior,
  Ascensor, Garaje, Altura, Aseos, Banios, Exclusividad, Amueblado, Nuevo, Trastero, Comercial,
  Industrial, Transmitido, FechaBaja, FechaAlta, Notas) VALUES
  (1, 1, 'España; ', 'Madrid; ', 'Madrid; Alcobendas; ', '', 'Piso; ', 1, 1, 3, 1, 3, 2, 1,
   'Reformado; ', 100000, 200000, 80, 120, 2, 1, 1, 1, 2, 1, 1, 1, 1, 2, 2, 0, 0, 2, NULL,
   '2026-02-02', 'Busca piso luminoso'),
  (2, 2, 'España; ', 'Ávila; ', 'Ávila; ', '', 'Local; Piso; ', 2, 3, 1, 2, 4, 1, 2,
   '', 50000, 100000, 50, 70, 2, 1, 0, 0, 1, 1, 1, 0, 2, 1, 1, 1, 0, 1, '2026-10-01',
   '2025-05-05', NULL),
  (3, NULL, 'Francia; ', '', '', '', 'Chalet; ', 1, 2, NULL, 1, 3, 3, 3, 'Vistas; ', 300000,
   NULL, 150, NULL, 4, 2, 0, 1, 0, 2, 2, 0, 0, 2, 0, 2, 1, 0, NULL, NULL, NULL),
  (4, 1, '', '', '', '', '', NULL, NULL, 2, NULL, NULL, NULL, NULL, NULL, NULL, 150000, NULL, 95,
   1, NULL, NULL, NULL, NULL, NULL, NULL, 0, 1, NULL, 1, 0, 0, 0, NULL, NULL, NULL),
  (5, 2, 'España; ', 'Madrid; ', 'Madrid; ', 'Centro; ', 'Piso; ', 1, 1, 1, 1, 3, 2, 1,
   'Reformado; Vistas; ', 140000, 160000, 85, 95, 3, 2, 1, 1, 4, 1, 2, 1, 1, 0, 2, 0, 0, 2,
   NULL, '2026-01-20', NULL),
  (6, 1, 'España; ', '', '', '', 'Piso; ', 1, 1, 1, 1, 3, 2, 1, '', 100000, 200000, 80, 120,
   2, 1, 1, 1, 2, 1, 1, 1, 1, 0, 5, 0, 0, 0, NULL, NULL, NULL);
)SQL";

// The user clicks the box's tab, puts the caret in the box and types its whole text (the
// box is not left). Boxes below the tabs need no tab.
inline void Type(ControlContainer& c, const std::string& name, const std::string& text,
                 int index = -1) {
  auto& box = c.Get<form::TextBox>(name, index);
  if (box.Parent() && box.Parent()->Name() == "fraSelec")
    c.Get<form::SSTab>("tbsSelec").setTab(box.Parent()->Index());
  box.SetFocus();
  box.setText(text);
}
// The user leaves the box that has the focus for the words box below the tabs.
inline bool Leave(ControlContainer& c) { return c.Item("txtPalabras").SetFocus(); }
// The last value the picker's last instance received for a property; Empty when never set.
inline Variant Picked(const ScriptedListPickerRegistration& picker, const std::string& name) {
  Variant value;
  if (picker.LastInstance())
    for (const auto& step : picker.LastInstance()->steps)
      if (step.kind == ListPickerStep::Kind::SetProperty && step.name == name) value = step.value;
  return value;
}
// The labels of the error reports shown so far.
inline std::vector<std::string> Reports(const ScriptedMessenger& m) {
  std::vector<std::string> labels;
  for (const auto& s : m.shown()) {
    const auto at = s.text.find("Error en la rutina: ");
    if (at == std::string::npos) continue;
    labels.push_back(s.text.substr(at + 20, s.text.find_first_of("\r\n", at + 20) - at - 20));
  }
  return labels;
}

class PropertyTest : public HostTest {
 protected:
  static void SetUpTestSuite() { path_ = ScratchDb::Create("cp_properties", kPropertyRows); }
  static void TearDownTestSuite() { std::filesystem::remove(path_); }

  frmSeleccion& Dlg() { return sel_->Dialog(); }
  SeleccionInm& Inm() { return Dlg().SeleccionInm1(); }
  ControlContainer& Box() { return Inm().Controls(); }
  form::TextBox& Txt(const std::string& name, int index = -1) {
    return Box().Get<form::TextBox>(name, index);
  }
  form::CheckBox& Chk(const std::string& name) { return Box().Get<form::CheckBox>(name); }
  form::ComboBox& Cbo(const std::string& name) { return Box().Get<form::ComboBox>(name); }
  void ShowTab(int tab) { Box().Get<form::SSTab>("tbsSelec").setTab(tab); }

  // Shows the dialog for entity with script acting as the user on the property control, who
  // then accepts; returns the condition that CSeleccion holds afterwards.
  std::string Accept(const std::string& entity,
                     const std::function<void(ControlContainer&)>& script) {
    sel_->setEntidad(entity);
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
      script(dlg.SeleccionInm1().Controls());
      dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
    }));
    EXPECT_TRUE(sel_->mtdMostrar());
    return sel_->SQLW();
  }
  std::string Cross(std::int32_t id, std::string to, std::string from) {
    sel_->Cruzar(id, to, from);
    return sel_->SQLW();
  }

  // The keys of the rows that the host query returns for a condition (owner joined).
  Ids Keys(const std::string& table, const std::string& key, const std::string& where) {
    Ids ids;
    for (dao::Recordset rs = BD()->OpenRecordset(
             "SELECT " + table + "." + key + " FROM " + table + " LEFT JOIN Cliente ON " +
             "Cliente.IdCliente = " + table + ".IdCliente" +
             (where.empty() ? std::string() : " WHERE " + where) + " ORDER BY " + table + "." +
             key);
         !rs.Eof(); rs.MoveNext())
      ids.push_back(CLng(rs.Fields(0).Value()));
    return ids;
  }
  Ids Own(const std::string& where) { return Keys("IPropio", "IdIPropio", where); }
  Ids Demands(const std::string& where) { return Keys("Demanda", "IdDemanda", where); }
  std::vector<std::string> Reports() const { return cp::testing::Reports(*messenger_); }
};

}  // namespace cp::testing
