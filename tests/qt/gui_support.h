#pragma once
// The GUI tests' support: the test program's one QApplication, a user who answers the next
// modal window from inside its loop, and the selection window shown through mtdMostrar.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <functional>
#include <memory>
#include <ostream>

#include "qt/form_view.h"
#include "qt/qt_modal_runner.h"
#include "tests/selection/selection_fixture.h"

inline void PrintTo(const QString& text, std::ostream* os) {
  *os << '"' << text.toStdString() << '"';
}
inline void PrintTo(const QStringList& list, std::ostream* os) {
  for (const QString& text : list) *os << '"' << text.toStdString() << "\" ";
}

namespace cp::testing {

// Lives from before the first test to after the last: a function-local static would be
// destroyed after Qt's per-thread data and crash the run at exit.
class GuiEnvironment : public ::testing::Environment {
 public:
  void SetUp() override { app_ = new QApplication(argc_, argv_); }
  void TearDown() override { delete app_; }

 private:
  int argc_ = 1;
  char name_[8] = "test_qt";
  char* argv_[2] = {name_, nullptr};
  QApplication* app_ = nullptr;
};
inline ::testing::Environment* const kGui = ::testing::AddGlobalTestEnvironment(new GuiEnvironment);

// Answers the next modal window that opens: act runs inside its loop once it is active. A
// window act leaves open is closed and fails the test, so it cannot hang the run.
class ModalAnswer {
 public:
  explicit ModalAnswer(std::function<void(QWidget&)> act)
      : before_(QApplication::activeModalWidget()), act_(std::move(act)) {
    QObject::connect(&timer_, &QTimer::timeout, [this] { Check(); });
    timer_.start(5);
  }
  bool Answered() const { return answered_; }

 private:
  void Check() {
    QWidget* modal = QApplication::activeModalWidget();
    if (!modal || modal == before_ || !modal->isVisible()) return;
    timer_.stop();
    answered_ = true;
    EXPECT_TRUE(QTest::qWaitForWindowActive(modal));
    act_(*modal);
    if (modal->isVisible() && QApplication::activeModalWidget() == modal) {
      ADD_FAILURE() << "the modal window was left open";
      modal->close();
    }
  }
  QWidget* before_;
  std::function<void(QWidget&)> act_;
  QTimer timer_;
  bool answered_ = false;
};

// Types text key by key, accented letters included (QTest::keyClicks knows only ASCII).
inline void TypeText(QWidget* widget, const QString& text) {
  for (const QChar ch : text) {
    if (ch.unicode() < 128) {
      QTest::keyClick(widget, ch.toLatin1());
      continue;
    }
    QTest::sendKeyEvent(QTest::Press, widget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
    QTest::sendKeyEvent(QTest::Release, widget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
  }
}

inline void ShowActive(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

// mtdMostrar in the real window, with act as the user inside its loop.
class SelectionWindowTest : public SelectionTest {
 protected:
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
