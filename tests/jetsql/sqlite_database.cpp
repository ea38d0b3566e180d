#include "tests/jetsql/sqlite_database.h"

#include <gtest/gtest.h>

#include "platform/jetsql/translator.h"
#include "platform/sqlite/jet_functions.h"

namespace cp::jetsql::testing {

MemoryDatabase::MemoryDatabase() {
  if (sqlite3_open(":memory:", &db_) != SQLITE_OK) ADD_FAILURE() << "cannot open :memory:";
  cp::sqlite::RegisterJetFunctions(db_);
}

MemoryDatabase::~MemoryDatabase() { sqlite3_close(db_); }

void MemoryDatabase::Exec(const std::string& sql) {
  char* message = nullptr;
  if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
    ADD_FAILURE() << sql << ": " << (message ? message : "?");
    sqlite3_free(message);
  }
}

std::vector<std::vector<std::string>> MemoryDatabase::Rows(const std::string& jetSelect) {
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

std::vector<long> SemanticsDatabase::Ids(const std::string& jetSelect) {
  std::vector<long> ids;
  for (const auto& row : Rows(jetSelect)) ids.push_back(std::stol(row.at(0)));
  return ids;
}

std::string SemanticsDatabase::Value(const std::string& jetSelect) {
  auto rows = Rows(jetSelect);
  if (rows.size() != 1 || rows[0].size() != 1) {
    ADD_FAILURE() << jetSelect << ": not one value";
    return {};
  }
  return rows[0][0];
}

}  // namespace cp::jetsql::testing
