#include "sample/host_query.h"

#include "common/entity_catalogue.h"
#include "platform/core/error.h"

namespace cp::sample {

std::string HostQuery(const std::string& entity, const std::string& condition) {
  const EntityInfo* e = FindEntity(entity);
  if (!e) throw Error(cp::err::kInvalidProcedureCall, "Entidad desconocida: '" + entity + "'.");
  return EntityQuery(*e, condition);
}

}  // namespace cp::sample
