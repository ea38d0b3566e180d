#pragma once
// DatabaseObject: an open Database as a late-bound object, so that a host that talks to the
// component by name can hand it its database as a Variant (the BD property).
#include <memory>

#include "platform/automation/dispatch_object.h"
#include "platform/dao/database.h"

namespace cp::dao {

class DatabaseObject : public DispatchObject {
 public:
  // Shares ownership of db (not null).
  explicit DatabaseObject(std::shared_ptr<Database> db);
  const std::shared_ptr<Database>& database() const { return db_; }

 private:
  std::shared_ptr<Database> db_;
};

// The Database that a Variant carries: a DatabaseObject. Anything else raises 13.
std::shared_ptr<Database> DatabaseFromVariant(const Variant& value);

}  // namespace cp::dao
