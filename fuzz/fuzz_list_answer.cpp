// The list window's answer written into the box of its button, in both criteria controls.
// A user may accept any text, cancel after ticking any text, or the window may return Null
// or fail; the boxes then hold what the component made of it, and each control's condition
// must still be Jet that our parser reads. Errors the component reports through its central
// handler are fine; whatever reaches the host is not.
//
// Input: steps until the input runs out, each three bytes taken from the input's end (the
// control: even contacts, odd properties; the button, modulo the control's list buttons; how
// the window answers, modulo 4: accept, cancel, Null, fail) and the answer's text from its
// front (as FuzzedDataProvider reads them).
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "common/error_handler.h"
#include "common/scripted_list_picker.h"
#include "fuzz/fuzz_support.h"
#include "platform/core/error.h"
#include "platform/form/command_button.h"

namespace {

using namespace cp;

struct Control {
  SelectionControl* control;
  std::vector<form::CommandButton*> buttons;  // every button of a criteria control opens a list
  bool touched = false;  // a button was pressed since the control was last cleared
};

Control ListButtons(SelectionControl& control) {
  Control c{&control, {}};
  for (form::Control* child : control.Controls().Controls())
    if (auto* button = dynamic_cast<form::CommandButton*>(child)) c.buttons.push_back(button);
  if (c.buttons.empty()) fuzz::Breach("a criteria control without list buttons", control.ClassName());
  return c;
}

ListPickerAnswer Answer(int kind, std::string text) {
  switch (kind % 4) {
    case 0: return ListPickerAnswer::Accept(std::move(text));
    case 1: return ListPickerAnswer::Cancel(std::move(text));
    case 2: return ListPickerAnswer::ReturnNull();
    default: return ListPickerAnswer::Fail(5, text);
  }
}

// One dialog for the process, with both controls on entities they serve. Each input starts
// from cleared inputs, so that no input depends on the one before; only the controls an input
// touched are cleared and checked.
struct Dialogs {
  std::unique_ptr<CSeleccion> contacts = fuzz::FuzzHost::Get().NewSelection();
  std::unique_ptr<CSeleccion> properties = fuzz::FuzzHost::Get().NewSelection();
  Control controls[2];

  Dialogs() {
    contacts->setEntidad("Clientes");
    properties->setgVUser(1);
    properties->setEntidad("Inm. Propios");
    controls[0] = ListButtons(contacts->Dialog().SeleccionCli1());
    controls[1] = ListButtons(properties->Dialog().SeleccionInm1());
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Dialogs dialogs;
  // Registered afresh for each input: the registration keeps what every window received.
  ScriptedListPickerRegistration picker;
  FuzzedDataProvider input(data, size);
  for (Control& c : dialogs.controls)
    if (std::exchange(c.touched, false)) c.control->NuevaSeleccion();
  const std::string_view whole(reinterpret_cast<const char*>(data), size);
  try {
    while (input.remaining_bytes() > 0) {
      Control& c = dialogs.controls[input.ConsumeIntegral<std::uint8_t>() % 2];
      form::CommandButton& button =
          *c.buttons[input.ConsumeIntegral<std::uint8_t>() % c.buttons.size()];
      const int kind = input.ConsumeIntegral<std::uint8_t>();
      c.touched = true;
      picker.setAnswer(Answer(kind, input.ConsumeRandomLengthString(256)));
      if (button.EffectivelyEnabled()) button.Press();  // as a user can
    }
    for (Control& c : dialogs.controls) {
      if (!c.touched) continue;
      std::string condition;
      if (Atrapar("Aceptar", [&] { condition = c.control->SelecWhere(); }))
        fuzz::ExpectJetCondition(condition, c.control->ClassName());
    }
  } catch (const Error& e) {
    fuzz::Breach("error " + std::to_string(e.number()) + " reached the host: " + e.description(), whole);
  }
  fuzz::FuzzHost::Get().ForgetMessages();
  return 0;
}
