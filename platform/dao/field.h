#pragma once
// Field: one column of a recordset (its value follows the recordset's current record) or of a
// table definition (name, type, size, attributes; no value). A Field is also a late-bound
// object, because the list picker receives table-definition fields as property values.
#include <memory>
#include <string>
#include <vector>

#include "platform/automation/dispatch.h"
#include "platform/dao/engine.h"

namespace cp::dao {

namespace detail {
// The current record of a recordset, as its fields read it.
class CurrentRow {
 public:
  virtual ~CurrentRow() = default;
  // The stored value of a column of the current record; raises 3021 at EOF, 3420 once the
  // recordset is closed.
  virtual const Cell& Current(int column) const = 0;
  // The DAO type of a column whose declaration gives none, inferred from its values.
  virtual int InferredType(int column) const = 0;
};
}  // namespace detail

class Field : public Dispatch {
 public:
  // A field of a table definition.
  explicit Field(FieldDefinition definition);
  // A field of a recordset: column `column` of the rows that `rows` points at.
  Field(FieldDefinition definition, std::shared_ptr<const detail::CurrentRow> rows, int column);

  const std::string& Name() const { return definition_.name; }
  // DAO type code (dbText, dbLong, ...); for an expression column, inferred from its values.
  int Type() const;
  // Size in bytes, or the maximum length of a text field; 0 for memo.
  long Size() const;
  // Attribute bits; dbAutoIncrField (16) marks an auto-increment key.
  long Attributes() const { return definition_.attributes; }
  // The value in the current record, typed as types.h ToVariant says. Raises 3021 at EOF,
  // 3420 on a closed recordset, 3219 for a field of a table definition.
  Variant Value() const;

  // Late binding: properties "Name", "Type" (Integer), "Size" (Long), "Attributes" (Long) and
  // "Value", any case. Every property is read-only here (3027 on a write); unknown names 438.
  Variant GetProperty(const std::string& name) override;
  void SetProperty(const std::string& name, const Variant& value) override;
  // A Field has no methods: always 438.
  Variant CallMethod(const std::string& name, const std::vector<Variant>& args = {}) override;

 private:
  FieldDefinition definition_;
  std::shared_ptr<const detail::CurrentRow> rows_;
  int column_ = -1;
};

}  // namespace cp::dao
