// match: one run crossing many records gives, per record, what cross and the host query give.
#include "cli/match_command.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "cli/selection_commands.h"
#include "common/console_messenger.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/core/error.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using namespace testing;

class MatchTest : public DemoDbTest<600> {
 protected:
  static Result RunMatch(MatchOptions o, const MatchProgress& progress = {}) {
    o.db = db_;
    return RunCommand([&](auto& out, auto& err) { return Match(o, out, err, progress); });
  }
  // What cross plus the host query count for one record.
  static long CrossCount(std::int32_t id, const std::string& from, const std::string& to) {
    const Result r = RunCommand([&](auto& out, auto& err) {
      return Cross({db_, id, to, from, false, true}, out, err);
    });
    EXPECT_EQ(r.status, kExitOk) << r.err;
    return std::count(r.out.begin(), r.out.end(), '\n') - 2;  // the condition and the header
  }

};

// A failure in the middle of a run leaves the host's messenger and database as they were,
// whether match reports it (cp::Error) or it escapes match.
TEST_F(MatchTest, PutsTheHostsSlotsBackWhateverIsThrown) {
  for (const bool escapes : {false, true}) {
    const auto host = std::make_shared<ConsoleMessenger>();
    ScopedMessenger installed(host);
    const auto run = [&] {
      return RunMatch({}, [&](long, long) {
        if (escapes) throw std::runtime_error("fallo");
        throw Error(err::kInvalidProcedureCall, "fallo");
      });
    };
    if (escapes)
      EXPECT_THROW(run(), std::runtime_error);
    else
      EXPECT_EQ(run().status, kExitError);
    EXPECT_EQ(CurrentMessenger(), host) << escapes;
    EXPECT_EQ(BD(), nullptr) << escapes;
  }
}

// Whatever the number of worker processes, a run prints the same bytes, and each count is what
// crossing that record alone gives (whatever record was crossed before it).
TEST_F(MatchTest, CountsEqualCrossingOneByOneWhateverTheJobs) {
  constexpr long kRecords = 80;
  for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
           {"Demandas", ""}, {"Demandas", "Inm. Ajenos"}, {"Inm. Propios", ""}}) {
    Result first_json, first_text;
    for (const int jobs : {1, 2, 3}) {
      long calls = 0;
      const Result json = RunMatch({"", from, to, kRecords, true, jobs}, [&](long done, long total) {
        EXPECT_EQ(done, ++calls);
        EXPECT_EQ(total, kRecords);
      });
      const Result text = RunMatch({"", from, to, kRecords, false, jobs});
      ASSERT_EQ(json.status, kExitOk) << json.err;
      ASSERT_EQ(text.status, kExitOk) << text.err;
      EXPECT_EQ(calls, kRecords) << jobs;
      if (jobs == 1) {
        first_json = json, first_text = text;
        continue;
      }
      EXPECT_EQ(json.out, first_json.out) << from << " jobs " << jobs;
      EXPECT_EQ(text.out, first_text.out) << from << " jobs " << jobs;
    }
    const auto rows = nlohmann::json::parse(first_json.out);
    ASSERT_EQ(rows.size(), static_cast<std::size_t>(kRecords));
    const std::string target = to.empty() ? (from == "Demandas" ? "Inm. Propios" : "Demandas") : to;
    for (const auto& row : rows)
      EXPECT_EQ(row["coincidencias"].get<long>(),
                CrossCount(row["id"].get<std::int32_t>(), from, target))
          << from << " " << row["id"];
  }
}

// A database error met while crossing, in this process or in a worker, ends the run with
// status 2 and the error's description, and prints no result.
TEST_F(MatchTest, AnErrorWhileCrossingStopsTheRun) {
  const std::string broken = dir_->File("sin_inmuebles.db");
  std::filesystem::copy_file(db_, broken, std::filesystem::copy_options::overwrite_existing);
  ScratchDb(broken).Exec("DROP TABLE IPropio");  // demands are still read, the target is gone
  for (const int jobs : {1, 2, 3}) {
    const Result r = RunCommand([&](auto& out, auto& err) {
      return Match({broken, "Demandas", "", 10, false, jobs}, out, err);
    });
    EXPECT_EQ(r.status, kExitError) << jobs;
    EXPECT_EQ(r.out, "") << jobs;
    EXPECT_NE(r.err.find("IPropio"), std::string::npos) << jobs << ": " << r.err;
  }
}

TEST_F(MatchTest, TextOutputAndBadPairs) {
  const Result r = RunMatch({"", "Demandas", "", 2, false, 3});  // more jobs than records
  ASSERT_EQ(r.status, kExitOk);
  EXPECT_EQ(r.out, "IdDemanda\tInm. Propios\n1\t0\n2\t0\n") << r.out;
  for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
           {"Inm. Archivados", ""}, {"Demandas", "Demandas"}, {"Inm. Propios", "Inm. Ajenos"}}) {
    const Result bad = RunMatch({"", from, to, 0, false});
    EXPECT_EQ(bad.status, kExitError) << from << "->" << to;
    EXPECT_EQ(bad.out, "");
  }
}

TEST(MatchProgressBar, DrawsAndEndsTheLine) {
  std::ostringstream err;
  TerminalProgressBar(err)(4, 4);
  EXPECT_NE(err.str().find("4/4"), std::string::npos) << err.str();
  EXPECT_EQ(err.str().back(), '\n');
}

}  // namespace
}  // namespace cp::cli
