#pragma once
// Throw-away databases that run translated SQL, for tests that compare the rows with what
// Jet returns: in memory on SQLite with the Jet functions registered, or on the test server,
// where a tool session writes the rows and a component session runs the statements.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include <regex>

#include <memory>
#include <string>
#include <vector>

#include "platform/core/error.h"
#include "platform/jetsql/translator.h"
#include "platform/sqlite/jet_functions.h"
#include "tests/support/pg_server.h"

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
  std::vector<long> Ids(const std::string& jetSelect) {
    std::vector<long> ids;
    for (const auto& row : Rows(jetSelect)) ids.push_back(std::stol(row.at(0)));
    return ids;
  }
  // The single value of a one-row, one-column Jet SELECT.
  std::string Value(const std::string& jetSelect) {
    auto rows = Rows(jetSelect);
    if (rows.size() != 1 || rows[0].size() != 1) {
      ADD_FAILURE() << jetSelect << ": not one value";
      return {};
    }
    return rows[0][0];
  }
};

class MemoryDatabase : public SemanticsDatabase {
 public:
  MemoryDatabase() {
    if (sqlite3_open(":memory:", &db_) != SQLITE_OK) ADD_FAILURE() << "cannot open :memory:";
    cp::sqlite::RegisterJetFunctions(db_);
  }
  ~MemoryDatabase() override { sqlite3_close(db_); }
  MemoryDatabase(const MemoryDatabase&) = delete;
  MemoryDatabase& operator=(const MemoryDatabase&) = delete;

  void Exec(const std::string& sql) override {
    char* message = nullptr;
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
      ADD_FAILURE() << sql << ": " << (message ? message : "?");
      sqlite3_free(message);
    }
  }
  std::vector<std::vector<std::string>> Rows(const std::string& jetSelect) override {
    std::string sql = TranslateStatement(jetSelect, Dialect::Sqlite);
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &raw, nullptr) != SQLITE_OK) {
      ADD_FAILURE() << sql << ": " << sqlite3_errmsg(db_);
      return {};
    }
    std::unique_ptr<sqlite3_stmt, decltype(&sqlite3_finalize)> statement(raw, &sqlite3_finalize);
    std::vector<std::vector<std::string>> rows;
    int rc;
    while ((rc = sqlite3_step(raw)) == SQLITE_ROW) {
      std::vector<std::string> row;
      for (int i = 0; i < sqlite3_column_count(raw); ++i) {
        auto text = reinterpret_cast<const char*>(sqlite3_column_text(raw, i));
        row.push_back(text ? text : "<Null>");
      }
      rows.push_back(std::move(row));
    }
    if (rc != SQLITE_DONE) return {{std::string("error: ") + sqlite3_errmsg(db_)}};
    return rows;
  }
  bool Embedded() const override { return true; }

 private:
  sqlite3* db_ = nullptr;
};

class ServerDatabase : public SemanticsDatabase {
 public:
  explicit ServerDatabase(const std::string& connection)
      : tool_(connection, postgres::Session::Purpose::Tool),
        component_(connection, postgres::Session::Purpose::Component) {}

  void Exec(const std::string& sql) override {
    static const std::vector<std::pair<std::regex, std::string>> types = {
        {std::regex(R"(\bDATETIME\b)"), "timestamp"},
        {std::regex(R"(\bDOUBLE\b)"), "double precision"},
        {std::regex(R"(\bBOOLEAN\b)"), "jet_yesno"}};
    std::string native = sql;
    for (const auto& [from, to] : types) native = std::regex_replace(native, from, to);
    try {
      tool_.Execute(native);
    } catch (const Error& e) {
      ADD_FAILURE() << native << ": " << e.description();
    }
  }

  std::vector<std::vector<std::string>> Rows(const std::string& jetSelect) override {
    try {
      postgres::Result r = component_.Exec(TranslateStatement(jetSelect, Dialect::Postgres));
      std::vector<std::vector<std::string>> rows;
      for (int i = 0; i < r.Rows(); ++i) {
        std::vector<std::string> row;
        for (int c = 0; c < r.Columns(); ++c)
          row.push_back(r.IsNull(i, c) ? "<Null>" : r.Text(i, c));
        rows.push_back(std::move(row));
      }
      return rows;
    } catch (const Error& e) {
      // The server's own text, as SQLite's test database reports it.
      static const std::string prefix = "Error en la llamada al motor de base de datos: ";
      std::string text = e.description();
      if (text.rfind(prefix, 0) == 0) text = text.substr(prefix.size());
      return {{"error: " + text}};
    }
  }

  bool Embedded() const override { return false; }

 private:
  postgres::Session tool_;
  postgres::Session component_;
};

inline std::unique_ptr<SemanticsDatabase> MakeServerDatabase(const std::string& templ) {
  if (!cp::testing::TestServer()) return nullptr;
  return std::make_unique<ServerDatabase>(cp::testing::CreateServerDatabase(templ, true));
}

}  // namespace cp::jetsql::testing
