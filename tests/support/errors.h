#pragma once
// Catching the component's errors in tests.
#include <gtest/gtest.h>

#include "platform/core/error.h"

namespace cp::testing {

// The Error that fn raised; fails the test when it raised nothing (the result then has
// number 0).
template <class Fn>
Error CaughtError(Fn&& fn) {
  try {
    fn();
  } catch (const Error& e) {
    return e;
  }
  ADD_FAILURE() << "no error raised";
  return Error(0, "");
}

}  // namespace cp::testing
