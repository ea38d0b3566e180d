#pragma once
// CSeleccion: the component's public object, registered as "CriterioPredios.CSeleccion".
// The host hands it its database, paths and user, chooses the entity (optionally restricting
// the list first), may hand back a saved selection, and shows the dialog; on acceptance it
// reads the condition (SQLW), the entity and the saved selection. Cruzar builds the same
// results from one record without showing anything.
//
// Members raise to the host: they have no error trap. Reachable directly from C++ and by
// name through Dispatch (the members below, same names).
#include <cstdint>
#include <memory>
#include <string>

#include "platform/automation/dispatch_object.h"
#include "platform/core/variant.h"
#include "platform/dao/database.h"
#include "selection/frm_seleccion.h"

namespace cp {

inline constexpr const char* kCSeleccionProgId = "CriterioPredios.CSeleccion";

class CSeleccion : public DispatchObject {
 public:
  CSeleccion();
  ~CSeleccion() override;

  const std::string& SQLW() const { return sqlw_; }
  void setSQLW(const std::string& sql) { sqlw_ = sql; }
  std::int32_t gVUser() const { return gVUser_; }
  void setgVUser(std::int32_t user) { gVUser_ = user; }
  // Component-wide shared values (last writer wins among all objects).
  void setPathDB(const std::string& path);
  void setErrLogPath(const std::string& path);
  void setBD(std::shared_ptr<dao::Database> db);

  // The stored entity. Setting "" takes the first entry of the dialog's list; a name that
  // the list does not hold is stored and then raises the list's error (383).
  std::string Entidad() const;
  void setEntidad(const std::string& entidad);

  // Shows the dialog modally; True when the user accepted. The close box returns the
  // previous result and keeps the previous results.
  bool mtdMostrar();

  const Variant& Seleccion() const { return seleccion_; }
  // Stores a saved selection and restores it into the control of the stored entity.
  void setSeleccion(const Variant& seleccion);

  // Crosses record plngID of pstrEntidadOrigen into pstrEntidad: fills SQLW, Entidad and
  // Seleccion without showing the dialog; the dialog result and GuardarSeleccion stay.
  void Cruzar(std::int32_t& plngID, std::string& pstrEntidad, std::string& pstrEntidadOrigen);

  // Null keeps the default entity list; an array replaces it (elements as text, in order).
  // Anything else raises 13.
  void setEntidadesPosibles(const Variant& entidades);
  bool GuardarSeleccion() const { return guardarSeleccion_; }

  // Whether the dialog shows, under the criteria, a running count of the records they
  // select. Off by default.
  bool LiveCount() const { return mdlg_->LiveCount(); }
  void setLiveCount(bool on) { mdlg_->setLiveCount(on); }

  // The dialog, for a view or a test driving it.
  frmSeleccion& Dialog() { return *mdlg_; }

 private:
  void mdlg_Aceptar(std::string& SQLSelec, std::string& Entidad, Variant& Seleccion);
  void mdlg_Cancel();
  void ExposeMembers();

  std::string sqlw_;
  std::int32_t gVUser_ = 0;
  Variant seleccion_;
  Variant entidad_;
  bool resultado_ = false;
  Variant entidadesPosibles_;
  bool guardarSeleccion_ = false;
  std::unique_ptr<frmSeleccion> mdlg_;
};

// Registers "CriterioPredios.CSeleccion" in the ProgID registry (idempotent).
void RegisterCSeleccion();

}  // namespace cp
