// An output that messages are sent through, one at a time.
#pragma once

#include <cstdint>

#include <vmcore/midi/mmsystem.h>

#include "midiPorts.h"
#include "midiText.h"

namespace vm::tool {

/// To be made before the session: the library may read the message on its way until that ends.
class MidiOutput {
public:
    MidiOutput() = default;
    MidiOutput(const MidiOutput&) = delete;
    MidiOutput& operator=(const MidiOutput&) = delete;

    /// A speed of 0 leaves the port's own. Throws Exit (kNo) when the port refuses.
    void Open(const Port& port, unsigned bytesPerSecond);

    /// The one before must be done.
    void Begin(MidiBytes sysex);
    bool IsDone() const;
    /// The system's error, or 0.
    int SendShort(std::uint32_t message);

    /// False when the port has disappeared.
    bool IsThere() const;

private:
    HMIDIOUT m_handle = nullptr;
    MIDIHDR m_header = {};
    MidiBytes m_sysex;
};

} // namespace vm::tool
