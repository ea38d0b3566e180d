#pragma once
// SelectionControl: what the contact and the property criteria controls share — their
// constituent controls, the members the selection dialog calls on both, the persisted tab
// properties, and the saved selection (capture, hand-over as a 2-D array, restore).
//
// A saved selection is a list of entries (control name, index in its control array or -1,
// value as text) that starts with the "tbsSelec" entry and follows the creation order of the
// inputs. Outside the control it travels as a Variant array (0 To n-1, 0 To 2).
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/core/variant.h"
#include "platform/form/control_container.h"
#include "platform/form/property_bag.h"

namespace cp {

struct ElementoSeleccion {
  std::string Nombre;
  std::int16_t Indice = -1;
  std::string Valor;
  bool operator==(const ElementoSeleccion&) const = default;
};

class SelectionControl {
 public:
  // className names the control ("SeleccionCli") in its container and its error labels.
  explicit SelectionControl(std::string className);
  virtual ~SelectionControl();
  SelectionControl(const SelectionControl&) = delete;
  SelectionControl& operator=(const SelectionControl&) = delete;

  const std::string& ClassName() const { return className_; }
  // The constituent controls, in creation order. The dialog places them as a user control.
  form::ControlContainer& Controls() const { return *controls_; }
  std::shared_ptr<form::ControlContainer> SharedControls() const { return controls_; }

  // Focus on the first input of the current tab. Errors are reported, not raised.
  virtual void PonerFoco() = 0;
  // The condition built afresh from the inputs. Errors reach the caller.
  virtual std::string SelecWhere() = 0;
  // Stores a text that nothing else reads (kept for hosts that set it).
  void setSelecWhere(const std::string& text) { selecWhereLet_ = text; }

  // Captures the inputs and returns them as the (n, 3) array; Empty when the capture failed
  // before it counted anything.
  Variant SelecAnt();
  // Rebuilds the saved entries from such an array and restores them (VerSelAnt). Empty
  // leaves everything as it was. Raises 13 for a value that is not an array.
  virtual void setSelecAnt(const Variant& saved);
  // After a capture: the number of entries. After setSelecAnt: the array's upper bound.
  // -1 while nothing was captured or given.
  std::int16_t NumSelecAnt() const { return numSelecAnt_; }
  void setNumSelecAnt(std::int16_t count) { numSelecAnt_ = count; }
  // The saved entries as they stand.
  const std::vector<ElementoSeleccion>& Entries() const { return entries_; }

  // Applies the saved entries to the inputs (nothing while NumSelecAnt is below 1).
  virtual void VerSelAnt() = 0;
  // Clears every input: date pickers to Null, text boxes empty, check boxes grey (2).
  virtual void NuevaSeleccion() = 0;

  // The current tab. The setter also selects the tab and marks the property as changed.
  std::int16_t Pestania() const { return pestania_; }
  void setPestania(std::int16_t tab);
  // Tab captions (persisted as "NomTab0", "NomTab1", ...).
  std::string NomTab(int tab) const;
  void setNomTab(int tab, const std::string& caption);
  std::string NomTab0() const { return NomTab(0); }
  void setNomTab0(const std::string& caption) { setNomTab(0, caption); }
  std::string NomTab1() const { return NomTab(1); }
  void setNomTab1(const std::string& caption) { setNomTab(1, caption); }

  // The text of txtPalabras.
  std::string Palabra() const;
  void setPalabra(const std::string& text);
  // Copies the caption of the chosen search field into txtPalabras and returns "".
  virtual std::string PalabraEn();

  // Persisted properties: "Pestania" and one "NomTab<i>" per tab.
  void ReadProperties(const form::PropertyBag& bag);
  virtual void WriteProperties(form::PropertyBag& bag) const;
  // True once a persisted property was changed since the last WriteProperties.
  bool PropertyChanged() const { return propertyChanged_; }

 protected:
  // Captures the inputs into the entries (the error trap reports under "DlgSeleccion de " +
  // class name).
  void DlgSeleccion();
  // Applies one entry by its name's prefix ("cbo", "tbs", "chk", "dtp", "txt"); raises when
  // the control does not exist or refuses the value.
  void ApplyEntry(const ElementoSeleccion& entry);
  // The common clearing of NuevaSeleccion.
  void ClearInputs();
  // Selects the tab on the tab strip (fires its Click).
  virtual void ShowTab(std::int16_t tab);

  std::vector<ElementoSeleccion> entries_;
  std::int16_t numSelecAnt_ = -1;
  std::int16_t pestania_ = 0;

 private:
  std::string className_;
  std::shared_ptr<form::ControlContainer> controls_;
  std::string selecWhereLet_;
  mutable bool propertyChanged_ = false;
};

}  // namespace cp
