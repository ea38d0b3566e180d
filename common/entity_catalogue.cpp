#include "common/entity_catalogue.h"

#include "platform/core/text_format.h"

namespace cp {
namespace {

using enum CriteriaControlKind;
using enum MarketSide;

// "Clientes Archivados" shares the live clients' table and columns on purpose.
constexpr EntityInfo kCatalogue[] = {
    {"Clientes", "Cliente", "IdCliente", "TfnoCli", "CorreoECli", Contacts, None, "cliente",
     "clientes", false},
    {"Abogados", "Abogado", "IdAbogado", "TfnoAbogado", "CorreoEAbogado", Contacts, None, "abogado",
     "abogados", false},
    {"Agencias", "Agencia", "IdAgencia", "TfnoAgencia", "CorreoEAgencia", Contacts, None, "agencia",
     "agencias", true},
    {"Clientes Contrarios", "ClienteContrario", "IdClienteContrario", "TfnoCliCont",
     "CorreoECliCont", Contacts, None, "cliente contrario", "clientes contrarios", false},
    {"Procuradores", "Procurador", "IdProcurador", "TfnoProcurador", "CorreoEProcurador", Contacts,
     None, "procurador", "procuradores", false},
    {"Clientes Archivados", "Cliente", "IdCliente", "TfnoCli", "CorreoECli", Contacts, None,
     "cliente archivado", "clientes archivados", false},
    {"Clientes Contrarios Archivados", "ClienteContArch", "IdClienteContArch", "TfnoCliContArch",
     "CorreoECliContArch", Contacts, None, "cliente contrario archivado",
     "clientes contrarios archivados", false},
    {"Inm. Propios", "IPropio", "IdIPropio", "", "", Properties, Offer, "inmueble", "inmuebles",
     false},
    {"Inm. Ajenos", "IAjeno", "IdIAjeno", "", "", Properties, Offer, "inmueble ajeno",
     "inmuebles ajenos", false},
    {"Inm. Archivados", "IArchivado", "IdIArchivado", "", "", Properties, None,
     "inmueble archivado", "inmuebles archivados", false},
    {"Inm. Vendidos", "IVendido", "IdIVendido", "", "", Properties, None, "inmueble vendido",
     "inmuebles vendidos", false},
    {"Demandas", "Demanda", "IdDemanda", "", "", Properties, Demand, "demanda", "demandas", true},
};

}  // namespace

std::span<const EntityInfo> EntityCatalogue() { return kCatalogue; }

const EntityInfo* FindEntity(std::string_view name) {
  for (const EntityInfo& e : kCatalogue)
    if (name == e.name) return &e;
  return nullptr;
}

std::string EntityQuery(const EntityInfo& entity, const std::string& condition) {
  const std::string table = entity.table;
  std::string sql = "SELECT " + table + ".* FROM " + table;
  if (entity.control == CriteriaControlKind::Properties)
    sql += " LEFT JOIN Cliente ON Cliente.IdCliente = " + table + ".IdCliente";
  if (!condition.empty()) sql += " WHERE " + condition;
  return sql;
}

std::string CountText(const EntityInfo& entity, std::int64_t count) {
  if (count <= 0) return std::string(entity.feminine ? "Ninguna " : "Ningún ") + entity.one;
  if (count == 1) return std::string("1 ") + entity.one;
  return FormatNumber(static_cast<double>(count), "#,###") + " " + entity.many;
}

bool CrossesWith(std::string_view from, std::string_view to) {
  const EntityInfo* a = FindEntity(from);
  const EntityInfo* b = FindEntity(to);
  return a && b && a->side != None && b->side != None && a->side != b->side;
}

std::string_view DefaultCrossTarget(std::string_view entity) {
  for (const EntityInfo& e : kCatalogue)
    if (CrossesWith(entity, e.name)) return e.name;
  return {};
}

}  // namespace cp
