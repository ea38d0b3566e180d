#pragma once
// Brings an office's Access file into a new agency database: an SQLite file, or a database
// on a PostgreSQL server (a connection text, as everywhere a database is named). The target
// gets the agency schema, every table of the file that the schema knows, and the tables and
// columns it does not know as they are, all or nothing. CheckImport then compares the target
// with the file, table by table.
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/mdb/access_file.h"
#include "sample/schema.h"

namespace cp::sample {

// A column of the file copied into the target column called target.
struct CopiedColumn {
  std::size_t source = 0;  // its index among the file table's columns
  std::string target;
};

// How one table of the file lands in the target.
struct TablePlan {
  const mdb::AccessTable* source = nullptr;
  SchemaTable target;              // the schema's table (the schema's spelling), or a new one
  bool in_schema = false;          // false: a table the schema does not know, created as it is
  std::vector<CopiedColumn> copied;         // in the file's column order
  std::vector<SchemaColumn> added_columns;  // columns the schema's table lacks, added to it
  std::vector<std::string> skipped_columns;  // OLE and binary columns, which are not copied
};

// The plan for every user table of the file, in the schema's order, then the tables that it
// does not know in the file's order. Names match as Jet matches them (case-insensitively).
std::vector<TablePlan> PlanImport(const std::vector<mdb::AccessTable>& tables);

// Schema tables the file does not have (they stay empty in the target).
std::vector<std::string> MissingTables(const std::vector<mdb::AccessTable>& tables);

// The column of the target for an Access column (its name kept).
SchemaColumn TargetColumn(const mdb::AccessColumn& column, bool key);

// Called as a table is copied: its name, rows done so far and the rows it holds; the last
// call of a table has done == rows read. What it throws aborts the import, which then leaves
// nothing behind, and passes through.
using ImportProgress = std::function<void(const std::string& table, long done, long total)>;

struct ImportOptions {
  bool replace = false;  // an existing target is replaced (only when it succeeds)
  ImportProgress progress;
};

struct ImportedTable {
  std::string name;
  long rows = 0;
  bool in_schema = true;
  std::vector<std::string> added_columns;
  std::vector<std::string> skipped_columns;
};

struct ImportSummary {
  std::vector<ImportedTable> tables;
  std::vector<std::string> missing_tables;
};

// Imports the file into target. An SQLite target is built apart and appears only whole (a
// rename at the end); a server target is written in one transaction. Raises 58 when the
// target exists (a file, or a server database with the tables) and replace is off, the
// reader's errors for a bad file (before anything is created), and any write failure; none
// leaves anything behind.
ImportSummary ImportAccess(const std::string& mdbPath, const std::string& target,
                           const ImportOptions& options = {});

// One table compared: rows and a checksum of every copied value (independent of row order)
// on each side.
struct TableCheck {
  std::string name;
  long access_rows = 0, target_rows = 0;
  std::uint64_t access_sum = 0, target_sum = 0;
  bool ok() const { return access_rows == target_rows && access_sum == target_sum; }
};

// Reads the file and the target again and compares each imported table. Raises what opening
// either raises.
std::vector<TableCheck> CheckImport(const std::string& mdbPath, const std::string& target);

// A value's text in the checksum: the same for the file's value and the target's copy of it
// whatever the engine stores (an integral Currency, a date at midnight...). Null has a text
// no value has.
std::string CanonicalText(const Variant& value);

}  // namespace cp::sample
