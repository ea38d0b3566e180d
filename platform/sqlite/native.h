#pragma once
// Native SQLite access for tools (schema creation, bulk loading): SQL in SQLite's own dialect,
// run as written, with writes allowed. The component never uses this: its Jet SQL goes
// through dao::Database. The file stays a plain SQLite file.
//
//   NativeDatabase db(path, NativeDatabase::Mode::CreateIfMissing);
//   db.ExecuteNative("CREATE TABLE Zona (IdZona INTEGER PRIMARY KEY AUTOINCREMENT, ...)");
//   Transaction tx(db);
//   auto insert = db.Prepare("INSERT INTO Zona (Nombre) VALUES (?1)");
//   for (...) { insert.Bind(1, name); insert.Step(); insert.Reset(); }
//   tx.Commit();
#include <cstdint>
#include <memory>
#include <string>

#include "platform/core/variant.h"
#include "platform/dao/types.h"

namespace cp::sqlite {

class Connection;
class Statement;

// A prepared native statement with 1-based positional parameters.
class NativeStatement {
 public:
  NativeStatement(NativeStatement&&) noexcept;
  NativeStatement& operator=(NativeStatement&&) noexcept;
  ~NativeStatement();

  // Binds a value: Empty and Null as NULL, Boolean as 0/1, Integer/Long as integers, Double,
  // Date as ISO text ("yyyy-mm-dd", with " hh:mm:ss" unless the time to the second is
  // midnight: StoredIsoDate), String as text.
  // Arrays and objects raise 13.
  void Bind(int position, const Variant& value);
  // Binds a stored value as it is (a bulk load's rows, already in the engine's types).
  void BindCell(int position, const dao::Cell& value);
  // Runs to the next row: true when a row is available, false when done.
  bool Step();
  // Ready to run again with the same bindings (call after each row of a bulk insert).
  void Reset();
  int ColumnCount() const;
  std::string ColumnName(int column) const;
  // A column of the current row as its natural Variant: Null, Long (Double when out of range),
  // Double or String.
  Variant Column(int column) const;

 private:
  friend class NativeDatabase;
  explicit NativeStatement(std::unique_ptr<Statement> statement);
  std::unique_ptr<Statement> statement_;
};

class NativeDatabase {
 public:
  enum class Mode { OpenExisting, CreateIfMissing };
  // Opens (or creates) a file read-write, with the same busy timeout and Jet functions as the
  // component's connections. Errors as dao::OpenDatabase raises them (3024, 3044, 3343).
  explicit NativeDatabase(const std::string& path, Mode mode = Mode::OpenExisting);
  NativeDatabase(NativeDatabase&&) noexcept;
  NativeDatabase& operator=(NativeDatabase&&) noexcept;
  ~NativeDatabase();

  // Runs any number of ";"-separated statements. Errors raise with DAO numbers, source
  // "SQLite".
  void ExecuteNative(const std::string& sql);
  // Prepares exactly one statement.
  NativeStatement Prepare(const std::string& sql);
  void Begin();
  void Commit();
  void Rollback();
  // Copies the whole database, page by page, into the file at path (created, or an empty
  // one), which is written without a journal and not synced: the caller syncs it.
  void CopyTo(const std::string& path);
  // The rowid of the last row inserted on this connection.
  std::int64_t LastInsertId() const;

 private:
  std::shared_ptr<Connection> connection_;
};

// A transaction for a scope: begins at once, rolls back on destruction unless committed.
class Transaction {
 public:
  explicit Transaction(NativeDatabase& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();
  void Commit();

 private:
  NativeDatabase& database_;
  bool open_ = true;
};

}  // namespace cp::sqlite
