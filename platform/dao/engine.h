#pragma once
// What a database engine offers the DAO-like API. Everything handed to an engine is already
// translated into its own dialect; engines raise cp::Error with DAO numbers (dao_errors.h).
// Implementations: platform/sqlite (embedded), platform/postgres (server). Engine headers stay out of this interface.
#include <memory>
#include <string>
#include <vector>

#include "platform/dao/types.h"
#include "platform/jetsql/translator.h"

namespace cp::dao {

// A result column: its name and, when the column comes straight from a table, the DAO type
// and size of its declaration (type 0 for expressions).
struct ColumnInfo {
  std::string name;
  ColumnType declared;
};

// A field of a table definition.
struct FieldDefinition {
  std::string name;
  int type = 0;        // DAO type code (0 when the declaration is unknown)
  long size = 0;
  long attributes = 0;  // dbFixedField / dbVariableField, dbAutoIncrField, dbUpdatableField
};

struct TableDefinition {
  std::string name;  // as the database spells it
  std::vector<FieldDefinition> fields;  // in column order
};

// A running query, positioned before its first row. Keeps its engine alive.
class Cursor {
 public:
  virtual ~Cursor() = default;
  virtual const std::vector<ColumnInfo>& Columns() const = 0;
  // Moves to the next row; false once there are no more. Engine errors raise.
  virtual bool Next() = 0;
  // The value of a column of the current row (only after Next returned true).
  virtual Cell Value(int column) const = 0;
};

// A translated condition over a fixed list of column names, evaluated against rows of
// values given in that order.
class RowFilter {
 public:
  virtual ~RowFilter() = default;
  // True when the condition holds for the row (Null counts as false).
  virtual bool Matches(const std::vector<Cell>& row) = 0;
};

class Engine {
 public:
  virtual ~Engine() = default;
  // The connection text the engine was opened with (the file path for SQLite).
  virtual const std::string& Name() const = 0;
  // The dialect that statements must be translated into.
  virtual jetsql::Dialect dialect() const = 0;
  // Runs one read-only statement. A statement that would write raises 3219; errors of the
  // statement raise as RaiseEngineError maps them (context Statement).
  virtual std::unique_ptr<Cursor> Query(const std::string& sql) = 0;
  // Prepares a condition over the given columns; unknown names and syntax raise as for a
  // criterion (3070, 3077).
  virtual std::unique_ptr<RowFilter> PrepareRowFilter(const std::vector<std::string>& columns,
                                                      const std::string& condition) = 0;
  // The definition of a table (names compare case-insensitively); 3265 when there is none.
  virtual TableDefinition Table(const std::string& name) = 0;
  // Stops the statement that another thread is running on this engine: it raises instead of
  // going on. Callable from any thread while the engine lives. Where the engine can, the stop
  // also holds for statements started afterwards, until Resume. By default nothing is stopped.
  virtual void Interrupt() {}
  // Lets statements run again after Interrupt. Called by the thread that runs them.
  virtual void Resume() {}
  // What the engine vouches for about its schema right now, for translating a statement
  // that runs at once. By default nothing, which is always correct.
  virtual jetsql::TranslateOptions TranslationOptions() { return {}; }
};

}  // namespace cp::dao
