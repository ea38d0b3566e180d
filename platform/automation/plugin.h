#pragma once
// Plug-ins: shared libraries that announce their classes by registering ProgIDs from static
// initialisers (see ProgIdRegistrar) when they are loaded.
//
// A plug-in must not carry its own copy of the registry: it is built without linking the
// platform libraries and resolves them from the host program, which therefore has to export
// its symbols (CMake ENABLE_EXPORTS). Otherwise loading fails with the unresolved name.
#include <string>

namespace cp {

// Loads a plug-in once; loading the same path again does nothing more. The library stays
// loaded until the process ends, since the factories it registered live in its code.
// Raises error 53 with a Spanish description naming the path and the loader's reason when
// the library is missing or cannot be loaded; an error raised by one of its static
// initialisers is not caught by the loader and may leave the process in an unknown state.
void LoadPlugin(const std::string& path);

}  // namespace cp
