#include "qt/key_mapping.h"

#include "platform/form/keys.h"

namespace cp {

int VbKeyCode(int key) {
  if ((key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9))
    return key;  // same codes
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return 112 + (key - Qt::Key_F1);
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return form::vbKeyReturn;
    case Qt::Key_Escape: return form::vbKeyEscape;
    case Qt::Key_Delete: return form::vbKeyDelete;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Space: return 32;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    default: return 0;
  }
}

int VbShift(Qt::KeyboardModifiers m) {
  return (m & Qt::ShiftModifier ? form::vbShiftMask : 0) |
         (m & Qt::ControlModifier ? form::vbCtrlMask : 0) |
         (m & Qt::AltModifier ? form::vbAltMask : 0);
}

}  // namespace cp
