#include "qt/demo/demo_database.h"

#include <filesystem>
#include <ostream>

#include "platform/core/error.h"
#include "sample/sample_database.h"
#include "platform/postgres/session.h"

namespace cp {

std::string DefaultDemoDatabase() { return CP_DEMO_DB; }

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
