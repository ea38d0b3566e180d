#include "platform/sqlite/connection.h"

#include <sqlite3.h>

#include <filesystem>

#include "platform/sqlite/jet_functions.h"

namespace cp::sqlite {
namespace {

constexpr int kBusyTimeoutMs = 5000;

// Why a file could not be opened: its folder is missing (3044) or the file itself (3024).
[[noreturn]] void RaiseCannotOpen(const std::string& path) {
  std::error_code ec;
  const auto parent = std::filesystem::absolute(std::filesystem::path(path), ec).parent_path();
  if (ec || !std::filesystem::is_directory(parent, ec)) dao::RaiseInvalidPath(path);
  dao::RaiseFileNotFound(path);
}

}  // namespace

std::shared_ptr<Connection> Connection::Open(const std::string& path, Mode mode) {
  if (path.empty()) dao::RaiseInvalidPath(path);
  int flags = SQLITE_OPEN_READWRITE;
  if (mode == Mode::CreateIfMissing) flags |= SQLITE_OPEN_CREATE;
  sqlite3* raw = nullptr;
  const int rc = sqlite3_open_v2(path.c_str(), &raw, flags, nullptr);
  // The handle exists even when opening failed; the connection owns it from here on.
  std::shared_ptr<Connection> connection(new Connection(raw, path));
  if (rc != SQLITE_OK) {
    if ((rc & 0xff) == SQLITE_CANTOPEN) RaiseCannotOpen(path);
    connection->Fail(rc, {}, dao::SqlContext::Statement, dao::kDatabaseSource);
  }
  sqlite3_busy_timeout(raw, kBusyTimeoutMs);
  sqlite3_extended_result_codes(raw, 1);
  // SQLite reads the header lazily: touch the schema now so a foreign file fails here.
  const int check = sqlite3_exec(raw, "SELECT count(*) FROM sqlite_master", nullptr, nullptr,
                                 nullptr);
  if (check != SQLITE_OK) connection->Fail(check, {}, dao::SqlContext::Statement,
                                           dao::kDatabaseSource);
  RegisterJetFunctions(raw);
  return connection;
}

Connection::~Connection() { sqlite3_close_v2(db_); }

void Connection::Fail(int rc, std::string_view sql, dao::SqlContext context,
                      std::string_view source) const {
  const std::string message = db_ ? sqlite3_errmsg(db_) : sqlite3_errstr(rc);
  switch (rc & 0xff) {
    case SQLITE_BUSY: dao::RaiseBusy(path_, source);
    case SQLITE_LOCKED: dao::RaiseLocked(message, source);
    case SQLITE_NOTADB: dao::RaiseUnrecognisedFormat(path_);
    case SQLITE_CANTOPEN: RaiseCannotOpen(path_);
    case SQLITE_ERROR: dao::RaiseFromEngineMessage(message, sql, context, source);
    default: dao::RaiseEngineFailure(message, source);
  }
}

}  // namespace cp::sqlite
