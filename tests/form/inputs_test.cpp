// Text boxes, drop-down lists, check boxes, date pickers and tab strips: their values and the
// events that changing them fires.
#include <gtest/gtest.h>

#include <string_view>

#include "platform/core/date.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/control_container.h"
#include "platform/form/date_picker.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "tests/support/errors.h"

namespace cp::form {
namespace {

using cp::testing::CaughtError;
using namespace std::string_view_literals;

struct Inputs : ::testing::Test {
  Form f{"f"};
  int events = 0;
  std::function<void()> Count() { return [this] { ++events; }; }
};

TEST_F(Inputs, TextBoxChangeFiresOnlyWhenTheTextDiffersAndMaySetItAgain) {
  TextBox& t = f.AddTextBox("txtPrecio", 0);
  std::vector<std::string> seen;
  t.Change.Connect([&] {
    seen.push_back(t.Text());
    if (t.Text() == "150000") t.setText("150.000");
  });
  // The text ends at a NUL, so "Ávila\0..." is the same text again.
  for (std::string_view text : {"Ávila"sv, "Ávila\0tras"sv, ""sv, ""sv, "150000"sv})
    t.setText(std::string(text));
  EXPECT_EQ(t.Text(), "150.000");
  EXPECT_EQ(seen, (std::vector<std::string>{"Ávila", "", "150000", "150.000"}));
  // A handler that never settles ends with an error instead of a crash.
  t.Change.Connect([&] { t.setText(t.Text() + "x"); });
  EXPECT_EQ(CaughtError([&] { t.setText("a"); }).number(), err::kOutOfStackSpace);
}

TEST_F(Inputs, TextBoxSelectionCountsCharactersAndIsCutToTheText) {
  TextBox& t = f.AddTextBox("txtZona");
  t.setText("Peñíscola");
  t.setSelStart(50);
  EXPECT_EQ(t.SelStart(), 9);
  EXPECT_EQ(CaughtError([&] { t.setSelStart(-1); }).number(), err::kInvalidPropertyValue);
  t.setText("otro");  // new text puts the caret back at the start
  EXPECT_EQ(t.SelStart(), 0);
}

TEST_F(Inputs, ComboBoxListIndexAndTextSelectAndClickOnChangeClearDoesNot) {
  ComboBox& c = f.AddComboBox("cboOpPalabras");
  for (const char* item : {"Al principio", "En todo el texto", "Al final"}) c.AddItem(item);
  c.Click.Connect(Count());
  EXPECT_EQ(c.ListIndex(), -1);
  c.setListIndex(1);
  c.setListIndex(1);
  EXPECT_EQ(events, 1);
  EXPECT_EQ(c.Text(), "En todo el texto");
  EXPECT_EQ(CaughtError([&] { c.setListIndex(3); }).number(), err::kInvalidPropertyValue);
  // Only a listed text, exactly: anything else is refused and changes nothing.
  for (const char* text : {"Abogados", "al final", "Al final ", ""})
    EXPECT_EQ(CaughtError([&] { c.setText(text); }).number(), err::kTextIsReadOnly) << text;
  EXPECT_EQ(c.ListIndex(), 1);
  c.setText("Al final");
  EXPECT_EQ(c.ListIndex(), 2);
  c.RemoveItem(0);  // the selection follows its item, without a Click
  EXPECT_EQ(c.ListIndex(), 1);
  EXPECT_EQ(CaughtError([&] { c.RemoveItem(2); }).number(), err::kInvalidProcedureCall);
  c.Clear();  // no Click
  EXPECT_EQ(c.ListCount(), 0);
  EXPECT_EQ(c.ListIndex(), -1);
  EXPECT_EQ(events, 2);
}

TEST_F(Inputs, CheckBoxValuesAndClick) {
  CheckBox& c = f.AddCheckBox("chkNuevo");
  c.Click.Connect(Count());
  // value set, error raised, value then, clicks so far
  const int cases[][4] = {{2, 0, 2, 1}, {2, 0, 2, 1}, {1, 0, 1, 2}, {3, 380, 1, 2},
                          {-1, 380, 1, 2}, {0, 0, 0, 3}};
  for (const auto& [value, error, after, clicks] : cases) {
    EXPECT_EQ(cp::testing::ErrorNumberOf([&] { c.setValue(value); }), error) << value;
    EXPECT_EQ(c.Value(), after) << value;
    EXPECT_EQ(events, clicks) << value;
  }
}

TEST_F(Inputs, DatePickerNullWhileUncheckedAndChangeOnEveryNewValue) {
  DTPicker& d = f.AddDTPicker("dtpAlta", 0);
  d.Change.Connect(Count());
  const Date may = MakeDate(2024, 5, 17);
  d.setValue(Variant(may));
  d.setValue(Variant::Null());
  EXPECT_TRUE(d.Value().IsNull());
  EXPECT_FALSE(d.Checked());
  d.setValue(Variant::Null());
  EXPECT_EQ(events, 2);
  d.setChecked(true);  // checking again shows the date it had
  EXPECT_EQ(d.Value().AsDate(), may);
  d.setValue(Variant("2024-05-17"));
  EXPECT_EQ(events, 3);
  d.setValue(Variant("01/02/2023"));
  EXPECT_EQ(d.Value().AsDate(), MakeDate(2023, 2, 1));
  EXPECT_EQ(CaughtError([&] { d.setValue(Variant()); }).number(), err::kInvalidPropertyValue);
  EXPECT_EQ(CaughtError([&] { d.setValue(Variant("ayer")); }).number(), err::kTypeMismatch);
  EXPECT_EQ(d.Value().AsDate(), MakeDate(2023, 2, 1));
  EXPECT_EQ(events, 4);
}

TEST_F(Inputs, TabStripClickReportsThePreviousTab) {
  SSTab& t = f.AddSSTab("tbsSelec", 3);
  std::vector<int> previous;
  t.Click.Connect([&](int p) { previous.push_back(p); });
  for (int tab : {2, 2, 0}) t.setTab(tab);
  EXPECT_EQ(previous, (std::vector<int>{0, 2}));
  EXPECT_EQ(CaughtError([&] { t.setTab(3); }).number(), err::kInvalidPropertyValue);
  EXPECT_EQ(CaughtError([&] { t.TabCaption(3); }).number(), err::kInvalidPropertyArrayIndex);
}

}  // namespace
}  // namespace cp::form
