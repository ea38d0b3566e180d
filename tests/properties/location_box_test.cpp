// Leaving a location box of the property control, from the user's default location.
#include <gtest/gtest.h>

#include "tests/properties/property_fixture.h"

namespace cp::testing {
namespace {

const char* const kLocation[] = {"txtPais", "txtProvincia", "txtPoblacion", "txtZona"};

class LocationBoxTest : public PropertyTest {
 protected:
  // The dialog on entity, showing user 3's location (España, Ávila, Ávila).
  void OpenAt(const std::string& entity) {
    sel_->setgVUser(3);
    sel_->setEntidad(entity);
    sel_->setSeleccion(Variant());
  }
  static std::vector<std::string> Boxes(ControlContainer& c) {
    std::vector<std::string> texts;
    for (const char* box : kLocation) texts.push_back(c.Get<form::TextBox>(box).Text());
    return texts;
  }
};

TEST_F(LocationBoxTest, TabbingThroughTheDefaultLocationChangesNothing) {
  for (const char* entity : {"Demandas", "Inm. Propios"}) {
    SCOPED_TRACE(entity);
    OpenAt(entity);
    const std::string untouched = Accept(entity, [](ControlContainer&) {});
    OpenAt(entity);
    const std::string tabbed = Accept(entity, [&](ControlContainer& c) {
      for (const char* box : kLocation) {
        c.Item(box).SetFocus();
        Leave(c);
      }
      EXPECT_EQ(Boxes(c), (std::vector<std::string>{"España", "Ávila", "Ávila", ""}));
    });
    EXPECT_EQ(tabbed, untouched);
    EXPECT_NE(untouched, "");
  }
  EXPECT_TRUE(messenger_->shown().empty()) << DescribeMessages(*messenger_);
}

TEST_F(LocationBoxTest, ABoxKeepsItsTextAndOnlyAnotherNameClearsBelow) {
  struct Row {
    const char* box;
    std::string typed;
    std::optional<std::string> picked;  // the list's answer when a name is not found
    std::vector<std::string> after;     // país, provincia, población, zona
    std::string quoted;                 // as the demand's condition quotes it
  };
  const Row rows[] = {
      {"txtProvincia", "Ávila", {}, {"España", "Ávila", "Ávila", ""}, "Ávila"},
      {"txtPoblacion", " ávila;", {}, {"España", "Ávila", " ávila;", ""}, "ávila"},
      {"txtPais", "Francia", {}, {"Francia", "", "", ""}, "Francia"},
      {"txtProvincia", "Narnia", "Madrid; ", {"España", "Madrid; ", "", ""}, "Madrid"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.box) + " <- '" + row.typed + "'");
    ScriptedListPickerRegistration picker(
        row.picked ? ListPickerAnswer::Accept(*row.picked) : ListPickerAnswer::Cancel());
    OpenAt("Demandas");
    const std::string sql = Accept("Demandas", [&](ControlContainer& c) {
      Type(c, row.box, row.typed);
      Leave(c);
      EXPECT_EQ(Boxes(c), row.after);
    });
    EXPECT_EQ(picker.InstanceCount(), row.picked ? 1 : 0);
    EXPECT_NE(sql.find(row.quoted), std::string::npos) << sql;
  }
}

}  // namespace
}  // namespace cp::testing
