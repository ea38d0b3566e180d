#pragma once
// Throw-away databases that run translated SQL, for tests that compare the rows with what
// Jet returns: in memory on SQLite with the Jet functions registered, or on the test server.
#include <sqlite3.h>

#include <memory>
#include <string>
#include <vector>

namespace cp::jetsql::testing {

// A database of one engine that runs translated Jet SQL, for the semantics tests.
class SemanticsDatabase {
 public:
  virtual ~SemanticsDatabase() = default;
  // Runs native statements (schema and rows, in the SQLite spelling of column types:
  // other engines map DATETIME, DOUBLE and BOOLEAN); fails the test on error.
  virtual void Exec(const std::string& sql) = 0;
  // Runs a Jet SELECT through the translator; every value as text, Null as "<Null>".
  // An engine error is returned as the single value "error: <message>".
  virtual std::vector<std::vector<std::string>> Rows(const std::string& jetSelect) = 0;
  // False on a server, whose typed date columns cannot hold what an import leaves in a file.
  virtual bool Embedded() const = 0;
  // The first column of every row, as integers.
  std::vector<long> Ids(const std::string& jetSelect);
  // The single value of a one-row, one-column Jet SELECT.
  std::string Value(const std::string& jetSelect);
};

class MemoryDatabase : public SemanticsDatabase {
 public:
  MemoryDatabase();
  ~MemoryDatabase() override;
  MemoryDatabase(const MemoryDatabase&) = delete;
  MemoryDatabase& operator=(const MemoryDatabase&) = delete;

  void Exec(const std::string& sql) override;
  std::vector<std::vector<std::string>> Rows(const std::string& jetSelect) override;
  bool Embedded() const override { return true; }

 private:
  sqlite3* db_ = nullptr;
};

// A fresh database on the test server, copied from the given template (tests/support/
// pg_server.h); nullptr when no server is running.
std::unique_ptr<SemanticsDatabase> MakeServerDatabase(const std::string& templ);

}  // namespace cp::jetsql::testing
