#pragma once
// The selection window shown through CSeleccion.mtdMostrar with the Qt runner, and the
// widgets of its criteria controls, for the GUI tests that act as the user.
#include <QTest>
#include <functional>
#include <memory>

#include "qt/form_view.h"
#include "qt/qt_modal_runner.h"
#include "tests/qt/gui_dialog_support.h"
#include "tests/selection/selection_fixture.h"

namespace cp::testing {

class SelectionWindowTest : public SelectionTest {
 protected:
  void SetUp() override {
    GuiApp();
    SelectionTest::SetUp();
  }

  // mtdMostrar in the real window, with act as the user inside its loop.
  bool ShowWindow(const std::function<void(SelectionWindow&)>& act) {
    ScopedModalRunner runner(std::make_shared<QtModalRunner>());
    ModalAnswer user([&](QWidget& w) {
      auto* window = dynamic_cast<SelectionWindow*>(&w);
      ASSERT_NE(window, nullptr);
      act(*window);
    });
    const bool result = sel_->mtdMostrar();
    EXPECT_TRUE(user.Answered());
    return result;
  }

  static QWidget* In(SelectionWindow& w, const char* control, const char* name, int index = -1) {
    FormView* nested = w.View().NestedView(control);
    return nested ? nested->WidgetOf(name, index) : nullptr;
  }
  static QWidget* Cli(SelectionWindow& w, const char* name, int index = -1) {
    return In(w, "SeleccionCli1", name, index);
  }
  static QWidget* Inm(SelectionWindow& w, const char* name, int index = -1) {
    return In(w, "SeleccionInm1", name, index);
  }
  static void Click(SelectionWindow& w, const char* button) {
    QTest::mouseClick(w.View().WidgetOf(button), Qt::LeftButton);
  }
};

}  // namespace cp::testing
