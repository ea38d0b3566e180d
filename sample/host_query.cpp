#include "sample/host_query.h"

#include "common/entity_catalogue.h"
#include "platform/core/error.h"

namespace cp::sample {

std::string HostQuery(const std::string& entity, const std::string& condition) {
  const EntityInfo* e = FindEntity(entity);
  if (!e) throw Error(cp::err::kInvalidProcedureCall, "Entidad desconocida: '" + entity + "'.");
  const std::string table = e->table;
  std::string sql = "SELECT " + table + ".* FROM " + table;
  // Property and demand conditions may name the owner ("Propietario" searches Cliente.Alias).
  if (e->control == CriteriaControlKind::Properties)
    sql += " LEFT JOIN Cliente ON Cliente.IdCliente = " + table + ".IdCliente";
  if (!condition.empty()) sql += " WHERE " + condition;
  return sql;
}

}  // namespace cp::sample
