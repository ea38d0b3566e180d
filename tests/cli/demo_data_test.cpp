// The demo data: location and check-box columns in the stored conventions that criteria and
// crossing read, and zones that hang from their towns. (The server's differential test
// builds it twice from one seed and needs the same rows both times.)
#include "sample/demo_data.h"

#include <gtest/gtest.h>

#include "tests/cli/test_db.h"

namespace cp::cli {
namespace {

using namespace testing;

TEST(DemoFile, LocationsCheckBoxesAndZonesFollowTheStoredConventions) {
  ScratchDir dir;
  MakeDb(dir.File("demo.db"), true, 600);
  ScratchDb db(dir.File("demo.db"));
  auto count = [&](const std::string& from) { return db.Count("SELECT count(*) FROM " + from); };
  // A demand's "no preference" is the empty text, which crossing matches; Null is not.
  for (const char* column :
       {"Pais", "Provincia", "Poblacion", "Zona", "TipoInmueble", "Categorias"})
    EXPECT_EQ(count(std::string("Demanda WHERE ") + column + " IS NULL"), 0) << column;
  EXPECT_GT(count("Demanda WHERE Poblacion = ''"), 0);
  // Check boxes hold the three states; only old filed records keep empty ones.
  for (const std::string t : {"IPropio", "IAjeno", "IArchivado", "Demanda"}) {
    for (const std::string c : {"Amueblado", "Transmitido"}) {
      EXPECT_EQ(db.Scalar("SELECT group_concat(v) FROM (SELECT DISTINCT " + c + " AS v FROM " +
                          t + " WHERE v IS NOT NULL ORDER BY v)"), "0,1,2") << t << c;
      EXPECT_EQ(count(t + " WHERE " + c + " IS NULL") > 0, t == "IArchivado") << t << c;
    }
  }
  // Every property's zone hangs from its town, as crossing by zone expects.
  EXPECT_EQ(count("IPropio x WHERE IdZona IS NOT NULL AND NOT EXISTS (SELECT 1 FROM BZona j "
                  "WHERE j.IdZona = x.IdZona AND j.IdPoblacion = x.IdPoblacion)"), 0);
}

}  // namespace
}  // namespace cp::cli
