#include "platform/core/variant.h"

#include "tests/support/errors.h"

namespace cp {
namespace {

using cp::testing::CaughtError;

TEST(Variant, TypeNamesAndExactAccess) {
  const std::pair<Variant, const char*> cases[] = {
      {Variant(), "Empty"}, {Variant::Null(), "Null"}, {Variant(std::int16_t{1}), "Integer"},
      {Variant(1), "Long"}, {Variant("x"), "String"}, {Variant(Array2D(0, 1, 0, 2)), "Variant()"},
      {Variant(std::shared_ptr<Dispatch>()), "Nothing"}};
  for (const auto& [value, name] : cases) EXPECT_EQ(value.TypeName(), name);
  EXPECT_THROW(Variant("1").AsLong(), Error);
  EXPECT_NE(Variant(1), Variant(std::int16_t{1}));  // same value, different type
  EXPECT_NE(Variant(), Variant::Null());
}

TEST(Array2D, BoundsAndSubscripts) {
  Array2D a(0, 2, 1, 3);  // three rows of three columns numbered 1..3
  EXPECT_EQ(a.LBound(2), 1);
  EXPECT_EQ(a.UBound(1), 2);
  a.at(2, 3) = Variant("último");
  a.at(0, 1) = Variant(-1);
  EXPECT_EQ(a.at(2, 3), Variant("último"));
  EXPECT_EQ(CaughtError([&] { a.at(3, 1); }).number(), err::kSubscriptOutOfRange);
  EXPECT_THROW(a.at(0, 0), Error);
  EXPECT_THROW(a.LBound(3), Error);

  // Inside a Variant the array is a value: later changes to the source do not leak in.
  Variant v(a);
  a.at(0, 1) = Variant(5);
  EXPECT_EQ(v.AsArray().at(0, 1), Variant(-1));
  Array2D none(0, -1, 0, 2);  // an empty dimension
  EXPECT_EQ(none.Count(1), 0);
  EXPECT_THROW(none.at(0, 0), Error);
}

}  // namespace
}  // namespace cp
