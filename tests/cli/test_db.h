#pragma once
// Helpers of the tool's tests: a scratch folder removed at the end, and a plain sqlite3
// handle (no functions of ours registered) to read the files the tool writes.
#include <sqlite3.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

namespace cp::cli::testing {

class ScratchDir {
 public:
  ScratchDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "cp_cli_XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp");
    path_ = pattern;
  }
  ~ScratchDir() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// What a subcommand gave: exit status, standard output, standard error.
struct Result {
  int status;
  std::string out, err;
};

// A result row as text; Null is reported as the string "<null>".
using TextRow = std::vector<std::string>;
inline const std::string kNullText = "<null>";

class PlainDb {
 public:
  explicit PlainDb(const std::string& path) {
    if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
      throw std::runtime_error("cannot open " + path);
  }
  ~PlainDb() { sqlite3_close(db_); }
  PlainDb(const PlainDb&) = delete;
  PlainDb& operator=(const PlainDb&) = delete;

  std::vector<TextRow> Rows(const std::string& sql) const {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db_, sql.c_str(), -1, &stmt, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(db_) + std::string(" in ") + sql);
    std::vector<TextRow> rows;
    int rc;
    while ((rc = sqlite3_step(stmt)) == SQLITE_ROW) {
      TextRow row;
      for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
        const auto* text = sqlite3_column_text(stmt, i);
        row.push_back(text ? reinterpret_cast<const char*>(text) : kNullText);
      }
      rows.push_back(std::move(row));
    }
    sqlite3_finalize(stmt);
    if (rc != SQLITE_DONE)
      throw std::runtime_error(sqlite3_errmsg(db_) + std::string(" in ") + sql);
    return rows;
  }
  // The first column of the first row.
  std::string Scalar(const std::string& sql) const {
    auto rows = Rows(sql);
    return rows.empty() ? kNullText : rows.front().front();
  }
  long long Count(const std::string& sql) const { return std::stoll(Scalar(sql)); }
  void Exec(const std::string& sql) {
    char* message = nullptr;
    if (sqlite3_exec(db_, sql.c_str(), nullptr, nullptr, &message) != SQLITE_OK) {
      std::string text = message ? message : "?";
      sqlite3_free(message);
      throw std::runtime_error(text + " in " + sql);
    }
  }

 private:
  sqlite3* db_ = nullptr;
};

}  // namespace cp::cli::testing
