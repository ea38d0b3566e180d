#pragma once
// Support for the list window and demo host tests: one QApplication for the test program
// (whoever asks first creates it), and a user who acts in the next modal window, with a
// guard that the window does not stay open when a test forgets to close it (which would hang
// the run).
#include <gtest/gtest.h>

#include <QApplication>
#include <functional>
#include <memory>
#include <ostream>

#include "qt/demo/modal_watch.h"
#include "tests/qt/gui_dialog_support.h"

// Readable failures for Qt texts.
inline void PrintTo(const QString& text, std::ostream* os) { *os << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList& list, std::ostream* os) {
  *os << '{';
  for (const QString& text : list) *os << '"' << text.toStdString() << "\" ";
  *os << '}';
}

namespace cp::testing {

inline QApplication& TestApp() { return GuiApp(); }

// Plays the user in the next modal window of class W (a QDialog): act runs once it is up.
// A window still open afterwards is rejected and the test fails.
template <class W>
std::unique_ptr<ModalWatch> AsUserIn(std::function<void(W&)> act) {
  return WatchFor<W>([act = std::move(act)](W& window) {
    act(window);
    if (window.isVisible()) {
      ADD_FAILURE() << "the window was left open";
      window.reject();
    }
  });
}

}  // namespace cp::testing
