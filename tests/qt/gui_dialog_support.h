#pragma once
// Support for the GUI tests of the view, the dialog and the message boxes: the one
// QApplication of the test program (whoever asks first creates it) and a user who answers
// the next modal window from inside its loop.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>

namespace cp::testing {

inline QApplication& GuiApp() {
  if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) return *app;
  static int argc = 1;
  static char name[] = "test_qt";
  static char* argv[] = {name, nullptr};
  static QApplication app(argc, argv);
  return app;
}

// Answers the next modal window that opens (one that is not already open): act runs inside
// its loop once it is visible and active. If act leaves it open, the window is closed and
// the test fails, so a forgotten window cannot hang the run. Destroying the returned object
// stops waiting.
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

// Types text into a widget key by key, accented letters included (QTest::keyClicks knows
// only ASCII).
inline void TypeText(QWidget* widget, const QString& text) {
  for (const QChar ch : text) {
    if (ch.unicode() < 128) {
      QTest::keyClick(widget, ch.toLatin1());
    } else {
      QTest::sendKeyEvent(QTest::Press, widget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
      QTest::sendKeyEvent(QTest::Release, widget, Qt::Key_unknown, QString(ch), Qt::NoModifier);
    }
  }
}

// Shows a top-level widget and waits until it has the keyboard.
inline void ShowActive(QWidget& window) {
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
}

}  // namespace cp::testing
