#pragma once
// Scratch SQLite databases for tests: a file created afresh with the agency schema and the
// rows a suite needs (named after the suite and the process so parallel runs do not
// collide), read and written through plain sqlite3, with none of our functions registered.
#include <sqlite3.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "sample/schema.h"
#include "platform/sqlite/native.h"

namespace cp::testing {

// A fresh temporary folder, removed with everything in it at the end.
class ScratchDir {
 public:
  ScratchDir() {
    std::string pattern = (std::filesystem::temp_directory_path() / "cp_test_XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("mkdtemp");
    path_ = pattern;
  }
  ~ScratchDir() { std::error_code ec; std::filesystem::remove_all(path_, ec); }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// A result row as text; Null is reported as the string "<null>".
using TextRow = std::vector<std::string>;
inline const std::string kNullText = "<null>";

class ScratchDb {
 public:
  // Creates the file afresh (schema, then rows) and returns its path; the caller removes it.
  static std::string Create(const std::string& tag, const std::string& rows = "") {
    const std::string path = (std::filesystem::temp_directory_path() /
                              (tag + "_" + std::to_string(::getpid()) + ".sqlite"))
                                 .string();
    std::filesystem::remove(path);
    sqlite::NativeDatabase db(path, sqlite::NativeDatabase::Mode::CreateIfMissing);
    sample::CreateSchema([&](const std::string& sql) { db.ExecuteNative(sql); });
    if (!rows.empty()) db.ExecuteNative(rows);
    return path;
  }

  // Opens an existing file.
  explicit ScratchDb(const std::string& path) {
    if (sqlite3_open_v2(path.c_str(), &db_, SQLITE_OPEN_READWRITE, nullptr) != SQLITE_OK)
      throw std::runtime_error("cannot open " + path);
  }
  ~ScratchDb() { sqlite3_close(db_); }
  ScratchDb(const ScratchDb&) = delete;
  ScratchDb& operator=(const ScratchDb&) = delete;

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

}  // namespace cp::testing
