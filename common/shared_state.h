#pragma once
// The component-wide values that the host hands over through CSeleccion and every part reads:
// the open database BD and its path PathDB (ErrLogPath lives in error_log.h). One process
// runs one component on the host's UI thread: plain globals, the last writer wins.
#include <memory>
#include <string>

#include "platform/core/process_slot.h"
#include "platform/dao/database.h"

namespace cp {

// The slots behind BD and PathDB, for a scope that installs a database and puts the previous
// one back (ProcessSlot<...>::Scoped).
ProcessSlot<std::shared_ptr<dao::Database>>& DatabaseSlot();
ProcessSlot<std::string>& PathDBSlot();

// The shared database; null until the host sets one. The component shares, never closes it.
std::shared_ptr<dao::Database> BD();
void setBD(std::shared_ptr<dao::Database> database);

// The database's path as the host gave it (the list picker opens its own connection on it).
const std::string& PathDB();
void setPathDB(std::string path);

// The shared database for a routine that reads data; raises 91 when none was set, as using
// a Nothing database would.
dao::Database& RequireBD();

// Raises the runtime's error 91 "Variable de objeto o bloque With no establecido".
[[noreturn]] void RaiseObjectNotSet();

}  // namespace cp
