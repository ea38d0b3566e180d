// The default property that the number builders read from whatever control they are given.
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/default_value.h"
#include "platform/form/label.h"
#include "tests/criteria/criteria_fixture.h"
#include "tests/support/errors.h"

namespace cp::testing {
namespace {

using DefaultValueTest = CriteriaTest;

TEST_F(DefaultValueTest, EachKindGivesItsPropertyWithItsTypeOrRaises438) {
  auto& combo = form_.AddComboBox("cboEn");
  combo.AddItem("Nombre");
  combo.AddItem("Notas");
  combo.setListIndex(1);
  auto& label = form_.AddLabel("lblPrecio");
  label.setCaption("150.000");
  const std::pair<const form::Control*, Variant> rows[] = {
      {&Text(""), Variant("")},
      {&Check(form::vbGrayed), Variant(std::int16_t{2})},
      {&Picker(0, MakeDate(2005, 3, 7)), Variant(MakeDate(2005, 3, 7))},
      {&combo, Variant("Notas")},
      {&label, Variant("150.000")},
  };
  for (const auto& [control, expected] : rows) {
    SCOPED_TRACE(control->Name());
    const Variant value = form::DefaultValue(*control);
    EXPECT_EQ(value.type(), expected.type());
    EXPECT_EQ(value, expected);
  }
  const form::Control& button = form_.AddCommandButton("cmdOk");
  EXPECT_EQ(CaughtError([&] { form::DefaultValue(button); }).number(), 438);
}

}  // namespace
}  // namespace cp::testing
