#pragma once
// The agency schema and the sample data on a PostgreSQL server. The database itself must
// exist (the server's administrator creates it); it gets the tables, their indexes and two
// domains that keep DAO's Byte and Yes/No types readable, nothing else.
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "sample/demo_data.h"
#include "sample/row_sink.h"
#include "sample/schema.h"

namespace cp::postgres {
class Session;
}

namespace cp::sample {

// The schema of SchemaTables() in the server's dialect: lower-case names, identity keys,
// timestamps for dates, Yes/No as 0/1 integers of the domain jet_yesno.
std::vector<std::string> ServerSchemaStatements();
// Those of one table, and one column as CREATE TABLE and ALTER TABLE write it.
std::vector<std::string> ServerTableStatements(const SchemaTable& table);
std::string ServerColumnDefinition(const SchemaColumn& column);

// Writes rows with one INSERT each through session, inside the caller's transaction.
std::unique_ptr<RowSink> MakeServerSink(postgres::Session& session);
// After keys were written explicitly: new rows of the table are numbered after them.
void NumberAfterKeys(postgres::Session& session, const SchemaTable& table);

// Creates the schema and, with demo, the sample data on the server named by connection, in
// one transaction. Raises 58 when the database already has the tables (nothing is touched);
// any other failure raises the engine's error and leaves nothing behind.
void CreateServerSampleDatabase(const std::string& connection,
                                const std::optional<DemoOptions>& demo);

}  // namespace cp::sample
