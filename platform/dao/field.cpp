#include "platform/dao/field.h"

#include "platform/core/error.h"
#include "platform/dao/dao_errors.h"

namespace cp::dao {

Field::Field(FieldDefinition definition) : definition_(std::move(definition)) {}

Field::Field(FieldDefinition definition, std::shared_ptr<const detail::CurrentRow> rows,
             int column)
    : definition_(std::move(definition)), rows_(std::move(rows)), column_(column) {}

int Field::Type() const {
  if (definition_.type != 0) return definition_.type;
  return rows_ ? rows_->InferredType(column_) : dbText;
}

long Field::Size() const {
  if (definition_.type != 0) return definition_.size;
  return DefaultSize(Type());
}

Variant Field::Value() const {
  if (!rows_) RaiseDao(daoerr::kInvalidOperation, kFieldSource);
  return ToVariant(rows_->Current(column_), Type());
}

Variant Field::GetProperty(const std::string& name) {
  if (SameName(name, "Name")) return Variant(Name());
  if (SameName(name, "Type")) return Variant(static_cast<std::int16_t>(Type()));
  if (SameName(name, "Size")) return Variant(static_cast<std::int32_t>(Size()));
  if (SameName(name, "Attributes")) return Variant(static_cast<std::int32_t>(Attributes()));
  if (SameName(name, "Value")) return Value();
  Raise(err::kPropertyNotFound);
}

void Field::SetProperty(const std::string& name, const Variant&) {
  for (const char* known : {"Name", "Type", "Size", "Attributes", "Value"})
    if (SameName(name, known)) RaiseDao(daoerr::kReadOnly, kFieldSource);
  Raise(err::kPropertyNotFound);
}

Variant Field::CallMethod(const std::string&, const std::vector<Variant>&) {
  Raise(err::kPropertyNotFound);
}

}  // namespace cp::dao
