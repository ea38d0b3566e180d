// The demo database stores a demand's "no preference" the way the cross-match reads it (the
// empty text), so crossing finds rows from either side of the market.
#include <gtest/gtest.h>

#include <sstream>

#include "cli/commands.h"
#include "cli/match_command.h"
#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using testing::ScratchDb;
using testing::ScratchDir;

// The share of source records, among the first n, that match at least one record.
double MatchingShare(const std::string& db, const std::string& from, long n) {
  std::ostringstream out, err;
  EXPECT_EQ(Match({db, from, "", n, false}, out, err), kExitOk) << err.str();
  std::istringstream lines(out.str());
  std::string line;
  std::getline(lines, line);  // header
  long matching = 0;
  while (std::getline(lines, line)) matching += line.substr(line.find('\t') + 1) != "0";
  return static_cast<double>(matching) / n;
}

TEST(DemoCross, NoPreferenceIsTheEmptyTextAndCrossesFindRowsBothWays) {
  ScratchDir dir;
  const std::string path = dir.File("demo.db");
  std::ostringstream out, err;
  ASSERT_EQ(InitDb({path, true, 600}, out, err), kExitOk) << err.str();
  {
    ScratchDb db(path);
    for (const char* column :
         {"Pais", "Provincia", "Poblacion", "Zona", "TipoInmueble", "Categorias"}) {
      const std::string count = std::string("SELECT count(*) FROM Demanda WHERE ") + column;
      EXPECT_EQ(db.Count(count + " IS NULL"), 0) << column;
    }
    EXPECT_GT(db.Count("SELECT count(*) FROM Demanda WHERE Poblacion = ''"), 0);
  }
  EXPECT_GT(MatchingShare(path, "Inm. Propios", 100), 0.02);
  EXPECT_GT(MatchingShare(path, "Demandas", 100), 0.02);
}

}  // namespace
}  // namespace cp::cli
