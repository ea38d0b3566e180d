#include "common/shared_state.h"

#include "platform/core/error.h"

namespace cp {
namespace {
std::shared_ptr<dao::Database> g_database;
std::string g_path;
}  // namespace

std::shared_ptr<dao::Database> BD() { return g_database; }
void setBD(std::shared_ptr<dao::Database> database) { g_database = std::move(database); }

const std::string& PathDB() { return g_path; }
void setPathDB(std::string path) { g_path = std::move(path); }

dao::Database& RequireBD() {
  if (!g_database) RaiseObjectNotSet();
  return *g_database;
}

void RaiseObjectNotSet() {
  Raise(err::kObjectVariableNotSet, "Variable de objeto o bloque With no establecido");
}

}  // namespace cp
