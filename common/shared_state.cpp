#include "common/shared_state.h"

#include "platform/core/error.h"

namespace cp {
ProcessSlot<std::shared_ptr<dao::Database>>& DatabaseSlot() {
  static ProcessSlot<std::shared_ptr<dao::Database>> slot;
  return slot;
}

ProcessSlot<std::string>& PathDBSlot() {
  static ProcessSlot<std::string> slot;
  return slot;
}

std::shared_ptr<dao::Database> BD() { return DatabaseSlot().Get(); }
void setBD(std::shared_ptr<dao::Database> database) { DatabaseSlot().Set(std::move(database)); }

const std::string& PathDB() { return PathDBSlot().Get(); }
void setPathDB(std::string path) { PathDBSlot().Set(std::move(path)); }

dao::Database& RequireBD() {
  const auto& database = DatabaseSlot().Get();
  if (!database) RaiseObjectNotSet();
  return *database;
}

void RaiseObjectNotSet() {
  Raise(err::kObjectVariableNotSet, "Variable de objeto o bloque With no establecido");
}

}  // namespace cp
