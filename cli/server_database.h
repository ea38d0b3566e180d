#pragma once
// The agency schema and the sample data on a PostgreSQL server, for init-db. The database
// itself must exist (the server's administrator creates it); it gets the tables, their
// indexes and two domains that keep DAO's Byte and Yes/No types readable, nothing else.
#include <ostream>
#include <string>
#include <vector>

#include "cli/commands.h"

namespace cp::cli {

// The schema of SchemaTables() in the server's dialect: lower-case names, identity keys,
// timestamps for dates, Yes/No as 0/1 integers of the domain jet_yesno.
std::vector<std::string> ServerSchemaStatements();

// init-db for a server connection text: refuses a database that already has the tables
// (exit 2), else creates the schema and, with demo, the sample data in one transaction.
// Errors are printed to err as "Error N: text" and give exit 2.
int InitServerDb(const InitDbOptions& options, std::ostream& out, std::ostream& err);

}  // namespace cp::cli
