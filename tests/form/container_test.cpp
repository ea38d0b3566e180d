// The container: creation order, lookup by name and control array, focus moves and the
// observers a view uses.
#include "platform/form/control_container.h"

#include <gtest/gtest.h>

#include "platform/form/check_box.h"
#include "platform/form/command_button.h"
#include "platform/form/frame.h"
#include "platform/form/label.h"
#include "platform/form/text_box.h"
#include "platform/form/user_control.h"
#include "tests/support/errors.h"

namespace cp::form {
namespace {

using cp::testing::CaughtError;

TEST(ControlContainer, LookupErrors) {
  Form f("f");
  f.AddTextBox("txtPrecio", 0);
  f.AddTextBox("txtPrecio", 1);
  f.AddCheckBox("chkNuevo");
  const std::vector<std::pair<std::function<void()>, long>> cases = {
      {[&] { f.Item("txtNada"); }, err::kControlNotFound},
      {[&] { f.Item("txtPrecio"); }, err::kIndexRequired},
      {[&] { f.Item("chkNuevo", 0); }, err::kNotAnArray},
      {[&] { f.Item("txtPrecio", 2); }, err::kArrayElementMissing},
      {[&] { f.Get<CheckBox>("txtPrecio", 0); }, err::kTypeMismatch},
      // Names are unique: no duplicate element, no plain control beside an array of that
      // name, no array of mixed types.
      {[&] { f.AddTextBox("TXTPRECIO", 1); }, err::kInvalidProcedureCall},
      {[&] { f.AddTextBox("txtPrecio"); }, err::kInvalidProcedureCall},
      {[&] { f.AddCheckBox("chkNuevo"); }, err::kInvalidProcedureCall},
      {[&] { f.AddLabel("txtPrecio", 2); }, err::kInvalidProcedureCall},
      {[&] { f.AddLabel(""); }, err::kInvalidProcedureCall},
  };
  for (std::size_t i = 0; i < cases.size(); ++i)
    EXPECT_EQ(CaughtError(cases[i].first).number(), cases[i].second) << "case " << i;
  EXPECT_EQ(f.Controls().size(), 3u);
}

TEST(ControlContainer, HoldsUserControlsSeenByTheirClassName) {
  Form dialog("frmSeleccion");
  auto contacts = std::make_shared<ControlContainer>("SeleccionCli");
  TextBox& words = contacts->AddTextBox("txtPalabras");
  UserControl& placed = dialog.AddUserControl("SeleccionCli1", contacts);
  EXPECT_EQ(placed.TypeName(), "SeleccionCli");
  EXPECT_EQ(&dialog.Get<UserControl>("seleccioncli1").Content().Get<TextBox>("txtPalabras"),
            &words);
  EXPECT_EQ(CaughtError([&] { placed.SetFocus(); }).number(), err::kPropertyNotFound);
  EXPECT_EQ(CaughtError([&] { dialog.AddUserControl("SeleccionInm1", nullptr); }).number(),
            err::kInvalidProcedureCall);
  EXPECT_EQ(dialog.Controls().size(), 1u);
}

struct FocusFixture : ::testing::Test {
  Form f{"f"};
  TextBox& a = f.AddTextBox("txtA");
  TextBox& b = f.AddTextBox("txtB");
  std::vector<std::string> log;
  void Trace(Control& c) {
    const std::string n = c.Name();
    c.Validate.Connect([this, n](bool&) { log.push_back(n + ".Validate"); });
    c.LostFocus.Connect([this, n] { log.push_back(n + ".LostFocus"); });
    c.GotFocus.Connect([this, n] { log.push_back(n + ".GotFocus"); });
  }
};

TEST_F(FocusFixture, MovesInTheRuntimeOrder) {
  Trace(a);
  Trace(b);
  EXPECT_TRUE(a.SetFocus());
  EXPECT_TRUE(b.SetFocus());
  EXPECT_TRUE(b.SetFocus());  // already there: nothing fires
  EXPECT_EQ(log, (std::vector<std::string>{"txtA.GotFocus", "txtA.Validate", "txtA.LostFocus",
                                           "txtB.GotFocus"}));
}

TEST_F(FocusFixture, LostFocusHandlerMayMoveTheFocusOnwards) {
  TextBox& c = f.AddTextBox("txtC");
  Trace(b);
  Trace(c);
  a.SetFocus();
  a.LostFocus.Connect([&] { c.SetFocus(); });
  b.SetFocus();
  EXPECT_EQ(f.ActiveControl(), &c);
  // b got the focus but lost it before its GotFocus could run.
  EXPECT_EQ(log, (std::vector<std::string>{"txtB.Validate", "txtB.LostFocus", "txtC.GotFocus"}));
}

TEST_F(FocusFixture, ControlsThatCannotTakeTheFocus) {
  Frame& frame = f.AddFrame("fraSelec", 0);
  Label& label = f.AddLabel("lblPalabras");
  b.setParent(&frame);
  a.SetFocus();
  frame.setVisible(false);
  EXPECT_EQ(CaughtError([&] { b.SetFocus(); }).number(), err::kInvalidProcedureCall);
  frame.setVisible(true);
  frame.setEnabled(false);
  EXPECT_EQ(CaughtError([&] { b.SetFocus(); }).number(), err::kInvalidProcedureCall);
  EXPECT_EQ(CaughtError([&] { label.SetFocus(); }).number(), err::kPropertyNotFound);
  EXPECT_EQ(CaughtError([&] { frame.SetFocus(); }).number(), err::kPropertyNotFound);
  EXPECT_EQ(f.ActiveControl(), &a);
  EXPECT_EQ(CaughtError([&] { frame.setParent(&frame); }).number(), err::kInvalidProcedureCall);
  EXPECT_EQ(CaughtError([&] { frame.setParent(&label); }).number(), err::kInvalidProcedureCall);
  // Hiding the focused control takes the focus away, with LostFocus but no Validate.
  Trace(a);
  a.setVisible(false);
  EXPECT_EQ(f.ActiveControl(), nullptr);
  EXPECT_EQ(log, (std::vector<std::string>{"txtA.LostFocus"}));
}

TEST(Observers, SeeEveryChangeBeforeItsEvent) {
  Form f("f");
  TextBox& t = f.AddTextBox("txtPalabras");
  CheckBox& c = f.AddCheckBox("chkNuevo");
  std::vector<std::string> seen;
  const int id = f.AddObserver([&](Control& ctl, std::string_view p) {
    seen.push_back(ctl.Name() + "." + std::string(p));
  });
  t.Change.Connect([&] { seen.push_back("Change:" + t.Text()); });
  c.Click.Connect([&] { seen.push_back("Click"); });
  t.setText("casa");
  c.setValue(2);
  t.setEnabled(false);
  t.setEnabled(false);
  f.RemoveObserver(id);
  c.setCaption("Nuevo");
  EXPECT_EQ(seen, (std::vector<std::string>{"txtPalabras.Text", "Change:casa", "chkNuevo.Value",
                                            "Click", "txtPalabras.Enabled"}));
}

TEST(Events, HandlersRunInOrderAndMayDisconnectDuringFiring) {
  Form f("f");
  CommandButton& b = f.AddCommandButton("cmdAceptar");
  std::vector<int> ran;
  int second = 0;
  b.Click.Connect([&] {
    ran.push_back(1);
    b.Click.Disconnect(second);
  });
  second = b.Click.Connect([&] { ran.push_back(2); });
  b.Click.Connect([&] { ran.push_back(3); });
  b.Press();
  b.Press();
  EXPECT_EQ(ran, (std::vector<int>{1, 3, 1, 3}));
}

}  // namespace
}  // namespace cp::form
