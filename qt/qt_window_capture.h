#pragma once
// QtWindowCapture: the picture of the application's windows that goes into the support
// report. A GUI host installs it beside its QtMessenger: cp::SetWindowCapture(...).
#include <optional>
#include <string>

#include "common/window_capture.h"

namespace cp {

class QtWindowCapture : public WindowCapture {
 public:
  // Lets pending window events run (so that a box just answered is gone), then draws every
  // visible top-level window, the active one first, one under another on a white page, and
  // returns it as PNG. nullopt without a QApplication or without a visible window.
  std::optional<std::string> CapturePng() override;
};

}  // namespace cp
