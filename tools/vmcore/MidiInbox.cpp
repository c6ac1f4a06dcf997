// From the receive thread to the command.
#include "MidiInbox.h"

#include <utility>

#include <sys/eventfd.h>
#include <unistd.h>

#include "command.h"

namespace vm::tool {

MidiInbox::MidiInbox(const Port& port, StopSignal& stop)
    : m_stop(stop), m_arrived(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (midiInOpen(&m_handle, port.index, reinterpret_cast<DWORD_PTR>(&MidiInbox::OnMidi),
                   reinterpret_cast<DWORD_PTR>(this), CALLBACK_FUNCTION) == MMSYSERR_NOERROR)
        return;
    close(m_arrived);
    throw Exit{kNo, "cannot open input '" + port.name + "'"};
}

MidiInbox::~MidiInbox() {
    Close();
    close(m_arrived);
}

std::deque<MidiEvent> MidiInbox::Close() {
    if (m_handle) midiInClose(std::exchange(m_handle, nullptr));
    std::lock_guard guard(m_lock);
    return std::exchange(m_events, {});
}

void MidiInbox::OnMidi(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR) {
    MidiEvent event{Clock::now(), 0};
    if (message == MIM_LONGDATA) {
        const auto* header = reinterpret_cast<const MIDIHDR*>(param1);
        event.sysex.assign(header->lpData, header->lpData + header->dwBytesRecorded);
    } else {
        event.message = static_cast<std::uint32_t>(param1);
    }
    auto* self = reinterpret_cast<MidiInbox*>(instance);
    std::lock_guard guard(self->m_lock);
    self->m_events.push_back(std::move(event));
    eventfd_write(self->m_arrived, 1);
}

std::optional<MidiEvent> MidiInbox::Take() {
    std::lock_guard guard(m_lock);
    if (m_events.empty()) return std::nullopt;
    MidiEvent event = std::move(m_events.front());
    m_events.pop_front();
    return event;
}

std::optional<MidiEvent> MidiInbox::Next(Deadline until) {
    m_stop.Wait(Clock::now()); // a flood must not keep requests away
    while (m_stop.Requests() == 0 && (!until || Clock::now() < *until)) {
        if (auto event = Take()) return event;
        eventfd_t count;
        if (m_stop.WaitFor(m_arrived, until)) eventfd_read(m_arrived, &count);
    }
    return std::nullopt;
}

} // namespace vm::tool
