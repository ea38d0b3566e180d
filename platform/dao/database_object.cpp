#include "platform/dao/database_object.h"

#include "platform/core/error.h"

namespace cp::dao {

DatabaseObject::DatabaseObject(std::shared_ptr<Database> db) : db_(std::move(db)) {
  Expose("Name", [this] { return Variant(db_->Name()); });
}

std::shared_ptr<Database> DatabaseFromVariant(const Variant& value) {
  auto object = std::dynamic_pointer_cast<DatabaseObject>(value.AsObject());
  if (!object) Raise(err::kTypeMismatch);
  return object->database();
}

}  // namespace cp::dao
