// match: one run crossing many records gives, per record, what cross and the host query give.
#include "cli/match_command.h"

#include <gtest/gtest.h>

#include <functional>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "cli/selection_commands.h"
#include "common/console_messenger.h"
#include "common/error_log.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/core/error.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using namespace testing;

class MatchTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir();
    db_ = dir_->File("demo.db");
    MakeDb(db_, true, 600);
    setErrLogPath(dir_->File(""));
  }
  static void TearDownTestSuite() {
    setErrLogPath("");
    delete dir_;
  }
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

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string db_;
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

TEST_F(MatchTest, CountsEqualCrossingOneByOne) {
  for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
           {"Demandas", ""}, {"Demandas", "Inm. Ajenos"}, {"Inm. Propios", ""}}) {
    long calls = 0;
    const Result r = RunMatch({"", from, to, 4, true}, [&](long done, long total) {
      EXPECT_EQ(done, ++calls);
      EXPECT_EQ(total, 4);
    });
    ASSERT_EQ(r.status, kExitOk) << r.err;
    EXPECT_EQ(calls, 4);
    const auto rows = nlohmann::json::parse(r.out);
    ASSERT_EQ(rows.size(), 4u);
    const std::string target = to.empty() ? (from == "Demandas" ? "Inm. Propios" : "Demandas") : to;
    for (const auto& row : rows)
      EXPECT_EQ(row["coincidencias"].get<long>(),
                CrossCount(row["id"].get<std::int32_t>(), from, target))
          << from << " " << row["id"];
  }
}

TEST_F(MatchTest, TextOutputAndBadPairs) {
  const Result r = RunMatch({"", "Demandas", "", 2, false});
  ASSERT_EQ(r.status, kExitOk);
  EXPECT_EQ(r.out.rfind("IdDemanda\tInm. Propios\n1\t", 0), 0u) << r.out;
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
