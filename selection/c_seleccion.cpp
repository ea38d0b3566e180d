#include "selection/c_seleccion.h"

#include "common/error_log.h"
#include "common/shared_state.h"
#include "platform/automation/registry.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/database_object.h"

namespace cp {

CSeleccion::CSeleccion() : mdlg_(std::make_unique<frmSeleccion>()) {
  mdlg_->Aceptar.Connect([this](std::string& sql, std::string& entidad, Variant& seleccion) {
    mdlg_Aceptar(sql, entidad, seleccion);
  });
  mdlg_->Cancel.Connect([this] { mdlg_Cancel(); });
  ExposeMembers();
}

CSeleccion::~CSeleccion() = default;

void CSeleccion::setPathDB(const std::string& path) { cp::setPathDB(path); }
void CSeleccion::setErrLogPath(const std::string& path) { cp::setErrLogPath(path); }
void CSeleccion::setBD(std::shared_ptr<dao::Database> db) { cp::setBD(std::move(db)); }

std::string CSeleccion::Entidad() const { return CStr(entidad_); }

void CSeleccion::setEntidad(const std::string& entidad) {
  if (!entidad.empty())
    entidad_ = Variant(entidad);
  else
    entidad_ = Variant(mdlg_->cboEntidad().List(0));
  // Selecting the text fires the dialog's entity handler; a name the list does not hold is
  // refused with the list's error, which reaches the host after the name was stored.
  form::ComboBox& list = mdlg_->cboEntidad();
  const std::string name = CStr(entidad_);
  if (list.ListIndex() >= 0 && list.Text() == name) {
    // Already selected: the handler still runs, since a cross-match may have pointed the
    // property control at another table meanwhile.
    list.Click.Fire();
    return;
  }
  list.setText(name);
}

bool CSeleccion::mtdMostrar() {
  mdlg_->Show();
  return resultado_;
}

void CSeleccion::setSeleccion(const Variant& seleccion) {
  seleccion_ = seleccion;
  mdlg_->SelectAnt(seleccion_, CStr(entidad_), gVUser_);
}

void CSeleccion::Cruzar(std::int32_t& plngID, std::string& pstrEntidad,
                        std::string& pstrEntidadOrigen) {
  mdlg_->Cruzar(plngID, pstrEntidad, pstrEntidadOrigen, sqlw_, entidad_, seleccion_);
}

void CSeleccion::setEntidadesPosibles(const Variant& entidades) {
  entidadesPosibles_ = entidades;
  if (entidades.IsNull()) return;
  // The list is emptied before the value is read: a value that is no array leaves it empty.
  form::ComboBox& list = mdlg_->cboEntidad();
  list.Clear();
  // A list travels as an array whose first dimension holds the names (second dimension
  // taken at its lower bound).
  const Array2D& names = entidades.AsArray();
  for (int i = names.LBound(1); i <= names.UBound(1); ++i) {
    if (i > 32767) Raise(err::kOverflow);  // the list is walked with a 16-bit counter
    list.AddItem(CStr(names.at(i, names.LBound(2))));
  }
}

void CSeleccion::mdlg_Aceptar(std::string& SQLSelec, std::string& Entidad, Variant& Seleccion) {
  sqlw_ = SQLSelec;
  entidad_ = Variant(Entidad);
  seleccion_ = Seleccion;
  guardarSeleccion_ = mdlg_->chkGuardar().Value() == 1;
  resultado_ = true;
  mdlg_->Unload();
}

void CSeleccion::mdlg_Cancel() {
  resultado_ = false;
  mdlg_->Unload();
}

void CSeleccion::ExposeMembers() {
  Expose("SQLW", [this] { return Variant(sqlw_); },
         [this](const Variant& v) { sqlw_ = CStr(v); });
  Expose("gVUser", [this] { return Variant(gVUser_); },
         [this](const Variant& v) { gVUser_ = CLng(v); });
  Expose("PathDB", {}, [this](const Variant& v) { setPathDB(CStr(v)); });
  Expose("ErrLogPath", {}, [this](const Variant& v) { setErrLogPath(CStr(v)); });
  Expose("BD", {}, [this](const Variant& v) { setBD(dao::DatabaseFromVariant(v)); });
  Expose("Entidad", [this] { return Variant(Entidad()); },
         [this](const Variant& v) { setEntidad(CStr(v)); });
  ExposeMethod("mtdMostrar", [this](const std::vector<Variant>&) { return Variant(mtdMostrar()); });
  Expose("Seleccion", [this] { return seleccion_; },
         [this](const Variant& v) { setSeleccion(v); });
  ExposeMethod("Cruzar", [this](const std::vector<Variant>& args) {
    if (args.size() != 3) Raise(err::kInvalidProcedureCall);
    std::int32_t id = CLng(args[0]);
    std::string entidad = CStr(args[1]);
    std::string origen = CStr(args[2]);
    Cruzar(id, entidad, origen);
    return Variant();
  });
  Expose("EntidadesPosibles", {}, [this](const Variant& v) { setEntidadesPosibles(v); });
  Expose("GuardarSeleccion", [this] { return Variant(guardarSeleccion_); });
  Expose("LiveCount", [this] { return Variant(LiveCount()); },
         [this](const Variant& v) { setLiveCount(CBool(v)); });
}

void RegisterCSeleccion() {
  RegisterProgId(kCSeleccionProgId, [] { return std::make_shared<CSeleccion>(); });
}

}  // namespace cp
