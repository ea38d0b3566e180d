#pragma once
// A saved selection as JSON, the form the command-line tool prints (`where --json`, under
// "seleccion") and reads back (`where --restore`): an array of [name, index, value] rows, or
// null for none.
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "platform/core/variant.h"

namespace cp {

// Reads a saved selection from JSON text: the array of rows, null (Empty: nothing to
// restore), or an object whose "seleccion" member holds either, as `where --json` prints it.
// origin names the text in messages (a file name). Raises 13 with a Spanish message for text
// that is not JSON or not of that shape, an index outside the 16-bit range included.
Variant SavedSelectionFromJson(std::string_view text, const std::string& origin);

// The rows of a saved selection as a JSON array; null when it is not an array.
nlohmann::ordered_json SavedSelectionToJson(const Variant& saved);

}  // namespace cp
