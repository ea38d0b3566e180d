// The selection dialog in its real window: CSeleccion.mtdMostrar shows it through the Qt
// runner and "the user" types, clicks and presses keys in the widgets; the condition is read
// back through CSeleccion and compared with the same criteria set on the model directly.
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "common/list_picker.h"
#include "common/scripted_list_picker.h"
#include "platform/automation/registry.h"
#include "qt/form_view.h"
#include "qt/list_picker_window.h"
#include "qt/qt_list_picker.h"
#include "qt/qt_modal_runner.h"
#include "tests/qt/selection_window_fixture.h"

namespace cp::testing {
namespace {

class SelectionDialogTest : public SelectionWindowTest {
 protected:
  static void ClickTab(QWidget* strip, int tab) {
    QTabBar* bar = static_cast<QTabWidget*>(strip)->tabBar();
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->tabRect(tab).center());
  }

  // The condition that the same criteria give when set on the model without a window.
  std::string ModelCondition(const std::string& entity,
                             const std::function<void(frmSeleccion&)>& fill) {
    sel_->setEntidad(entity);
    EXPECT_TRUE(Show([&](frmSeleccion& dlg) {
      fill(dlg);
      Press(dlg, "cmdAceptar");
    }));
    return sel_->SQLW();
  }
};

TEST_F(SelectionDialogTest, TypedWordsAndChosenFieldGiveTheCondition) {
  sel_->setEntidad("Clientes");
  const bool accepted = ShowWindow([](SelectionWindow& w) {
    EXPECT_EQ(w.windowTitle(), QStringLiteral("Selección"));
    QWidget* words = Cli(w, "txtPalabras");
    // Activation puts the caret in the first criterion.
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::focusWidget() == words; }));
    QTest::keyClicks(words, "garcia");
    QTest::keyClick(words, Qt::Key_Tab);  // to cboOpPalabras
    QWidget* how = Cli(w, "cboOpPalabras");
    EXPECT_EQ(QApplication::focusWidget(), how);
    QTest::keyClick(how, Qt::Key_Down);  // "Al principio"
    QWidget* field = Cli(w, "cboEn");
    field->setFocus(Qt::TabFocusReason);
    QTest::keyClick(field, Qt::Key_Down);
    QTest::keyClick(field, Qt::Key_Down);  // "Apellido"
    EXPECT_EQ(static_cast<QComboBox*>(field)->currentText(), QStringLiteral("Apellido"));
    Click(w, "cmdAceptar");
  });
  EXPECT_TRUE(accepted);
  EXPECT_EQ(sel_->SQLW(), "Cliente.Apellidos LIKE 'garcia*'");
  EXPECT_EQ(sel_->Entidad(), "Clientes");
  EXPECT_EQ(Clients(sel_->SQLW()), std::vector<long>{2});
}

TEST_F(SelectionDialogTest, CloseBoxAndCancelKeepThePreviousResult) {
  sel_->setEntidad("Clientes");
  ASSERT_TRUE(ShowWindow([](SelectionWindow& w) {
    QTest::keyClicks(Cli(w, "txtPalabras"), "ruiz");
    Click(w, "cmdAceptar");
  }));
  const std::string first = sel_->SQLW();
  ASSERT_FALSE(first.empty());

  sel_->setEntidad("Clientes");
  EXPECT_TRUE(ShowWindow([](SelectionWindow& w) {
    QTest::keyClicks(Cli(w, "txtPalabras"), "otra");
    w.close();  // the close box
  })) << "the earlier result stands";
  EXPECT_EQ(sel_->SQLW(), first);

  sel_->setEntidad("Clientes");
  EXPECT_FALSE(ShowWindow([](SelectionWindow& w) {
    QTest::keyClicks(Cli(w, "txtPalabras"), "otra");
    Click(w, "cmdCancelar");
  }));
  EXPECT_EQ(sel_->SQLW(), first);
}

