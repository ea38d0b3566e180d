// Every entity of the catalogue names tables and columns that the schema holds.
#include "common/entity_catalogue.h"

#include <gtest/gtest.h>

#include "sample/schema.h"

namespace cp {
namespace {

TEST(EntityCatalogue, NamesTablesTheSchemaHolds) {
  EXPECT_EQ(EntityCatalogue().size(), 12u);
  for (const EntityInfo& e : EntityCatalogue()) {
    const sample::SchemaTable* table = sample::FindTable(e.table);
    ASSERT_NE(table, nullptr) << e.name;
    EXPECT_NE(table->Find(e.key), nullptr) << e.name;
    const bool contact = e.control == CriteriaControlKind::Contacts;
    for (const char* detail : {e.phones, e.mails}) {
      EXPECT_EQ(std::string(detail).empty(), !contact) << e.name;
      if (!contact) continue;
      const sample::SchemaTable* t = sample::FindTable(detail);
      ASSERT_NE(t, nullptr) << e.name << " " << detail;
      EXPECT_NE(t->Find(e.key), nullptr) << detail;
      EXPECT_NE(t->Find("Numero"), nullptr) << detail;
    }
    // Properties and demands carry their owner, whom the host query joins.
    EXPECT_TRUE(contact || table->Find("IdCliente")) << e.name;
  }
  EXPECT_EQ(FindEntity("Clientes Archivados")->table, std::string("Cliente"));
  EXPECT_EQ(FindEntity("clientes"), nullptr);  // names compare exactly
}

// The selection window's count line, under any locale (the suite also runs under Spanish).
TEST(EntityCatalogue, CountText) {
  const struct {
    const char* entity;
    std::int64_t count;
    const char* text;
  } cases[] = {
      {"Clientes", 0, "Ningún cliente"},       {"Agencias", 0, "Ninguna agencia"},
      {"Demandas", 0, "Ninguna demanda"},      {"Inm. Vendidos", 0, "Ningún inmueble vendido"},
      {"Clientes", 1, "1 cliente"},            {"Agencias", 1, "1 agencia"},
      {"Abogados", 2, "2 abogados"},           {"Inm. Propios", 999, "999 inmuebles"},
      {"Inm. Propios", 1000, "1.000 inmuebles"}, {"Inm. Propios", 1234, "1.234 inmuebles"},
      {"Clientes Contrarios", 1234567, "1.234.567 clientes contrarios"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(CountText(*FindEntity(c.entity), c.count), c.text) << c.entity << " " << c.count;
  for (const EntityInfo& e : EntityCatalogue())
    EXPECT_NE(std::string(e.one), e.many) << e.name;
}

}  // namespace
}  // namespace cp
