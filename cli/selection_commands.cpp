#include "cli/selection_commands.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <memory>
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
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "sample/host_query.h"
#include "selection/c_seleccion.h"
#include "selection/modal_runner.h"

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

struct SetCommand {
  std::string name;
  int index = -1;
  std::string value;
};

SetCommand ParseSet(const std::string& text) {
  const auto eq = text.find('=');
  if (eq == std::string::npos || eq == 0)
    throw Error(err::kInvalidProcedureCall,
                "--set necesita NOMBRE=VALOR o NOMBRE(I)=VALOR: '" + text + "'");
  SetCommand set{text.substr(0, eq), -1, text.substr(eq + 1)};
  const auto open = set.name.find('(');
  if (open != std::string::npos) {
    const auto close = set.name.find(')', open);
    const auto number = ParseNumber(set.name.substr(open + 1, close - open - 1));
    if (close != set.name.size() - 1 || !number || *number < 0 || *number != static_cast<int>(*number))
      throw Error(err::kInvalidProcedureCall, "Índice no válido en --set: '" + text + "'");
    set.index = static_cast<int>(*number);
    set.name = set.name.substr(0, open);
  }
  return set;
}

// Brings a control into view as a user would: its tab is clicked when it lies on another.
void Reveal(form::Control& control) {
  for (form::Control* c = &control; c; c = c->Parent()) {
    if (auto* tabs = dynamic_cast<form::SSTab*>(c->Parent())) {
      if (c->ParentTab() >= 0 && tabs->Tab() != c->ParentTab()) tabs->setTab(c->ParentTab());
    }
  }
}

// The next control after `from` (in creation order, wrapping) that can take the focus.
form::Control* NextFocusable(form::ControlContainer& controls, form::Control& from) {
  const auto& all = controls.Controls();
  auto it = std::find(all.begin(), all.end(), &from);
  for (std::size_t step = 1; step < all.size(); ++step) {
    form::Control* c = all[(static_cast<std::size_t>(it - all.begin()) + step) % all.size()];
    if (c->CanHaveFocus() && c->EffectivelyVisible() && c->EffectivelyEnabled()) return c;
  }
  return nullptr;
}

void ApplySet(form::ControlContainer& controls, const SetCommand& set, std::ostream& err) {
  form::Control& control = controls.Item(set.name, set.index);
  Reveal(control);
  if (auto* text = dynamic_cast<form::TextBox*>(&control)) {
    // Typed into the box, which is then left: Change, Validate, LostFocus.
    text->SetFocus();
    text->setText(set.value);
    if (form::Control* next = NextFocusable(controls, *text)) {
      if (!next->SetFocus())
        err << "Aviso: " << set.name << " no ha aceptado el valor '" << set.value << "'.\n";
    }
  } else if (auto* check = dynamic_cast<form::CheckBox*>(&control)) {
    const auto value = ParseNumber(set.value);
    if (!value) throw Error(err::kInvalidPropertyValue, "Valor no válido para " + set.name + ": '" + set.value + "' (0, 1 o 2)");
    check->setValue(CInt(Variant(*value)));
  } else if (auto* combo = dynamic_cast<form::ComboBox*>(&control)) {
    combo->setText(set.value);
  } else if (auto* picker = dynamic_cast<form::DTPicker*>(&control)) {
    if (set.value.empty()) {
      picker->setValue(Variant::Null());
    } else {
      const auto date = ParseDate(set.value);
      if (!date) throw Error(err::kInvalidPropertyValue, "Fecha no válida para " + set.name + ": '" + set.value + "' (aaaa-mm-dd)");
      picker->setValue(Variant(*date));
    }
  } else {
    throw Error(err::kInvalidProcedureCall, "El control " + set.name + " no admite --set.");
  }
}

Variant ReadSavedSelection(const std::string& path) {
  std::ifstream in(path);
  if (!in) throw Error(err::kFileNotFound, "No se puede leer la selección guardada '" + path + "'.");
  Json json;
  try {
    json = Json::parse(in);
  } catch (const Json::exception& e) {
    throw Error(err::kTypeMismatch, "La selección guardada '" + path + "' no es JSON válido: " + e.what());
  }
  if (json.is_object() && json.contains("seleccion")) json = json["seleccion"];
  if (json.is_null()) return Variant();
  if (!json.is_array())
    throw Error(err::kTypeMismatch, "La selección guardada debe ser un array de [Nombre, Indice, Valor].");
  Array2D saved(0, static_cast<int>(json.size()) - 1, 0, 2);
  for (int i = 0; i < static_cast<int>(json.size()); ++i) {
    const Json& e = json[static_cast<std::size_t>(i)];
    if (!e.is_array() || e.size() != 3 || !e[0].is_string() || !e[1].is_number_integer() ||
        !e[2].is_string())
      throw Error(err::kTypeMismatch, "Entrada " + std::to_string(i) + " de la selección guardada: se esperaba [Nombre, Indice, Valor].");
    saved.at(i, 0) = Variant(e[0].get<std::string>());
    saved.at(i, 1) = Variant(static_cast<std::int16_t>(e[1].get<int>()));
    saved.at(i, 2) = Variant(e[2].get<std::string>());
  }
  return Variant(std::move(saved));
}

Json SelectionJson(const Variant& saved) {
  if (!saved.IsArray()) return nullptr;
  Json rows = Json::array();
  const Array2D& a = saved.AsArray();
  for (int i = a.LBound(1); i <= a.UBound(1); ++i)
    rows.push_back({CStr(a.at(i, 0)), CInt(a.at(i, 1)), CStr(a.at(i, 2))});
  return rows;
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
                   {"seleccion", SelectionJson(sel.Seleccion())}};
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
    std::vector<SetCommand> sets;
    for (const std::string& s : options.sets) sets.push_back(ParseSet(s));
    const Variant saved = options.restore.empty() ? Variant() : ReadSavedSelection(options.restore);

    HostSession host(options.db, err);
    CSeleccion& sel = host.selection();
    if (options.user) sel.setgVUser(*options.user);
    if (!options.possible.empty()) sel.setEntidadesPosibles(NameList(options.possible));
    sel.setEntidad(options.entity);
    if (!options.restore.empty()) sel.setSeleccion(saved);

    std::optional<Error> failure;
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
      try {
        SelectionControl* shown = nullptr;
        if (dlg.SeleccionCli1Control().Visible()) shown = &dlg.SeleccionCli1();
        if (dlg.SeleccionInm1Control().Visible()) shown = &dlg.SeleccionInm1();
        if (!sets.empty() && !shown)
          throw Error(err::kInvalidProcedureCall,
                      "La entidad '" + options.entity + "' no muestra ningún control de criterios.");
        for (const SetCommand& set : sets) ApplySet(shown->Controls(), set, err);
        dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
      } catch (const Error& e) {
        failure = e;
      }
    }));
    const bool accepted = sel.mtdMostrar();
    if (failure) throw *failure;
    if (!accepted) {
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
