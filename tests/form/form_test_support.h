#pragma once
// Helpers shared by the form tests: an event log and the number of the error a call raises.
#include <functional>
#include <string>
#include <vector>

#include "platform/core/error.h"
#include "tests/support/errors.h"

namespace cp::form::testing {

using cp::testing::CaughtError;

struct Log {
  std::vector<std::string> entries;
  std::function<void()> Add(std::string entry) {
    return [this, entry] { entries.push_back(entry); };
  }
};

}  // namespace cp::form::testing
