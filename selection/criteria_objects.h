#pragma once
// The two criteria controls as creatable objects, for a host form that places one on its own
// rather than through the selection dialog: "CriterioPredios.SeleccionCli" and
// "CriterioPredios.SeleccionInm". Each object owns its control and reaches its public members
// by name, with the control's own names and kinds (SelecEn is a property on the contact
// control, a method with optional arguments on the property control).
//
// The persisted properties ("Pestania", "NomTab0", "NomTab1" and, on the property control,
// "NomTab2") are members like the others, and travel through a property bag as a form saves
// its controls: WriteProperties fills a PropertyBagObject (a new one when given none) and
// ReadProperties applies one, so a host stores the bag's Contents with its form and hands
// them back when it loads the form again.
//
// Both objects also take "BD", the component-wide database their look-ups and conditions
// read, as CSeleccion's BD does.
#include <map>
#include <memory>
#include <string>

#include "contacts/seleccion_cli.h"
#include "platform/automation/dispatch_object.h"
#include "properties/seleccion_inm.h"

namespace cp {

inline constexpr const char* kSeleccionCliProgId = "CriterioPredios.SeleccionCli";
inline constexpr const char* kSeleccionInmProgId = "CriterioPredios.SeleccionInm";

// A property bag reached by name: ReadProperty(name[, default]), WriteProperty(name, value),
// and Contents, every stored value as a (0 To n-1, 0 To 1) array of name and value (writing
// it replaces the bag's values; anything but such an array raises 13).
class PropertyBagObject : public DispatchObject {
 public:
  PropertyBagObject();

  Variant ReadProperty(const std::string& name, const Variant& defaultValue = {}) const;
  void WriteProperty(const std::string& name, const Variant& value) { values_[name] = value; }
  Variant Contents() const;
  void setContents(const Variant& contents);

 private:
  std::map<std::string, Variant> values_;
};

// What both control objects share: the members the dialog calls on either control, the
// persisted properties and their bag, and BD.
class CriteriaControlObject : public DispatchObject {
 public:
  virtual SelectionControl& Control() = 0;

  // Applies the persisted properties stored in bag (those it lacks keep their value).
  void ReadProperties(const PropertyBagObject& bag);
  // Writes the persisted properties into bag.
  void WriteProperties(PropertyBagObject& bag);

 protected:
  // Registers the shared members; called once the derived object's control exists.
  void ExposeShared();
};

class SeleccionCliObject final : public CriteriaControlObject {
 public:
  SeleccionCliObject();
  SeleccionCli& Control() override { return control_; }

 private:
  SeleccionCli control_;
};

class SeleccionInmObject final : public CriteriaControlObject {
 public:
  SeleccionInmObject();
  SeleccionInm& Control() override { return control_; }

 private:
  SeleccionInm control_;
};

// The PropertyBagObject that a Variant carries; anything else raises 13.
std::shared_ptr<PropertyBagObject> PropertyBagFromVariant(const Variant& value);

// Registers both ProgIDs in the ProgID registry (idempotent).
void RegisterCriteriaControls();

}  // namespace cp
