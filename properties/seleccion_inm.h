#pragma once
// SeleccionInm: the criteria control for properties ("Inm. Propios", "Inm. Ajenos",
// "Inm. Archivados", "Inm. Vendidos") and demands ("Demandas").
#include <cstdint>
#include <string>

#include "contacts/selection_control.h"

namespace cp {

class SeleccionInm : public SelectionControl {
 public:
  SeleccionInm();

  void PonerFoco() override;
  std::string SelecWhere() override;
  void VerSelAnt() override;
  void NuevaSeleccion() override;

  // Sets the control up for an entity; with an origin entity and a record id (not -1) it
  // fills the criteria from that record to cross it.
  void SelecEn(const std::string& pstrEntidad, const std::string& pstrEntidadOrigen = "",
               std::int32_t plngID = -1);

  const std::string& Tabla() const { return tabla_; }
  const std::string& CampoId() const { return campoId_; }

  // The host's current user (its default location fills an empty saved selection).
  std::int32_t gVUser = 0;

 private:
  std::string tabla_, campoId_;
};

}  // namespace cp
