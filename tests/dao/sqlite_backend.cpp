// The SQLite backend of the DAO suite: databases in temporary files, removed afterwards.
#include <unistd.h>

#include <charconv>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/core/conversions.h"
#include "platform/core/string_functions.h"
#include "platform/core/date.h"
#include "platform/dao/types.h"
#include "platform/sqlite/native.h"
#include "tests/dao/backend.h"

namespace cp::dao::testing {
namespace {

class SqliteBackend : public TestBackend {
 public:
  ~SqliteBackend() override {
    std::error_code ec;
    for (const auto& f : files_) std::filesystem::remove(f, ec);
  }

  std::string CreateDatabase() override {
    static int counter = 0;
    const auto path = std::filesystem::temp_directory_path() /
                      ("cp_dao_" + std::to_string(::getpid()) + "_" +
                       std::to_string(++counter) + ".sqlite");
    std::filesystem::remove(path);
    files_.push_back(path.string());
    sqlite::NativeDatabase(path.string(), sqlite::NativeDatabase::Mode::CreateIfMissing);
    return path.string();
  }

  void Execute(const std::string& connection, const std::string& sql) override {
    sqlite::NativeDatabase(connection).ExecuteNative(sql);
  }

  std::string Declare(int daoType, long size) const override {
    switch (daoType) {
      case dbText: return "VARCHAR(" + std::to_string(size) + ")";
      case dbMemo: return "TEXT";
      case dbLong: return "INTEGER";
      case dbInteger: return "SMALLINT";
      case dbByte: return "TINYINT";
      case dbBoolean: return "BOOLEAN";
      case dbDouble: return "DOUBLE";
      case dbCurrency: return "CURRENCY";
      case dbDate: return "DATETIME";
      default: return "";
    }
  }

  std::string AutoIncrementKey() const override { return "INTEGER PRIMARY KEY AUTOINCREMENT"; }
  std::string PlainKey() const override { return "INTEGER PRIMARY KEY"; }

  std::string Literal(const Variant& value) const override {
    return NativeLiteral(value, "'");
  }

 private:
  std::vector<std::string> files_;
};

}  // namespace

std::vector<BackendParam> AllBackends() {
  std::vector<BackendParam> all = {
      {"Sqlite", [] { return std::unique_ptr<TestBackend>(new SqliteBackend()); }}};
  for (auto& server : ServerBackends()) all.push_back(std::move(server));
  return all;
}

}  // namespace cp::dao::testing
