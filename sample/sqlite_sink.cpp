#include "sample/sqlite_sink.h"

#include "platform/core/error.h"

namespace cp::sample {
namespace {

class SqliteWriter : public TableWriter {
 public:
  SqliteWriter(sqlite::NativeStatement statement, std::size_t columns)
      : statement_(std::move(statement)), columns_(columns) {}

  void Write(const std::vector<DbValue>& row) override {
    if (row.size() != columns_) Raise(err::kInvalidProcedureCall);
    for (std::size_t i = 0; i < row.size(); ++i)
      statement_.BindCell(static_cast<int>(i) + 1, row[i]);
    statement_.Step();
    statement_.Reset();
  }

 private:
  sqlite::NativeStatement statement_;
  std::size_t columns_;
};

}  // namespace

std::unique_ptr<TableWriter> SqliteSink::Open(const std::string& table,
                                              const std::vector<std::string>& columns) {
  std::string names, marks;
  for (const std::string& c : columns) {
    if (!names.empty()) names += ", ", marks += ", ";
    names += "\"" + c + "\"";
    marks += "?";
  }
  return std::make_unique<SqliteWriter>(
      database_.Prepare("INSERT INTO \"" + table + "\" (" + names + ") VALUES (" + marks + ")"),
      columns.size());
}

}  // namespace cp::sample
