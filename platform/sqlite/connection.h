#pragma once
// Connection: one open SQLite database handle (RAII), shared by the statements prepared on it
// so that it outlives them. Every connection gets a busy timeout and the Jet functions that
// translated SQL calls.
#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "platform/core/process_slot.h"
#include "platform/dao/dao_errors.h"

struct sqlite3;

namespace cp::sqlite {

// SQLite's failure in neutral shape: the kind from the (extended) result code `rc`, and for
// plain SQLITE_ERROR from the English message, which is all SQLite gives to tell an unknown
// table, column or function, an ambiguous column and a syntax error apart. Busy, locked,
// not-a-database (or damaged) and cannot-open failures name `path`. The code is
// "SQLite <rc>".
dao::EngineFailure DescribeFailure(int rc, std::string_view message, std::string_view path);

// How long a statement waits for another process's write to end before it fails with 3260.
// Read when a connection opens. Five seconds by default: long enough for any write the
// product makes; a host (or a test) that would rather fail fast shortens it.
ProcessSlot<std::chrono::milliseconds>& BusyTimeoutSlot();

class Connection {
 public:
  enum class Mode { OpenExisting, CreateIfMissing };

  // Opens a file read-write (creating it only in CreateIfMissing mode) and checks that it is
  // a database. Failures: 3024 missing file, 3044 missing folder, 3343 not a database or a
  // damaged one, 3260 busy; source "DAO.Database".
  static std::shared_ptr<Connection> Open(const std::string& path, Mode mode);

  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  sqlite3* get() const { return db_; }
  const std::string& path() const { return path_; }

  // Raises the DAO error for a failed call that returned `rc` (see DescribeFailure), using
  // the connection's last message. sql: the text being run, for messages that name no
  // better culprit.
  [[noreturn]] void Fail(int rc, std::string_view sql, dao::SqlContext context,
                         std::string_view source) const;

 private:
  Connection(sqlite3* db, std::string path) : db_(db), path_(std::move(path)) {}
  sqlite3* db_;
  std::string path_;
};

}  // namespace cp::sqlite
