// A saved selection handed back by a host, as the command-line tool reads it (`where
// --restore`): JSON text, restored through CSeleccion into the contact control and into the
// property control. Errors the component reports through its central handler are fine;
// whatever reaches the host (an exception, a crash, a sanitizer report) is not. After the
// restore each control's condition must be Jet that our parser reads.
//
// Input: the JSON text. Its "entidad" member, when it names an entity of the dialog's list,
// picks the entity of the control that serves it; the other control keeps its default.
#include <algorithm>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "common/entity_catalogue.h"
#include "common/error_handler.h"
#include "fuzz/fuzz_support.h"
#include "platform/core/error.h"
#include "platform/form/combo_box.h"
#include "selection/saved_selection_json.h"

namespace {

using namespace cp;

// The entities the dialog lists by default: a host may choose only these.
bool Listed(const std::string& name) {
  static const std::vector<std::string> listed = [] {
    std::vector<std::string> names;
    const auto selection = fuzz::FuzzHost::Get().NewSelection();
    form::ComboBox& list = selection->Dialog().cboEntidad();
    for (int i = 0; i < list.ListCount(); ++i) names.push_back(list.List(i));
    return names;
  }();
  return std::find(listed.begin(), listed.end(), name) != listed.end();
}

std::string NamedEntity(std::string_view text) {
  const auto json = nlohmann::json::parse(text, nullptr, false);
  if (!json.is_object() || !json.contains("entidad") || !json["entidad"].is_string()) return {};
  const std::string name = json["entidad"].get<std::string>();
  return FindEntity(name) && Listed(name) ? name : std::string();
}

// Restores saved into the control that serves entity and checks the condition it then
// builds, caught as the dialog's Aceptar catches it.
void Restore(const std::string& entity, const Variant& saved) {
  auto selection = fuzz::FuzzHost::Get().NewSelection();
  selection->setgVUser(1);  // a user of the demo data, whose place the property control knows
  selection->setEntidad(entity);
  selection->setSeleccion(saved);
  frmSeleccion& dialog = selection->Dialog();
  SelectionControl& control =
      FindEntity(entity)->control == CriteriaControlKind::Contacts
          ? static_cast<SelectionControl&>(dialog.SeleccionCli1())
          : static_cast<SelectionControl&>(dialog.SeleccionInm1());
  std::string condition;
  if (Atrapar("Aceptar", [&] { condition = control.SelecWhere(); }))
    fuzz::ExpectJetCondition(condition, "restored into " + entity);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::FuzzHost& host = fuzz::FuzzHost::Get();
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Variant saved;
  try {
    saved = SavedSelectionFromJson(text, "fuzz");
  } catch (const Error& e) {
    if (e.number() != err::kTypeMismatch)
      fuzz::Breach("undocumented error " + std::to_string(e.number()) + ": " + e.description(), text);
    return 0;
  }
  std::string contacts = "Clientes", properties = "Inm. Propios";
  if (const std::string named = NamedEntity(text); !named.empty())
    (FindEntity(named)->control == CriteriaControlKind::Contacts ? contacts : properties) = named;
  try {
    Restore(contacts, saved);
    Restore(properties, saved);
  } catch (const Error& e) {
    fuzz::Breach("error " + std::to_string(e.number()) + " reached the host: " + e.description(), text);
  }
  host.ForgetMessages();
  return 0;
}
