#include "selection/frm_seleccion.h"

#include <algorithm>
#include <vector>

#include "common/error_handler.h"
#include "platform/form/command_button.h"
#include "platform/form/frame.h"
#include "platform/form/label.h"
#include "selection/modal_runner.h"

namespace cp {
namespace {

bool In(const std::string& entity, std::initializer_list<const char*> group) {
  return std::any_of(group.begin(), group.end(), [&](const char* name) { return entity == name; });
}

// The three groups of entity names; which handler uses which is deliberate.
bool ShortContactGroup(const std::string& e) {
  return In(e, {"Clientes", "Clientes Archivados", "Agencias"});
}
bool FullContactGroup(const std::string& e) {
  return In(e, {"Clientes", "Abogados", "Clientes Contrarios", "Procuradores",
                "Clientes Archivados", "Clientes Contrarios Archivados"});
}
bool PropertyGroup(const std::string& e) {
  return In(e, {"Inm. Propios", "Inm. Ajenos", "Inm. Archivados", "Inm. Vendidos", "Demandas"});
}

}  // namespace

struct frmSeleccion::Window {
  form::Form form{"frmSeleccion"};
  SeleccionCli cli;
  SeleccionInm inm;
  form::ComboBox* cboEntidad = nullptr;
  form::CheckBox* chkGuardar = nullptr;
  form::UserControl* cliControl = nullptr;
  form::UserControl* inmControl = nullptr;
};

frmSeleccion::frmSeleccion() = default;

frmSeleccion::~frmSeleccion() = default;

void frmSeleccion::Load() {
  if (window_) return;
  auto w = std::make_unique<Window>();
  form::Form& f = w->form;
  f.AddCommandButton("cmdNuevo").setCaption("&Nueva Selección");
  f.AddCommandButton("cmdAceptar").setCaption("&Aceptar");
  f.AddLabel("lblGrupo").setCaption("Seleccionar en");
  w->cboEntidad = &f.AddComboBox("cboEntidad");
  f.AddFrame("fraTodo");
  auto& cancelar = f.AddCommandButton("cmdCancelar");
  cancelar.setCaption("&Cancelar");
  cancelar.setCausesValidation(false);  // leaving never validates the box left
  w->cliControl = &f.AddUserControl("SeleccionCli1", w->cli.SharedControls());
  w->inmControl = &f.AddUserControl("SeleccionInm1", w->inm.SharedControls());
  w->chkGuardar = &f.AddCheckBox("chkGuardar");
  w->chkGuardar->setCaption("Guardar Selección");
  w->cliControl->setParent(&f.Item("fraTodo"));
  w->inmControl->setParent(&f.Item("fraTodo"));
  // Neither control is shown until an entity of its group is chosen.
  w->cliControl->setVisible(false);
  w->inmControl->setVisible(false);

  w->cboEntidad->Click.Connect([this] { cboEntidad_Click(); });
  f.Get<form::CommandButton>("cmdAceptar").Click.Connect([this] { cmdAceptar_Click(); });
  f.Get<form::CommandButton>("cmdCancelar").Click.Connect([this] { cmdCancelar_Click(); });
  f.Get<form::CommandButton>("cmdNuevo").Click.Connect([this] { cmdNuevo_Click(); });

  // Form_Load
  for (const char* entity : {"Inm. Propios", "Inm. Ajenos", "Inm. Archivados", "Inm. Vendidos",
                             "Agencias", "Clientes", "Clientes Archivados", "Demandas"})
    w->cboEntidad->AddItem(entity);
  w->chkGuardar->setValue(0);
  window_ = std::move(w);
}

void frmSeleccion::Unload() {
  // A handler of the window may still be running (the owner unloads from inside Aceptar),
  // so the window is retired and freed once the modal loop is over.
  if (!window_) return;
  shown_ = false;
  retired_.push_back(std::move(window_));
  Unloaded.Fire();
}

void frmSeleccion::Show() {
  Load();
  shown_ = true;
  struct Hidden {
    bool& shown;
    ~Hidden() { shown = false; }
  } hidden{shown_};
  CurrentModalRunner().RunModal(*this);
  retired_.clear();
}

frmSeleccion::Window& frmSeleccion::Live() {
  Load();
  return *window_;
}

form::Form& frmSeleccion::Controls() { return Live().form; }
form::ComboBox& frmSeleccion::cboEntidad() { return *Live().cboEntidad; }
form::CheckBox& frmSeleccion::chkGuardar() { return *Live().chkGuardar; }
SeleccionCli& frmSeleccion::SeleccionCli1() { return Live().cli; }
SeleccionInm& frmSeleccion::SeleccionInm1() { return Live().inm; }
form::UserControl& frmSeleccion::SeleccionCli1Control() { return *Live().cliControl; }
form::UserControl& frmSeleccion::SeleccionInm1Control() { return *Live().inmControl; }

SelectionControl* frmSeleccion::ControlFor(const std::string& entity) {
  if (ShortContactGroup(entity)) return &SeleccionCli1();
  if (PropertyGroup(entity)) return &SeleccionInm1();
  return nullptr;
}

void frmSeleccion::Form_Activate() {
  const std::string entity = cboEntidad().Text();
  if (FullContactGroup(entity))
    SeleccionCli1().PonerFoco();
  else if (PropertyGroup(entity))
    SeleccionInm1().PonerFoco();
}

// A hidden control made visible in a shown window gets its Show event, as the runtime
// gives it; before the window is shown, activation places the caret instead.
bool frmSeleccion::Appears(const form::UserControl& control) const {
  return shown_ && !control.Visible();
}

void frmSeleccion::cboEntidad_Click() {
  Atrapar("cboEntidad_Click en frmSeleccion", [&] {
    const std::string entity = cboEntidad().Text();
    if (ShortContactGroup(entity)) {
      const bool appears = Appears(SeleccionCli1Control());
      SeleccionCli1Control().setVisible(true);
      SeleccionInm1Control().setVisible(false);
      if (appears) SeleccionCli1().UserControl_Show();
      SeleccionCli1().setSelecEn(entity);
    } else if (PropertyGroup(entity)) {
      const bool appears = Appears(SeleccionInm1Control());
      SeleccionCli1Control().setVisible(false);
      SeleccionInm1Control().setVisible(true);
      if (appears) SeleccionInm1().UserControl_Show();
      SeleccionInm1().SelecEn(entity);
    }
  });
}

void frmSeleccion::cmdAceptar_Click() {
  Atrapar("cmdAceptar_Click en frmSeleccion", [&] {
    std::string entity = cboEntidad().Text();
    SelectionControl* control = ControlFor(entity);
    if (!control) return;
    std::string sql = control->SelecWhere();
    Variant saved = control->SelecAnt();
    Aceptar.Fire(sql, entity, saved);
  });
}

void frmSeleccion::cmdCancelar_Click() { Cancel.Fire(); }

void frmSeleccion::cmdNuevo_Click() {
  Atrapar("cmdNuevo_Click en frmSeleccion", [&] {
    const std::string entity = cboEntidad().Text();
    if (FullContactGroup(entity)) {
      SeleccionCli1().NuevaSeleccion();
    } else if (PropertyGroup(entity)) {
      SeleccionInm1().setSelecAnt(Variant());
      SeleccionInm1().NuevaSeleccion();
    }
  });
}

void frmSeleccion::SelectAnt(const Variant& Seleccion, const std::string& Entidad,
                             std::int32_t& gVUser) {
  Atrapar("SelectAnt en frmSeleccion", [&] {
    if (FullContactGroup(Entidad) || Entidad == "Agencias") {
      SeleccionCli1().setSelecAnt(Seleccion);
    } else if (PropertyGroup(Entidad)) {
      SeleccionInm1().gVUser = gVUser;
      SeleccionInm1().setSelecAnt(Seleccion);
    }
  });
}

void frmSeleccion::Cruzar(std::int32_t& plngID, std::string& pstrEntidad,
                          std::string& pstrEntidadOrigen, std::string& SQLSelec,
                          Variant& Entidad, Variant& Seleccion) {
  Atrapar("Cruzar en frmSeleccion", [&] {
    SeleccionInm1().SelecEn(pstrEntidad, pstrEntidadOrigen, plngID);
    SQLSelec = SeleccionInm1().SelecWhere();
    Entidad = Variant(pstrEntidad);
    Seleccion = SeleccionInm1().SelecAnt();
  });
}

}  // namespace cp
