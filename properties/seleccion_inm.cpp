#include "properties/seleccion_inm.h"

#include "common/entity_catalogue.h"
#include "common/error_handler.h"
#include "common/list_picker.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/text_format.h"
#include "platform/dao/recordset.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/frame.h"
#include "platform/form/keys.h"
#include "platform/form/label.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "properties/cross_fill.h"
#include "properties/sql_seleccion.h"

namespace cp {
namespace {

constexpr const char* kTabCaptions[] = {" General ", " Tipo ", " Características ", " Agencia ",
                                        " Fechas "};

// The first input of each tab, which takes the focus when the tab is chosen.
struct FocusTarget {
  const char* name;
  int index;
};
constexpr FocusTarget kTabFocus[] = {{"txtInmueble", -1},
                                     {"txtCategorias", -1},
                                     {"txtAltura", -1},
                                     {"txtAgencias", -1},
                                     {"dtpAlta", 0}};

// The picker buttons: list picker settings and the box that receives the chosen names.
struct PickerButton {
  const char* button;
  const char* target;
  const char* tabla;
  const char* campo;
  const char* titulo;
  const char* sql;
};
const PickerButton kPickers[] = {
    {"cmdAcceso", "txtAcceso", "Acceso", "Acceso", "Acceso", ""},
    {"cmdAgencias", "txtAgencias", "Agencia", "Alias", "Agencias",
     "SELECT Alias FROM Agencia WHERE IdAgencia<1000000 ORDER BY Alias ASC"},
    {"cmdAgentes", "txtUsuarios", "Usuario", "Nombre", "Agentes", ""},
    {"cmdCalefaccion", "txtCalefaccion", "Calefaccion", "Calefaccion", "Calefacción", ""},
    {"cmdCategorias", "txtCategorias", "TipoCategoriaI", "Nombre", "Categorías", ""},
    {"cmdInmueble", "txtInmueble", "Inmueble", "Inmueble", "Tipo de Inmueble",
     "SELECT Inmueble FROM  AliasInmueble WHERE ( Activo = TRUE ) ORDER BY Inmueble"},
    {"cmdOperacion", "txtOperacion", "Operacion", "Operacion", "Operación", ""},
    {"cmdTipos", "txtTipos", "TipoInmueble", "Nombre", "Tipo de Inmueble", ""},
};

// Check boxes whose Delete key greys them (no criterion).
constexpr const char* kDeletableChecks[] = {
    "chkAmueblado",  "chkCaducado", "chkIntAgencia", "chkIntBolsa",    "chkComercial",
    "chkIndustrial", "chkNuevo",    "chkExclusiva",  "chkTransmitido", "chkTrastero"};

bool ShiftEnter(int keyCode, int shift) {
  return keyCode == form::vbKeyReturn && (shift & form::vbShiftMask) != 0;
}

}  // namespace

SeleccionInm::SeleccionInm() : SelectionControl("SeleccionInm") {
  form::ControlContainer& c = Controls();
  // Inputs are created in the order that conditions and saved selections follow; labels,
  // frames and buttons sit between them.
  auto& tabs = c.AddSSTab("tbsSelec", 5);
  form::Frame* frames[5];
  for (int i = 0; i < 5; ++i) {
    tabs.setTabCaption(i, kTabCaptions[i]);
    frames[i] = &c.AddFrame("fraSelec", i);
    frames[i]->setParent(&tabs, i);
  }
  const auto label = [&](const char* name, const char* caption, form::Frame* frame) {
    auto& l = c.AddLabel(name);
    l.setCaption(caption);
    l.setParent(frame);
  };
  // A labelled text box, with its "..." picker button when it has one.
  const auto box = [&](const char* name, const char* caption, const char* button,
                       form::Frame* frame) {
    label(("lbl" + std::string(name + 3)).c_str(), caption, frame);
    c.AddTextBox(name).setParent(frame);
    if (button) {
      auto& b = c.AddCommandButton(button);
      b.setCaption("...");
      b.setParent(frame);
    }
  };
  const auto check = [&](const char* name, const char* caption, form::Frame* frame) {
    auto& chk = c.AddCheckBox(name);
    chk.setCaption(caption);
    chk.setParent(frame);
  };

  form::Frame* general = frames[0];
  box("txtInmueble", "Inmueble", "cmdInmueble", general);
  box("txtOperacion", "Operación", "cmdOperacion", general);
  box("txtPais", "País", "cmdPais", general);
  box("txtProvincia", "Provincia", "cmdProvincia", general);
  box("txtPoblacion", "Población", "cmdPoblacion", general);
  box("txtZona", "Zona", "cmdZona", general);
  label("lblPrecio", "Precio entre", general);
  c.AddTextBox("txtPrecio", 0).setParent(general);
  label("lbly1", "y", general);
  c.AddTextBox("txtPrecio", 1).setParent(general);
  label("lblSuper", "Superficie entre", general);
  c.AddTextBox("txtSuper", 0).setParent(general);
  label("lbly2", "y", general);
  c.AddTextBox("txtSuper", 1).setParent(general);

  form::Frame* tipo = frames[1];
  box("txtCategorias", "Categorías", "cmdCategorias", tipo);
  check("chkCategorias", "Que cumpla todas", tipo);
  box("txtTipos", "Tipo", "cmdTipos", tipo);
  box("txtCalefaccion", "Calefacción", "cmdCalefaccion", tipo);
  box("txtAcceso", "Acceso", "cmdAcceso", tipo);

  form::Frame* caracteristicas = frames[2];
  box("txtAltura", "Altura", nullptr, caracteristicas);
  box("txtHuecos", "Huecos", nullptr, caracteristicas);
  box("txtPiezasExt", "Piezas exteriores", nullptr, caracteristicas);
  box("txtAscensor", "Ascensores", nullptr, caracteristicas);
  box("txtGaraje", "Garajes", nullptr, caracteristicas);
  box("txtAseos", "Aseos", nullptr, caracteristicas);
  box("txtBanios", "Baños", nullptr, caracteristicas);
  check("chkAmueblado", "Amueblado", caracteristicas);
  check("chkNuevo", "Nuevo", caracteristicas);
  check("chkTrastero", "Trastero", caracteristicas);
  check("chkComercial", "Comercial", caracteristicas);
  check("chkIndustrial", "Industrial", caracteristicas);
  check("chkExclusiva", "Exclusiva", caracteristicas);

  form::Frame* agencia = frames[3];
  box("txtAgencias", "Agencias", "cmdAgencias", agencia);
  box("txtUsuarios", "Agentes", "cmdAgentes", agencia);
  check("chkIntBolsa", "Interesa a la bolsa", agencia);
  check("chkIntAgencia", "Interesa a la agencia", agencia);
  check("chkTransmitido", "Transmitido", agencia);
  check("chkCaducado", "Caducado", agencia);

  form::Frame* fechas = frames[4];
  const struct {
    const char* name;
    const char* from;
    const char* to;
    const char* caption;
  } ranges[] = {{"dtpAlta", "lblAlta1", "lblAlta2", "Alta entre"},
                {"dtpActualiza", "lblModif1", "lblModif2", "Modificación entre"},
                {"dtpTransmision", "lblTransm1", "lblTransm2", "Transmisión entre"}};
  for (const auto& r : ranges) {
    label(r.from, r.caption, fechas);
    c.AddDTPicker(r.name, 0).setParent(fechas);
    label(r.to, "y", fechas);
    c.AddDTPicker(r.name, 1).setParent(fechas);
  }
  for (form::Control* picker : c.Controls())
    if (picker->TypeName() == "DTPicker")
      static_cast<form::DTPicker*>(picker)->setCustomFormat("dddd d/MM/yy");

  // Below the tabs, on every tab.
  label("lblPalabras", "Buscar las palabras", nullptr);
  c.AddTextBox("txtPalabras");
  label("lblEn", "en", nullptr);
  c.AddComboBox("cboEn");
  c.AddComboBox("cboOpPalabras");

  ConnectHandlers();
  UserControl_Initialize();
}

SeleccionInm::~SeleccionInm() = default;

void SeleccionInm::ConnectHandlers() {
  form::ControlContainer& c = Controls();
  c.Get<form::SSTab>("tbsSelec").Click.Connect([this](int previous) { tbsSelec_Click(previous); });
  c.Get<form::ComboBox>("cboEn").Click.Connect([this] { cboEn_Click(); });
  for (const PickerButton& p : kPickers) {
    c.Get<form::CommandButton>(p.button).Click.Connect(
        [this, &p] { Picker(p.button, p.target, p.tabla, p.campo, p.titulo, p.sql); });
  }
  // Shift+Enter in these boxes opens their picker.
  const struct {
    const char* box;
    const char* button;
  } shortcuts[] = {{"txtOperacion", "cmdOperacion"}, {"txtInmueble", "cmdInmueble"}};
  for (const auto& s : shortcuts) {
    c.Item(s.box).KeyDown.Connect([this, s](int& keyCode, int& shift) {
      Atrapar(std::string(s.box) + "_KeyDown de SeleccionInm", [&] {
        if (ShiftEnter(keyCode, shift)) Controls().Get<form::CommandButton>(s.button).Press();
      });
    });
  }
  for (const char* name : kDeletableChecks) {
    c.Item(name).KeyDown.Connect(
        [this, name](int& keyCode, int&) { CheckBox_KeyDown(name, keyCode); });
  }
  for (const char* name : {"txtPrecio", "txtSuper"}) {
    for (int i = 0; i < 2; ++i)
      c.Item(name, i).LostFocus.Connect([this, name, i] { NumberBox_LostFocus(name, i); });
  }
}

void SeleccionInm::UserControl_Initialize() {
  Atrapar("UserControl_Initialize de SeleccionInm", [&] {
    form::ControlContainer& c = Controls();
    for (form::Control* frame : c.ControlArray("fraSelec")) frame->setVisible(false);
    c.Item("fraSelec", pestania_).setVisible(true);
    numSelecAnt_ = -1;
    cascade_ = std::make_unique<LocationCascade>(c);
    NuevaSeleccion();
  });
}

void SeleccionInm::UserControl_Show() {
  Atrapar("UserControl_Show de SeleccionInm", [&] { PonerFoco(); });
}

void SeleccionInm::PonerFoco() {
  Atrapar("PonerFoco de SeleccionInm", [&] { Controls().Item("txtInmueble").SetFocus(); });
}

LocationCascade& SeleccionInm::Location() {
  if (!cascade_) RaiseObjectNotSet();
  return *cascade_;
}

std::string SeleccionInm::PalabraEn() {
  return Controls().Get<form::ComboBox>("cboEn").Text();
}

void SeleccionInm::WriteProperties(form::PropertyBag& bag) const {
  form::PropertyBag all;
  SelectionControl::WriteProperties(all);
  for (const char* key : {"Pestania", "NomTab0", "NomTab1", "NomTab2"})
    bag.WriteProperty(key, all.ReadProperty(key));
}

void SeleccionInm::tbsSelec_Click(int /*previousTab*/) {
  Atrapar("tbsSelect_Click de SeleccionInm", [&] {
    form::ControlContainer& c = Controls();
    const int tab = c.Get<form::SSTab>("tbsSelec").Tab();
    for (form::Control* frame : c.ControlArray("fraSelec")) frame->setVisible(false);
    c.Item("fraSelec", tab).setVisible(true);
    c.Item(kTabFocus[tab].name, kTabFocus[tab].index).SetFocus();
  });
}

void SeleccionInm::SelecEn(const std::string& pstrEntidad, const std::string& pstrEntidadOrigen,
                           std::int32_t plngID) {
  Atrapar("SelecEn de SeleccionInm", [&] {
    form::ControlContainer& c = Controls();
    cruzando_ = plngID != -1;
    if (const EntityInfo* e = FindEntity(pstrEntidad);
        e && e->control == CriteriaControlKind::Properties) {
      // A demand is matched by one price and one surface against its own minimum and
      // maximum, so it has no upper boxes.
      const bool demand = pstrEntidad == "Demandas";
      en_ = {CampoEn{demand ? "Nº Demanda" : "Nº Inmueble", e->key},
             CampoEn{"Propietario", "Alias"}, CampoEn{"Notas", "Notas"}};
      tabla_ = e->table;
      campoId_ = e->key;
      for (form::Control* upper :
           {&c.Item("txtPrecio", 1), &c.Item("txtSuper", 1), &c.Item("lbly1"), &c.Item("lbly2")})
        upper->setVisible(!demand);
    }
    if (cruzando_) {
      if (pstrEntidad == "Inm. Propios" || pstrEntidad == "Inm. Ajenos") {
        RellenarDemanda(c, plngID);
      } else if (pstrEntidad == "Demandas") {
        if (pstrEntidadOrigen == "Inm. Propios")
          RellenarInmueblePropio(c, plngID);
        else
          RellenarInmuebleAjeno(c, plngID);  // any other origin reads the other agencies'
      }
    }
    auto& cboEn = c.Get<form::ComboBox>("cboEn");
    cboEn.Clear();
    for (const CampoEn& campo : en_) cboEn.AddItem(campo.etiqueta);
    cboEn.setListIndex(0);
  });
}

void SeleccionInm::cboEn_Click() {
  Atrapar("cboEn_Click de SeleccionInm", [&] {
    form::ControlContainer& c = Controls();
    auto& cboOp = c.Get<form::ComboBox>("cboOpPalabras");
    // No choice and the first row both come back as the middle row.
    int row = cboOp.ListIndex();
    if (row < 1) row = 1;
    cboOp.Clear();
    const bool number = c.Get<form::ComboBox>("cboEn").Text().find("Nº ") != std::string::npos;
    const char* const numberOps[] = {"Menor o Igual", "Igual", "Mayor o Igual"};
    const char* const textOps[] = {"Al principio", "En todo el texto", "Al final"};
    for (const char* item : number ? numberOps : textOps) cboOp.AddItem(item);
    cboOp.setListIndex(row);
  });
}

void SeleccionInm::Picker(const std::string& button, const std::string& target,
                          const std::string& tabla, const std::string& campo,
                          const std::string& titulo, const std::string& sql) {
  Atrapar(button + "_Click de SeleccionInm", [&] {
    auto& txt = Controls().Get<form::TextBox>(target);
    txt.setText(VerListadoMult(txt.Text(), tabla, campo, false, false, false, 3000, titulo, sql));
    txt.SetFocus();
  });
}

void SeleccionInm::CheckBox_KeyDown(const std::string& name, int& keyCode) {
  Atrapar(name + "_KeyDown de SeleccionInm", [&] {
    if (keyCode == form::vbKeyDelete) Controls().Get<form::CheckBox>(name).setValue(form::vbGrayed);
  });
}

void SeleccionInm::NumberBox_LostFocus(const std::string& name, int index) {
  Atrapar(name + "_LostFocus de SeleccionInm", [&] {
    auto& txt = Controls().Get<form::TextBox>(name, index);
    const Variant value(txt.Text());
    txt.setText(IsNumeric(value) ? FormatNumber(CDbl(value), "#,###") : "");
  });
}

std::string SeleccionInm::SelecWhere() {
  std::string where;
  Atrapar("SelectWhere de SeleccionInm", [&] { where = SQLSeleccion(*this); });
  return where;
}

void SeleccionInm::NuevaSeleccion() {
  Atrapar("NuevaSeleccion de SeleccionInm", [&] { ClearInputs(); });
}

void SeleccionInm::VerSelAnt() {
  Atrapar("VerSelAnt de SeleccionInm", [&] {
    if (numSelecAnt_ < 1) return;
    NuevaSeleccion();
    for (const ElementoSeleccion& entry : entries_) {
      if (LocationCascade::IsLocationBox(entry.Nombre))
        Location().Restore(entry.Nombre, entry.Valor);
      else
        ApplyEntry(entry);
    }
  });
}

void SeleccionInm::setSelecAnt(const Variant& saved) {
  Atrapar("Let de SelectAnt de SeleccionInm", [&] {
    if (saved.IsEmpty()) {
      DefaultLocation();
      VerSelAnt();
    } else {
      SelectionControl::setSelecAnt(saved);
    }
  });
}

void SeleccionInm::DefaultLocation() {
  // The saved list becomes the user's own país, provincia and población, those that have a
  // name, in that order.
  entries_.clear();
  numSelecAnt_ = 0;
  dao::Database& db = RequireBD();
  dao::Recordset user =
      db.OpenRecordset("SELECT IdPoblacion, IdProvincia, IdPais " +
                       std::string("FROM   Usuario WHERE IdUsuario = ") + std::to_string(gVUser));
  if (user.Eof()) return;
  const struct {
    const char* control;
    const char* sql;
    const char* idField;
  } levels[] = {
      {"txtPais", "SELECT Nombre FROM Pais WHERE IdPais = ", "IdPais"},
      {"txtProvincia", "SELECT Nombre FROM Provincia WHERE IdProvincia = ", "IdProvincia"},
      {"txtPoblacion", "SELECT Nombre FROM Poblacion WHERE IdPoblacion = ", "IdPoblacion"}};
  for (const auto& level : levels) {
    const Variant id = user.Fields(level.idField).Value();
    if (id.IsNull()) continue;  // a user without that level has no name for it
    dao::Recordset names = db.OpenRecordset(level.sql + CStr(id));
    if (names.Eof()) continue;
    const Variant nombre = names.Fields("nombre").Value();
    entries_.push_back({level.control, -1, nombre.IsNull() ? std::string() : CStr(nombre)});
    numSelecAnt_ = static_cast<std::int16_t>(entries_.size());
  }
}

}  // namespace cp
