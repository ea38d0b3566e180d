#pragma once
// The throw-away PostgreSQL server that CTest starts (scripts/pg-test-server.sh): its
// folder comes in CP_PG_TEST_DIR. Tests get a fresh schema per use in one of the cluster's
// two databases (its search_path set by the connection text), so they never see each
// other's rows; a schema is much quicker to make than a database.
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>
#include <string>
#include <vector>

#include "platform/postgres/session.h"

namespace cp::testing {

// The cluster's databases: C collation and a UTF-8 locale.
inline const std::vector<std::string>& ServerTemplates() {
  static const std::vector<std::string> names = {"cp_c", "cp_utf8"};
  return names;
}

// The base connection text ("host=... user=..."), or nullopt with one line on stderr (once)
// when no server is running.
inline std::optional<std::string> TestServer() {
  static const std::optional<std::string> server = []() -> std::optional<std::string> {
    const char* dir = std::getenv("CP_PG_TEST_DIR");
    std::ifstream in(std::string(dir ? dir : "") + "/conninfo");
    std::string line;
    if (dir && std::getline(in, line) && !line.empty()) return line;
    std::fprintf(stderr, "PostgreSQL tests skipped: no test server (CP_PG_TEST_DIR).\n");
    return std::nullopt;
  }();
  return server;
}

// A new empty schema in one of the cluster's databases; returns the connection text that
// works in it. With domains, it gets the two domains of init-db's schema, for tables
// written by hand.
inline std::string CreateServerDatabase(const std::string& database, bool domains) {
  static int counter = 0;
  const std::string name = "t" + std::to_string(::getpid()) + "_" + std::to_string(++counter);
  const std::string connection =
      *TestServer() + " dbname=" + database + " options='-c search_path=" + name + "'";
  postgres::Session tool(connection, postgres::Session::Purpose::Tool);
  tool.Execute("CREATE SCHEMA " + name);
  if (domains)
    tool.Execute("CREATE DOMAIN jet_yesno AS smallint; CREATE DOMAIN jet_byte AS smallint");
  return connection;
}

}  // namespace cp::testing
