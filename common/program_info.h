#pragma once
// The host program's title and version, as the error messages name them. The host may set
// them; until it does they are the component's own name and version.
#include <string>

namespace cp {

std::string ProgramTitle();
void setProgramTitle(std::string title);

// Version text of the host program ("0.1.0").
std::string VersionPrograma();
void setVersionPrograma(std::string version);

}  // namespace cp
