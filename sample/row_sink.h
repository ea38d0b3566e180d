#pragma once
// Where generated rows go: the database file through native prepared statements, or
// memory in tests. The demo data generator only knows this interface.
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace cp::sample {

// One stored value: Null, an integer, a double or text (dates are ISO text).
using DbValue = std::variant<std::monostate, std::int64_t, double, std::string>;

// Writes rows into one table, one value per column given when it was opened.
class TableWriter {
 public:
  virtual ~TableWriter() = default;
  // Throws cp::Error when the row cannot be stored.
  virtual void Write(const std::vector<DbValue>& row) = 0;
};

class RowSink {
 public:
  virtual ~RowSink() = default;
  // A writer for table with these columns; it stays usable while the sink lives, and several
  // may be open at once.
  virtual std::unique_ptr<TableWriter> Open(const std::string& table,
                                            const std::vector<std::string>& columns) = 0;
};

// Keeps every row in memory, by table, in the order written.
class MemorySink : public RowSink {
 public:
  struct Table {
    std::vector<std::string> columns;
    std::vector<std::vector<DbValue>> rows;
  };

  std::unique_ptr<TableWriter> Open(const std::string& table,
                                    const std::vector<std::string>& columns) override;
  const std::map<std::string, Table>& tables() const { return tables_; }

 private:
  std::map<std::string, Table> tables_;
};

}  // namespace cp::sample
