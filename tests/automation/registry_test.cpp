#include "platform/automation/registry.h"

#include "platform/automation/dispatch_object.h"
#include "tests/support/errors.h"

namespace cp {
namespace {

using cp::testing::CaughtError;

class Tagged : public DispatchObject {
 public:
  explicit Tagged(std::string tag) {
    Expose("Tag", [tag] { return Variant(tag); });
  }
};

ObjectFactory MakesTagged(std::string tag) {
  return [tag] { return std::make_shared<Tagged>(tag); };
}

std::string TagOf(const std::string& progId) {
  return CreateObject(progId)->GetProperty("Tag").AsString();
}

TEST(Registry, CreatesAFreshObjectPerCallInAnyCase) {
  ScopedProgId reg("Prueba.Objeto", MakesTagged("a"));
  auto first = CreateObject("PRUEBA.OBJETO");
  auto second = CreateObject("prueba.objeto");
  EXPECT_NE(first, second);
  EXPECT_EQ(first->GetProperty("tag").AsString(), "a");
}

TEST(Registry, ScopedRegistrationRestoresWhatWasThere) {
  {
    ScopedProgId outer("Prueba.Cambio", MakesTagged("original"));
    {
      ScopedProgId inner("PRUEBA.CAMBIO", MakesTagged("sustituto"));
      EXPECT_EQ(TagOf("Prueba.Cambio"), "sustituto");
    }
    EXPECT_EQ(TagOf("Prueba.Cambio"), "original");
  }
  EXPECT_FALSE(IsProgIdRegistered("Prueba.Cambio"));
}

TEST(Registry, FactoryFailures) {
  const Error unknown = CaughtError([] { CreateObject("Prueba.NoRegistrado"); });
  EXPECT_EQ(unknown.number(), err::kCannotCreateObject);
  EXPECT_EQ(unknown.source(), "Prueba.NoRegistrado");
  {
    ScopedProgId reg("Prueba.Nada", [] { return std::shared_ptr<Dispatch>(); });
    EXPECT_EQ(CaughtError([] { CreateObject("Prueba.Nada"); }).number(), err::kCannotCreateObject);
  }
  ScopedProgId failing("Prueba.Falla", []() -> std::shared_ptr<Dispatch> {
    Raise(err::kOutOfMemory);
  });
  EXPECT_EQ(CaughtError([&] { CreateObject("Prueba.Falla"); }).number(), err::kOutOfMemory);
  EXPECT_THROW(RegisterProgId("", MakesTagged("x")), Error);
  EXPECT_THROW(RegisterProgId("Prueba.Vacia", ObjectFactory{}), Error);
  EXPECT_FALSE(UnregisterProgId("Prueba.Vacia"));
}

}  // namespace
}  // namespace cp
