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

// Made once per process with the demo data for `size` properties (the server side in a
// fresh schema of the given database).
const SampleDatabases& Samples(const std::string& serverDatabase, int size);

// A host's selection (the sets entered in the dialog, then Aceptar) or cross-match, then its
// query: the first column of every row (sorted), or {"error", message} when it failed.
std::vector<std::string> WhereIds(const std::string& db, const std::string& entity,
                                  const std::vector<std::string>& sets);
std::vector<std::string> CrossIds(const std::string& db, int id, const std::string& from,
                                  const std::string& to);

}  // namespace cp::testing
