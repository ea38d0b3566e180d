#include "sample/row_sink.h"

#include "platform/core/error.h"

namespace cp::sample {
namespace {

class MemoryWriter : public TableWriter {
 public:
  explicit MemoryWriter(MemorySink::Table& table) : table_(table) {}
  void Write(const std::vector<DbValue>& row) override {
    if (row.size() != table_.columns.size()) Raise(err::kInvalidProcedureCall);
    table_.rows.push_back(row);
  }

 private:
  MemorySink::Table& table_;
};

}  // namespace

std::unique_ptr<TableWriter> MemorySink::Open(const std::string& table,
                                              const std::vector<std::string>& columns) {
  Table& t = tables_[table];
  t.columns = columns;
  return std::make_unique<MemoryWriter>(t);
}

}  // namespace cp::sample
