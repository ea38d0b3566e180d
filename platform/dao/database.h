#pragma once
// Database: an open database as DAO's Database object offers it to the component. Every SQL
// text it takes is Jet SQL, translated here for the engine underneath; the component only
// reads through it. The host shares one Database as std::shared_ptr<Database>.
#include <memory>
#include <string>

#include "platform/dao/engine.h"
#include "platform/dao/recordset.h"
#include "platform/dao/tabledef.h"

namespace cp::dao {

class Database {
 public:
  // Wraps an open engine (see OpenDatabase in connect.h for opening one by name).
  explicit Database(std::shared_ptr<Engine> engine);

  // The name the database was opened with (the file path for SQLite). 3420 once closed.
  const std::string& Name() const;
  // Translates a Jet SELECT and opens its rows. Translation errors pass through as the
  // translator raises them; engine errors are mapped as dao_errors.h says (source
  // "DAO.Database"). 3420 once closed.
  Recordset OpenRecordset(const std::string& sql, RecordsetType type = dbOpenSnapshot);
  // The definition of a table; 3265 for an unknown table. 3420 once closed.
  TableDef TableDefs(const std::string& name) const;
  // Lets the engine go; recordsets still open keep reading what they hold. Closing twice
  // raises 3420, as any later use does.
  void Close();
  bool IsOpen() const { return engine_ != nullptr; }

 private:
  Engine& Live() const;
  std::shared_ptr<Engine> engine_;
};

}  // namespace cp::dao
