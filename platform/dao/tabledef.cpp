#include "platform/dao/tabledef.h"

#include "platform/dao/dao_errors.h"

namespace cp::dao {

TableDef::TableDef(TableDefinition definition) : definition_(std::move(definition)) {}

Field TableDef::Fields(const std::string& name) const {
  for (const auto& f : definition_.fields)
    if (SameName(f.name, name)) return Field(f);
  RaiseDao(daoerr::kItemNotFound, kDatabaseSource);
}

Field TableDef::Fields(int index) const {
  if (index < 0 || index >= FieldCount()) RaiseDao(daoerr::kItemNotFound, kDatabaseSource);
  return Field(definition_.fields[static_cast<std::size_t>(index)]);
}

}  // namespace cp::dao
