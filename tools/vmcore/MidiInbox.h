// What arrives at an input, in order. The library calls back on its receive thread; the command
// takes the messages on its own.
#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <optional>

#include <vmcore/midi/mmsystem.h>

#include "StopSignal.h"
#include "midiPorts.h"
#include "midiText.h"

namespace vm::tool {

struct MidiEvent {
    Clock::time_point time; ///< of the callback
    std::uint32_t message;  ///< a short message, when there are no bytes
    MidiBytes sysex = {};
};

class MidiInbox {
public:
    /// Opens the input; throws Exit (kNo) when that fails. Both must outlive the object, as must
    /// the session.
    MidiInbox(const Port& port, StopSignal& stop);
    ~MidiInbox();
    MidiInbox(const MidiInbox&) = delete;
    MidiInbox& operator=(const MidiInbox&) = delete;

    /// Nothing when it is time, or when a request to stop has come, whatever has arrived.
    std::optional<MidiEvent> Next(Deadline until);
    /// Closes the input; what has arrived and was not taken.
    std::deque<MidiEvent> Close();

private:
    static void OnMidi(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR);
    std::optional<MidiEvent> Take();

    StopSignal& m_stop;
    HMIDIIN m_handle = nullptr;
    int m_arrived;     // an eventfd
    std::mutex m_lock; // guards m_events
    std::deque<MidiEvent> m_events;
};

} // namespace vm::tool
