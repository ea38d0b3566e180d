#pragma once
// The entity catalogue: the twelve kinds of record the component selects, by their Spanish
// display name (compared exactly), with their table, key column, phone and e-mail tables
// and the criteria control that serves them.
#include <span>
#include <string_view>

namespace cp {

enum class CriteriaControlKind { Contacts, Properties };

struct EntityInfo {
  const char* name;    // display name, e.g. "Clientes"
  const char* table;   // e.g. "Cliente"
  const char* key;     // e.g. "IdCliente"
  const char* phones;  // phone table ("" for properties and demands)
  const char* mails;   // e-mail table ("" for properties and demands)
  CriteriaControlKind control;
};

// Every entity, in the catalogue's order.
std::span<const EntityInfo> EntityCatalogue();

// The entity of that display name, or nullptr for a name outside the catalogue.
const EntityInfo* FindEntity(std::string_view name);

}  // namespace cp
