#include "qt/demo/demo_database.h"

#include <cstdlib>
#include <filesystem>
#include <ostream>

#include "platform/core/error.h"
#include "sample/sample_database.h"
#include "platform/postgres/session.h"

namespace cp {

std::string DefaultDemoDatabase() {
  const std::filesystem::path beside_build = CP_DEMO_DB;
  if (std::filesystem::is_directory(beside_build.parent_path())) return beside_build.string();
  // An installed copy, away from the build that made it: the user's cache folder.
  std::filesystem::path cache;
  if (const char* xdg = std::getenv("XDG_CACHE_HOME"); xdg && *xdg) cache = xdg;
  else if (const char* home = std::getenv("HOME"); home && *home)
    cache = std::filesystem::path(home) / ".cache";
  else
    return beside_build.filename().string();  // the current folder
  cache /= "criteriopredios-demo";
  std::error_code ignored;  // a folder that cannot be made is reported when the file is created
  std::filesystem::create_directories(cache, ignored);
  return (cache / beside_build.filename()).string();
}

bool EnsureDemoDatabase(const std::string& path, std::ostream& out, std::ostream& err) {
  // A server database is made by `criteriopredios init-db` beforehand, and opening reports
  // what is wrong with it.
  if (postgres::IsServerConnection(path) || std::filesystem::exists(path)) return true;
  out << "Creando la base de datos de demostración " << path << "...\n";
  try {
    sample::CreateSampleDatabase(path, sample::DemoOptions{});
  } catch (const Error& e) {
    err << e.description() << "\n";
    return false;
  }
  out << "Base de datos creada: " << path << "\n";
  return true;
}

}  // namespace cp
