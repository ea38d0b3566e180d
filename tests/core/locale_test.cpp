// Numbers follow the component's own conventions, not the machine's locale.
#include <gtest/gtest.h>

#include "platform/core/conversions.h"
#include "platform/core/text_format.h"
#include "tests/support/spanish_locale.h"

namespace cp {
namespace {

using SpanishDesktop = testing::SpanishLocale;

TEST_F(SpanishDesktop, NumbersReadAndWriteAsEverywhere) {
  EXPECT_EQ(ParseNumber("2,5"), 2.5);
  EXPECT_EQ(ParseNumber("-150.000,75"), -150000.75);
  EXPECT_EQ(CLng(Variant(std::string("150.000,75"))), 150001);
  EXPECT_EQ(CStr(Variant(1234.5)), "1234,5");
}

}  // namespace
}  // namespace cp
