#pragma once
// Key mapping: the runtime's key codes and shift masks for Qt's keys, so that a widget's key
// press reaches the model's KeyDown as the original controls raised it.
#include <Qt>

namespace cp {

// The runtime's key code for a Qt key; 0 for keys the model never hears (Tab moves the
// focus, modifiers alone are not keys).
int VbKeyCode(int qtKey);

// The runtime's shift mask (vbShiftMask | vbCtrlMask | vbAltMask) for Qt's modifiers.
int VbShift(Qt::KeyboardModifiers modifiers);

}  // namespace cp
