#pragma once
// A picture of the host's windows for the support report. A GUI host installs one (the Qt
// layer's QtWindowCapture); a program without windows installs nothing and the report goes
// without a picture.
#include <memory>
#include <optional>
#include <string>

#include "platform/core/process_slot.h"

namespace cp {

class WindowCapture {
 public:
  virtual ~WindowCapture() = default;
  // The application's windows as they look now, as the bytes of a PNG file; nullopt when
  // there is nothing to show or the picture cannot be taken.
  virtual std::optional<std::string> CapturePng() = 0;
};

// The installed capture, or null (the default).
std::shared_ptr<WindowCapture> CurrentWindowCapture();
// Installs a capture (null removes it) and returns the one it replaces.
std::shared_ptr<WindowCapture> SetWindowCapture(std::shared_ptr<WindowCapture> capture);
// The slot behind both, for a scope that installs a capture and puts the previous one back.
ProcessSlot<std::shared_ptr<WindowCapture>>& WindowCaptureSlot();

}  // namespace cp
