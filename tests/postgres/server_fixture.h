#pragma once
// The same sample data in an SQLite file and on the test server, for tests that run the
// component on both and compare; and the component's answers reduced to the returned ids.
#include <string>
#include <vector>

namespace cp::testing {

struct SampleDatabases {
  std::string sqlite;  // file path
  std::string server;  // connection text ("" without a test server)
};

// Made once per process by init-db --demo with `size` properties (the server side in a
// fresh schema of the given database).
const SampleDatabases& Samples(const std::string& serverDatabase, int size);

// where/cross --query through the tool's own functions: the first column of every row
// (sorted), or {"exit N", message} when the command failed.
std::vector<std::string> WhereIds(const std::string& db, const std::string& entity,
                                  const std::vector<std::string>& sets);
std::vector<std::string> CrossIds(const std::string& db, int id, const std::string& from,
                                  const std::string& to);

}  // namespace cp::testing
