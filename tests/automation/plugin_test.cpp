#include "platform/automation/plugin.h"

#include "platform/automation/registry.h"
#include "tests/support/errors.h"

namespace cp {
namespace {

using cp::testing::CaughtError;

TEST(Plugin, MissingLibraryRaisesASpanishErrorNamingIt) {
  const std::string path = "/no/existe/libninguno.so";
  const Error e = CaughtError([&] { LoadPlugin(path); });
  EXPECT_EQ(e.number(), err::kFileNotFound);
  EXPECT_NE(e.description().find("No se ha podido cargar la biblioteca"), std::string::npos);
  EXPECT_NE(e.description().find(path), std::string::npos);
}

TEST(Plugin, LoadingRegistersItsProgIdsInThisProcess) {
  EXPECT_FALSE(IsProgIdRegistered("PruebaPlugin.Saludo"));
  LoadPlugin(CP_TEST_PLUGIN);
  LoadPlugin(CP_TEST_PLUGIN);  // a second load is harmless
  auto object = CreateObject("pruebaplugin.saludo");
  object->SetProperty("Nombre", Variant("Ana"));
  EXPECT_EQ(object->CallMethod("Saludar").AsString(), "Hola, Ana");
  // The plug-in's objects raise this program's errors.
  EXPECT_EQ(CaughtError([&] { object->GetProperty("NoExiste"); }).number(), err::kPropertyNotFound);
}

}  // namespace
}  // namespace cp
