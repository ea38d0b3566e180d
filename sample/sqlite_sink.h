#pragma once
// Writes generated rows into an SQLite file through the engine's native prepared INSERT
// statements (the caller owns the database and its transaction).
#include <memory>
#include <string>

#include "sample/row_sink.h"
#include "platform/sqlite/native.h"

namespace cp::sample {

class SqliteSink : public RowSink {
 public:
  // database must outlive the sink and every writer it opens.
  explicit SqliteSink(sqlite::NativeDatabase& database) : database_(database) {}

  // Each writer holds one prepared INSERT for its table, reused for every row.
  std::unique_ptr<TableWriter> Open(const std::string& table,
                                    const std::vector<std::string>& columns) override;

 private:
  sqlite::NativeDatabase& database_;
};

}  // namespace cp::sample
