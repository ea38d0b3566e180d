#pragma once
// The bridge to the list picker "NListado.CListado" (module RutinasErr): a separate
// component of the product family that shows a table's values in a modal multi-selection
// list, configured by late-bound properties and shown with mtdMostrar. The criteria
// controls' picker buttons and the field linker go through VerListadoMult.
#include <cstdint>
#include <memory>
#include <string>

#include "platform/automation/dispatch.h"

namespace cp {

inline constexpr const char* kListPickerProgId = "NListado.CListado";

// Creates the object registered under progId. Failure: reports it through ManejarError
// (429 "not registered" under the label "La librería <progId> no está registrada
// correctamente.", anything else under "CrearObjeto() de RutinasErr (<progId>).") and
// returns null. The caller owns the object.
std::shared_ptr<Dispatch> CrearObjeto(const std::string& progId);

// Opens the list picker over field campo of table tabla in the shared database, with
// Seleccionar as the values shown chosen, and returns the criterion's new text: the picker's
// Seleccionar when the user accepted, Seleccionar unchanged when he cancelled. Any error
// (picker missing, no such table, field or "Id"+tabla key field, a failure of the picker) is
// reported under "VerListadoMult de RutinasErr" and gives "" (the criterion is cleared).
// gModalAbierto is True while the picker is shown and restored after a normal return.
std::string VerListadoMult(const std::string& Seleccionar, const std::string& tabla,
                           const std::string& campo, bool Op_Nuevo, bool Op_Borrar,
                           bool Op_Modificar, std::int16_t anchura,
                           const std::string& TituloForm, const std::string& SQLSentencia);

}  // namespace cp
