// Sending through the output functions.
#include "MidiOutput.h"

#include <atomic>
#include <utility>

#include "command.h"

namespace vm::tool {

void MidiOutput::Open(const Port& port, unsigned bytesPerSecond) {
    if (midiOutOpen(&m_handle, port.index, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR)
        throw Exit{kNo, "cannot open output '" + port.name + "'"};
    if (bytesPerSecond == 0) return;
    if (midiOutSetMaxSysExSpeed(m_handle, bytesPerSecond) != MMSYSERR_NOERROR)
        throw Exit{kNo, "output '" + port.name + "' does not take a speed"};
}

void MidiOutput::Begin(MidiBytes sysex) {
    m_sysex = std::move(sysex);
    m_header = {};
    m_header.lpData = m_sysex.data();
    m_header.dwBufferLength = static_cast<DWORD>(m_sysex.size());
    midiOutPrepareHeader(m_handle, &m_header, sizeof m_header);
    midiOutLongMsg(m_handle, &m_header, sizeof m_header);
}

bool MidiOutput::IsDone() const {
    auto& flags = const_cast<DWORD&>(m_header.dwFlags); // only read
    return (std::atomic_ref<DWORD>(flags).load(std::memory_order_acquire) & MHDR_DONE) != 0;
}

int MidiOutput::SendShort(std::uint32_t message) {
    return static_cast<int>(midiOutShortMsg(m_handle, message));
}

bool MidiOutput::IsThere() const {
    HMIDIOUT handle = nullptr;
    for (unsigned i = 0; midiOutOpen(&handle, i, 0, 0, CALLBACK_NULL) == MMSYSERR_NOERROR; ++i)
        if (handle == m_handle) return true;
    return false;
}

} // namespace vm::tool
