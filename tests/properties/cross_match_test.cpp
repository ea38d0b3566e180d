// Cross-matching through CSeleccion.Cruzar: a demand filled into property criteria and a
// property into demand criteria, without any window, and the rows the result selects.
#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

using Texts = std::vector<std::string>;

class CrossTest : public PropertyTest {
 protected:
  // The texts of boxes, by name and element index.
  Texts TextsOf(std::initializer_list<std::pair<const char*, int>> boxes) {
    Texts texts;
    for (const auto& [name, index] : boxes) texts.push_back(Txt(name, index).Text());
    return texts;
  }
  std::vector<int> Checks(std::initializer_list<const char*> names) {
    std::vector<int> values;
    for (const char* name : names) values.push_back(Chk(name).Value());
    return values;
  }
};

TEST_F(CrossTest, DemandFillsPropertyCriteriaAndFindsMatchingProperties) {
  const std::string sqlw = Cross(1, "Inm. Propios", "Demandas");
  EXPECT_TRUE(Inm().Cruzando());
  // The generated crossing tests pin the rest of the fill through the rows it selects.
  EXPECT_EQ(TextsOf({{"txtPais", -1}, {"txtProvincia", -1}, {"txtPoblacion", -1},
                     {"txtZona", -1}, {"txtOperacion", -1}, {"txtInmueble", -1},
                     {"txtPrecio", 1}, {"txtSuper", 1}}),
            (Texts{"España; ", "Madrid; ", "Madrid; Alcobendas; ", "", "Venta", "Piso",
                   "200000", "120"}));
  EXPECT_EQ(Checks({"chkCategorias", "chkExclusiva", "chkTransmitido"}),
            (std::vector<int>{1, 2, 2}));
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_EQ(sqlw, Inm().SelecWhere());
  EXPECT_EQ(Own(sqlw), (Ids{1, 4}));
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(CrossTest, PropertyFillsDemandCriteriaAndFindsTheDemandsItMeets) {
  const std::string sqlw = Cross(1, "Demandas", "Inm. Propios");
  EXPECT_EQ(TextsOf({{"txtPais", -1}, {"txtProvincia", -1}, {"txtPoblacion", -1},
                     {"txtZona", -1}, {"txtTipos", -1}}),
            (Texts{"España", "Madrid", "Madrid", "Centro", "Piso"}));
  // Empty location, type and category lists of a demand also match; demand 1, which finds
  // this property, is found back.
  EXPECT_EQ(Demands(sqlw), (Ids{1, 5, 6}));
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);

  // Price and surface go to the lower boxes only; a demand hides the upper ones.
  Txt("txtPrecio", 1).setText("999");
  Txt("txtSuper", 1).setText("888");
  Cross(7, "Demandas", "Inm. Propios");
  EXPECT_EQ(TextsOf({{"txtPrecio", 0}, {"txtPrecio", 1}, {"txtSuper", 0}, {"txtSuper", 1}}),
            (Texts{"120000", "999", "75", "888"}));
  EXPECT_FALSE(Box().Item("txtPrecio", 1).Visible());
}

