#include "platform/core/conversions.h"
#include "platform/core/string_functions.h"
#include "platform/core/text_format.h"
#include "platform/core/date.h"

#include <cmath>
#include <cstdint>
#include <tuple>

#include "tests/support/errors.h"
#include "tests/support/spanish_locale.h"

namespace cp {
namespace {

using testing::CaughtError;
using SpanishDesktop = testing::SpanishLocale;

TEST(ParseNumber, FollowsTheTextConventions) {
  // One row per rule: groups of three after the first, comma fraction, sign, blanks.
  const std::pair<const char*, std::optional<double>> cases[] = {
      {"150.000", 150000}, {"1.234,5", 1234.5}, {"-3", -3}, {"+7", 7}, {"  42 ", 42},
      {",5", 0.5}, {"", std::nullopt}, {"2,", std::nullopt}, {"1,2,3", std::nullopt},
      {"1.5", std::nullopt}, {"12.3456", std::nullopt}, {".123", std::nullopt},
      {"1234.567", std::nullopt}, {"1e3", std::nullopt}, {"--1", std::nullopt},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(ParseNumber(text), value) << '"' << text << '"';
}

// On a Spanish desktop the C library reads "2.5" as 2,5; ours must not follow it.
TEST_F(SpanishDesktop, NumbersReadAndWriteAsEverywhere) {
  EXPECT_EQ(ParseNumber("-150.000,75"), -150000.75);
  EXPECT_EQ(CLng(Variant(std::string("150.000,75"))), 150001);
  EXPECT_EQ(CStr(Variant(1234.5)), "1234,5");
  EXPECT_EQ(FormatNumber(150000, "#,###"), "150.000");
}

TEST(IsNumeric, ByType) {
  // Empty counts as zero, as in the runtime.
  for (const Variant& v : {Variant(), Variant(true), Variant(std::int16_t{3}), Variant(2.5),
                           Variant("150.000")})
    EXPECT_TRUE(IsNumeric(v)) << v.TypeName();
  for (const Variant& v : {Variant::Null(), Variant(""), Variant("tres"),
                           Variant(MakeDate(2005, 3, 7))})
    EXPECT_FALSE(IsNumeric(v)) << v.TypeName();
}

TEST(CLngAndCInt, RoundHalfToEven) {
  const std::pair<double, std::int32_t> cases[] = {
      {2.5, 2}, {3.5, 4}, {-2.5, -2}, {2.4999, 2}, {2.5001, 3}, {150000.5, 150000}};
  for (const auto& [in, out] : cases) {
    EXPECT_EQ(CLng(Variant(in)), out) << in;
    if (out < 32768) {
      EXPECT_EQ(CInt(Variant(in)), out) << in;
    }
  }
  EXPECT_EQ(CLng(Variant("2,5")), 2);
  EXPECT_EQ(CLng(Variant(true)), -1);
  EXPECT_EQ(CLng(Variant()), 0);
}

TEST(CLngAndCInt, OverflowAndMismatch) {
  EXPECT_EQ(CInt(Variant(32767.0)), 32767);
  EXPECT_EQ(CInt(Variant(-32768.0)), -32768);
  EXPECT_EQ(CInt(Variant(32766.5)), 32766);  // half to even stays in range
  // 32767.5 rounds to 32768.
  EXPECT_EQ(CaughtError([] { CInt(Variant(32767.5)); }).number(), err::kOverflow);
  EXPECT_EQ(CaughtError([] { CInt(Variant("40.000")); }).number(), err::kOverflow);
  EXPECT_EQ(CLng(Variant(2147483647.0)), 2147483647);
  EXPECT_EQ(CaughtError([] { CLng(Variant(2147483647.5)); }).number(), err::kOverflow);
  EXPECT_EQ(CaughtError([] { CLng(Variant("1e3")); }).number(), err::kTypeMismatch);
  EXPECT_EQ(CaughtError([] { CLng(Variant("")); }).number(), err::kTypeMismatch);
  EXPECT_EQ(CaughtError([] { CLng(Variant::Null()); }).number(), err::kInvalidUseOfNull);
  EXPECT_EQ(CaughtError([] { CStr(Variant::Null()); }).number(), err::kInvalidUseOfNull);
}

TEST(CStr, WritesUnderTheConventions) {
  const std::pair<Variant, const char*> cases[] = {
      {Variant(), ""}, {Variant(std::int16_t{-12}), "-12"}, {Variant(150000), "150000"},
      {Variant(2.5), "2,5"}, {Variant(0.1 + 0.2), "0,3"},  // 15 significant digits, as the runtime
      {Variant(true), "True"}, {Variant(MakeDate(2005, 3, 7)), "07/03/2005"},
      {Variant(MakeDate(2005, 3, 7, 9, 5, 0)), "07/03/2005 09:05:00"}};
  for (const auto& [value, text] : cases) EXPECT_EQ(CStr(value), text) << value.TypeName();
}

TEST(StringFunctions, TrimRemovesBlanksOnlyAndSplitKeepsEmptyItems) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim("\ta\t"), "\ta\t");
  EXPECT_EQ(LTrim("  x "), "x ");
  EXPECT_EQ(RTrim("  x "), "  x");
  using V = std::vector<std::string>;
  EXPECT_EQ(Split("Madrid; Sevilla; ", ";"), (V{"Madrid", " Sevilla", " "}));
  EXPECT_EQ(Split("a;;b", ";"), (V{"a", "", "b"}));
  EXPECT_EQ(Split("", ";"), V{});
  EXPECT_EQ(Split("a<>b", "<>"), (V{"a", "b"}));
}

TEST(FormatDate, PatternsOfTheComponent) {
  const Date d = MakeDate(2005, 3, 7, 14, 8, 9);
  EXPECT_EQ(FormatDate(d, "dd/mm/yy hh:mm:ss"), "07/03/05 14:08:09");  // mm after hh: minutes
  EXPECT_EQ(FormatDate(d, "yyyy-mm-dd"), "2005-03-07");
  EXPECT_EQ(FormatDate(d, "d/m/yyyy"), "7/3/2005");
  EXPECT_EQ(FormatDate(MakeDate(1925, 12, 31), "mm/dd/yy"), "12/31/25");
  EXPECT_EQ(FormatDate(MakeDate(100, 1, 1), "dd/mm/yyyy"), "01/01/0100");  // parses back
}

TEST(FormatNumber, ThousandsMask) {
  // "#" digits are optional, as in the runtime; halves round away from zero.
  const std::tuple<double, const char*, const char*> cases[] = {
      {1234567, "#,###", "1.234.567"}, {0, "#,###", ""}, {1234.5, "#,###", "1.235"},
      {-150000, "#,###", "-150.000"}, {2.5, "#,##0,00", "2,50"}};
  for (const auto& [n, mask, text] : cases) EXPECT_EQ(FormatNumber(n, mask), text) << n;
}

TEST(Dates, ParseAndWriteIso) {
  EXPECT_EQ(ParseDate("2005-03-07"), MakeDate(2005, 3, 7));
  EXPECT_EQ(ParseDate("07/03/2005"), MakeDate(2005, 3, 7));
  EXPECT_EQ(ParseDate("2005-03-07 10:11:12"), MakeDate(2005, 3, 7, 10, 11, 12));
  EXPECT_EQ(ParseDate("2005-03-07T10:11"), MakeDate(2005, 3, 7, 10, 11, 0));
  EXPECT_EQ(ParseDate(" 7/3/2005 9:05 "), MakeDate(2005, 3, 7, 9, 5, 0));
  // Signs and blanks inside a number are no part of a date.
  for (const char* text : {"2005-02-30", "07/03/05", "2005-+3-07", "+7/03/2005", "7/ 3/2005",
                           "2005-03-07 -1:30", "2005-03-07 10:+1", "2005-03-07 10:11:", "2005-3-07",
                           "2005-03-07x", "07/03/2005 24:00", "07/03/20051"})
    EXPECT_FALSE(ParseDate(text)) << text;
  EXPECT_EQ(IsoDate(MakeDate(1925, 6, 1)), "1925-06-01");
  EXPECT_EQ(IsoDate(MakeDate(2031, 6, 1, 23, 59, 59)), "2031-06-01 23:59:59");
  // Stored dates keep a time only when it is not midnight to the second.
  const std::pair<double, const char*> stored[] = {
      {38717.0000001, "2005-12-31"}, {38717.9999999, "2006-01-01"}, {-1.0000001, "1899-12-29"},
      {38717.5, "2005-12-31 12:00:00"}, {38717.00002, "2005-12-31 00:00:02"}};
  for (const auto& [serial, text] : stored) EXPECT_EQ(StoredIsoDate(Date{serial}), text) << serial;
}

TEST(CDate, SerialsOutsideYears100To9999Overflow) {
  EXPECT_EQ(IsoDate(CDate(Variant(-657434.0))), "0100-01-01");
  EXPECT_EQ(IsoDate(CDate(Variant(2958465.5))), "9999-12-31 12:00:00");
  // The last one rounds to the second into the year 10000.
  for (double serial : {-657435.0, 2958466.0, 2958465.9999999, 1e300, std::nan("")})
    EXPECT_EQ(CaughtError([=] { CDate(Variant(serial)); }).number(), err::kOverflow) << serial;
}

TEST(Dates, SerialsMatchTheRuntime) {
  EXPECT_EQ(MakeDate(1899, 12, 30).serial, 0);
  EXPECT_EQ(MakeDate(1900, 1, 1).serial, 2);
  EXPECT_EQ(MakeDate(2005, 3, 7).serial, 38418);
  EXPECT_DOUBLE_EQ(MakeDate(2005, 3, 7, 12).serial, 38418.5);
  // Before the epoch the time is a positive fraction of a negative day.
  EXPECT_DOUBLE_EQ(MakeDate(1899, 12, 29, 6).serial, -1.25);
  const DateParts p = SplitDate(MakeDate(1899, 12, 29, 6));
  EXPECT_EQ(p.day, 29);
  EXPECT_EQ(p.hour, 6);
  EXPECT_EQ(CaughtError([] { MakeDate(2005, 2, 29); }).number(), err::kInvalidProcedureCall);
}

}  // namespace
}  // namespace cp
