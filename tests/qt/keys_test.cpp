// Keys and ways out of the selection window, as users of desktop dialogs expect them.
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTest>

#include "common/scripted_list_picker.h"
#include "tests/qt/selection_window_fixture.h"

namespace cp::testing {
namespace {

class WindowKeysTest : public SelectionWindowTest {};

// An unknown province whose list the user cancelled keeps the focus; leaving the window
// must not validate it again.
TEST_F(WindowKeysTest, AnUnknownNameDoesNotTrapTheUserInTheWindow) {
  const std::vector<std::pair<const char*, std::function<void(SelectionWindow&)>>> waysOut = {
      {"Cancelar", [](SelectionWindow& w) {
         QTest::mouseClick(w.View().WidgetOf("cmdCancelar"), Qt::LeftButton);
       }},
      {"Escape", [](SelectionWindow& w) { QTest::keyClick(Inm(w, "txtProvincia"), Qt::Key_Escape); }},
      {"close box", [](SelectionWindow& w) { w.close(); }},
  };
  for (const auto& [way, leave] : waysOut) {
    ScriptedListPickerRegistration picker(ListPickerAnswer::Cancel());
    sel_->setEntidad("Inm. Propios");
    ShowWindow([&](SelectionWindow& w) {
      QWidget* province = Inm(w, "txtProvincia");
      QTest::mouseClick(province, Qt::LeftButton);
      QTest::keyClicks(province, "Narnia");
      QTest::keyClick(province, Qt::Key_Tab);
      ASSERT_EQ(picker.InstanceCount(), 1);
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == province; }))
          << "the unknown name keeps the focus";
      QTest::keyClick(province, Qt::Key_Return);  // Aceptar validates: the list comes back
      EXPECT_EQ(picker.InstanceCount(), 2);
      leave(w);
      EXPECT_FALSE(w.isVisible()) << way;
    });
    EXPECT_EQ(picker.InstanceCount(), 2) << way;
    EXPECT_EQ(sel_->SQLW(), "") << way;
  }
}

TEST_F(WindowKeysTest, EnterPressesAceptarAndShiftEnterOpensTheList) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Vip; "));
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(ShowWindow([&](SelectionWindow& w) {
    QWidget* categories = w.View().NestedView("SeleccionCli1")->WidgetOf("txtCategorias");
    QTest::mouseClick(categories, Qt::LeftButton);
    QTest::keyClick(categories, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(picker.InstanceCount(), 1);
    ASSERT_TRUE(w.isVisible()) << "Shift+Enter only opens the list";
    QTest::keyClick(categories, Qt::Key_Return);
    EXPECT_FALSE(w.isVisible());
  }));
  EXPECT_EQ(Clients(sel_->SQLW()), (std::vector<long>{2, 3}));
}

}  // namespace
}  // namespace cp::testing
