// A loopback described in the user's set-up file: devices, ports, what is connected to them, and the
// wires between them.
#pragma once

#include "midi/setupSection.h"
#include "platform/midi/loopback/LoopbackPlatform.h"

namespace vm {

/// Nothing when the file describes none: neither wires nor a port. What cannot be understood is
/// left out. Ports are numbered by their sections, and that number is their identifier.
std::optional<LoopbackSetup> ReadLoopbackSetup(const SetupLookUp& lookUp, SetupProblems& problems);

} // namespace vm
