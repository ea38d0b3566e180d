// QApplication takes the desktop's locale for the C library; numbers must not follow it.
#include <clocale>
#include <cstdlib>
#include <string>

#include "platform/core/conversions.h"
#include "platform/core/text_format.h"
#include "tests/qt/gui_support.h"

namespace cp {
namespace {

TEST(DesktopLocale, NumbersIgnoreTheLocaleQtSets) {
  const char* asked = std::getenv("LC_ALL");
  if (asked && std::string(asked).starts_with("es_ES")) {  // the Spanish run must be Spanish
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
  }
  EXPECT_EQ(ParseNumber("150.000,75"), 150000.75);
  EXPECT_EQ(CLng(Variant(std::string("3,5"))), 4);
}

}  // namespace
}  // namespace cp
