#include "cli/match_command.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>
#include <vector>

#include "cli/commands.h"
#include "cli/progress_bar.h"
#include "cli/selection_commands.h"
#include "cli/worker_pool.h"
#include "common/console_messenger.h"
#include "common/entity_catalogue.h"
#include "common/messenger.h"
#include "common/scripted_list_picker.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "sample/host_query.h"
#include "selection/c_seleccion.h"

namespace cp::cli {

namespace {

// The source keys in key order, the first `limit` of them (0: all), read on a connection that
// is closed again on return so that workers can be forked afterwards.
std::vector<std::int32_t> ReadIds(const std::string& db, const EntityInfo& source, long limit) {
  std::vector<std::int32_t> ids;
  const std::shared_ptr<dao::Database> database = dao::OpenDatabase(db);
  dao::Recordset rs = database->OpenRecordset(std::string("SELECT ") + source.key + " FROM " +
                                                  source.table + " ORDER BY " + source.key,
                                              dao::dbOpenForwardOnly);
  for (; !rs.Eof() && (limit <= 0 || static_cast<long>(ids.size()) < limit); rs.MoveNext())
    ids.push_back(CLng(rs.Fields(0).Value()));
  return ids;
}

// Crosses ids[first], ids[first + step]... on a connection of its own, installed as the shared
// database meanwhile, and calls found(index, matches) for each. Each record gets a fresh
// CSeleccion: crossing fills only some criteria and leaves the rest as the previous record
// left them, so a shared one would make a count depend on the record crossed before.
void CrossIds(const MatchOptions& options, const std::string& to,
              const std::vector<std::int32_t>& ids, std::size_t first, std::size_t step,
              const std::function<void(std::size_t, long)>& found) {
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database(DatabaseSlot(),
                                                               dao::OpenDatabase(options.db));
  setPathDB(options.db);
  for (std::size_t i = first; i < ids.size(); i += step) {
    CSeleccion sel;
    std::string target = to, origin = options.from;
    std::int32_t id = ids[i];
    sel.Cruzar(id, target, origin);
    dao::Recordset rs =
        BD()->OpenRecordset(sample::HostQuery(to, sel.SQLW()), dao::dbOpenForwardOnly);
    long matches = 0;
    for (; !rs.Eof(); rs.MoveNext()) ++matches;
    found(i, matches);
  }
}

// Crosses every id in `workers` processes, worker w taking ids w, w + workers... so that each
// gets a share of every part of the key range. Returns the empty text or the first failure.
std::string CrossInWorkers(const MatchOptions& options, const std::string& to,
                           const std::vector<std::int32_t>& ids, int workers,
                           std::vector<long>& counts, std::ostream& err,
                           const MatchProgress& progress) {
  const auto job = [&](int w, WorkerPipe& pipe) -> std::string {
    std::ostringstream shown;  // the worker's messages go to the parent's err
    ScopedMessenger messages(std::make_shared<ConsoleMessenger>(shown));
    const auto pass_on_messages = [&] {
      if (shown.tellp() > 0) pipe.Log(shown.str());
      shown.str("");
    };
    try {
      CrossIds(options, to, ids, static_cast<std::size_t>(w), static_cast<std::size_t>(workers),
               [&](std::size_t i, long matches) {
                 pass_on_messages();
                 pipe.Send(std::to_string(i) + " " + std::to_string(matches));
               });
    } catch (const Error& e) {
      pass_on_messages();
      return e.description();
    }
    pass_on_messages();
    return {};
  };
  long done = 0;
  const long total = static_cast<long>(ids.size());
  return RunWorkers(
      workers, job,
      [&](std::string_view record) {
        std::size_t i = 0;
        long matches = 0;
        const char* end = record.data() + record.size();
        const auto [space, ec] = std::from_chars(record.data(), end, i);
        if (ec != std::errc() || i >= counts.size() || space == end ||
            std::from_chars(space + 1, end, matches).ec != std::errc())
          throw std::runtime_error("registro de un proceso de trabajo ilegible");
        counts[i] = matches;
        if (progress) progress(++done, total);
      },
      err);
}

}  // namespace

int Match(const MatchOptions& options, std::ostream& out, std::ostream& err,
          const MatchProgress& progress) {
  const EntityInfo* source = FindEntity(options.from);
  const std::string to =
      options.to.empty() ? std::string(DefaultCrossTarget(options.from)) : options.to;
  if (!source || !CrossesWith(options.from, to)) {
    err << "No se puede cruzar «" << options.from << "» con «" << to
        << "»: se cruzan demandas con inmuebles propios o ajenos, e inmuebles propios o "
           "ajenos con demandas.\n";
    return kExitError;
  }
  // Every slot the run fills is put back however it ends, a foreign exception included.
  ScopedMessenger messages(std::make_shared<ConsoleMessenger>(err));
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database(DatabaseSlot(), nullptr);
  ScriptedListPickerRegistration picker(ListPickerAnswer::Cancel());
  try {
    const std::vector<std::int32_t> ids = ReadIds(options.db, *source, options.limit);
    std::vector<long> counts(ids.size());
    const long total = static_cast<long>(ids.size());
    const int workers = static_cast<int>(std::min<long>(options.jobs, total));
    if (workers > 1) {
      const std::string failure =
          CrossInWorkers(options, to, ids, workers, counts, err, progress);
      if (!failure.empty()) {
        err << failure << "\n";
        return kExitError;
      }
    } else {
      long done = 0;
      CrossIds(options, to, ids, 0, 1, [&](std::size_t i, long matches) {
        counts[i] = matches;
        if (progress) progress(++done, total);
      });
    }

    if (options.json) {
      nlohmann::ordered_json rows = nlohmann::ordered_json::array();
      for (std::size_t i = 0; i < ids.size(); ++i)
        rows.push_back({{"id", ids[i]}, {"coincidencias", counts[i]}});
      out << rows.dump(2) << "\n";
    } else {
      out << source->key << "\t" << to << "\n";
      for (std::size_t i = 0; i < ids.size(); ++i) out << ids[i] << "\t" << counts[i] << "\n";
    }
  } catch (const Error& e) {
    err << e.description() << "\n";
    return kExitError;
  }
  return kExitOk;
}

MatchProgress TerminalProgressBar(std::ostream& err) {
  using Clock = std::chrono::steady_clock;
  auto last = std::make_shared<Clock::time_point>();
  return [&err, last](long done, long total) {
    const auto now = Clock::now();
    if (done < total && now - *last < std::chrono::milliseconds(200)) return;
    *last = now;
    DrawProgressBar(err, "", done, total, 40);
  };
}

}  // namespace cp::cli
