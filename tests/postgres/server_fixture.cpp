#include "tests/postgres/server_fixture.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "cli/commands.h"
#include "cli/selection_commands.h"
#include "tests/support/pg_server.h"

namespace cp::testing {
namespace {

// Skips the condition line and the header, keeps the first field of each row.
std::vector<std::string> Ids(int status, const std::string& out, const std::string& err) {
  if (status != cli::kExitOk) return {"exit " + std::to_string(status), err};
  std::istringstream in(out);
  std::string line;
  std::vector<std::string> ids;
  for (int n = 0; std::getline(in, line); ++n)
    if (n >= 2) ids.push_back(line.substr(0, line.find('\t')));
  std::sort(ids.begin(), ids.end());
  return ids;
}

}  // namespace

const SampleDatabases& Samples(const std::string& serverDatabase, int size) {
  // The files go with the process (the server's schemas go with the test cluster).
  static struct Made : std::map<std::string, SampleDatabases> {
    ~Made() {
      std::error_code ec;
      for (const auto& [name, s] : *this) std::filesystem::remove(s.sqlite, ec);
    }
  } made;
  auto& s = made[serverDatabase];
  if (!s.sqlite.empty()) return s;
  std::ostringstream out, err;
  s.sqlite = (std::filesystem::temp_directory_path() /
              ("cp_pg_sample_" + std::to_string(::getpid()) + "_" + serverDatabase + ".sqlite"))
                 .string();
  std::filesystem::remove(s.sqlite);
  EXPECT_EQ(cli::InitDb({s.sqlite, true, size}, out, err), cli::kExitOk) << err.str();
  if (TestServer()) {
    const std::string server = CreateServerDatabase(serverDatabase, false);
    EXPECT_EQ(cli::InitDb({server, true, size}, out, err), cli::kExitOk) << err.str();
    s.server = server;
  }
  return s;
}

std::vector<std::string> WhereIds(const std::string& db, const std::string& entity,
                                  const std::vector<std::string>& sets) {
  cli::WhereOptions o;
  o.db = db;
  o.entity = entity;
  o.sets = sets;
  o.query = true;
  std::ostringstream out, err;
  const int status = cli::Where(o, out, err);
  return Ids(status, out.str(), err.str());
}

std::vector<std::string> CrossIds(const std::string& db, int id, const std::string& from,
                                  const std::string& to) {
  cli::CrossOptions o;
  o.db = db;
  o.id = id;
  o.from = from;
  o.to = to;
  o.query = true;
  std::ostringstream out, err;
  const int status = cli::Cross(o, out, err);
  return Ids(status, out.str(), err.str());
}

}  // namespace cp::testing
