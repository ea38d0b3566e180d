#pragma once
// The component's only way to talk to the user: every message box and input box goes
// through these two wrappers, which keep gModalAbierto True while the box is up.
#include <string>

namespace cp {

// Shows texto through the current messenger; the title is shown only when not empty.
// Returns the button pressed (msg::kYes, msg::kNo, msg::kOk...).
int MostrarMensaje(const std::string& texto, int flags = 0, const std::string& titulo = {});

// Asks for a text through the current messenger; the title is shown only when not empty.
// Returns the typed text (empty when the user cancels).
std::string PedirMensaje(const std::string& prompt, const std::string& titulo = {},
                         const std::string& defecto = {});

}  // namespace cp
