#include "contacts/seleccion_cli.h"

#include "common/entity_catalogue.h"
#include "common/error_handler.h"
#include "common/list_picker.h"
#include "common/sql_text.h"
#include "criteria/mseleccion.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/frame.h"
#include "platform/form/keys.h"
#include "platform/form/label.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"

namespace cp {
namespace {

// Date pickers and the column each one bounds.
struct DateColumn {
  const char* control;
  const char* column;
};
constexpr DateColumn kDateColumns[] = {{"dtpAlta", "FechaAlta"},
                                       {"dtpActualiza", "FechaActualizacion"},
                                       {"dtpTransmision", "FechaEnvioAnotaciones"}};

// Searches that go through a side table: caption, id column, lookup table, name column.
struct SideSearch {
  const char* caption;
  const char* campoId;
  const char* tablaAux;
  const char* campoAux;
};
constexpr SideSearch kSideSearches[] = {{"Introducido por", "IdUsuario", "Usuario", "Nombre"},
                                        {"Población", "IdPoblacion", "Poblacion", "Nombre"},
                                        {"Provincia", "IdProvincia", "Provincia", "Nombre"},
                                        {"Pais", "IdPais", "Pais", "Nombre"}};

}  // namespace

SeleccionCli::SeleccionCli() : SelectionControl("SeleccionCli") {
  form::ControlContainer& c = Controls();
  // Inputs are created in the order that conditions and saved selections follow; labels,
  // frames and buttons sit between them.
  auto& tabs = c.AddSSTab("tbsSelec", 2);
  tabs.setTabCaption(0, "General");
  tabs.setTabCaption(1, "Fechas");
  auto& general = c.AddFrame("fraSelec", 0);
  auto& fechas = c.AddFrame("fraSelec", 1);
  general.setParent(&tabs, 0);
  fechas.setParent(&tabs, 1);

  const struct {
    const char* name;
    const char* from;
    const char* to;
  } ranges[] = {{"dtpAlta", "lblAlta1", "lblAlta2"},
                {"dtpActualiza", "lblModif1", "lblModif2"},
                {"dtpTransmision", "lblEnvio1", "lblEnvio2"}};
  const char* rangeCaptions[] = {"Alta entre", "Modificación entre", "Envío anotación entre"};
  for (int r = 0; r < 3; ++r) {
    auto& from = c.AddLabel(ranges[r].from);
    from.setCaption(rangeCaptions[r]);
    from.setParent(&fechas);
    for (int i = 0; i < 2; ++i) {
      auto& picker = c.AddDTPicker(ranges[r].name, i);
      picker.setCustomFormat("dddd d/MM/yy");
      picker.setParent(&fechas);
      if (i == 0) {
        auto& y = c.AddLabel(ranges[r].to);
        y.setCaption("y");
        y.setParent(&fechas);
      }
    }
  }

  auto& lblCategorias = c.AddLabel("lblCategorias");
  lblCategorias.setCaption("Categorías");
  lblCategorias.setParent(&general);
  auto& txtCategorias = c.AddTextBox("txtCategorias");
  txtCategorias.setParent(&general);
  auto& cmdCategorias = c.AddCommandButton("cmdCategorias");
  cmdCategorias.setCaption("...");
  cmdCategorias.setParent(&general);
  auto& chkCategorias = c.AddCheckBox("chkCategorias");
  chkCategorias.setCaption("Que cumpla todas");
  chkCategorias.setParent(&general);

  auto& lblPalabras = c.AddLabel("lblPalabras");
  lblPalabras.setCaption("Buscar las palabras");
  lblPalabras.setParent(&general);
  c.AddTextBox("txtPalabras").setParent(&general);
  auto& cboOpPalabras = c.AddComboBox("cboOpPalabras");
  cboOpPalabras.setParent(&general);
  for (const char* item : {"Al principio", "En todo el texto", "Al final"})
    cboOpPalabras.AddItem(item);
  auto& lblEn = c.AddLabel("lblEn");
  lblEn.setCaption("en");
  lblEn.setParent(&general);
  c.AddComboBox("cboEn").setParent(&general);

  tabs.Click.Connect([this](int previous) { tbsSelec_Click(previous); });
  cmdCategorias.Click.Connect([this] { cmdCategorias_Click(); });
  txtCategorias.KeyDown.Connect(
      [this](int& keyCode, int& shift) { txtCategorias_KeyDown(keyCode, shift); });

  UserControl_Initialize();
}

void SeleccionCli::UserControl_Initialize() {
  Atrapar("UserControl_Initialize de SeleccionCli", [&] {
    form::ControlContainer& c = Controls();
    for (form::Control* frame : c.ControlArray("fraSelec")) frame->setVisible(false);
    c.Item("fraSelec", pestania_).setVisible(true);
    numSelecAnt_ = -1;
    NuevaSeleccion();
    en_[0] = {"Archivar Como", "Organización", "Apellido", "Calle", "Población",
              "Provincia", "Pais", "Nº Teléfono", "Correo Electrónico", "Notas",
              "NIF", "Página Web", "Introducido por"};
    en_[1] = {"Alias", "Organizacion", "Apellidos", "Calle", "IdPoblacion", "IdProvincia",
              "IdPais", "", "", "Notas", "NIF", "PagWeb", "IdUsuario"};
    auto& cboEn = c.Get<form::ComboBox>("cboEn");
    for (const std::string& caption : en_[0]) cboEn.AddItem(caption);
    cboEn.setListIndex(0);
  });
}

void SeleccionCli::UserControl_Show() {
  Atrapar("UserControl_Show de SeleccionCli", [&] { PonerFoco(); });
}

void SeleccionCli::PonerFoco() {
  Atrapar("PonerFoco de SeleccionCli", [&] {
    // Only the general tab has a first criterion to go to. The stored tab may not be the one
    // shown (a restore does not switch the strip, a tab click does not store it), so the box
    // is focused only when the user can see it.
    form::Control& words = Controls().Item("txtPalabras");
    if (pestania_ == 0 && words.EffectivelyVisible() && words.EffectivelyEnabled())
      words.SetFocus();
  });
}

void SeleccionCli::tbsSelec_Click(int previousTab) {
  Atrapar("tbsSelect_Click de SeleccionCli", [&] {
    form::ControlContainer& c = Controls();
    const int tab = c.Get<form::SSTab>("tbsSelec").Tab();
    c.Item("fraSelec", previousTab).setVisible(false);
    c.Item("fraSelec", tab).setVisible(true);
    if (tab == 0)
      c.Item("txtPalabras").SetFocus();
    else if (tab == 1)
      c.Item("dtpAlta", 0).SetFocus();
  });
}

void SeleccionCli::cmdCategorias_Click() {
  Atrapar("cmdCategorias_Click de SeleccionCli", [&] {
    auto& txt = Controls().Get<form::TextBox>("txtCategorias");
    txt.setText(VerListadoMult(txt.Text(), "TipoCategoria", "Nombre", false, false, false, 3000,
                               "Categorías", ""));
    txt.SetFocus();
  });
}

void SeleccionCli::txtCategorias_KeyDown(int& keyCode, int& shift) {
  if (keyCode == form::vbKeyReturn && (shift & form::vbShiftMask) != 0) cmdCategorias_Click();
}

void SeleccionCli::setSelecEn(const std::string& entidad) {
  const EntityInfo* e = FindEntity(entidad);
  if (!e || e->control != CriteriaControlKind::Contacts) return;
  tabla_ = e->table;
  campoId_ = e->key;
  tablaTfno_ = e->phones;
  tablaCorreo_ = e->mails;
}

std::string SeleccionCli::WordsPattern() const {
  const std::string q = Comilla(Controls().Get<form::TextBox>("txtPalabras").Text());
  switch (Controls().Get<form::ComboBox>("cboOpPalabras").ListIndex()) {
    case 0: return "'" + q + "*'";
    case 2: return "'*" + q + "'";
    default: return "'*" + q + "*'";  // "En todo el texto", also with nothing chosen
  }
}

std::string SeleccionCli::SelecWhere() {
  form::ControlContainer& c = Controls();
  std::string where;
  for (form::Control* control : c.Controls()) {
    const std::string& name = control->Name();
    for (const DateColumn& d : kDateColumns) {
      if (name == d.control)
        SQL_Fecha(*static_cast<form::DTPicker*>(control), tabla_, d.column, where);
    }
    if (name == "txtCategorias") {
      const auto& txt = *static_cast<form::TextBox*>(control);
      if (c.Get<form::CheckBox>("chkCategorias").Value() == 1)
        SQL_TablaMultiStringAnd(txt, tabla_, "Categorias", where, false);
      else
        SQL_TablaMultiString(txt, tabla_, "Categorias", where, false);
    } else if (name == "txtPalabras" && !static_cast<form::TextBox*>(control)->Text().empty()) {
      const std::string pattern = WordsPattern();
      const auto& cboEn = c.Get<form::ComboBox>("cboEn");
      const std::string caption = cboEn.Text();
      const SideSearch* side = nullptr;
      for (const SideSearch& s : kSideSearches)
        if (caption == s.caption) side = &s;
      if (side) {
        SQL_BuscarAux(pattern, where, tabla_, side->campoId, side->tablaAux, side->campoAux);
        continue;
      }
      std::string fragment;
      if (caption == "Nº Teléfono") {
        fragment = tabla_ + "." + campoId_ + " In (SELECT " + campoId_ + " FROM " + tablaTfno_ +
                   " WHERE Numero LIKE " + pattern + ")";
      } else if (caption == "Correo Electrónico") {
        fragment = tabla_ + "." + campoId_ + " In (SELECT " + campoId_ + " FROM " +
                   tablaCorreo_ + " Where Numero LIKE " + pattern + ")";
      } else {
        fragment = tabla_ + "." + en_[1].at(static_cast<std::size_t>(cboEn.ListIndex())) +
                   " LIKE " + pattern;
      }
      if (!where.empty()) where += " AND ";
      where += fragment;
    }
  }
  return where;
}

void SeleccionCli::VerSelAnt() {
  Atrapar("VerSelAnt de SeleccionCli", [&] {
    if (numSelecAnt_ < 1) return;
    NuevaSeleccion();
    for (const ElementoSeleccion& entry : entries_) ApplyEntry(entry);
  });
}

void SeleccionCli::NuevaSeleccion() { ClearInputs(); }

}  // namespace cp
