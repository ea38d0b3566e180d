#pragma once
// A throw-away in-memory SQLite database with the Jet functions registered, for tests that
// run translated SQL and compare the rows with what Jet returns.
#include <sqlite3.h>

#include <string>
#include <vector>

namespace cp::jetsql::testing {

class MemoryDatabase {
 public:
  MemoryDatabase();
  ~MemoryDatabase();
  MemoryDatabase(const MemoryDatabase&) = delete;
  MemoryDatabase& operator=(const MemoryDatabase&) = delete;

  // Runs native SQLite statements (schema and rows); fails the test on error.
  void Exec(const std::string& sql);
  // Runs a Jet SELECT through the translator; every value as text, Null as "<Null>".
  // An engine error is returned as the single value "error: <message>".
  std::vector<std::vector<std::string>> Rows(const std::string& jetSelect);
  // The first column of every row, as integers.
  std::vector<long> Ids(const std::string& jetSelect);
  // The single value of a one-row, one-column Jet SELECT.
  std::string Value(const std::string& jetSelect);

 private:
  sqlite3* db_ = nullptr;
};

}  // namespace cp::jetsql::testing
