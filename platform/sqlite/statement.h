#pragma once
// Statement: one prepared SQLite statement (RAII), keeping its connection alive. Errors raise
// through Connection::Fail with the context and source given when it was prepared.
#include <memory>
#include <string>
#include <string_view>

#include "platform/dao/types.h"
#include "platform/sqlite/connection.h"

struct sqlite3_stmt;

namespace cp::sqlite {

class Statement {
 public:
  // Prepares exactly one statement; anything but blanks and ";" after it raises 3142.
  Statement(std::shared_ptr<Connection> connection, const std::string& sql,
            dao::SqlContext context, std::string_view source);
  Statement(Statement&&) noexcept;
  Statement& operator=(Statement&&) noexcept;
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // Runs to the next row: true when a row is available, false when the statement is done.
  bool Step();
  // Makes the statement ready to run again; bindings stay.
  void Reset();
  // Binds a value to a 1-based parameter position.
  void Bind(int position, const dao::Cell& value);

  int ColumnCount() const;
  std::string ColumnName(int column) const;
  // The declared type of a column taken straight from a table; "" for expressions.
  std::string DeclaredType(int column) const;
  dao::Cell Column(int column) const;
  // True when running the statement cannot change the database.
  bool ReadOnly() const;

  const std::string& sql() const { return sql_; }

 private:
  std::shared_ptr<Connection> connection_;
  sqlite3_stmt* stmt_ = nullptr;
  std::string sql_;
  dao::SqlContext context_;
  std::string source_;
};

}  // namespace cp::sqlite
