#pragma once
// QtMessenger: the message boxes and the input box of the GUI, behind MostrarMensaje and
// PedirMensaje. The flags choose the icon (0x10 critical, 0x20 question, 0x30 exclamation,
// 0x40 information) and the buttons (0 OK, 1 OK/Cancel, 2 Abort/Retry/Ignore,
// 3 Yes/No/Cancel, 4 Yes/No, 5 Retry/Cancel; 0x100 and 0x200 make the second or third the
// default); the answer is the host's code of the button pressed. Buttons read in Spanish.
#include <string>
#include <vector>

#include <QMessageBox>
#include <QString>

#include "common/messenger.h"

namespace cp {

class QtMessenger : public Messenger {
 public:
  // Shows a modal box over the active window (needs a QApplication). Closing a box that has
  // a Cancel (or, for OK only, an OK) button answers with it.
  int Show(const std::string& text, int flags, const std::string& title) override;
  // A modal input box; returns the typed text, or "" when the user cancels.
  std::string Ask(const std::string& prompt, const std::string& title,
                  const std::string& default_text) override;
};

// What the flags ask for, for building a box (also read by tests).
QMessageBox::Icon IconForFlags(int flags);
struct BoxButton {
  QMessageBox::StandardButton button;
  QString text;  // Spanish caption
  int answer;    // the host's code: 1 OK, 2 Cancel, 3 Abort, 4 Retry, 5 Ignore, 6 Yes, 7 No
};
// In the order shown; an unknown button code gives OK only.
std::vector<BoxButton> ButtonsForFlags(int flags);
// Message text as shown: CR LF (and a lone CR) become line breaks.
QString MessageText(const std::string& text);

}  // namespace cp
