#include "common/window_capture.h"

namespace cp {

ProcessSlot<std::shared_ptr<WindowCapture>>& WindowCaptureSlot() {
  static ProcessSlot<std::shared_ptr<WindowCapture>> slot;
  return slot;
}

std::shared_ptr<WindowCapture> CurrentWindowCapture() { return WindowCaptureSlot().Get(); }

std::shared_ptr<WindowCapture> SetWindowCapture(std::shared_ptr<WindowCapture> capture) {
  return WindowCaptureSlot().Set(std::move(capture));
}

}  // namespace cp
