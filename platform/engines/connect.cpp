// The engine layer's side of platform/dao/connect.h: the one place that maps a connection
// text to a concrete engine.
#include "platform/dao/connect.h"

#include "platform/postgres/postgres_engine.h"
#include "platform/sqlite/sqlite_engine.h"

namespace cp::dao {

std::shared_ptr<Engine> OpenEngine(const std::string& connection) {
  if (postgres::IsServerConnection(connection))
    return std::make_shared<postgres::PostgresEngine>(connection);
  return std::make_shared<sqlite::SqliteEngine>(connection);
}

std::shared_ptr<Database> OpenDatabase(const std::string& connection) {
  return std::make_shared<Database>(OpenEngine(connection));
}

}  // namespace cp::dao
