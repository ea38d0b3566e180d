// The engine layer's side of platform/dao/connect.h: the one place that maps a connection
// text to a concrete engine.
#include "platform/dao/connect.h"

#include "platform/core/error.h"
#include "platform/dao/dao_errors.h"
#include "platform/sqlite/sqlite_engine.h"

namespace cp::dao {
namespace {

bool StartsWith(const std::string& text, std::string_view prefix) {
  return text.size() >= prefix.size() && SameName(text.substr(0, prefix.size()), prefix);
}

}  // namespace

std::shared_ptr<Engine> OpenEngine(const std::string& connection) {
  if (StartsWith(connection, "postgresql://") || StartsWith(connection, "postgres://"))
    throw Error(daoerr::kConnectionFailed,
                "No se pudo conectar con '" + connection +
                    "': esta versión no incluye el motor PostgreSQL.",
                std::string(kDatabaseSource));
  return std::make_shared<sqlite::SqliteEngine>(connection);
}

std::shared_ptr<Database> OpenDatabase(const std::string& connection) {
  return std::make_shared<Database>(OpenEngine(connection));
}

}  // namespace cp::dao
