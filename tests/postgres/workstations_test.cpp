// Several workstations on one server: eight client processes run selections and
// cross-matches while another process inserts clients and updates rows. The writer never
// touches what the clients select, so every client must see exactly the rows it saw before
// the writer started; the writer's own clients may only grow in number.
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "platform/core/error.h"
#include "platform/postgres/session.h"
#include "sample/sample_database.h"
#include "tests/postgres/server_fixture.h"
#include "tests/support/pg_server.h"

namespace cp::testing {
namespace {

constexpr int kClients = 8;
constexpr int kRounds = 2;
constexpr int kWrites = 20;

struct Selection {
  std::string entity;
  std::vector<std::string> sets;
};

// Up to 2025: the writer's clients are registered in 2030.
const std::vector<Selection> kSelections = {
    {"Clientes", {"dtpAlta(1)=2025-12-31", "txtPalabras=gar", "cboOpPalabras=En todo el texto"}},
    {"Clientes", {"dtpAlta(0)=2010-01-01", "dtpAlta(1)=2020-12-31"}},
    {"Inm. Propios", {"txtPrecio(0)=100.000", "txtSuper(1)=150"}}, {"Demandas", {"txtAltura=1"}},
};
const std::vector<int> kDemands = {1, 2, 3, 4};
const std::vector<std::string> kWriterSelection = {"dtpAlta(0)=2030-01-01"};

// Runs a function in a child process; its exit status is 0 when it returned true.
pid_t Spawn(const std::function<bool()>& body) {
  const pid_t pid = ::fork();
  if (pid == 0) {
    bool ok = false;
    try {
      ok = body();
    } catch (const Error& e) {
      std::fprintf(stderr, "error %ld: %s\n", e.number(), e.description().c_str());
    }
    std::fflush(nullptr);
    ::_exit(ok ? 0 : 1);
  }
  return pid;
}

TEST(Workstations, EightClientsReadConsistentlyWhileAnotherWrites) {
  if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
  // Its own copy of the sample data: the writer changes it.
  const std::string db = CreateServerDatabase("cp_utf8", false);
  sample::CreateSampleDatabase(db, sample::DemoOptions{200});
  std::vector<std::vector<std::string>> expected;
  for (const auto& s : kSelections) expected.push_back(WhereIds(db, s.entity, s.sets));
  for (int id : kDemands) expected.push_back(CrossIds(db, id, "Demandas", "Inm. Propios"));
  int nonEmpty = 0;
  for (const auto& ids : expected) {
    ASSERT_TRUE(ids.empty() || ids[0] != "error") << ids[1];
    nonEmpty += !ids.empty();
  }
  ASSERT_GE(nonEmpty, 4) << "the selections should select something";

  const std::size_t before = WhereIds(db, "Clientes", kWriterSelection).size();

  std::vector<pid_t> children;
  children.push_back(Spawn([&] {
    postgres::Session writer(db, postgres::Session::Purpose::Tool);
    for (int i = 0; i < kWrites; ++i) {
      writer.Execute("INSERT INTO cliente (alias, apellidos, fechaalta) VALUES ('Nuevo', 'Zapata "
                     "Nueva', TIMESTAMP '2030-01-0" + std::to_string(1 + i % 9) + "')");
      writer.Execute("UPDATE cliente SET pagweb = 'www.ejemplo" + std::to_string(i) +
                     ".es' WHERE idcliente % 7 = " + std::to_string(i % 7));
      writer.Execute("UPDATE ipropio SET notas = 'Revisado " + std::to_string(i) +
                     "' WHERE idipropio % 5 = " + std::to_string(i % 5));
      ::usleep(50000);  // spread over the clients' run
    }
    return true;
  }));
  for (int c = 0; c < kClients; ++c) {
    children.push_back(Spawn([&, c] {
      std::size_t seen = before;
      for (int round = 0; round < kRounds; ++round) {
        std::vector<std::vector<std::string>> got;
        for (const auto& s : kSelections) got.push_back(WhereIds(db, s.entity, s.sets));
        for (int id : kDemands) got.push_back(CrossIds(db, id, "Demandas", "Inm. Propios"));
        for (std::size_t i = 0; i < got.size(); ++i) {
          if (got[i] != expected[i]) {
            std::fprintf(stderr, "client %d round %d: result %zu changed (%zu ids, was %zu)\n", c,
                         round, i, got[i].size(), expected[i].size());
            return false;
          }
        }
        const auto mine = WhereIds(db, "Clientes", kWriterSelection);
        if (mine.size() < seen || (!mine.empty() && mine[0] == "error")) {
          std::fprintf(stderr, "client %d: the writer's clients went from %zu to %zu\n", c, seen,
                       mine.size());
          return false;
        }
        seen = mine.size();
      }
      return true;
    }));
  }
  for (pid_t pid : children) {
    int status = 0;
    ASSERT_EQ(::waitpid(pid, &status, 0), pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << "process " << pid;
  }
  EXPECT_EQ(WhereIds(db, "Clientes", kWriterSelection).size(), before + kWrites);
}

}  // namespace
}  // namespace cp::testing
