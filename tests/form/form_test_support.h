#pragma once
// Helpers shared by the form tests: an event log and the number of the error a call raises.
#include <functional>
#include <string>
#include <vector>

#include "platform/core/error.h"

namespace cp::form::testing {

struct Log {
  std::vector<std::string> entries;
  std::function<void()> Add(std::string entry) {
    return [this, entry] { entries.push_back(entry); };
  }
};

inline long ErrorOf(const std::function<void()>& call) {
  try {
    call();
  } catch (const Error& e) {
    return e.number();
  }
  return 0;
}

}  // namespace cp::form::testing
