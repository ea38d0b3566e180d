#pragma once
// Catching the component's errors in tests.
#include <gtest/gtest.h>

#include <functional>

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

// The number of the Error that fn raised, 0 when it raised nothing: for tables where some
// rows raise and some do not.
inline long ErrorNumberOf(const std::function<void()>& fn) {
  try {
    fn();
  } catch (const Error& e) {
    return e.number();
  }
  return 0;
}

}  // namespace cp::testing
