// Where the contact control puts the caret when the dialog opens on it or switches to it.
#include <gtest/gtest.h>

#include "platform/form/ss_tab.h"
#include "tests/selection/selection_fixture.h"

namespace cp::testing {
namespace {

TEST_F(SelectionTest, ContactFocusGoesToTheWordsOnlyFromTheGeneralTab) {
  struct Row {
    const char* name;
    int savedTab;    // the tab the selection was saved on
    int clickedTab;  // the tab the user then clicks, -1 for none
    const char* focus;  // where the caret is after switching back to the contacts
  };
  const Row rows[] = {
      {"reopened on Fechas", 1, -1, "cboEn"},
      {"reopened on General", 0, -1, "txtPalabras"},
      {"General, user moved to Fechas", 0, 1, "dtpAlta"},
      {"Fechas, user moved to General", 1, 0, "cboEn"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    messenger_->ClearShown();
    Array2D saved(0, 1, 0, 2);
    const std::string entries[2][3] = {{"tbsSelec", std::to_string(row.savedTab), ""},
                                       {"txtPalabras", "-1", "garcia"}};
    for (int i = 0; i < 2; ++i)
      for (int j = 0; j < 3; ++j) saved.at(i, j) = Variant(entries[i][j]);
    sel_->setEntidad("Clientes");
    sel_->setSeleccion(Variant(saved));
    Show([&](frmSeleccion& dlg) {
      form::ControlContainer& cli = Cli(dlg);
      auto& tabs = cli.Get<form::SSTab>("tbsSelec");
      if (row.clickedTab >= 0) tabs.setTab(row.clickedTab);
      if (tabs.Tab() == 0) cli.Item("cboEn").SetFocus();
      // Switching to a contact entity shows the control again, which puts the caret back.
      dlg.cboEntidad().setText("Inm. Propios");
      dlg.cboEntidad().setText("Clientes");
      const form::Control* active = cli.ActiveControl();
      EXPECT_EQ(active ? active->Name() : "(none)", row.focus);
      Press(dlg, "cmdCancelar");
    });
    EXPECT_TRUE(messenger_->shown().empty()) << messenger_->shown().front().text;
  }
}

}  // namespace
}  // namespace cp::testing