TEST_F(CrossTest, NoRecordFillsNothing) {
  EXPECT_EQ(Cross(-1, "Inm. Propios", "Demandas"), "");
  EXPECT_FALSE(Inm().Cruzando()) << "-1 reads no record";
  EXPECT_EQ(Cross(-1, "Demandas", "Inm. Propios"), "");
  // Whatever the target's criteria already hold is what comes back.
  Txt("txtHuecos").setText("4");
  EXPECT_EQ(Cross(-1, "Demandas", "Inm. Ajenos"),
            " ( (Demanda.Huecos<=4) OR IsNull(Demanda.Huecos)) ");
  Txt("txtHuecos").setText("");
  // A missing record is no error.
  EXPECT_EQ(Cross(404, "Demandas", "Inm. Propios"), "");
  EXPECT_TRUE(Inm().Cruzando());
  // Archived and sold targets never read a record: without a database a read is reported.
  setBD(nullptr);
  for (const char* target : {"Inm. Archivados", "Inm. Vendidos"}) {
    EXPECT_EQ(Cross(1, target, "Demandas"), "") << target;
    EXPECT_TRUE(Inm().Cruzando());
    EXPECT_EQ(Txt("txtPais").Text(), "");
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
  Cross(1, "Inm. Propios", "Demandas");
  EXPECT_EQ(Reports(), Texts{"RellenarDemanda de SeleccionInm"});
}

TEST_F(CrossTest, HeatingFromEitherSide) {
  // A demand's heating 1 or Null leaves the box, 3 adds "unknown"; a property's heating is
  // its name, with "unknown" from 2 on.
  const struct { int id; const char *to, *from, *heating; } cases[] = {
      {3, "Inm. Propios", "Demandas", "Gas natural"},  // Null
      {1, "Inm. Propios", "Demandas", "Eléctrica;No se sabe"},
      {2, "Demandas", "Inm. Propios", "No se sabe"},  // 1
      {4, "Demandas", "Inm. Propios", ""},  // Null
      {1, "Demandas", "Inm. Propios", "Eléctrica;No se sabe"}};
  for (const auto& t : cases) {
    Txt("txtCalefaccion").setText("Gas natural");
    const std::string sqlw = Cross(t.id, t.to, t.from);
    EXPECT_EQ(Txt("txtCalefaccion").Text(), t.heating) << t.id << " " << t.from;
    EXPECT_FALSE(std::string(t.heating) == "No se sabe" &&
                 sqlw.find("IdCalefaccion") != std::string::npos) << sqlw;
  }
}

TEST_F(CrossTest, OriginOtherThanOwnPropertiesReadsOtherAgencies) {
  // Own property 7 is in Ávila; the other agencies' property 7 in Madrid, with no type read.
  const struct { const char *origin, *provincia, *tipos; } cases[] = {
      {"Inm. Propios", "Ávila", "Piso"}, {"Inm. Vendidos", "Madrid", "antes"}};
  for (const auto& t : cases) {
    sel_ = std::make_unique<CSeleccion>();
    sel_->setBD(dao::OpenDatabase(path_));
    Txt("txtTipos").setText("antes");
    Cross(7, "Demandas", t.origin);
    EXPECT_EQ(Txt("txtProvincia").Text(), t.provincia) << t.origin;
    EXPECT_EQ(Txt("txtTipos").Text(), t.tipos) << t.origin;
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(CrossTest, ACheckBoxColumnThatIsNullOrOutOfRangeStopsTheFill) {
  // Demand 4: Amueblado 1, then Nuevo Null; Trastero (1) is never reached.
  const std::string sqlw = Cross(4, "Inm. Propios", "Demandas");
  EXPECT_EQ(Reports(), Texts{"RellenarDemanda de SeleccionInm"});
  EXPECT_NE(messenger_->shown()[0].text.find("94"), std::string::npos);
  EXPECT_EQ(Checks({"chkAmueblado", "chkNuevo", "chkTrastero"}), (std::vector<int>{1, 2, 2}));
  // The condition is still made from what was written.
  EXPECT_EQ(sqlw.find("Trastero"), std::string::npos) << sqlw;
  EXPECT_EQ(Own(sqlw), (Ids{2, 4, 7}));
  // Demand 6 stores 5 in Trastero; Comercial and Industrial after it stay grey.
  messenger_->ClearShown();
  Cross(6, "Inm. Ajenos", "Demandas");
  EXPECT_EQ(Reports(), Texts{"RellenarDemanda de SeleccionInm"});
  EXPECT_EQ(Checks({"chkNuevo", "chkTrastero", "chkComercial", "chkIndustrial"}),
            (std::vector<int>{0, 2, 2, 2}));
}

TEST_F(CrossTest, SettingTheShownEntityAgainPointsTheControlAtIt) {
  sel_->setEntidad("Inm. Propios");
  Cross(1, "Demandas", "Inm. Propios");
  ASSERT_EQ(Inm().Tabla(), "Demanda");
  const std::string sql = Accept("Inm. Propios", [](ControlContainer&) {});
  EXPECT_EQ(sql.find("Demanda"), std::string::npos) << sql;
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
  EXPECT_FALSE(Own(sql).empty()) << sql;
}

}  // namespace
}  // namespace cp::testing
