#pragma once
// Writes generated rows into an SQLite file through prepared INSERT statements, and runs
// plain statements (the schema, the transaction) on the same connection.
#include <memory>
#include <string>

#include "cli/row_sink.h"
#include "platform/sqlite/connection.h"

namespace cp::cli {

// Runs one native SQLite statement that returns no rows; engine errors raise as cp::Error.
void ExecuteNative(const std::shared_ptr<sqlite::Connection>& connection, const std::string& sql);

class SqliteSink : public RowSink {
 public:
  explicit SqliteSink(std::shared_ptr<sqlite::Connection> connection)
      : connection_(std::move(connection)) {}

  // Each writer holds one prepared INSERT for its table, reused for every row.
  std::unique_ptr<TableWriter> Open(const std::string& table,
                                    const std::vector<std::string>& columns) override;

 private:
  std::shared_ptr<sqlite::Connection> connection_;
};

// One transaction on a connection: Commit() makes it last; leaving the scope without it rolls
// everything back.
class Transaction {
 public:
  explicit Transaction(std::shared_ptr<sqlite::Connection> connection);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();
  void Commit();

 private:
  std::shared_ptr<sqlite::Connection> connection_;
  bool open_ = true;
};

}  // namespace cp::cli
