// The running count of the selection window, without a window: the query it builds from the
// dialog's state, built quietly, and the worker that runs it on its own thread and connection.
#include <future>
#include <map>
#include <mutex>
#include <sstream>
#include <thread>

#include "common/shared_state.h"
#include "platform/dao/connect.h"
#include "sample/demo_catalog.h"
#include "sample/host_query.h"
#include "sample/random.h"
#include "sample/sample_database.h"
#include "selection/live_count.h"
#include "selection/user_entries.h"
#include "tests/selection/selection_fixture.h"

namespace cp::testing {
namespace {

// Collects a worker's deliveries and lets a test wait for one ticket's.
struct Deliveries {
  std::mutex mutex;
  std::vector<std::uint64_t> tickets;
  std::map<std::uint64_t, std::promise<CountWorker::Result>> promises;
  std::future<CountWorker::Result> For(std::uint64_t ticket) {
    std::lock_guard lock(mutex);
    return promises[ticket].get_future();
  }
  void operator()(std::uint64_t ticket, CountWorker::Result result) {
    std::lock_guard lock(mutex);
    tickets.push_back(ticket);
    promises[ticket].set_value(result);
  }
};

class LiveCountTest : public SelectionTest {
 protected:
  static void SetUpTestSuite() {
    path_ = (std::filesystem::temp_directory_path() /
             ("cp_live_count_" + std::to_string(::getpid()) + ".db")).string();
    std::filesystem::remove(path_);
    sample::CreateSampleDatabase(path_, sample::DemoOptions{300});
  }

  // The number the worker counts for query (waiting for it).
  static CountWorker::Result CountOf(const CountQuery& query) {
    Deliveries got;
    CountWorker worker([&](std::uint64_t t, CountWorker::Result r) { got(t, r); });
    std::future<CountWorker::Result> result = got.For(1);
    EXPECT_EQ(worker.Submit(query), 1u);
    return result.get();
  }
};

// A user's state of the criteria: a few of the dialog's inputs, chosen by r.
std::vector<UserEntry> RandomState(sample::SplitMix64& r, bool contact, bool demand) {
  std::vector<UserEntry> entries;
  auto pick = [&](const std::vector<std::string_view>& from) {
    return std::string(from[static_cast<std::size_t>(r.Below(static_cast<int>(from.size())))]);
  };
  if (r.Percent(50)) entries.push_back({"txtPalabras", -1, pick(sample::demo::Surnames()).substr(0, 3)});
  if (r.Percent(40))
    entries.push_back({"txtCategorias", -1,
                       pick(contact ? sample::demo::ContactCategories()
                                    : sample::demo::PropertyCategories()) + "; "});
  if (r.Percent(40))
    entries.push_back({"dtpAlta", static_cast<int>(r.Below(2)),
                       std::to_string(r.Between(2015, 2026)) + "-06-01"});
  if (!contact) {
    if (r.Percent(50))
      entries.push_back({"txtPrecio", static_cast<int>(r.Below(2)),
                         std::to_string(r.Between(60, 600)) + ".000"});
    if (!demand && r.Percent(40))  // a demand's form has no check boxes
      entries.push_back({"chkAmueblado", -1, std::to_string(r.Below(2))});
  }
  return entries;
}

TEST_F(LiveCountTest, CountEqualsTheRowsOfTheHostQueryAfterAceptar) {
  sample::SplitMix64 r(20261123);
  int withRows = 0;
  for (const char* entity : {"Clientes", "Agencias", "Inm. Propios", "Inm. Ajenos", "Demandas"}) {
    for (int state = 0; state < 4; ++state) {
      const bool contact = std::string_view(entity) == "Clientes" ||
                           std::string_view(entity) == "Agencias";
      const std::vector<UserEntry> entries = RandomState(r, contact, std::string_view(entity) == "Demandas");
      std::string what = entity;
      for (const UserEntry& e : entries) what += " " + e.name + "=" + e.value;
      std::optional<CountQuery> query;
      sel_->setEntidad(entity);
      ASSERT_TRUE(Show([&](frmSeleccion& dlg) {
        std::ostringstream warnings;
        SelectionControl& control = *dlg.ControlFor(entity);
        for (const UserEntry& e : entries) {
          try {
            EnterUserEntry(control.Controls(), e, warnings);
          } catch (const Error&) {  // a box this entity's form keeps disabled: left out
          }
        }
        query = LiveCountQuery(dlg);
        Press(dlg, "cmdAceptar");
      })) << what;
      ASSERT_TRUE(query) << what;
      std::int64_t rows = 0;
      for (dao::Recordset rs = BD()->OpenRecordset(sample::HostQuery(entity, sel_->SQLW()));
           !rs.Eof(); rs.MoveNext())
        ++rows;
      EXPECT_EQ(CountOf(*query), rows) << what << "\n" << query->sql;
      withRows += rows > 0;
    }
  }
  EXPECT_GT(withRows, 5) << "the states should select something";
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(LiveCountTest, ACriterionThatCannotBeBuiltGivesNoCountAndNoMessage) {
  sel_->setEntidad("Inm. Propios");
  std::optional<CountQuery> query;
  Show([&](frmSeleccion& dlg) {
    auto& c = dlg.SeleccionInm1().Controls();
    c.Get<form::TextBox>("txtPalabras").setText("12");
    c.Get<form::ComboBox>("cboEn").setListIndex(-1);  // words with no field to look in
    query = LiveCountQuery(dlg);
    EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
    EXPECT_FALSE(std::filesystem::exists(LogFile()));
    // Accepting the same state still reports the fault as always.
    Press(dlg, "cmdAceptar");
  });
  EXPECT_FALSE(query);
  EXPECT_FALSE(messenger_->shown().empty());
  EXPECT_TRUE(std::filesystem::exists(LogFile()));
}

TEST_F(LiveCountTest, WorkerStopsAnOvertakenCountAndDeliversOnlyTheNewest) {
  const EntityInfo& inm = *FindEntity("Inm. Propios");
  // Some 8,000 million rows to join: it ends only when it is interrupted.
  const CountQuery endless{
      path_, "SELECT a.IdIPropio FROM IPropio a, IPropio b, IPropio c, IPropio d", &inm};
  const CountQuery quick{path_, "SELECT IPropio.* FROM IPropio", &inm};
  Deliveries got;
  {
    CountWorker worker([&](std::uint64_t t, CountWorker::Result r) { got(t, r); });
    EXPECT_EQ(CountWorker::Alive(), 1);
    worker.Submit(endless);
    std::this_thread::yield();
    const std::uint64_t ticket = worker.Submit(quick);
    EXPECT_EQ(got.For(ticket).get(), 300);
    // Neither a query that cannot run nor a missing database raises: they count nothing.
    for (const CountQuery& broken :
         {CountQuery{path_, "SELECT * FROM NoSuchTable", &inm},
          CountQuery{path_ + ".missing", quick.sql, &inm}})
      EXPECT_EQ(got.For(worker.Submit(broken)).get(), std::nullopt) << broken.sql;
    worker.Submit(endless);  // the worker's end interrupts it too
  }
  EXPECT_EQ(CountWorker::Alive(), 0);
  EXPECT_EQ(got.tickets, (std::vector<std::uint64_t>{2, 3, 4}));
}

TEST_F(LiveCountTest, OffByDefault) {
  EXPECT_FALSE(sel_->LiveCount());
  EXPECT_FALSE(sel_->GetProperty("LiveCount").AsBool());
  sel_->SetProperty("LiveCount", Variant(true));
  EXPECT_TRUE(sel_->Dialog().LiveCount());
}

}  // namespace
}  // namespace cp::testing
