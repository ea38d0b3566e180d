#include "cli/selection_commands.h"

#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <nlohmann/json.hpp>

#include "cli/commands.h"
#include "common/console_messenger.h"
#include "common/entity_catalogue.h"
#include "common/messenger.h"
#include "common/scripted_list_picker.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/text_format.h"
#include "platform/core/error.h"
#include "platform/dao/connect.h"
#include "sample/host_query.h"
#include "selection/c_seleccion.h"
#include "selection/saved_selection_json.h"
#include "selection/user_entries.h"

namespace cp::cli {
namespace {

using Json = nlohmann::ordered_json;

// The host side of one run: messages to err, a list picker that answers as a user who
// cancels, the database shared with the component. Everything is put back at the end.
class HostSession {
 public:
  HostSession(const std::string& db, std::ostream& err)
      : messages_(std::make_shared<ConsoleMessenger>(err)) {
    selection_.setBD(dao::OpenDatabase(db));
    selection_.setPathDB(db);
  }
  CSeleccion& selection() { return selection_; }

 private:
  ScopedMessenger messages_;
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database_{DatabaseSlot(), nullptr};
  ScriptedListPickerRegistration picker_{ListPickerAnswer::Cancel()};
  CSeleccion selection_;
};

Variant ReadSavedSelection(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw Error(err::kFileNotFound, "No se puede leer la selección guardada '" + path + "'.");
  std::stringstream text;
  text << in.rdbuf();
  return SavedSelectionFromJson(text.str(), path);
}

// Prints the result of where or cross, and with query the rows of the host query.
int PrintResult(CSeleccion& sel, bool json, bool query, std::ostream& out) {
  std::string rows;
  Json rowsJson;
  if (query) {
    dao::Recordset rs = BD()->OpenRecordset(sample::HostQuery(sel.Entidad(), sel.SQLW()),
                                            dao::dbOpenForwardOnly);
    rows = FormatRows(rs, json);
    if (json) rowsJson = Json::parse(rows);
  }
  if (json) {
    Json result = {{"entidad", sel.Entidad()}, {"sqlw", sel.SQLW()},
                   {"seleccion", SavedSelectionToJson(sel.Seleccion())}};
    if (query) result["filas"] = rowsJson;
    out << result.dump(2, ' ', false, Json::error_handler_t::replace) << "\n";
  } else {
    out << sel.SQLW() << "\n" << rows;
  }
  return kExitOk;
}

Variant NameList(const std::vector<std::string>& names) {
  Array2D list(0, static_cast<int>(names.size()) - 1, 0, 0);
  for (std::size_t i = 0; i < names.size(); ++i) list.at(static_cast<int>(i), 0) = Variant(names[i]);
  return Variant(std::move(list));
}

}  // namespace

int Where(const WhereOptions& options, std::ostream& out, std::ostream& err) {
  try {
    std::vector<UserEntry> sets;
    for (const std::string& s : options.sets) sets.push_back(ParseUserEntry(s));
    const Variant saved = options.restore.empty() ? Variant() : ReadSavedSelection(options.restore);

    HostSession host(options.db, err);
    CSeleccion& sel = host.selection();
    if (options.user) sel.setgVUser(*options.user);
    if (!options.possible.empty()) sel.setEntidadesPosibles(NameList(options.possible));
    sel.setEntidad(options.entity);
    if (!options.restore.empty()) sel.setSeleccion(saved);

    if (!AcceptWithEntries(sel, sets, err)) {
      err << "Aceptar no ha producido ninguna selección: ningún control atiende la entidad '"
          << options.entity << "'.\n";
      return kExitError;
    }
    return PrintResult(sel, options.json, options.query, out);
  } catch (const Error& e) {
    err << e.description() << "\n";
    return kExitError;
  }
}

int Cross(const CrossOptions& options, std::ostream& out, std::ostream& err) {
  try {
    HostSession host(options.db, err);
    CSeleccion& sel = host.selection();
    std::int32_t id = options.id;
    std::string to = options.to, from = options.from;
    sel.Cruzar(id, to, from);
    return PrintResult(sel, options.json, options.query, out);
  } catch (const Error& e) {
    err << e.description() << "\n";
    return kExitError;
  }
}

}  // namespace cp::cli
