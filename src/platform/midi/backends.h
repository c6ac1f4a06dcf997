// The MIDI back ends of this build, and which one a process uses.
#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "platform/midi/MidiPlatform.h"

namespace vm {

struct MidiBackend {
    const char* name;    ///< as the environment variable VMCORE_MIDI names it
    bool (*available)(); ///< a quick look whether it would work here; never waits for a server
    std::shared_ptr<MidiPlatform> (*create)();
};

/// In order of preference.
std::span<const MidiBackend> MidiBackends();

/// The back end called `wanted`, available or not. For an empty name, or after logging an unknown
/// one, the first that is available; null when none is.
const MidiBackend* ChooseMidiBackend(std::span<const MidiBackend> backends,
                                     std::string_view wanted);

/// A new, not yet started object of the back end that VMCORE_MIDI asks for; null when there is
/// none.
std::shared_ptr<MidiPlatform> CreateMidiPlatform();

} // namespace vm
