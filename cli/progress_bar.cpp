#include "cli/progress_bar.h"

#include <algorithm>
#include <ostream>
#include <string>

namespace cp::cli {

void DrawProgressBar(std::ostream& err, std::string_view prefix, long done, long total,
                     int width, std::string_view suffix) {
  const int filled = total > 0 ? static_cast<int>(width * std::min(done, total) / total) : width;
  err << "\r" << prefix << "[" << std::string(static_cast<std::size_t>(filled), '#')
      << std::string(static_cast<std::size_t>(width - filled), ' ') << "] " << done << "/"
      << total << suffix;
  if (done >= total) err << "\n";
  err.flush();
}

}  // namespace cp::cli
