// The host sets the entity that the dialog already shows, after a cross-match moved the
// property control to the other side of the market.
#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

TEST_F(PropertyTest, SettingTheShownEntityAgainPointsTheControlAtIt) {
  sel_->setEntidad("Inm. Propios");
  std::int32_t id = 1;
  std::string to = "Demandas", from = "Inm. Propios";
  sel_->Cruzar(id, to, from);
  ASSERT_EQ(Inm().Tabla(), "Demanda");
  const std::string sql = Accept("Inm. Propios", [](frmSeleccion& dlg) {
    EXPECT_EQ(dlg.SeleccionInm1().Tabla(), "IPropio");
    EXPECT_FALSE(dlg.SeleccionInm1().Cruzando());
  });
  EXPECT_EQ(sql.find("Demanda"), std::string::npos) << sql;
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_FALSE(Own(sql).empty()) << sql;
}

}  // namespace
}  // namespace cp::testing
