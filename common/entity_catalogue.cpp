#include "common/entity_catalogue.h"

namespace cp {
namespace {

using enum CriteriaControlKind;
using enum MarketSide;

// "Clientes Archivados" shares the live clients' table and columns on purpose.
constexpr EntityInfo kCatalogue[] = {
    {"Clientes", "Cliente", "IdCliente", "TfnoCli", "CorreoECli", Contacts, None},
    {"Abogados", "Abogado", "IdAbogado", "TfnoAbogado", "CorreoEAbogado", Contacts, None},
    {"Agencias", "Agencia", "IdAgencia", "TfnoAgencia", "CorreoEAgencia", Contacts, None},
    {"Clientes Contrarios", "ClienteContrario", "IdClienteContrario", "TfnoCliCont",
     "CorreoECliCont", Contacts, None},
    {"Procuradores", "Procurador", "IdProcurador", "TfnoProcurador", "CorreoEProcurador",
     Contacts, None},
    {"Clientes Archivados", "Cliente", "IdCliente", "TfnoCli", "CorreoECli", Contacts, None},
    {"Clientes Contrarios Archivados", "ClienteContArch", "IdClienteContArch",
     "TfnoCliContArch", "CorreoECliContArch", Contacts, None},
    {"Inm. Propios", "IPropio", "IdIPropio", "", "", Properties, Offer},
    {"Inm. Ajenos", "IAjeno", "IdIAjeno", "", "", Properties, Offer},
    {"Inm. Archivados", "IArchivado", "IdIArchivado", "", "", Properties, None},
    {"Inm. Vendidos", "IVendido", "IdIVendido", "", "", Properties, None},
    {"Demandas", "Demanda", "IdDemanda", "", "", Properties, Demand},
};

}  // namespace

std::span<const EntityInfo> EntityCatalogue() { return kCatalogue; }

const EntityInfo* FindEntity(std::string_view name) {
  for (const EntityInfo& e : kCatalogue)
    if (name == e.name) return &e;
  return nullptr;
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
