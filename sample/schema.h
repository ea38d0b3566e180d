#pragma once
// The database schema of the agency files that the component reads: contact, property and
// demand tables, their lookup and join tables. Declared type names are those that the
// DAO-like API maps to DAO type codes (INTEGER, SMALLINT, TINYINT, CURRENCY, DOUBLE,
// VARCHAR(n), TEXT, BOOLEAN, DATETIME); the file stays a plain SQLite file.
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cp::sample {

struct SchemaColumn {
  std::string name;
  std::string type;       // declared type, e.g. "VARCHAR(50)"
  bool auto_key = false;  // INTEGER PRIMARY KEY AUTOINCREMENT
  bool not_null = false;  // Yes/No columns: NOT NULL DEFAULT 0
};

struct SchemaTable {
  std::string name;
  std::vector<SchemaColumn> columns;
  std::vector<std::string> indexed;  // columns with an index of their own

  // The column called name, or nullptr.
  const SchemaColumn* Find(std::string_view column) const;
};

// Every table of the schema, lookup tables first, in creation order.
const std::vector<SchemaTable>& SchemaTables();

// The table called name, or nullptr.
const SchemaTable* FindTable(std::string_view name);

// The CREATE TABLE and CREATE INDEX statements, in execution order.
std::vector<std::string> SchemaStatements();
// Those of one table (any table described this way, in the schema or not).
std::vector<std::string> TableStatements(const SchemaTable& table);
// A column as CREATE TABLE and ALTER TABLE ... ADD COLUMN write it: "\"Name\" TYPE ...".
// A DATETIME column admits only ISO text (sqlite::IsoDateCheck).
std::string ColumnDefinition(const SchemaColumn& column);

// Runs every statement of SchemaStatements() through execute (which throws on failure).
void CreateSchema(const std::function<void(const std::string&)>& execute);

}  // namespace cp::sample
