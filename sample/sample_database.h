#pragma once
// Creates a whole agency database file: the schema and, optionally, the demo data.
#include <optional>
#include <string>

#include "sample/demo_data.h"

namespace cp::sample {

// A PostgreSQL connection text (see postgres::IsServerConnection) creates the same on that
// server instead (CreateServerSampleDatabase).
// Creates a new SQLite file at path with the schema and, with demo, the sample data, all in
// one transaction. Raises 58 when something already exists at path (it is never touched);
// any other failure removes the half-made file and raises the error.
void CreateSampleDatabase(const std::string& path, const std::optional<DemoOptions>& demo);

}  // namespace cp::sample
