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
  int jobs = 1;  // worker processes that cross at once; 1 crosses in this process
};

// Called after each source record with (done, total).
using MatchProgress = std::function<void(long done, long total)>;

// Prints "<key>\t<matches>" per source record in key order after a header line naming the
// source key and the target entity (with json, an array of {"id", "coincidencias"}), all at
// the end and the same whatever jobs is. With jobs > 1 (and more than one source record) the
// records are shared among that many forked processes, each on its own connection, so the
// component's process-wide slots are never shared; what their messengers show goes to err.
// Exit 2, with the message on err and nothing on out, on a bad entity pair or a database
// error, in this process or in a worker; no worker is left running by then.
// progress is called in this process, with done counting up to total.
int Match(const MatchOptions& options, std::ostream& out, std::ostream& err,
          const MatchProgress& progress = {});

// A progress bar on err that redraws at most a few times a second and ends with a newline.
MatchProgress TerminalProgressBar(std::ostream& err);

}  // namespace cp::cli
