#pragma once
// TableDef: the definition of one table, read fresh from the database each time it is asked
// for. Its fields carry name, type, size and attributes (dbAutoIncrField for a key that the
// engine numbers itself).
#include <string>

#include "platform/dao/engine.h"
#include "platform/dao/field.h"

namespace cp::dao {

class TableDef {
 public:
  explicit TableDef(TableDefinition definition);

  const std::string& Name() const { return definition_.name; }
  int FieldCount() const { return static_cast<int>(definition_.fields.size()); }
  // A field by name (any case) or by position; 3265 when there is none.
  Field Fields(const std::string& name) const;
  Field Fields(int index) const;

 private:
  TableDefinition definition_;
};

}  // namespace cp::dao
