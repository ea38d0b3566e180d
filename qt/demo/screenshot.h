#pragma once
// Pictures of the component's windows without a person: the selection dialog on one tab of
// its criteria control, or the list window that one of its picker buttons opens. Each opens
// the window through the selection object exactly as a host does, saves a picture of it,
// and closes it again by cancelling.
#include <iosfwd>
#include <string>
#include <vector>

#include "selection/user_entries.h"

class QImage;

namespace cp {

class CSeleccion;

struct ScreenshotRequest {
  std::string file;    // PNG to write
  std::string entity;  // entity whose criteria control the dialog shows
  int tab = -1;        // tab of the criteria control; -1 keeps the one it opens on
  std::string picker;  // a picker button of the control ("cmdCategorias"): its list window
                       // is pictured instead of the dialog
  std::vector<UserEntry> entries;  // values entered into the control first, as a user does
  bool liveCount = false;  // the dialog shows its running count; the picture waits for it
};

// Takes the picture with the current ModalRunner (which must show real windows). Returns 0,
// or 2 after writing the reason to err (unknown entity, tab or button, no window, a file
// that cannot be written).
int TakeScreenshot(CSeleccion& selection, const ScreenshotRequest& request, std::ostream& err);

// The number of distinct colours of image, counted up to limit.
int DistinctColours(const QImage& image, int limit = 256);

// True when the PNG at file is missing, unreadable or has so few colours (fewer than 8) that
// nothing was drawn on it: a window with text and controls has dozens.
bool LooksBlank(const std::string& file);

}  // namespace cp
