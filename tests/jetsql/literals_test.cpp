// Jet's literal rules: the two-digit year pivot, midnight, 12-hour times, and chr's code page.
#include <gtest/gtest.h>

#include "platform/jetsql/literals.h"

namespace cp::jetsql {
namespace {

TEST(DateLiteral, ReadsMonthFirstAndPivotsTwoDigitYears) {
  struct Case {
    const char* text;
    const char* iso;  // nullptr: refused
  } cases[] = {
      {"03/07/05", "2005-03-07"}, {"3/7/05", "2005-03-07"}, {"12/31/99", "1999-12-31"},
      {"01/01/00", "2000-01-01"}, {"01/01/29", "2029-01-01"}, {"01/01/30", "1930-01-01"},
      {"12/31/2005", "2005-12-31"}, {"02/29/2024", "2024-02-29"}, {"2005-03-07", "2005-03-07"},
      {" 12/31/05 ", "2005-12-31"}, {"12/31/05 00:00:00", "2005-12-31"},
      {"12/31/05 10:00", "2005-12-31 10:00:00"}, {"12/31/05 23:59:59", "2005-12-31 23:59:59"},
      {"12/31/05 12:00 AM", "2005-12-31"}, {"12/31/05 12:30 PM", "2005-12-31 12:30:00"},
      {"12/31/05 1:05:09 pm", "2005-12-31 13:05:09"}, {"02/29/05", nullptr}, {"13/01/05", nullptr},
      {"12/32/05", nullptr}, {"12/31/005", nullptr}, {"12-31-2005", nullptr}, {"12/31", nullptr},
      {"", nullptr}, {"hoy", nullptr}, {"12/31/05 24:00", nullptr}, {"12/31/05 10:60", nullptr},
      {"12/31/05 13:00 PM", nullptr}, {"12/31/05 10", nullptr},
  };
  for (const auto& c : cases) {
    auto iso = DateLiteralToIso(c.text);
    if (c.iso) {
      EXPECT_EQ(iso.value_or("<refused>"), c.iso) << c.text;
    } else {
      EXPECT_FALSE(iso.has_value()) << c.text << " gave " << *iso;
    }
  }
}

TEST(Chr, FollowsTheWindowsCodePage) {
  EXPECT_EQ(ChrText(0).value(), std::string(1, '\0'));
  EXPECT_EQ(ChrText(65).value(), "A");
  EXPECT_EQ(ChrText(124).value(), "|");
  EXPECT_EQ(ChrText(127).value(), "\x7f");
  EXPECT_EQ(ChrText(128).value(), "€");
  EXPECT_EQ(ChrText(129).value(), "\xc2\x81");
  EXPECT_EQ(ChrText(145).value(), "‘");
  EXPECT_EQ(ChrText(159).value(), "Ÿ");
  EXPECT_EQ(ChrText(160).value(), "\xc2\xa0");
  EXPECT_EQ(ChrText(209).value(), "Ñ");
  EXPECT_EQ(ChrText(255).value(), "ÿ");
  EXPECT_FALSE(ChrText(256).has_value());
  EXPECT_FALSE(ChrText(-1).has_value());
}

}  // namespace
}  // namespace cp::jetsql
