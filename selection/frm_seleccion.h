#pragma once
// frmSeleccion: the modal dialog "Selección". It holds the entity list and the two criteria
// controls, of which one is visible at a time, routes the entity, a saved selection and a
// cross-match to the right control, and hands the control's results to its owner through
// the events Aceptar and Cancel. It builds no SQL itself.
//
// The dialog object lives as long as its owner; its window is loaded on the first access to
// any control (running Form_Load) and unloaded by the owner after Aceptar or Cancel. An
// unloaded window comes back fresh: default entity list, nothing chosen, fresh controls.
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contacts/seleccion_cli.h"
#include "platform/core/variant.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/control_container.h"
#include "platform/form/event.h"
#include "platform/form/user_control.h"
#include "properties/seleccion_inm.h"

namespace cp {

class frmSeleccion {
 public:
  frmSeleccion();
  ~frmSeleccion();
  frmSeleccion(const frmSeleccion&) = delete;
  frmSeleccion& operator=(const frmSeleccion&) = delete;

  static constexpr const char* kCaption = "Selección";

  // Window lifecycle. Any accessor below loads the window first.
  bool Loaded() const { return window_ != nullptr; }
  void Load();
  // Drops the window without raising any event (also what the close box does).
  void Unload();
  // Shows the window modally through the current ModalRunner; returns when the loop ends.
  void Show();

  form::Form& Controls();
  form::ComboBox& cboEntidad();
  form::CheckBox& chkGuardar();
  SeleccionCli& SeleccionCli1();
  SeleccionInm& SeleccionInm1();
  // The criteria control that accepting reads for entity; null when none serves it.
  SelectionControl* ControlFor(const std::string& entity);
  // The two criteria controls as the dialog places them (their visibility).
  form::UserControl& SeleccionCli1Control();
  form::UserControl& SeleccionInm1Control();

  // Whether the window shows, under the criteria, how many records they select as the user
  // changes them (selection/live_count.h). Off unless the host turns it on; kept across
  // showings.
  bool LiveCount() const { return liveCount_; }
  void setLiveCount(bool on) { liveCount_ = on; }

  // Raised by cmdAceptar with the control's condition, the entity and its saved selection.
  form::Event<std::string& /*SQLSelec*/, std::string& /*Entidad*/, Variant& /*Seleccion*/>
      Aceptar;
  // Raised by cmdCancelar.
  form::Event<> Cancel;
  // Raised by Unload when it drops a loaded window, so that a view of it can close.
  form::Event<> Unloaded;

  // Handlers, public so that a view or a test runs them as the runtime would.
  void Form_Activate();
  void cboEntidad_Click();
  void cmdAceptar_Click();
  void cmdCancelar_Click();
  void cmdNuevo_Click();

  // Restores a saved selection into the control of Entidad (not the list's entity).
  void SelectAnt(const Variant& Seleccion, const std::string& Entidad, std::int32_t& gVUser);
  // Crosses record plngID of pstrEntidadOrigen into pstrEntidad with the property control,
  // without showing anything; writes the control's results into the three out arguments.
  void Cruzar(std::int32_t& plngID, std::string& pstrEntidad, std::string& pstrEntidadOrigen,
              std::string& SQLSelec, Variant& Entidad, Variant& Seleccion);

 private:
  struct Window;
  Window& Live();
  bool Appears(const form::UserControl& control) const;
  std::unique_ptr<Window> window_;
  bool liveCount_ = false;
  bool shown_ = false;  // the window is on screen (inside Show, until unloaded)
  std::vector<std::unique_ptr<Window>> retired_;  // unloaded, freed when the loop ends
};

}  // namespace cp
