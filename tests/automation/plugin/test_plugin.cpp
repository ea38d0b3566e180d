// A plug-in for the loader's test: registers "PruebaPlugin.Saludo" when loaded.
#include "platform/automation/dispatch_object.h"
#include "platform/automation/registry.h"
#include "platform/core/conversions.h"

namespace {

class Saludo : public cp::DispatchObject {
 public:
  Saludo() {
    Expose("Nombre", [this] { return cp::Variant(name_); },
           [this](const cp::Variant& v) { name_ = v.AsString(); });
    ExposeMethod("Saludar", [this](const std::vector<cp::Variant>&) {
      return cp::Variant("Hola, " + name_);
    });
  }

 private:
  std::string name_;
};

const cp::ProgIdRegistrar kRegistrar("PruebaPlugin.Saludo",
                                     [] { return std::make_shared<Saludo>(); });

}  // namespace
