#include "platform/automation/dispatch_object.h"

#include "platform/core/conversions.h"
#include "tests/support/errors.h"

namespace cp {
namespace {

using testing::CaughtError;

class Sample : public DispatchObject {
 public:
  Sample() {
    Expose("Titulo", [this] { return Variant(title); },
           [this](const Variant& v) { title = CStr(v); });
    Expose("SoloLectura", [] { return Variant(std::int32_t{7}); });
    Expose("SoloEscritura", {}, [this](const Variant& v) { written = CLng(v); });
    ExposeMethod("Sumar", [](const std::vector<Variant>& a) {
      std::int32_t sum = 0;
      for (const Variant& v : a) sum += CLng(v);
      return Variant(sum);
    });
    ExposeMethod("mtdMostrar", [this](const std::vector<Variant>&) {
      ++shown;
      return Variant(true);
    });
  }
  std::string title;
  std::int32_t written = 0;
  int shown = 0;
};

TEST(DispatchObject, MemberNamesMatchInAnyCase) {
  Sample s;
  s.SetProperty("TITULO", Variant("valor"));
  EXPECT_EQ(s.GetProperty("tItUlO").AsString(), "valor");
  EXPECT_EQ(s.CallMethod("SUMAR", {Variant(std::int16_t{2}), Variant(std::int32_t{40})}).AsLong(),
            42);
  EXPECT_TRUE(s.HasMember("MTDMOSTRAR"));
  EXPECT_FALSE(s.HasMember("Titul"));
}

TEST(DispatchObject, UnsupportedUseRaises438) {
  Sample s;
  const std::vector<std::pair<const char*, std::function<void()>>> cases = {
      {"unknown set", [&] { s.SetProperty("NoExiste", Variant(1.0)); }},
      {"unknown call", [&] { s.CallMethod("NoExiste"); }},
      {"set read-only", [&] { s.SetProperty("SoloLectura", Variant(std::int32_t{1})); }},
      {"get write-only", [&] { s.GetProperty("SoloEscritura"); }},
      {"property called with arguments", [&] { s.CallMethod("Titulo", {Variant(1.0)}); }},
  };
  for (const auto& [what, call] : cases) {
    EXPECT_EQ(CaughtError(call).number(), err::kPropertyNotFound) << what;
  }
  EXPECT_EQ(s.written, 0);
}

TEST(DispatchObject, LateBindingShortcutsAndErrorsOfTheMember) {
  Sample s;
  // Reading a method without arguments calls it; calling a property without arguments reads it.
  EXPECT_TRUE(s.GetProperty("mtdMostrar").AsBool());
  EXPECT_EQ(s.shown, 1);
  EXPECT_EQ(s.CallMethod("SoloLectura").AsLong(), 7);
  // The member's own error reaches the caller unchanged.
  const Variant text("no es un número");
  EXPECT_EQ(CaughtError([&] { s.SetProperty("SoloEscritura", text); }).number(),
            err::kTypeMismatch);
  s.SetProperty("soloescritura", Variant("12"));
  EXPECT_EQ(s.written, 12);
}

}  // namespace
}  // namespace cp
