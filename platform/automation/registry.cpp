#include "platform/automation/registry.h"

#include <map>
#include <mutex>

#include "platform/automation/dispatch_object.h"
#include "platform/core/error.h"

namespace cp {
namespace {

struct Registry {
  std::mutex mutex;
  std::map<std::string, ObjectFactory> factories;  // keyed by the lower-case ProgID
};

// Built on first use, so that registrations from other static initialisers (of this program
// or of a plug-in) never see it unconstructed; never destroyed, for the same reason at exit.
Registry& TheRegistry() {
  static Registry* registry = new Registry;
  return *registry;
}

}  // namespace

std::optional<ObjectFactory> RegisterProgId(const std::string& progId, ObjectFactory factory) {
  if (progId.empty() || !factory) Raise(err::kInvalidProcedureCall);
  Registry& r = TheRegistry();
  std::lock_guard lock(r.mutex);
  auto [it, inserted] = r.factories.try_emplace(LowerAscii(progId));
  std::optional<ObjectFactory> previous;
  if (!inserted) previous = std::move(it->second);
  it->second = std::move(factory);
  return previous;
}

bool UnregisterProgId(const std::string& progId) {
  Registry& r = TheRegistry();
  std::lock_guard lock(r.mutex);
  return r.factories.erase(LowerAscii(progId)) > 0;
}

bool IsProgIdRegistered(const std::string& progId) {
  Registry& r = TheRegistry();
  std::lock_guard lock(r.mutex);
  return r.factories.count(LowerAscii(progId)) > 0;
}

std::shared_ptr<Dispatch> CreateObject(const std::string& progId) {
  ObjectFactory factory;
  {
    Registry& r = TheRegistry();
    std::lock_guard lock(r.mutex);
    auto it = r.factories.find(LowerAscii(progId));
    if (it != r.factories.end()) factory = it->second;
  }
  // The factory runs unlocked: it may itself create or register objects.
  std::shared_ptr<Dispatch> object = factory ? factory() : nullptr;
  if (!object) Raise(err::kCannotCreateObject, {}, progId);
  return object;
}

ScopedProgId::ScopedProgId(std::string progId, ObjectFactory factory)
    : progId_(std::move(progId)), previous_(RegisterProgId(progId_, std::move(factory))) {}

ScopedProgId::~ScopedProgId() {
  if (previous_) {
    RegisterProgId(progId_, std::move(*previous_));
  } else {
    UnregisterProgId(progId_);
  }
}

ProgIdRegistrar::ProgIdRegistrar(const std::string& progId, ObjectFactory factory) {
  RegisterProgId(progId, std::move(factory));
}

}  // namespace cp
