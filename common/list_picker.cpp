#include "common/list_picker.h"

#include "common/error_handler.h"
#include "common/modal.h"
#include "common/shared_state.h"
#include "platform/automation/registry.h"
#include "platform/core/conversions.h"
#include "platform/dao/field.h"
#include "platform/dao/types.h"

namespace cp {

std::shared_ptr<Dispatch> CrearObjeto(const std::string& progId) {
  // Error 429 names the missing library to the user. The handler is still the one that
  // shows it, with the sentence where the procedure's label goes: that way the failure is
  // also written to the error log like every other, which a plain message box would skip.
  const auto report = [&progId](const Error& e) {
    if (e.number() == err::kCannotCreateObject) {
      ManejarError("La librería " + progId + " no está registrada correctamente.", e);
    } else {
      ManejarError("CrearObjeto() de RutinasErr (" + progId + ").", e);
    }
  };
  try {
    return CreateObject(progId);
  } catch (const Error& e) {
    report(e);
  } catch (const std::exception& e) {
    report(ErrorFromException(e));
  }
  return nullptr;
}

namespace {

// A member used on no object: the runtime's error 91.
Dispatch& Live(const std::shared_ptr<Dispatch>& object) {
  if (!object) RaiseObjectNotSet();
  return *object;
}

// A field of table tabla, looked up afresh in the shared database each time, as a
// late-bound object the picker can read.
std::shared_ptr<dao::Field> TableField(const std::string& tabla, const std::string& campo) {
  return std::make_shared<dao::Field>(RequireBD().TableDefs(tabla).Fields(campo));
}

}  // namespace

std::string VerListadoMult(const std::string& Seleccionar, const std::string& tabla,
                           const std::string& campo, bool Op_Nuevo, bool Op_Borrar,
                           bool Op_Modificar, std::int16_t anchura,
                           const std::string& TituloForm, const std::string& SQLSentencia) {
  std::string result;
  Atrapar("VerListadoMult de RutinasErr", [&] {
    std::shared_ptr<Dispatch> list = CrearObjeto(kListPickerProgId);
    const auto set = [&list](const char* name, const Variant& value) {
      Live(list).SetProperty(name, value);
    };
    const std::string keyName = "Id" + tabla;
    set("TipoLista", Variant(static_cast<std::int16_t>(1)));  // multi-selection list
    set("TituloForm", Variant(TituloForm));
    set("tabla", Variant(tabla));
    set("BDatos", Variant(PathDB()));
    set("campo", Variant(std::shared_ptr<Dispatch>(TableField(tabla, campo))));
    set("IdCampo", Variant(std::shared_ptr<Dispatch>(TableField(tabla, keyName))));
    // Without a statement the picker keeps its own default contents.
    if (!SQLSentencia.empty()) set("SQLSentencia", Variant(SQLSentencia));
    set("Seleccionar", Variant(Seleccionar));
    const bool autoKey = (TableField(tabla, keyName)->Attributes() & dao::dbAutoIncrField) != 0;
    set("nuevoId", Variant(static_cast<std::int16_t>(autoKey ? -1 : 0)));
    set("Op_Nuevo", Variant(Op_Nuevo));
    set("Op_Borrar", Variant(Op_Borrar));
    set("Op_Modificar", Variant(Op_Modificar));
    set("anchura", Variant(anchura));

    // Saved and restored by hand rather than with ModalScope: when the picker fails the flag
    // is left True, as the component always behaved.
    const bool savedModal = gModalAbierto();
    setgModalAbierto(true);
    const Variant shown = Live(list).CallMethod("mtdMostrar");
    setgModalAbierto(savedModal);

    const bool accepted = !shown.IsNull() && CBool(shown);
    result = accepted ? CStr(list->GetProperty("Seleccionar")) : Seleccionar;
  });
  return result;
}

}  // namespace cp
