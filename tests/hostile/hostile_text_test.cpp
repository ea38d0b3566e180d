// Hostile text in every box of both criteria controls never becomes SQL. The random run
// takes its size and seed from CP_HOSTILE_CASES, CP_HOSTILE_SEED and CP_HOSTILE_FIRST (the
// first case number), so a long run and a failing case can be run again.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <iostream>
#include <sstream>
#include <string>

#include "fuzz/hostile/hostile_text.h"

namespace cp::hostile {
namespace {

long long EnvNumber(const char* name, long long fallback) {
  const char* text = getenv(name);
  return text && *text ? std::stoll(text) : fallback;
}

TEST(HostileTextTest, RandomCasesNeverBecomeSql) {
  const auto seed = static_cast<std::uint64_t>(EnvNumber("CP_HOSTILE_SEED", 20261115));
  const int first = static_cast<int>(EnvNumber("CP_HOSTILE_FIRST", 0));
  const int count = static_cast<int>(EnvNumber("CP_HOSTILE_CASES", 2000));
  std::ostringstream failures;
  const RunSummary s = RunCases(seed, first, count, failures);
  std::cout << s.cases << " cases from seed " << seed << ": " << s.conditions
            << " with a condition, " << s.twins << " compared with their twin, " << s.hostErrors
            << " host queries refused by the data (not the syntax)\n";
  EXPECT_EQ(s.failures, 0) << failures.str();
  // A run must reach the conditions it is about, not fail quietly before them.
  if (s.cases >= 100) {
    EXPECT_GT(s.conditions, s.cases / 2);
    EXPECT_GT(s.twins, s.cases / 4);
  }
}

// Inputs that once reached the SQL, as the random run found them (made smaller).
TEST(HostileTextTest, InputsThatOnceReachedTheSql) {
  const std::string nul(1, '\0');
  const HostileCase cases[] = {
      // A NUL typed into a box ended the statement inside its literal.
      {"Clientes", false, {}, -1, -1, {}, {{"txtPalabras", -1, "a" + nul + "'b"}}},
      // Each "|" is written as chr(124) between two literals: six hundred nested too deep
      // for SQLite, the look-up failed and the criterion was lost.
      {"Inm. Ajenos", false, {}, -1, -1, {}, {{"txtPais", -1, std::string(600, '|')}}},
  };
  Checker checker;
  for (const HostileCase& c : cases) {
    const Verdict v = checker.Check(c);
    EXPECT_TRUE(v.ok) << Describe(c) << "\n" << v.problem << "\ncondition: " << v.condition;
  }
}

}  // namespace
}  // namespace cp::hostile
