#include "sample/sqlite_sink.h"

#include <limits>

#include "platform/core/error.h"

namespace cp::sample {
namespace {

// The engine binds Variants: integers beyond a Long travel as Double, which SQLite stores
// back as an integer in INTEGER columns.
Variant ToVariant(const DbValue& value) {
  if (const auto* i = std::get_if<std::int64_t>(&value)) {
    if (*i >= std::numeric_limits<std::int32_t>::min() &&
        *i <= std::numeric_limits<std::int32_t>::max())
      return Variant(static_cast<std::int32_t>(*i));
    return Variant(static_cast<double>(*i));
  }
  if (const auto* d = std::get_if<double>(&value)) return Variant(*d);
  if (const auto* s = std::get_if<std::string>(&value)) return Variant(*s);
  return Variant::Null();
}

class SqliteWriter : public TableWriter {
 public:
  SqliteWriter(sqlite::NativeStatement statement, std::size_t columns)
      : statement_(std::move(statement)), columns_(columns) {}

  void Write(const std::vector<DbValue>& row) override {
    if (row.size() != columns_) Raise(err::kInvalidProcedureCall);
    for (std::size_t i = 0; i < row.size(); ++i)
      statement_.Bind(static_cast<int>(i) + 1, ToVariant(row[i]));
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
