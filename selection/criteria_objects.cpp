#include "selection/criteria_objects.h"

#include "common/shared_state.h"
#include "platform/automation/registry.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/database_object.h"
#include "platform/form/ss_tab.h"

namespace cp {
namespace {

// Optional argument i of a late-bound call, or fallback when the caller left it out.
Variant Argument(const std::vector<Variant>& args, std::size_t i, Variant fallback = {}) {
  return i < args.size() && !args[i].IsEmpty() ? args[i] : fallback;
}

// A control persists "Pestania" and one "NomTab<i>" per tab (the property control fewer
// than its tabs); these are the names a bag carries between it and the control's own bag.
std::vector<std::string> PersistedNames(const SelectionControl& control) {
  std::vector<std::string> names{"Pestania"};
  const int tabs = control.Controls().Get<form::SSTab>("tbsSelec").Tabs();
  for (int i = 0; i < tabs; ++i) names.push_back("NomTab" + std::to_string(i));
  return names;
}

}  // namespace

PropertyBagObject::PropertyBagObject() {
  ExposeMethod("ReadProperty", [this](const std::vector<Variant>& args) {
    if (args.empty() || args.size() > 2) Raise(err::kInvalidProcedureCall);
    return ReadProperty(CStr(args[0]), Argument(args, 1));
  });
  ExposeMethod("WriteProperty", [this](const std::vector<Variant>& args) {
    if (args.size() != 2) Raise(err::kInvalidProcedureCall);
    WriteProperty(CStr(args[0]), args[1]);
    return Variant();
  });
  Expose("Contents", [this] { return Contents(); },
         [this](const Variant& v) { setContents(v); });
}

Variant PropertyBagObject::ReadProperty(const std::string& name,
                                        const Variant& defaultValue) const {
  auto it = values_.find(name);
  return it == values_.end() ? defaultValue : it->second;
}

Variant PropertyBagObject::Contents() const {
  Array2D contents(0, static_cast<int>(values_.size()) - 1, 0, 1);
  int row = 0;
  for (const auto& [name, value] : values_) {
    contents.at(row, 0) = Variant(name);
    contents.at(row, 1) = value;
    ++row;
  }
  return Variant(std::move(contents));
}

void PropertyBagObject::setContents(const Variant& contents) {
  const Array2D& rows = contents.AsArray();
  if (rows.Count(1) > 0 && rows.Count(2) != 2) Raise(err::kTypeMismatch);
  // Read whole before the bag changes, so that a bad row leaves it as it was.
  std::map<std::string, Variant> read;
  for (int i = rows.LBound(1); i <= rows.UBound(1); ++i)
    read[CStr(rows.at(i, rows.LBound(2)))] = rows.at(i, rows.UBound(2));
  values_ = std::move(read);
}

std::shared_ptr<PropertyBagObject> PropertyBagFromVariant(const Variant& value) {
  auto bag = std::dynamic_pointer_cast<PropertyBagObject>(value.AsObject());
  if (!bag) Raise(err::kTypeMismatch);
  return bag;
}

void CriteriaControlObject::ReadProperties(const PropertyBagObject& bag) {
  form::PropertyBag read;
  for (const std::string& name : PersistedNames(Control())) {
    const Variant value = bag.ReadProperty(name);
    if (!value.IsEmpty()) read.WriteProperty(name, value);
  }
  Control().ReadProperties(read);
}

void CriteriaControlObject::WriteProperties(PropertyBagObject& bag) {
  form::PropertyBag written;
  Control().WriteProperties(written);
  for (const std::string& name : PersistedNames(Control()))
    if (written.Contains(name)) bag.WriteProperty(name, written.ReadProperty(name));
}

void CriteriaControlObject::ExposeShared() {
  SelectionControl& c = Control();
  ExposeMethod("PonerFoco", [&c](const std::vector<Variant>&) {
    c.PonerFoco();
    return Variant();
  });
  Expose("NomTab0", [&c] { return Variant(c.NomTab0()); },
         [&c](const Variant& v) { c.setNomTab0(CStr(v)); });
  Expose("NomTab1", [&c] { return Variant(c.NomTab1()); },
         [&c](const Variant& v) { c.setNomTab1(CStr(v)); });
  Expose("Pestania", [&c] { return Variant(c.Pestania()); },
         [&c](const Variant& v) { c.setPestania(CInt(v)); });
  Expose("Palabra", [&c] { return Variant(c.Palabra()); },
         [&c](const Variant& v) { c.setPalabra(CStr(v)); });
  Expose("PalabraEn", [&c] { return Variant(c.PalabraEn()); });
  Expose("SelecAnt", [&c] { return c.SelecAnt(); }, [&c](const Variant& v) { c.setSelecAnt(v); });
  Expose("NumSelecAnt", [&c] { return Variant(c.NumSelecAnt()); },
         [&c](const Variant& v) { c.setNumSelecAnt(CInt(v)); });
  Expose("SelecWhere", [&c] { return Variant(c.SelecWhere()); });
  ExposeMethod("VerSelAnt", [&c](const std::vector<Variant>&) {
    c.VerSelAnt();
    return Variant();
  });
  ExposeMethod("NuevaSeleccion", [&c](const std::vector<Variant>&) {
    c.NuevaSeleccion();
    return Variant();
  });
  ExposeMethod("ReadProperties", [this](const std::vector<Variant>& args) {
    if (args.size() != 1) Raise(err::kInvalidProcedureCall);
    ReadProperties(*PropertyBagFromVariant(args[0]));
    return Variant();
  });
  ExposeMethod("WriteProperties", [this](const std::vector<Variant>& args) {
    if (args.size() > 1) Raise(err::kInvalidProcedureCall);
    auto bag = args.empty() ? std::make_shared<PropertyBagObject>()
                            : PropertyBagFromVariant(args[0]);
    WriteProperties(*bag);
    return Variant(bag);
  });
  Expose("BD", {}, [](const Variant& v) { setBD(dao::DatabaseFromVariant(v)); });
}

SeleccionCliObject::SeleccionCliObject() {
  ExposeShared();
  Expose("SelecEn", {}, [this](const Variant& v) { control_.setSelecEn(CStr(v)); });
  // The contact control keeps a text given to SelecWhere (nothing reads it).
  Expose("SelecWhere", [this] { return Variant(control_.SelecWhere()); },
         [this](const Variant& v) { control_.setSelecWhere(CStr(v)); });
}

SeleccionInmObject::SeleccionInmObject() {
  ExposeShared();
  Expose("NomTab2", [this] { return Variant(control_.NomTab2()); },
         [this](const Variant& v) { control_.setNomTab2(CStr(v)); });
  // SelecEn(pstrEntidad[, pstrEntidadOrigen][, plngID]): origin "" and id -1 when left out.
  ExposeMethod("SelecEn", [this](const std::vector<Variant>& args) {
    if (args.empty() || args.size() > 3) Raise(err::kInvalidProcedureCall);
    control_.SelecEn(CStr(args[0]), CStr(Argument(args, 1, Variant(""))),
                     CLng(Argument(args, 2, Variant(-1))));
    return Variant();
  });
  Expose("gVUser", [this] { return Variant(control_.gVUser); },
         [this](const Variant& v) { control_.gVUser = CLng(v); });
}

void RegisterCriteriaControls() {
  RegisterProgId(kSeleccionCliProgId, [] { return std::make_shared<SeleccionCliObject>(); });
  RegisterProgId(kSeleccionInmProgId, [] { return std::make_shared<SeleccionInmObject>(); });
}

}  // namespace cp
