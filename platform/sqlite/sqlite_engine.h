#pragma once
// SqliteEngine: the embedded engine behind the DAO-like API, over one SQLite file.
// It only reads: a statement that would write raises 3219 (tools write through native.h).
#include <atomic>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "platform/dao/engine.h"
#include "platform/sqlite/connection.h"

namespace cp::sqlite {

class SqliteEngine : public dao::Engine {
 public:
  // Opens an existing file (errors as Connection::Open raises them).
  explicit SqliteEngine(const std::string& path);

  const std::string& Name() const override { return connection_->path(); }
  jetsql::Dialect dialect() const override { return jetsql::Dialect::Sqlite; }
  std::unique_ptr<dao::Cursor> Query(const std::string& sql) override;
  // Evaluates the condition as "SELECT 1 FROM (SELECT ?1 AS col1, ...) WHERE condition" with
  // the row's values bound, so the condition runs on this connection with its Jet functions.
  std::unique_ptr<dao::RowFilter> PrepareRowFilter(const std::vector<std::string>& columns,
                                                   const std::string& condition) override;
  // Auto-increment comes from SQLite's own flag: INTEGER PRIMARY KEY AUTOINCREMENT. A table
  // is read once per schema version: list windows ask for it on every opening.
  dao::TableDefinition Table(const std::string& name) override;
  // Vouches for the date columns that carry IsoDateCheck (iso_dates.h). The schema is read
  // on first use and again whenever its version changes.
  jetsql::TranslateOptions TranslationOptions() override;
  // Stops the running statement (sqlite3_interrupt) and every later one until Resume (a
  // progress handler on the connection).
  void Interrupt() override;
  void Resume() override { interrupted_ = false; }

 private:
  // Forgets what was read of the schema when its version has changed since.
  void ForgetOlderSchema();
  dao::TableDefinition ReadTable(const std::string& name);

  std::shared_ptr<Connection> connection_;
  std::atomic<bool> interrupted_{false};
  long long schemaVersion_ = -1;  // the version that the two below were read at
  // "table\ncolumn" in lower case.
  std::shared_ptr<const std::set<std::string>> isoDateColumns_;
  std::map<std::string, dao::TableDefinition> tables_;  // by name in lower case
};

}  // namespace cp::sqlite
