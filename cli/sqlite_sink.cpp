#include "cli/sqlite_sink.h"

#include <sqlite3.h>

#include "platform/sqlite/statement.h"

namespace cp::cli {
namespace {

constexpr std::string_view kSource = "CriterioPredios";

class SqliteWriter : public TableWriter {
 public:
  SqliteWriter(std::shared_ptr<sqlite::Connection> connection, const std::string& sql,
               std::size_t columns)
      : statement_(std::move(connection), sql, dao::SqlContext::Statement, kSource),
        columns_(columns) {}

  void Write(const std::vector<DbValue>& row) override {
    if (row.size() != columns_) Raise(err::kInvalidProcedureCall);
    for (std::size_t i = 0; i < row.size(); ++i) statement_.Bind(static_cast<int>(i) + 1, row[i]);
    statement_.Step();
    statement_.Reset();
  }

 private:
  sqlite::Statement statement_;
  std::size_t columns_;
};

}  // namespace

void ExecuteNative(const std::shared_ptr<sqlite::Connection>& connection, const std::string& sql) {
  sqlite::Statement statement(connection, sql, dao::SqlContext::Statement, kSource);
  while (statement.Step()) {
  }
}

std::unique_ptr<TableWriter> SqliteSink::Open(const std::string& table,
                                              const std::vector<std::string>& columns) {
  std::string names, marks;
  for (const std::string& c : columns) {
    if (!names.empty()) names += ", ", marks += ", ";
    names += "\"" + c + "\"";
    marks += "?";
  }
  return std::make_unique<SqliteWriter>(
      connection_, "INSERT INTO \"" + table + "\" (" + names + ") VALUES (" + marks + ")",
      columns.size());
}

Transaction::Transaction(std::shared_ptr<sqlite::Connection> connection)
    : connection_(std::move(connection)) {
  ExecuteNative(connection_, "BEGIN");
}

Transaction::~Transaction() {
  // Called while a failure unwinds: roll back without raising, the original error wins.
  if (open_) sqlite3_exec(connection_->get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  ExecuteNative(connection_, "COMMIT");
  open_ = false;
}

}  // namespace cp::cli
