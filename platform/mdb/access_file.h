#pragma once
// An office's Access database (.mdb, Jet 3 and Jet 4; .accdb as far as mdbtools reads it),
// read in process through mdbtools' libmdb: its user tables, their columns with types, and
// their rows as typed values. libmdb stays out of this header.
//
//   mdb::AccessFile file("agencia.mdb");
//   for (const mdb::AccessTable& t : file.tables())
//     file.ReadRows(t.name, [&](const std::vector<Variant>& row) { ... });
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/core/variant.h"

namespace cp::mdb {

enum class ColumnType {
  YesNo,     // read as Long 1 or 0 (Access keeps -1 and 0); never Null
  Byte,      // Long
  Integer,   // Long (16 bits)
  Long,      // Long (32 bits); AutoNumber keys too
  Currency,  // Double, the nearest one to the stored four-decimal amount
  Single,    // Double, the exact value of the stored float
  Double,    // Double
  Decimal,   // Double
  DateTime,  // Date
  Text,      // String
  Memo,      // String, in full whatever its length
  Guid,      // String "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}"
  Binary,    // OLE objects, binary and attachment columns: not read, always Null
};

// The Spanish name Access shows for a type ("Texto", "Memo", "Sí/No"...).
std::string_view TypeName(ColumnType type);

struct AccessColumn {
  std::string name;
  ColumnType type = ColumnType::Text;
  int size = 0;  // Text: characters; other types: bytes in the row
  bool auto_number = false;
};

struct AccessTable {
  std::string name;
  std::vector<AccessColumn> columns;
  long rows = 0;  // as the table's definition records it

  const AccessColumn* Find(std::string_view column) const;
};

class AccessFile {
 public:
  // Opens the file and reads its user tables (system tables left out) and their columns.
  // Raises 53 when the file cannot be opened, ownerr::kNotAnAccessFile when it is not an
  // Access database, kAccessFileTruncated when it is cut short or its tables cannot be read,
  // kAccessVersionUnreadable for a version the reader does not know; Spanish texts that name
  // the file.
  explicit AccessFile(const std::string& path);
  AccessFile(const AccessFile&) = delete;
  AccessFile& operator=(const AccessFile&) = delete;
  ~AccessFile();

  const std::string& path() const;
  const std::vector<AccessTable>& tables() const;
  // The table called name (exact), or nullptr.
  const AccessTable* Find(std::string_view name) const;

  // Calls row once per row of the table, in the file's order, with one value per column as
  // ColumnType says, Null where the row holds none (the empty text stays the empty text).
  // The vector is reused between calls. Raises kAccessFileTruncated when fewer rows can be
  // read than the table records, 3078 for an unknown table; what row throws passes through.
  using RowFunction = std::function<void(const std::vector<Variant>& row)>;
  void ReadRows(std::string_view table, const RowFunction& row) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace cp::mdb
