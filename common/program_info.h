#pragma once
// The host program's title and version, as the error messages name them, and the address
// that support reports go to. The host may set them; until it does the title and version are
// the component's own name and version, and there is no support address.
#include <string>

namespace cp {

std::string ProgramTitle();
void setProgramTitle(std::string title);

// Version text of the host program ("0.1.0").
std::string VersionPrograma();
void setVersionPrograma(std::string version);

// The component's own version, whatever the host sets above.
std::string ComponentVersion();

// The mail address of technical support ("soporte@norvak.es"); empty (the default) means
// that a support report is not mailed and the user is told where its archive is.
std::string SupportAddress();
void setSupportAddress(std::string address);

}  // namespace cp
