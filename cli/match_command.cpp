#include "cli/match_command.h"

#include <chrono>
#include <nlohmann/json.hpp>
#include <ostream>
#include <vector>

#include "cli/commands.h"
#include "cli/progress_bar.h"
#include "cli/selection_commands.h"
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
  int status = kExitOk;
  try {
    CSeleccion sel;
    sel.setBD(dao::OpenDatabase(options.db));
    sel.setPathDB(options.db);

    std::vector<std::int32_t> ids;
    {
      dao::Recordset rs = BD()->OpenRecordset(std::string("SELECT ") + source->key + " FROM " +
                                                  source->table + " ORDER BY " + source->key,
                                              dao::dbOpenForwardOnly);
      for (; !rs.Eof() && (options.limit <= 0 || static_cast<long>(ids.size()) < options.limit);
           rs.MoveNext())
        ids.push_back(CLng(rs.Fields(0).Value()));
    }

    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    if (!options.json) out << source->key << "\t" << to << "\n";
    const long total = static_cast<long>(ids.size());
    for (long i = 0; i < total; ++i) {
      std::int32_t id = ids[static_cast<std::size_t>(i)];
      std::string target = to, origin = options.from;
      sel.Cruzar(id, target, origin);
      dao::Recordset rs = BD()->OpenRecordset(sample::HostQuery(to, sel.SQLW()), dao::dbOpenForwardOnly);
      long matches = 0;
      for (; !rs.Eof(); rs.MoveNext()) ++matches;
      if (options.json)
        rows.push_back({{"id", ids[static_cast<std::size_t>(i)]}, {"coincidencias", matches}});
      else
        out << ids[static_cast<std::size_t>(i)] << "\t" << matches << "\n";
      if (progress) progress(i + 1, total);
    }
    if (options.json) out << rows.dump(2) << "\n";
  } catch (const Error& e) {
    err << e.description() << "\n";
    status = kExitError;
  }
  return status;
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