TEST_F(SelectionDialogTest, PropertyCheckBoxThroughItsThreeStatesWithDelete) {
  sel_->setEntidad("Inm. Propios");
  ASSERT_TRUE(ShowWindow([](SelectionWindow& w) {
    ClickTab(Inm(w, "tbsSelec"), 2);  // " Características "
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
    auto* furnished = static_cast<QCheckBox*>(Inm(w, "chkNuevo"));
    QTest::mouseClick(furnished, Qt::LeftButton);
    QTest::keyClick(furnished, Qt::Key_Delete);  // back to no criterion
    Click(w, "cmdAceptar");
  }));
  const std::string gui = sel_->SQLW();
  EXPECT_NE(gui.find("Amueblado"), std::string::npos) << gui;
  EXPECT_EQ(gui.find("Nuevo"), std::string::npos) << "greyed again: no criterion";
  EXPECT_EQ(gui, ModelCondition("Inm. Propios", [](frmSeleccion& dlg) {
              dlg.SeleccionInm1().Controls().Get<form::CheckBox>("chkAmueblado").setValue(0);
            }));
}

TEST_F(SelectionDialogTest, ShiftEnterInCategoriesOpensThePicker) {
  ScriptedListPickerRegistration picker(ListPickerAnswer::Accept("Vip; "));
  sel_->setEntidad("Clientes");
  ASSERT_TRUE(ShowWindow([&](SelectionWindow& w) {
    auto* categories = static_cast<QLineEdit*>(Cli(w, "txtCategorias"));
    QTest::mouseClick(categories, Qt::LeftButton);
    QTest::keyClick(categories, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(picker.InstanceCount(), 1);
    EXPECT_EQ(categories->text(), QStringLiteral("Vip; "));
    EXPECT_EQ(QApplication::focusWidget(), categories);
    Click(w, "cmdAceptar");
  }));
  const std::string gui = sel_->SQLW();
  EXPECT_EQ(gui, ModelCondition("Clientes", [](frmSeleccion& dlg) {
              dlg.SeleccionCli1().Controls().Get<form::TextBox>("txtCategorias").setText("Vip; ");
            }));
  EXPECT_EQ(Clients(gui), (std::vector<long>{2, 3}));
}

TEST_F(SelectionDialogTest, PickingInTheListWindowFillsTheCriterion) {
  // The real list window for this test only, whatever happens in it.
  struct RealListWindow {
    std::optional<ObjectFactory> previous = RegisterQtListPicker();
    ~RealListWindow() {
      if (previous) {
        RegisterProgId(kListPickerProgId, *previous);
      } else {
        UnregisterProgId(kListPickerProgId);
      }
    }
  } realListWindow;
  sel_->setEntidad("Clientes");
  ASSERT_TRUE(ShowWindow([&](SelectionWindow& w) {
    // The user opens the categories' list, filters it, ticks "Vip" and accepts.
    ModalAnswer list([](QWidget& modal) {
      auto* window = dynamic_cast<ListPickerWindow*>(&modal);
      ASSERT_NE(window, nullptr);
      QTest::keyClicks(&window->filterBox(), "vi");
      const auto found = window->list().findItems(QStringLiteral("Vip"), Qt::MatchExactly);
      ASSERT_EQ(found.size(), 1);
      window->list().setCurrentItem(found.front());
      QTest::keyClick(&window->list(), Qt::Key_Space);
      QTest::mouseClick(&window->acceptButton(), Qt::LeftButton);
    });
    QTest::mouseClick(Cli(w, "cmdCategorias"), Qt::LeftButton);
    EXPECT_TRUE(list.Answered());
    EXPECT_EQ(static_cast<QLineEdit*>(Cli(w, "txtCategorias"))->text(), QStringLiteral("Vip; "));
    Click(w, "cmdAceptar");
  }));
  EXPECT_EQ(Clients(sel_->SQLW()), (std::vector<long>{2, 3}));
}

TEST_F(SelectionDialogTest, ChangingTheEntityShowsTheOtherControl) {
  sel_->setEntidad("Clientes");
  EXPECT_TRUE(ShowWindow([](SelectionWindow& w) {
    EXPECT_TRUE(Cli(w, "txtPalabras")->isVisible());
    EXPECT_FALSE(Inm(w, "txtInmueble")->isVisible());
    QWidget* entity = w.View().WidgetOf("cboEntidad");
    entity->setFocus(Qt::TabFocusReason);
    QTest::keyClick(entity, Qt::Key_Home);  // "Inm. Propios"
    EXPECT_FALSE(Cli(w, "txtPalabras")->isVisible());
    EXPECT_TRUE(Inm(w, "txtInmueble")->isVisible());
    Click(w, "cmdAceptar");
  }));
  EXPECT_EQ(sel_->Entidad(), "Inm. Propios");
}

}  // namespace
}  // namespace cp::testing
