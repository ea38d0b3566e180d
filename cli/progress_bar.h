#pragma once
// The progress bar the tool draws on a terminal's standard error: one line redrawn in place,
// "[####      ] done/total" and what the caller appends, ended when done reaches total.
#include <iosfwd>
#include <string_view>

namespace cp::cli {

// Draws the bar `width` characters wide after `prefix`, then `suffix`; flushes err.
void DrawProgressBar(std::ostream& err, std::string_view prefix, long done, long total,
                     int width, std::string_view suffix = {});

}  // namespace cp::cli
