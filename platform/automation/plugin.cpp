#include "platform/automation/plugin.h"

#include <dlfcn.h>

#include <mutex>
#include <vector>

#include "platform/core/error.h"

namespace cp {
namespace {

// Handles of loaded plug-ins, kept (never closed) so that their factories stay valid.
struct PluginHandles {
  std::mutex mutex;
  std::vector<void*> handles;
};

PluginHandles& Plugins() {
  static PluginHandles* plugins = new PluginHandles;
  return *plugins;
}

}  // namespace

void LoadPlugin(const std::string& path) {
  PluginHandles& p = Plugins();
  std::lock_guard lock(p.mutex);
  dlerror();
  void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!handle) {
    const char* reason = dlerror();
    Raise(err::kFileNotFound,
          "No se ha podido cargar la biblioteca \"" + path + "\": " +
              (reason ? reason : "motivo desconocido"),
          "LoadPlugin");
  }
  // dlopen counts references: a second load of the same library yields the same handle.
  for (void* h : p.handles) {
    if (h == handle) {
      dlclose(handle);
      return;
    }
  }
  p.handles.push_back(handle);
}

}  // namespace cp
