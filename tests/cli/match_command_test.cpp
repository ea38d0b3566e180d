// match: one run crossing many records gives, per record, what cross and the host query give.
#include "cli/match_command.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <functional>
#include <sstream>
#include <stdexcept>

#include "cli/commands.h"
#include "cli/selection_commands.h"
#include "common/console_messenger.h"
#include "common/error_log.h"
#include "common/messenger.h"
#include "common/shared_state.h"
#include "platform/core/error.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::ScratchDir;

class MatchTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    dir_ = new ScratchDir();
    db_ = dir_->File("demo.db");
    std::ostringstream out, err;
    ASSERT_EQ(InitDb({db_, true, 120}, out, err), kExitOk) << err.str();
    setErrLogPath(dir_->File(""));
  }
  static void TearDownTestSuite() {
    setErrLogPath("");
    delete dir_;
  }

  // What cross plus the host query count for one record.
  long CrossCount(std::int32_t id, const std::string& from, const std::string& to) {
    std::ostringstream out, err;
    CrossOptions o{db_, id, to, from, false, true};
    EXPECT_EQ(Cross(o, out, err), kExitOk) << err.str();
    long lines = 0;
    std::istringstream in(out.str());
    for (std::string line; std::getline(in, line);) ++lines;
    return lines - 2;  // the condition line and the header
  }

  static inline ScratchDir* dir_ = nullptr;
  static inline std::string db_;
};

// A failure in the middle of a run leaves the host's messenger and database as they were,
// whether match reports it (cp::Error) or it escapes match.
TEST_F(MatchTest, PutsTheHostsSlotsBackWhateverIsThrown) {
  const struct {
    const char* name;
    std::function<void()> fail;
    bool escapes;
  } cases[] = {
      {"cp::Error", [] { throw Error(err::kInvalidProcedureCall, "fallo"); }, false},
      {"std::runtime_error", [] { throw std::runtime_error("fallo"); }, true},
  };
  for (const auto& c : cases) {
    const auto host = std::make_shared<ConsoleMessenger>();
    ScopedMessenger installed(host);
    MatchOptions o;
    o.db = db_;
    std::ostringstream out, err;
    const auto run = [&] { return Match(o, out, err, [&](long, long) { c.fail(); }); };
    if (c.escapes)
      EXPECT_THROW(run(), std::runtime_error) << c.name;
    else
      EXPECT_EQ(run(), kExitError) << c.name;
    EXPECT_EQ(CurrentMessenger(), host) << c.name;
    EXPECT_EQ(BD(), nullptr) << c.name;
  }
}

TEST_F(MatchTest, CountsEqualCrossingOneByOne) {
  for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
           {"Demandas", ""}, {"Demandas", "Inm. Ajenos"}, {"Inm. Propios", ""}}) {
    MatchOptions o;
    o.db = db_;
    o.from = from;
    o.to = to;
    o.limit = 4;
    o.json = true;
    std::ostringstream out, err;
    long calls = 0;
    ASSERT_EQ(Match(o, out, err, [&](long done, long total) {
                EXPECT_EQ(done, ++calls);
                EXPECT_EQ(total, 4);
              }),
              kExitOk)
        << err.str();
    EXPECT_EQ(calls, 4);
    const auto rows = nlohmann::json::parse(out.str());
    ASSERT_EQ(rows.size(), 4u);
    const std::string target = to.empty() ? (from == "Demandas" ? "Inm. Propios" : "Demandas") : to;
    for (const auto& row : rows) {
      EXPECT_EQ(row["coincidencias"].get<long>(), CrossCount(row["id"].get<std::int32_t>(), from, target))
          << from << " " << row["id"];
    }
  }
}

TEST_F(MatchTest, TextOutputAndBadPairs) {
  MatchOptions o;
  o.db = db_;
  o.limit = 2;
  std::ostringstream out, err;
  ASSERT_EQ(Match(o, out, err), kExitOk);
  std::istringstream in(out.str());
  std::string header, first;
  std::getline(in, header);
  std::getline(in, first);
  EXPECT_EQ(header, "IdDemanda\tInm. Propios");
  EXPECT_EQ(first.substr(0, first.find('\t')), "1");

  for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
           {"Inm. Archivados", ""}, {"Demandas", "Demandas"}, {"Inm. Propios", "Inm. Ajenos"}}) {
    MatchOptions bad;
    bad.db = db_;
    bad.from = from;
    bad.to = to;
    std::ostringstream o2, e2;
    EXPECT_EQ(Match(bad, o2, e2), kExitError) << from << "->" << to;
    EXPECT_EQ(o2.str(), "");
  }
}

TEST(MatchProgressBar, DrawsAndEndsTheLine) {
  std::ostringstream err;
  auto bar = TerminalProgressBar(err);
  bar(1, 4);
  bar(4, 4);
  EXPECT_NE(err.str().find("[##########"), std::string::npos);
  EXPECT_EQ(err.str().back(), '\n');
  EXPECT_NE(err.str().find("4/4"), std::string::npos);
}

}  // namespace
}  // namespace cp::cli
