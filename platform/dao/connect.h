#pragma once
// Opening a database by its connection text. A "postgresql://" or "postgres://" URI or a
// libpq "key=value" string opens the PostgreSQL server engine; anything else is an SQLite file.
// These two functions belong to the engine layer, which knows every concrete engine: they are
// defined in platform/engines (link cp_engines), so cp_dao itself never depends on an engine.
#include <memory>
#include <string>

#include "platform/dao/database.h"

namespace cp::dao {

// Opens the engine for a connection text. Failures: 3024 missing file (or database on the
// server), 3044 invalid folder, 3343 not a database, 3151 server unreachable, 3029 wrong
// user or password.
std::shared_ptr<Engine> OpenEngine(const std::string& connection);

// DAO's OpenDatabase: the shared database object over OpenEngine(connection).
std::shared_ptr<Database> OpenDatabase(const std::string& connection);

}  // namespace cp::dao
