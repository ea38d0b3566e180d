#pragma once
// SeleccionCli: the criteria control for contacts (clients, archived clients, agencies,
// lawyers, opposing clients, procurators, archived opposing clients). Two tabs, "General"
// (words, search field, categories) and "Fechas" (three date ranges); it builds a Jet
// condition over the entity's table and saves and restores its inputs.
#include <array>
#include <string>

#include "criteria/selection_control.h"

namespace cp {

class SeleccionCli : public SelectionControl {
 public:
  // Creates the inputs in their fixed order and runs the control's initialisation.
  SeleccionCli();

  void PonerFoco() override;
  // The condition over the entity's table (empty when no input holds anything).
  std::string SelecWhere() override;
  void VerSelAnt() override;
  void NuevaSeleccion() override;

  // Points the control at an entity's table and columns; a name outside the catalogue
  // leaves the previous ones in force.
  void setSelecEn(const std::string& entidad);

  // The entity's table, key column, phone table and e-mail table.
  const std::string& Tabla() const { return tabla_; }
  const std::string& CampoId() const { return campoId_; }
  const std::string& TablaTelefonos() const { return tablaTfno_; }
  const std::string& TablaCorreos() const { return tablaCorreo_; }

  // The search-field table: caption shown in cboEn and column searched ("" when the search
  // goes through a side table).
  static constexpr int kCamposEn = 13;
  const std::array<std::array<std::string, kCamposEn>, 2>& En() const { return en_; }

  // Event handlers, public so that the view and tests can run them as the runtime does.
  void UserControl_Show();
  void cmdCategorias_Click();

 private:
  void UserControl_Initialize();
  void tbsSelec_Click(int previousTab);
  void txtCategorias_KeyDown(int& keyCode, int& shift);
  std::string WordsPattern() const;

  std::string tabla_, campoId_, tablaTfno_, tablaCorreo_;
  std::array<std::array<std::string, kCamposEn>, 2> en_;
};

}  // namespace cp
