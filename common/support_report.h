#pragma once
// The support report that the central handler sends when the user agrees to: a zip archive
// beside the error log, mailed to technical support through the user's mail client.
#include <optional>
#include <string>

#include "platform/core/error.h"

namespace cp {

// Writes "Incidencia-yyyymmdd-hhmmss.zip" (cp::Now(); "-2", "-3"... when that name is
// taken) into the folder of log_file, holding:
//   ErrLog[_].txt  the log file, when it can be read;
//   Captura.png    the installed WindowCapture's picture, when there is one;
//   Informe.txt    the error, the program, its version, the component's version and the
//                  machine (uname, the operating system's release, the locale variables).
// Returns the archive's path; nullopt when it cannot be written. Never throws.
std::optional<std::string> BuildSupportArchive(const std::string& log_file,
                                               const std::string& label, const Error& e);

// Builds the archive and hands a message with it attached to the installed mail client:
// to SupportAddress(), subject "Incidencia en <title> <version>", body beginning
// "Descripción: " with the label, the error's number and its description. When no address is
// set or the client does not take the message, tells the user (MostrarMensaje, 0x1040)
// where the archive is, or, when there is no archive, where the log is. Never throws, and
// its failures never reach the central handler.
void EnviarInformeSoporte(const std::string& label, const Error& e, const std::string& log_file);

}  // namespace cp
