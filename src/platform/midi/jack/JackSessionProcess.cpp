// What runs on the server's real-time thread: it moves bytes between ports and rings, and wakes who
// waits for that. No locks, no allocation, no calls into the program.
#include <span>

#include "platform/midi/jack/JackSession.h"

namespace vm {

int JackSession::ProcessOutputs(jack_nframes_t frames, void* self) {
    auto& session = *static_cast<JackSession*>(self);
    const std::uint64_t cycle = ++session.m_out.cycles;
    session.m_outputs.ForEach(
        [&](JackOutput& output) { output.Process(session.m_jack, frames, cycle); });
    return 0;
}

int JackSession::ProcessInputs(jack_nframes_t frames, void* self) {
    auto& session = *static_cast<JackSession*>(self);
    ++session.m_in.cycles;
    bool hasArrived = false;
    session.m_inputs.ForEach(
        [&](JackInput& input) { hasArrived |= session.Receive(input, frames); });
    if (hasArrived) session.m_inbox->arrived->Post();
    return 0;
}

bool JackSession::Receive(JackInput& input, jack_nframes_t frames) {
    void* const buffer = m_jack.port_get_buffer(input.port, frames);
    if (!buffer) return false;
    const std::uint32_t count = m_jack.midi_get_event_count(buffer);
    for (std::uint32_t i = 0; i < count; ++i) {
        jack_midi_event_t event = {};
        if (m_jack.midi_event_get(&event, buffer, i) == 0 && event.size > 0)
            Keep(input, {event.buffer, event.size});
    }
    return count > 0;
}

void JackSession::Keep(JackInput& input, std::span<const std::uint8_t> bytes) {
    RecordRing& ring = m_inbox->ring;
    if (input.isTorn && ring.Push(input.source, {})) input.isTorn = false;
    if (!input.isTorn && ring.Push(input.source, bytes)) return;
    input.isTorn = true;
    m_inbox->overflowed = true;
}

} // namespace vm
