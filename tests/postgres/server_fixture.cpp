#include "tests/postgres/server_fixture.h"

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include <gtest/gtest.h>

#include "common/messenger.h"
#include "common/scripted_list_picker.h"
#include "common/scripted_messenger.h"
#include "common/shared_state.h"
#include "platform/core/conversions.h"
#include "platform/core/text_format.h"
#include "platform/dao/connect.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "sample/host_query.h"
#include "sample/sample_database.h"
#include "selection/c_seleccion.h"
#include "selection/modal_runner.h"
#include "tests/support/pg_server.h"

namespace cp::testing {
namespace {

// A host of the selection object on db: messages and list pickers declined, the database
// slot put back afterwards.
struct Host {
  explicit Host(const std::string& db) {
    sel.setBD(dao::OpenDatabase(db));
    sel.setPathDB(db);
  }
  ScopedMessenger messages{std::make_shared<ScriptedMessenger>()};
  ProcessSlot<std::shared_ptr<dao::Database>>::Scoped database{DatabaseSlot(), nullptr};
  ScriptedListPickerRegistration picker{ListPickerAnswer::Cancel()};
  CSeleccion sel;
};

// The first column of the host query's rows, sorted.
std::vector<std::string> HostIds(CSeleccion& sel) {
  std::vector<std::string> ids;
  auto rs = BD()->OpenRecordset(sample::HostQuery(sel.Entidad(), sel.SQLW()),
                                dao::dbOpenForwardOnly);
  for (; !rs.Eof(); rs.MoveNext()) ids.push_back(CStr(rs.Fields(0).Value()));
  std::sort(ids.begin(), ids.end());
  return ids;
}

// "NAME=VALUE" or "NAME(I)=VALUE" entered as a user would: the control's tab is shown, a
// text box is typed into and then left for the next control that takes the focus.
void Enter(form::ControlContainer& controls, const std::string& set) {
  const auto eq = set.find('='), open = set.find('(');
  const bool indexed = open < eq;
  const std::string name = set.substr(0, indexed ? open : eq), value = set.substr(eq + 1);
  form::Control& control = controls.Item(name, indexed ? std::stoi(set.substr(open + 1)) : -1);
  for (form::Control* c = &control; c; c = c->Parent())
    if (auto* tabs = dynamic_cast<form::SSTab*>(c->Parent()); tabs && c->ParentTab() >= 0)
      tabs->setTab(c->ParentTab());
  if (auto* text = dynamic_cast<form::TextBox*>(&control)) {
    text->SetFocus();
    text->setText(value);
    const auto& all = controls.Controls();
    const auto at = static_cast<std::size_t>(std::find(all.begin(), all.end(), text) - all.begin());
    for (std::size_t step = 1; step < all.size(); ++step) {
      form::Control* c = all[(at + step) % all.size()];
      if (c->CanHaveFocus() && c->EffectivelyVisible() && c->EffectivelyEnabled()) {
        c->SetFocus();
        break;
      }
    }
  } else if (auto* check = dynamic_cast<form::CheckBox*>(&control)) {
    check->setValue(std::stoi(value));
  } else if (auto* combo = dynamic_cast<form::ComboBox*>(&control)) {
    combo->setText(value);
  } else {
    dynamic_cast<form::DTPicker&>(control).setValue(Variant(*ParseDate(value)));
  }
}

}  // namespace

const SampleDatabases& Samples(const std::string& serverDatabase, int size) {
  // The files go with the process (the server's schemas go with the test cluster).
  static struct Made : std::map<std::string, SampleDatabases> {
    ~Made() {
      std::error_code ec;
      for (const auto& [name, s] : *this) std::filesystem::remove(s.sqlite, ec);
    }
  } made;
  auto& s = made[serverDatabase];
  if (!s.sqlite.empty()) return s;
  s.sqlite = (std::filesystem::temp_directory_path() /
              ("cp_pg_sample_" + std::to_string(::getpid()) + "_" + serverDatabase + ".sqlite"))
                 .string();
  std::filesystem::remove(s.sqlite);
  sample::CreateSampleDatabase(s.sqlite, sample::DemoOptions{size});
  if (TestServer()) {
    s.server = CreateServerDatabase(serverDatabase, false);
    sample::CreateSampleDatabase(s.server, sample::DemoOptions{size});
  }
  return s;
}

std::vector<std::string> WhereIds(const std::string& db, const std::string& entity,
                                  const std::vector<std::string>& sets) {
  try {
    Host host(db);
    host.sel.setEntidad(entity);
    std::optional<Error> failure;
    ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
      try {
        auto& shown = dlg.SeleccionCli1Control().Visible()
                          ? static_cast<SelectionControl&>(dlg.SeleccionCli1())
                          : dlg.SeleccionInm1();
        for (const std::string& set : sets) Enter(shown.Controls(), set);
        dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
      } catch (const Error& e) {
        failure = e;
      }
    }));
    if (!host.sel.mtdMostrar() || failure)
      return {"error", failure ? failure->description() : "not accepted"};
    return HostIds(host.sel);
  } catch (const Error& e) {
    return {"error", e.description()};
  }
}

std::vector<std::string> CrossIds(const std::string& db, int id, const std::string& from,
                                  const std::string& to) {
  try {
    Host host(db);
    std::int32_t record = id;
    std::string into = to, origin = from;
    host.sel.Cruzar(record, into, origin);
    return HostIds(host.sel);
  } catch (const Error& e) {
    return {"error", e.description()};
  }
}

}  // namespace cp::testing
