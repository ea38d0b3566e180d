#pragma once

#include <string_view>

namespace cp {

// True for the model properties whose change can change a criteria control's condition (and,
// on the dialog's entity list, the entity): what a user types, ticks or picks.
inline bool ChangesCondition(std::string_view property) {
  return property == "Text" || property == "Value" || property == "ListIndex" ||
         property == "List";
}

}  // namespace cp
