#include "selection/saved_selection_json.h"

#include <cstdint>
#include <limits>

#include "platform/core/conversions.h"
#include "platform/core/error.h"

namespace cp {

using Json = nlohmann::ordered_json;

Variant SavedSelectionFromJson(std::string_view text, const std::string& origin) {
  Json json;
  try {
    json = Json::parse(text);
  } catch (const Json::exception& e) {
    throw Error(err::kTypeMismatch,
                "La selección guardada '" + origin + "' no es JSON válido: " + e.what());
  }
  if (json.is_object() && json.contains("seleccion")) json = json["seleccion"];
  if (json.is_null()) return Variant();
  if (!json.is_array())
    throw Error(err::kTypeMismatch, "La selección guardada debe ser un array de [Nombre, Indice, Valor].");
  Array2D saved(0, static_cast<int>(json.size()) - 1, 0, 2);
  for (int i = 0; i < static_cast<int>(json.size()); ++i) {
    const Json& e = json[static_cast<std::size_t>(i)];
    // The index travels as a 16-bit integer: a wider one must not wrap into another index.
    if (!e.is_array() || e.size() != 3 || !e[0].is_string() || !e[1].is_number_integer() ||
        !e[2].is_string() || e[1] < std::numeric_limits<std::int16_t>::min() ||
        e[1] > std::numeric_limits<std::int16_t>::max())
      throw Error(err::kTypeMismatch, "Entrada " + std::to_string(i) + " de la selección guardada: se esperaba [Nombre, Indice, Valor].");
    saved.at(i, 0) = Variant(e[0].get<std::string>());
    saved.at(i, 1) = Variant(static_cast<std::int16_t>(e[1].get<int>()));
    saved.at(i, 2) = Variant(e[2].get<std::string>());
  }
  return Variant(std::move(saved));
}

Json SavedSelectionToJson(const Variant& saved) {
  if (!saved.IsArray()) return nullptr;
  Json rows = Json::array();
  const Array2D& a = saved.AsArray();
  for (int i = a.LBound(1); i <= a.UBound(1); ++i)
    rows.push_back({CStr(a.at(i, 0)), CInt(a.at(i, 1)), CStr(a.at(i, 2))});
  return rows;
}

}  // namespace cp
