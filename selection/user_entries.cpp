#include "selection/user_entries.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>

#include "platform/core/conversions.h"
#include "platform/core/error.h"
#include "platform/core/text_format.h"
#include "platform/form/check_box.h"
#include "platform/form/combo_box.h"
#include "platform/form/command_button.h"
#include "platform/form/date_picker.h"
#include "platform/form/ss_tab.h"
#include "platform/form/text_box.h"
#include "selection/c_seleccion.h"
#include "selection/frm_seleccion.h"
#include "selection/modal_runner.h"

namespace cp {
namespace {

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

}  // namespace

void EnterUserEntry(form::ControlContainer& controls, const UserEntry& set, std::ostream& err) {
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

UserEntry ParseUserEntry(const std::string& text) {
  const auto eq = text.find('=');
  if (eq == std::string::npos || eq == 0)
    throw Error(err::kInvalidProcedureCall,
                "--set necesita NOMBRE=VALOR o NOMBRE(I)=VALOR: '" + text + "'");
  UserEntry set{text.substr(0, eq), -1, text.substr(eq + 1)};
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

bool AcceptWithEntries(CSeleccion& sel, const std::vector<UserEntry>& entries,
                       std::ostream& warnings) {
  std::optional<Error> failure;
  ScopedModalRunner runner(std::make_shared<ScriptedModalRunner>([&](frmSeleccion& dlg) {
    try {
      SelectionControl* shown = nullptr;
      if (dlg.SeleccionCli1Control().Visible()) shown = &dlg.SeleccionCli1();
      if (dlg.SeleccionInm1Control().Visible()) shown = &dlg.SeleccionInm1();
      if (!entries.empty() && !shown)
        throw Error(err::kInvalidProcedureCall,
                    "La entidad '" + sel.Entidad() + "' no muestra ningún control de criterios.");
      for (const UserEntry& entry : entries) EnterUserEntry(shown->Controls(), entry, warnings);
      dlg.Controls().Get<form::CommandButton>("cmdAceptar").Press();
    } catch (const Error& e) {
      // Raised again after the dialog has gone, as the host sees it.
      failure = e;
    }
  }));
  const bool accepted = sel.mtdMostrar();
  if (failure) throw *failure;
  return accepted;
}

}  // namespace cp
