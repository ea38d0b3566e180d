#pragma once
// Opening a database by its connection text. A plain path opens an SQLite file; texts that
// start with "postgresql://" or "postgres://" are reserved for the PostgreSQL engine.
// These two functions belong to the engine layer, which knows every concrete engine: they are
// defined in platform/sqlite (link cp_sqlite), so cp_dao itself never depends on an engine.
#include <memory>
#include <string>

#include "platform/dao/database.h"

namespace cp::dao {

// Opens the engine for a connection text. Failures: 3024 missing file, 3044 invalid folder,
// 3343 not a database, 3151 an engine this build does not have.
std::shared_ptr<Engine> OpenEngine(const std::string& connection);

// DAO's OpenDatabase: the shared database object over OpenEngine(connection).
std::shared_ptr<Database> OpenDatabase(const std::string& connection);

}  // namespace cp::dao
