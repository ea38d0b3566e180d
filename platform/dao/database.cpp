#include "platform/dao/database.h"

#include "platform/dao/dao_errors.h"
#include "platform/jetsql/translator.h"

namespace cp::dao {

Database::Database(std::shared_ptr<Engine> engine) : engine_(std::move(engine)) {}

Engine& Database::Live() const {
  if (!engine_) RaiseDao(daoerr::kObjectInvalid, kDatabaseSource);
  return *engine_;
}

const std::string& Database::Name() const { return Live().Name(); }

Recordset Database::OpenRecordset(const std::string& sql, RecordsetType type) {
  Engine& engine = Live();
  const std::string translated =
      jetsql::TranslateStatement(sql, engine.dialect(), engine.TranslationOptions());
  return Recordset(engine_, engine.Query(translated), type);
}

TableDef Database::TableDefs(const std::string& name) const {
  return TableDef(Live().Table(name));
}

void Database::Close() {
  Live();
  engine_.reset();
}

}  // namespace cp::dao
