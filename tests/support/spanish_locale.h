#pragma once
// A test fixture that runs as on a Spanish desktop: the C library's decimal mark is ",",
// so anything that reads numbers through strtod and friends stops at the ".".
#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace cp::testing {

class SpanishLocale : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = std::setlocale(LC_ALL, nullptr);
    ASSERT_NE(std::setlocale(LC_ALL, "es_ES.UTF-8"), nullptr)
        << "es_ES.UTF-8 is not generated (scripts/install-deps.sh generates it)";
  }
  void TearDown() override { std::setlocale(LC_ALL, saved_.c_str()); }

 private:
  std::string saved_;
};

}  // namespace cp::testing
