#pragma once
// The error log "ErrLog[_].txt": a plain text file that only grows, two lines per handled
// error. Several processes of the host may append to the same file at once.
#include <string>

namespace cp {

inline constexpr const char* kErrorLogName = "ErrLog[_].txt";

// The shared log folder that the host hands over (CSeleccion's ErrLogPath); empty means the
// temporary folder.
const std::string& ErrLogPath();
void setErrLogPath(std::string folder);

// The component's temporary folder: $TMPDIR (else /tmp) + "/Norvak/", created when missing.
// Always ends with "/". A folder that cannot be created is still returned; writing there
// then fails and is reported by the log writer.
std::string rutaCarpetaTemporal();

// The file that the log writer uses for path: path itself, or the temporary folder's
// "ErrLog[_].txt" when path is empty (which creates the folder).
std::string ErrorLogFile(const std::string& path);

// The file the central handler appends to: "ErrLog[_].txt" in the ErrLogPath folder, or
// the empty path (the temporary folder's log) when no folder was given.
std::string HandlerLogPath();

// Appends one entry for an error to the log at path (see ErrorLogFile):
//   dd/mm/yy hh:mm:ss <label> [<number>] <description>[ (<active form>)[->(<control>)]]
//       Formularios: {<form>} {<form>} ...
// Lines end with LF: the log is read with Linux tools. The date is cp::Now(); the forms
// come from the installed HostForms provider. The entry goes out in one write() under an
// exclusive flock(), so concurrent writers never interleave. When the file cannot be
// created the user sees "Error al crear <file>", when it cannot be written
// "Error al escribir en <file>" (flags 0x10); the failure goes no further and nothing is
// reported to the central handler. Returns true when the entry was written.
bool AppendErrorLog(const std::string& label, long number, const std::string& description,
                    const std::string& path);

}  // namespace cp
