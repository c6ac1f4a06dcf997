// Whether there is a display to open windows on, asked before the toolkit would end the process
// over it.
#pragma once

#include <string>

namespace vm {

/// Chooses the platform for a Wayland session (windows need screen coordinates, so X11 is asked for
/// unless QT_QPA_PLATFORM says otherwise). Returns why no display can be opened; empty when one
/// can.
std::string PrepareDisplay();

} // namespace vm
