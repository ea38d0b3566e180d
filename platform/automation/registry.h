#pragma once
// The process-wide registry of creatable classes by ProgID ("NListado.CListado"), the way
// objects are created by name. ProgIDs match case-insensitively (ASCII), as class names in
// the system registry did. Single-threaded use is the norm; the registry is nonetheless
// guarded so that plug-ins loaded from another thread cannot corrupt it.
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/automation/dispatch.h"

namespace cp {

// Makes a new object; may raise cp::Error, which CreateObject passes on unchanged.
using ObjectFactory = std::function<std::shared_ptr<Dispatch>()>;

// Registers (or replaces) the factory of a ProgID. Returns the factory it replaced, if any.
// An empty ProgID or an empty factory raises error 5.
std::optional<ObjectFactory> RegisterProgId(const std::string& progId, ObjectFactory factory);
// Removes a ProgID; false when it was not registered.
bool UnregisterProgId(const std::string& progId);
bool IsProgIdRegistered(const std::string& progId);

// Creates a new object of a registered ProgID. Raises 429 ("El componente ActiveX no puede
// crear el objeto", source the ProgID) when nothing is registered under it or the factory
// returns no object.
std::shared_ptr<Dispatch> CreateObject(const std::string& progId);

// Registers a factory for the lifetime of this object, then restores exactly what was there
// before (the earlier factory, or nothing). Meant for tests that stand in for a component.
class ScopedProgId {
 public:
  ScopedProgId(std::string progId, ObjectFactory factory);
  ~ScopedProgId();
  ScopedProgId(const ScopedProgId&) = delete;
  ScopedProgId& operator=(const ScopedProgId&) = delete;

 private:
  std::string progId_;
  std::optional<ObjectFactory> previous_;
};

// Registers a ProgID from a static initialiser, so that a component or plug-in announces its
// classes when its code is loaded:  static cp::ProgIdRegistrar reg("X.Y", [] {...});
// The registration stays in force after the registrar is destroyed at process exit.
struct ProgIdRegistrar {
  ProgIdRegistrar(const std::string& progId, ObjectFactory factory);
};

}  // namespace cp
