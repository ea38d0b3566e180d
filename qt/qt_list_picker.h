#pragma once
// QtListPicker: the list picker "NListado.CListado" as a Qt window. It accepts the thirteen
// properties that the bridge VerListadoMult sets (TipoLista, TituloForm, tabla, BDatos,
// campo, IdCampo, SQLSentencia, Seleccionar, nuevoId, Op_Nuevo, Op_Borrar, Op_Modificar,
// anchura; each can be read back) and mtdMostrar, which shows a ListPickerWindow modally.
// The lists are read-only pickers: the add, delete and edit switches are kept, not offered.
#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/automation/dispatch_object.h"
#include "platform/automation/registry.h"

namespace cp {

class QtListPicker : public DispatchObject {
 public:
  QtListPicker();

  // The values the window lists: the rows of SQLSentencia when it was set, else
  // SELECT DISTINCT <campo> FROM <tabla> ORDER BY <campo>; first column, Null rows skipped.
  // Read through the shared database BD, or, when the host set none, a connection opened on
  // BDatos. Database errors pass through as the DAO layer raises them.
  std::vector<std::string> Values() const;

 private:
  // Needs a QApplication. True when the user accepted; Seleccionar then holds the ticked
  // values as "X; Y; ". False on cancel, Seleccionar untouched.
  Variant Show();
  const Variant& Value(const char* name) const;

  std::array<Variant, 13> values_;
};

// Registers QtListPicker under "NListado.CListado" and returns the factory it replaced
// (nothing when none was registered), so a caller can put it back.
std::optional<ObjectFactory> RegisterQtListPicker();

}  // namespace cp
