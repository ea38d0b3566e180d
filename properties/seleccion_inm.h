#pragma once
// SeleccionInm: the criteria control for properties ("Inm. Propios", "Inm. Ajenos",
// "Inm. Archivados", "Inm. Vendidos") and demands ("Demandas"). Five tabs of inputs (General,
// Tipo, Características, Agencia, Fechas) and the free words below them; it builds a Jet
// condition over the entity's table (sql_seleccion.h), saves and restores its inputs, and can
// be filled from one record to cross it with the other side of the market (cross_fill.h).
// The país/provincia/población/zona boxes belong to a LocationCascade.
#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "criteria/selection_control.h"
#include "properties/location_cascade.h"

namespace cp {

class SeleccionInm : public SelectionControl {
 public:
  // Creates the inputs in their fixed order and runs the control's initialisation (frames,
  // cleared inputs, the location cascade).
  SeleccionInm();
  ~SeleccionInm() override;

  // Focus on txtInmueble. Errors are reported, not raised.
  void PonerFoco() override;
  // The condition of the current inputs (SQLSeleccion); on an error, the report is shown
  // and the condition built so far is returned.
  std::string SelecWhere() override;
  // Clears the inputs, then applies the saved entries; the location boxes go through the
  // cascade so that a restored location counts as unchanged. Errors are reported; the
  // entries before the failing one stay applied.
  void VerSelAnt() override;
  // Date pickers unchecked, text boxes empty, check boxes grey. Combo boxes keep their row.
  void NuevaSeleccion() override;
  // An array restores it as the shared base does. Empty replaces the saved entries with the
  // default location of gVUser (its país, provincia and población names) and restores them.
  // Errors are reported under "Let de SelectAnt de SeleccionInm", never raised.
  void setSelecAnt(const Variant& saved) override;

  // Sets the control up for an entity: table, key column, search fields, the second
  // price/surface boxes; with a record id other than -1 it crosses that record (fills the
  // criteria from a demand for "Inm. Propios"/"Inm. Ajenos", from a property for
  // "Demandas"). An entity outside the catalogue leaves table and fields as they were.
  // Errors are reported under "SelecEn de SeleccionInm".
  void SelecEn(const std::string& pstrEntidad, const std::string& pstrEntidadOrigen = "",
               std::int32_t plngID = -1);

  // The entity's table and key column ("" until SelecEn named an entity).
  const std::string& Tabla() const { return tabla_; }
  const std::string& CampoId() const { return campoId_; }
  // True while the control was set up to cross a record; demands then also match empty
  // location, type and category lists.
  bool Cruzando() const { return cruzando_; }

  // The search fields of cboEn, one row each: caption, column of the entity table.
  // Row 0 is the entity's number, then "Propietario" (searched in Cliente.Alias) and "Notas".
  struct CampoEn {
    std::string etiqueta;
    std::string campo;
  };
  const std::array<CampoEn, 3>& En() const { return en_; }

  // The caption of the search field chosen in cboEn ("" when none).
  std::string PalabraEn() override;

  // The third tab's caption (persisted as "NomTab2").
  std::string NomTab2() const { return NomTab(2); }
  void setNomTab2(const std::string& caption) { setNomTab(2, caption); }
  // Writes this control's persisted properties: "Pestania", "NomTab0", "NomTab1",
  // "NomTab2" (the last two tabs keep their design-time captions). Reading is the base's.
  void WriteProperties(form::PropertyBag& bag) const override;

  // The location boxes' cascade; raises 91 when the initialisation could not create it.
  LocationCascade& Location();

  // The host shows the control: the focus goes to the first criterion.
  void UserControl_Show();

  // The host's current user (its default location fills an empty saved selection).
  std::int32_t gVUser = 0;

 private:
  void UserControl_Initialize();
  void ConnectHandlers();
  void tbsSelec_Click(int previousTab);
  void cboEn_Click();
  void Picker(const std::string& button, const std::string& target, const std::string& tabla,
              const std::string& campo, const std::string& titulo, const std::string& sql);
  void NumberBox_LostFocus(const std::string& name, int index);
  void CheckBox_KeyDown(const std::string& name, int& keyCode);
  void DefaultLocation();

  std::string tabla_, campoId_;
  bool cruzando_ = false;
  std::array<CampoEn, 3> en_;
  std::unique_ptr<LocationCascade> cascade_;
};

}  // namespace cp
