// The component on a shared server: the same answers as on SQLite, and connection failures
// reported with DAO numbers.
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#include "common/messenger.h"
#include "common/scripted_list_picker.h"
#include "common/scripted_messenger.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "platform/postgres/session.h"
#include "sample/demo_catalog.h"
#include "sample/host_query.h"
#include "sample/random.h"
#include "sample/sample_database.h"
#include "selection/c_seleccion.h"
#include "selection/user_entries.h"
#include "tests/common/common_fixture.h"
#include "tests/support/errors.h"
#include "tests/support/pg_server.h"
#include "tests/support/scratch_db.h"

namespace cp::testing {
namespace {

// A host of the selection object on db: messages and list pickers declined, the database
// slot put back afterwards.
struct Host {
  explicit Host(const std::string& db) {
    sel.setBD(dao::OpenDatabase(db));
    sel.setPathDB(db);
  }
  ScopedMessenger messages{std::make_shared<ScriptedMessenger>()};
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database{DatabaseSlot(), nullptr};
  ScriptedListPickerRegistration picker{ListPickerAnswer::Cancel()};
  CSeleccion sel;
};

// A host's selection (values entered in the dialog, then Aceptar) or cross-match, then its
// query: the first column of every row (sorted), or {"error", message} when it failed.
std::vector<std::string> HostIds(const std::string& db,
                                 const std::function<bool(CSeleccion&)>& select) {
  try {
    Host host(db);
    if (!select(host.sel)) return {"error", "not accepted"};
    std::vector<std::string> ids;
    auto rs = BD()->OpenRecordset(sample::HostQuery(host.sel.Entidad(), host.sel.SQLW()),
                                  dao::dbOpenForwardOnly);
    for (; !rs.Eof(); rs.MoveNext()) ids.push_back(CStr(rs.Fields(0).Value()));
    std::sort(ids.begin(), ids.end());
    return ids;
  } catch (const Error& e) {
    return {"error", e.description()};
  }
}
std::vector<std::string> WhereIds(const std::string& db, const std::string& entity,
                                  const std::vector<std::string>& sets) {
  return HostIds(db, [&](CSeleccion& sel) {
    std::vector<UserEntry> entries;
    for (const std::string& set : sets) entries.push_back(ParseUserEntry(set));
    sel.setEntidad(entity);
    std::ostringstream warnings;
    return AcceptWithEntries(sel, entries, warnings);
  });
}
std::vector<std::string> CrossIds(const std::string& db, int id, const std::string& from,
                                  const std::string& to) {
  return HostIds(db, [&](CSeleccion& sel) {
    std::int32_t record = id;
    std::string into = to, origin = from;
    sel.Cruzar(record, into, origin);
    return true;
  });
}

// The component on SQLite and on the server, from the same sample data: random criteria
// states of both controls for every entity, and cross-matches both ways, must return the
// same ids. The server side runs on a C-collation database and on a UTF-8 one.
constexpr int kStatesPerEntity = 8;
constexpr int kCrossesPerDirection = 6;

// The demo data's generator with the few helpers the states need.
struct Random : sample::SplitMix64 {
  using SplitMix64::SplitMix64;
  int Below(int n) { return static_cast<int>(SplitMix64::Below(n)); }
  template <class T>
  T Pick(const std::vector<T>& v) {
    return v[static_cast<std::size_t>(Below(static_cast<int>(v.size())))];
  }
};

const std::vector<std::string> kEntities = {"Clientes",      "Clientes Archivados", "Agencias",
                                            "Inm. Propios",  "Inm. Ajenos", "Inm. Archivados",
                                            "Inm. Vendidos", "Demandas"};

// Accented capitals are where engines part ways: words come in every case.
std::string Upper(std::string s) {
  for (const auto& [lower, upper] : {std::pair{"á", "Á"}, {"é", "É"}, {"í", "Í"}, {"ó", "Ó"},
                                     {"ú", "Ú"}, {"ñ", "Ñ"}, {"ü", "Ü"}})
    for (std::size_t at; (at = s.find(lower)) != std::string::npos;) s.replace(at, 2, upper);
  for (char& c : s)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  return s;
}

std::string Word(Random& r) {
  if (r.Percent(25))
    return r.Pick<std::string>({"ÁLVAREZ", "muñoz", "NÚÑEZ", "o'", "[a-c]*", "50%", "_", "#",
                                "Céntrico", "LÍNEA"});
  std::string w(r.Pick(sample::demo::Surnames()));
  if (r.Percent(40)) {
    // A prefix of whole characters: typed text is valid UTF-8.
    std::size_t cut = std::min(w.size(), 3 + static_cast<std::size_t>(r.Below(3)));
    while (cut < w.size() && (static_cast<unsigned char>(w[cut]) & 0xC0) == 0x80) ++cut;
    w.resize(cut);
  }
  return r.Percent(50) ? Upper(w) : w;
}

// Dates, words and categories, which both controls have; the contact control lets the user
// choose where the words go.
void Common(Random& r, std::vector<std::string>& sets, bool contact) {
  for (const char* picker : {"dtpAlta", "dtpActualiza", "dtpTransmision"})
    for (int bound = 0; bound < 2; ++bound)
      if (r.Percent(15)) {
        char day[40];
        std::snprintf(day, sizeof day, "%04d-%02d-%02d", 1995 + r.Below(31), 1 + r.Below(12),
                      1 + r.Below(28));
        sets.push_back(std::string(picker) + "(" + std::to_string(bound) + ")=" + day);
      }
  if (r.Percent(40)) {
    sets.push_back("txtPalabras=" + Word(r));
    if (contact)
      sets.push_back("cboOpPalabras=" +
                     r.Pick<std::string>({"Al principio", "En todo el texto", "Al final"}));
  }
  if (r.Percent(30)) {
    std::string c(r.Pick(contact ? sample::demo::ContactCategories()
                                 : sample::demo::PropertyCategories()));
    sets.push_back("txtCategorias=" + (r.Percent(30) ? Upper(c) : c) + "; ");
    sets.push_back("chkCategorias=" + std::to_string(r.Below(3)));
  }
}

// A demand's form has no check boxes.
std::vector<std::string> PropertyState(Random& r, bool demand) {
  std::vector<std::string> sets;
  const std::tuple<const char*, int, int, int, const char*> boxes[] = {  // name, %, from, span
      {"txtPrecio(0)", 30, 50, 400, ".000"}, {"txtPrecio(1)", 30, 200, 900, ".000"},
      {"txtSuper(0)", 25, 40, 150, ""},      {"txtSuper(1)", 20, 80, 300, ""},
      {"txtAltura", 15, 0, 4, ""},  {"txtHuecos", 15, 0, 4, ""}, {"txtAseos", 15, 0, 4, ""},
      {"txtBanios", 15, 0, 4, ""},  {"txtGaraje", 15, 0, 4, ""}};
  for (const auto& [box, chance, from, span, unit] : boxes)
    if (r.Percent(chance))
      sets.push_back(std::string(box) + "=" + std::to_string(from + r.Below(span)) + unit);
  for (const char* check : {"chkAmueblado", "chkNuevo", "chkTrastero", "chkComercial",
                            "chkIndustrial", "chkExclusiva", "chkTransmitido", "chkCaducado"})
    if (!demand && r.Percent(20))
      sets.push_back(std::string(check) + "=" + std::to_string(r.Below(3)));
  Common(r, sets, false);
  return sets;
}

class Differential : public ::testing::TestWithParam<std::string> {};

TEST_P(Differential, RandomStatesAndCrossMatchesReturnTheSameIds) {
  if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
  // The same demo data in a SQLite file and in a fresh schema of the server's database.
  ScratchDir dir;
  const std::string sqlite = dir.File("muestra.sqlite");
  const std::string server = CreateServerDatabase(GetParam(), false);
  for (const std::string& db : {sqlite, server})
    sample::CreateSampleDatabase(db, sample::DemoOptions{200});
  Random r(20240611);
  int states = 0, differences = 0, nonEmpty = 0, failed = 0;
  auto compare = [&](const std::vector<std::string>& a, const std::vector<std::string>& b,
                     const std::string& what) {
    ++states;
    const bool error = !a.empty() && a[0] == "error";
    failed += error;
    nonEmpty += !a.empty() && !error;
    if (a != b) {
      ++differences;
      ADD_FAILURE() << what << ": SQLite " << a.size() << " ids, server " << b.size()
                    << (a.empty() ? "" : " (" + a[0] + ")") << (b.empty() ? "" : " / " + b[0]);
    }
  };
  for (const std::string& entity : kEntities) {
    for (int i = 0; i < kStatesPerEntity; ++i) {
      std::vector<std::string> sets;
      if (entity.starts_with("Clientes") || entity == "Agencias")
        Common(r, sets, true);
      else
        sets = PropertyState(r, entity == "Demandas");
      std::string what = entity;
      for (const auto& set : sets) what += " --set '" + set + "'";
      compare(WhereIds(sqlite, entity, sets), WhereIds(server, entity, sets), what);
    }
  }
  const std::vector<std::pair<std::string, std::string>> directions = {
      {"Demandas", "Inm. Propios"}, {"Demandas", "Inm. Ajenos"}, {"Inm. Propios", "Demandas"},
      {"Inm. Ajenos", "Demandas"}};
  for (const auto& [from, to] : directions) {
    for (int i = 0; i < kCrossesPerDirection; ++i) {
      const int id = 1 + r.Below(100);
      compare(CrossIds(sqlite, id, from, to), CrossIds(server, id, from, to),
              "cross " + from + " " + std::to_string(id) + " -> " + to);
    }
  }
  std::printf("%d criteria states and cross-matches compared (%d with rows, %d refused by "
              "the component), %d differences\n", states, nonEmpty, failed, differences);
  EXPECT_EQ(differences, 0);
  EXPECT_GT(nonEmpty, states / 5) << "the states should select something";
  EXPECT_LT(failed, states / 10) << "the states should be valid input";
}

INSTANTIATE_TEST_SUITE_P(Databases, Differential, ::testing::Values("cp_c", "cp_utf8"));


// A server that cannot be reached, a missing database and a connection lost in mid-session
// give DAO numbers through the central handler (message and log), and the next use works.
using ServerErrors = CommonTest;

TEST_F(ServerErrors, OpeningFailuresGiveDaoNumbers) {
  if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
  const struct {
    std::string connection;
    long number;
  } cases[] = {
      {"host=/nonexistent-cp-folder user=postgres dbname=cp_c", 3151},  // server down
      {*TestServer() + " dbname=cp_no_such_database", 3024},
      {"postgresql:///cp_c?host=/nonexistent-cp-folder", 3151},
      {*TestServer() + " dbname=cp_c user=cp_secret password=mala", 3029},
  };
  for (const auto& c : cases) {
    const Error e = CaughtError([&] { dao::OpenDatabase(c.connection); });
    EXPECT_EQ(e.number(), c.number) << c.connection << ": " << e.description();
    EXPECT_EQ(e.description().find("mala"), std::string::npos) << "no password in messages";
  }
}

TEST_F(ServerErrors, LostConnectionIsReportedAndTheNextUseReconnects) {
  if (!TestServer()) GTEST_SKIP() << "no PostgreSQL test server";
  const std::string connection = CreateServerDatabase("cp_c", false) + " application_name=cp_lost";
  sample::CreateSampleDatabase(connection, sample::DemoOptions{20});
  // A host crossing demand 1 on its own connection.
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database{DatabaseSlot(),
                                                               dao::OpenDatabase(connection)};
  CSeleccion sel;
  const auto cross = [&] {
    std::int32_t id = 1;
    std::string to = "Inm. Propios", from = "Demandas";
    sel.Cruzar(id, to, from);
    return sel.SQLW();
  };
  const std::string crossed = cross();
  ASSERT_NE(crossed, "");
  ASSERT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
  postgres::Session(*TestServer() + " dbname=postgres", postgres::Session::Purpose::Tool)
      .Execute("SELECT pg_terminate_backend(pid) FROM pg_stat_activity "
               "WHERE application_name = 'cp_lost'");

  EXPECT_NO_THROW(cross());
  ASSERT_FALSE(messenger_->shown().empty());
  const std::string shown = messenger_->shown()[0].text;
  EXPECT_EQ(shown.rfind("Error en la rutina: RellenarDemanda de SeleccionInm\r\n", 0), 0u);
  EXPECT_NE(shown.find("conexión"), std::string::npos) << shown;
  EXPECT_NE(shown.find("Número del error: 3151"), std::string::npos) << shown;
  EXPECT_NE(Log().find("RellenarDemanda de SeleccionInm [3151] "), std::string::npos) << Log();

  messenger_->ClearShown();
  EXPECT_EQ(cross(), crossed);
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

// Several workstations on one server: eight client processes run selections and
// cross-matches while another process inserts clients and updates rows. The writer never
// touches what the clients select, so every client must see exactly the rows it saw before
// the writer started; the writer's own clients may only grow in number.

constexpr int kClients = 8;
constexpr int kRounds = 2;
constexpr int kWrites = 20;

// Entity and entries, up to 2025: the writer's clients are registered in 2030.
const std::vector<std::pair<std::string, std::vector<std::string>>> kSelections = {
    {"Clientes", {"dtpAlta(1)=2025-12-31", "txtPalabras=gar", "cboOpPalabras=En todo el texto"}},
    {"Clientes", {"dtpAlta(0)=2010-01-01", "dtpAlta(1)=2020-12-31"}},
    {"Inm. Propios", {"txtPrecio(0)=100.000", "txtSuper(1)=150"}},
    {"Demandas", {"txtAltura=1"}},
};
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
  auto results = [&] {
    std::vector<std::vector<std::string>> got;
    for (const auto& [entity, sets] : kSelections) got.push_back(WhereIds(db, entity, sets));
    for (int id : {1, 2, 3, 4}) got.push_back(CrossIds(db, id, "Demandas", "Inm. Propios"));
    return got;
  };
  const auto expected = results();
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
        if (results() != expected) {
          std::fprintf(stderr, "client %d round %d: a result changed\n", c, round);
          return false;
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
