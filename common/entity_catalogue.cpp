#include "common/entity_catalogue.h"

namespace cp {
namespace {

using enum CriteriaControlKind;

// "Clientes Archivados" shares the live clients' table and columns on purpose.
constexpr EntityInfo kCatalogue[] = {
    {"Clientes", "Cliente", "IdCliente", "TfnoCli", "CorreoECli", Contacts},
    {"Abogados", "Abogado", "IdAbogado", "TfnoAbogado", "CorreoEAbogado", Contacts},
    {"Agencias", "Agencia", "IdAgencia", "TfnoAgencia", "CorreoEAgencia", Contacts},
    {"Clientes Contrarios", "ClienteContrario", "IdClienteContrario", "TfnoCliCont",
     "CorreoECliCont", Contacts},
    {"Procuradores", "Procurador", "IdProcurador", "TfnoProcurador", "CorreoEProcurador",
     Contacts},
    {"Clientes Archivados", "Cliente", "IdCliente", "TfnoCli", "CorreoECli", Contacts},
    {"Clientes Contrarios Archivados", "ClienteContArch", "IdClienteContArch",
     "TfnoCliContArch", "CorreoECliContArch", Contacts},
    {"Inm. Propios", "IPropio", "IdIPropio", "", "", Properties},
    {"Inm. Ajenos", "IAjeno", "IdIAjeno", "", "", Properties},
    {"Inm. Archivados", "IArchivado", "IdIArchivado", "", "", Properties},
    {"Inm. Vendidos", "IVendido", "IdIVendido", "", "", Properties},
    {"Demandas", "Demanda", "IdDemanda", "", "", Properties},
};

}  // namespace

std::span<const EntityInfo> EntityCatalogue() { return kCatalogue; }

const EntityInfo* FindEntity(std::string_view name) {
  for (const EntityInfo& e : kCatalogue)
    if (name == e.name) return &e;
  return nullptr;
}

}  // namespace cp
