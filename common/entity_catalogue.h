#pragma once
// The entity catalogue: the twelve kinds of record the component selects, by their Spanish
// display name (compared exactly), with their table, key column, phone and e-mail tables
// the criteria control that serves them and the side of the market they stand on.
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace cp {

enum class CriteriaControlKind { Contacts, Properties };

// Crossing pairs the two sides of the market: a demand is crossed with offers (own and other
// agencies' properties), an offer with demands. Contacts, archived and sold properties are
// not crossed.
enum class MarketSide { None, Offer, Demand };

struct EntityInfo {
  const char* name;    // display name, e.g. "Clientes"
  const char* table;   // e.g. "Cliente"
  const char* key;     // e.g. "IdCliente"
  const char* phones;  // phone table ("" for properties and demands)
  const char* mails;   // e-mail table ("" for properties and demands)
  CriteriaControlKind control;
  MarketSide side;
  // How a count of its records reads: the noun in singular and plural, and whether it is
  // feminine ("Ninguna agencia", "Ningún cliente").
  const char* one;    // e.g. "cliente"
  const char* many;   // e.g. "clientes"
  bool feminine;
};

// Every entity, in the catalogue's order.
std::span<const EntityInfo> EntityCatalogue();

// The entity of that display name, or nullptr for a name outside the catalogue.
const EntityInfo* FindEntity(std::string_view name);

// The query a host runs for an entity and a condition: SELECT <table>.* FROM <table>, with
// the owner (Cliente) joined for the property tables and demands so that a condition may
// name "Propietario", and WHERE <condition> unless the condition is empty.
std::string EntityQuery(const EntityInfo& entity, const std::string& condition);

// A count of the entity's records as the selection window shows it: "Ningún cliente",
// "1 cliente", "1.234 clientes" ("." groups thousands, whatever the machine's locale).
std::string CountText(const EntityInfo& entity, std::int64_t count);

// True when a record of `from` can be crossed into `to`: they stand on opposite sides.
bool CrossesWith(std::string_view from, std::string_view to);

// The entity a record of `entity` is crossed with by default: the first entity of the other
// side in catalogue order; "" when it is not crossed.
std::string_view DefaultCrossTarget(std::string_view entity);

}  // namespace cp
