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

}  // namespace
}  // namespace cp
