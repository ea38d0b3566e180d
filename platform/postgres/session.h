#pragma once
// Session: one libpq connection to a PostgreSQL server, opened from a connection text (URI or
// "key=value" string). It sets the session up for translated Jet SQL (jet_functions.h) and
// reconnects on the next use after the server went away. libpq stays out of this header.
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/dao/dao_errors.h"
#include "platform/dao/types.h"

struct pg_conn;
struct pg_result;
struct pg_cancel;

namespace cp::postgres {

// A finished statement's rows, all in memory, values in libpq's text form.
class Result {
 public:
  explicit Result(pg_result* result);
  Result(Result&&) noexcept;
  Result& operator=(Result&&) noexcept;
  ~Result();

  int Rows() const;
  int Columns() const;
  std::string ColumnName(int column) const;
  unsigned TypeOid(int column) const;
  // The table and column number a result column comes straight from (0, 0 for expressions).
  unsigned TableOid(int column) const;
  int TableColumn(int column) const;
  int TypeModifier(int column) const;
  bool IsNull(int row, int column) const;
  std::string Text(int row, int column) const;
  // The value as a Cell: integers, reals and numerics as numbers, booleans as 1/0, the rest
  // (timestamps included, as ISO text) as text.
  dao::Cell Value(int row, int column) const;

 private:
  pg_result* result_;
};

class Session {
 public:
  enum class Purpose {
    Component,  // read-only, with the Jet functions: a statement that writes raises 3219
    Tool,       // writes allowed (schema, sample data), native SQL only
  };

  // Connects and prepares the session. Failures (3151 server unreachable or connection
  // refused, 3029 wrong user or password, 3024 no such database) raise with source
  // "DAO.Database" and a Spanish text naming the server.
  Session(std::string connection, Purpose purpose);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  const std::string& connection() const { return connection_; }

  // Runs one statement with text parameters (nullopt is Null; a type, when needed, is
  // written in the SQL: "$1::int8"). Errors raise as the SQLSTATE maps them;
  // sql is named in syntax messages. A lost connection raises 3151 and is re-established on
  // the next call.
  Result Exec(const std::string& sql, const std::vector<std::optional<std::string>>& params = {},
              dao::SqlContext context = dao::SqlContext::Statement,
              std::string_view source = dao::kDatabaseSource);
  // Runs any number of ";"-separated statements without parameters.
  void Execute(const std::string& sql);
  // Asks the server to cancel the statement this session is running; that statement then
  // raises. Callable from any thread; does nothing when no statement runs.
  void Cancel();

 private:
  void Connect();
  void EnsureConnected();
  [[noreturn]] void RaiseConnectFailure();
  [[noreturn]] void RaiseLost();
  std::string Shown() const;
  Result Check(pg_result* raw, const std::string& sql, dao::SqlContext context,
               std::string_view source);

  std::string connection_;
  Purpose purpose_;
  pg_conn* conn_ = nullptr;
  std::mutex cancelMutex_;  // guards cancel_, which Cancel reads from another thread
  pg_cancel* cancel_ = nullptr;
};

// True when a connection text names a PostgreSQL server rather than an SQLite file:
// a postgresql:// or postgres:// URI, or a libpq "key=value" string.
bool IsServerConnection(std::string_view connection);

}  // namespace cp::postgres
