// The library's own names for its entry points: a plug-in loaded with global symbols may define
// DllMain and its relatives again, and calls inside the library must not reach those.
#pragma once

#include <vmcore/core/types.h>

namespace vm {
int LibraryMain(HINSTANCE instance, unsigned reason);
int InitLibrary();
void TermLibrary();
} // namespace vm
