// The selection dialog in its real window: CSeleccion.mtdMostrar shows it through the Qt
// runner and "the user" types, clicks and presses keys in the widgets.
#include <QCheckBox>
#include <QLineEdit>
#include <QTabBar>
#include <QTabWidget>

#include "common/scripted_list_picker.h"
#include "tests/qt/gui_support.h"

namespace cp::testing {
namespace {

using SelectionDialogTest = SelectionWindowTest;

TEST_F(SelectionDialogTest, TypedWordsAndChosenFieldGiveTheCondition) {
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(ShowWindow([](SelectionWindow& w) {
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Selección"));
    QWidget* words = Cli(w, "txtPalabras");
    // Activation puts the caret in the first criterion.
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == words; }));
    QTest::keyClicks(words, "garcia");
    QTest::keyClick(words, Qt::Key_Tab);
    QWidget* how = Cli(w, "cboOpPalabras");
    EXPECT_EQ(QApplication::focusWidget(), how);
    QTest::keyClick(how, Qt::Key_Down);  // "Al principio"
    QWidget* field = Cli(w, "cboEn");
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field, Qt::Key_Down);
    QTest::keyClick(field, Qt::Key_Down);  // "Apellido"
    Click(w, "cmdAceptar");
  }));
  EXPECT_EQ(sel_->SQLW(), "Cliente.Apellidos LIKE 'garcia*'");
  EXPECT_EQ(Clients(sel_->SQLW()), std::vector<long>{2});
}

// An unknown province whose list the user cancelled keeps the focus; leaving the window
// must not validate it again.
TEST_F(SelectionDialogTest, AnUnknownNameDoesNotTrapTheUserInTheWindow) {
  const std::function<void(SelectionWindow&)> waysOut[] = {
      [](SelectionWindow& w) { Click(w, "cmdCancelar"); },
      [](SelectionWindow& w) { QTest::keyClick(Inm(w, "txtProvincia"), Qt::Key_Escape); },
      [](SelectionWindow& w) { w.close(); }};
  for (const auto& leave : waysOut) {
    ScriptedListPickerRegistration picker(ListPickerAnswer::Cancel());
    sel_->setEntidad("Inm. Propios");
    ShowWindow([&](SelectionWindow& w) {
      QWidget* province = Inm(w, "txtProvincia");
      QTest::mouseClick(province, Qt::LeftButton);
      QTest::keyClicks(province, "Narnia");
      QTest::keyClick(province, Qt::Key_Tab);
      ASSERT_EQ(picker.InstanceCount(), 1);
      EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == province; }));
      QTest::keyClick(province, Qt::Key_Return);  // Aceptar validates: the list comes back
      EXPECT_EQ(picker.InstanceCount(), 2);
      leave(w);
      EXPECT_FALSE(w.isVisible());
    });
    EXPECT_EQ(picker.InstanceCount(), 2);
    EXPECT_EQ(sel_->SQLW(), "");
  }
}

TEST_F(SelectionDialogTest, PropertyCheckBoxThroughItsThreeStatesWithDelete) {
  sel_->setEntidad("Inm. Propios");
  ASSERT_TRUE(ShowWindow([](SelectionWindow& w) {
    QTabBar* bar = static_cast<QTabWidget*>(Inm(w, "tbsSelec"))->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(2).center());  // Características
    auto* box = static_cast<QCheckBox*>(Inm(w, "chkAmueblado"));
    ASSERT_TRUE(box->isVisible());
    EXPECT_EQ(box->checkState(), Qt::PartiallyChecked) << "no criterion at first";
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(box->checkState(), Qt::Checked);
    QTest::keyClick(box, Qt::Key_Delete);
    EXPECT_EQ(box->checkState(), Qt::PartiallyChecked);
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::mouseClick(box, Qt::LeftButton);
    EXPECT_EQ(box->checkState(), Qt::Unchecked);
    auto* other = Inm(w, "chkNuevo");
    QTest::mouseClick(other, Qt::LeftButton);
    QTest::keyClick(other, Qt::Key_Delete);  // back to no criterion
    Click(w, "cmdAceptar");
  }));
  EXPECT_EQ(sel_->SQLW(), "( (IPropio.Amueblado = 0) OR (IPropio.Amueblado=2)) ")
      << "unfurnished or either; Nuevo greyed again: no criterion";
}

// Shift+Enter opens the categories' list; Enter alone presses Aceptar.
TEST_F(SelectionDialogTest, ShiftEnterInCategoriesOpensThePickerAndEnterAccepts) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Vip; "));
  sel_->setEntidad("Clientes");
  ASSERT_TRUE(ShowWindow([&](SelectionWindow& w) {
    auto* categories = static_cast<QLineEdit*>(Cli(w, "txtCategorias"));
    QTest::mouseClick(categories, Qt::LeftButton);
    QTest::keyClick(categories, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(picker.InstanceCount(), 1);
    EXPECT_EQ(categories->text(), QStringLiteral("Vip; "));
    EXPECT_EQ(QApplication::focusWidget(), categories);
    ASSERT_TRUE(w.isVisible()) << "Shift+Enter only opens the list";
    QTest::keyClick(categories, Qt::Key_Return);
    EXPECT_FALSE(w.isVisible());
  }));
  EXPECT_EQ(Clients(sel_->SQLW()), (std::vector<long>{2, 3}));
}

}  // namespace
}  // namespace cp::testing
