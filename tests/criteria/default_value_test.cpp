// The default property that the number builders read from whatever control they are given.
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/default_value.h"
#include "platform/form/frame.h"
#include "platform/form/label.h"
#include "tests/criteria/criteria_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using DefaultValueTest = CriteriaTest;

TEST_F(DefaultValueTest, EachKindGivesItsPropertyWithItsType) {
  auto& combo = form_.AddComboBox("cboEn");
  combo.AddItem("Nombre");
  combo.AddItem("Notas");
  combo.setListIndex(1);
  auto& label = form_.AddLabel("lblPrecio");
  label.setCaption("150.000");
  auto& emptyCombo = form_.AddComboBox("cboVacio");
  struct Row {
    std::string name;
    const form::Control* control;
    Variant expected;
  };
  const Row rows[] = {
      {"text", &Text("2,5"), Variant("2,5")},
      {"empty text", &Text(""), Variant("")},
      {"check", &Check(form::vbGrayed), Variant(std::int16_t{2})},
      {"unchecked check", &Check(form::vbUnchecked), Variant(std::int16_t{0})},
      {"picker", &Picker(0, MakeDate(2005, 3, 7)), Variant(MakeDate(2005, 3, 7))},
      {"unchecked picker", &Picker(1, Variant::Null()), Variant::Null()},
      {"combo", &combo, Variant("Notas")},
      {"combo without selection", &emptyCombo, Variant("")},
      {"label", &label, Variant("150.000")},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const Variant value = form::DefaultValue(*row.control);
    EXPECT_EQ(value.type(), row.expected.type());
    EXPECT_EQ(value, row.expected);
  }
}

TEST_F(DefaultValueTest, ControlsWithoutDefaultPropertyRaise438) {
  const form::Control* without[] = {&form_.AddCommandButton("cmdOk"), &form_.AddFrame("fraX")};
  for (const auto* control : without) {
    SCOPED_TRACE(control->TypeName());
    EXPECT_EQ(CaughtError([&] { form::DefaultValue(*control); }).number(), 438);
  }
}

}  // namespace
}  // namespace cp::testing
