#pragma once
// match: crosses every demand (or every own or other-agency property) of a database with the
// other side of the market in one run, as Cruzar does one at a time, and prints per source
// record how many records match.
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <string>

namespace cp::cli {

struct MatchOptions {
  std::string db;
  std::string from = "Demandas";  // "Demandas", "Inm. Propios" or "Inm. Ajenos"
  std::string to;                 // default: "Inm. Propios" from demands, else "Demandas"
  long limit = 0;                 // cross only the first N source records (0: all)
  bool json = false;
};

// Called after each source record with (done, total).
using MatchProgress = std::function<void(long done, long total)>;

// Prints "<key>\t<matches>" per source record in key order after a header line naming the
// source key and the target entity (with json, an array of {"id", "coincidencias"}).
// Exit 2 on a bad entity pair or a database error.
int Match(const MatchOptions& options, std::ostream& out, std::ostream& err,
          const MatchProgress& progress = {});

// A progress bar on err that redraws at most a few times a second and ends with a newline.
MatchProgress TerminalProgressBar(std::ostream& err);

}  // namespace cp::cli
