#pragma once
// Filling the property control's criteria from one record, to cross it with the other side
// of the market: a demand becomes criteria over properties, an own or other agency's
// property criteria over demands. The routines only write into the control's inputs; the
// condition is then built from them as for any selection.
//
// Each reads its record from the shared database BD() with one forward-only statement. A
// missing record fills nothing and is no error. Any error (a Null or out-of-range value for
// a check box, the database) is reported under "<routine> de SeleccionInm" and stops the
// fill there, keeping the criteria written so far.
#include <cstdint>

namespace cp {

namespace form {
class ControlContainer;
}

// From Demanda row plngID: location and type lists, operation, property kind, heating (its
// name plus ";No se sabe" when its id is 2 or more, otherwise left as it was), categories
// (all required), both price and surface bounds, counts and feature boxes.
void RellenarDemanda(form::ControlContainer& controls, std::int32_t& plngID);

// From IPropio row plngID: the joined names of location, type, operation, property kind and
// heating (the name, plus ";No se sabe" when its id is 2 or more), categories, the price and
// surface into the lower boxes only, counts and feature boxes.
void RellenarInmueblePropio(form::ControlContainer& controls, std::int32_t& plngID);

// From IAjeno row plngID: as RellenarInmueblePropio, but the type (txtTipos) is not touched.
void RellenarInmuebleAjeno(form::ControlContainer& controls, std::int32_t& plngID);

}  // namespace cp
