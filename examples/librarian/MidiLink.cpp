#include "MidiLink.h"

#include <algorithm>

namespace {

constexpr DWORD kSlowBytesPerSecond = 1000;
constexpr DWORD kCableSpeed = 0;
constexpr std::size_t kMostHeard = 4096; // while the window has no time

} // namespace

UINT PortNamed(const std::vector<std::string>& names, const std::string& wanted) {
    const auto found = std::find(names.begin(), names.end(), wanted);
    return found == names.end() ? 0 : static_cast<UINT>(found - names.begin());
}

MidiLink::~MidiLink() {
    Close();
}

std::vector<std::string> MidiLink::Outputs() {
    std::vector<std::string> names;
    for (UINT i = 0; i < midiOutGetNumDevs(); ++i) {
        MIDIOUTCAPS caps = {};
        midiOutGetDevCaps(i, &caps, sizeof caps);
        names.emplace_back(caps.szPname);
    }
    return names;
}

std::vector<std::string> MidiLink::Inputs() {
    std::vector<std::string> names;
    for (UINT i = 0; i < midiInGetNumDevs(); ++i) {
        MIDIINCAPS caps = {};
        midiInGetDevCaps(i, &caps, sizeof caps);
        names.emplace_back(caps.szPname);
    }
    return names;
}

void MidiLink::SetTarget(CWnd* target, UINT message) {
    m_target = target;
    m_message = message;
}

BOOL MidiLink::OpenOutput(const std::string& name) {
    const std::vector<std::string> names = Outputs();
    const UINT index = PortNamed(names, name);
    HMIDIOUT output = nullptr;
    if (names.empty() || midiOutOpen(&output, index, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR)
        return FALSE;
    if (m_output) midiOutClose(m_output);
    m_output = output;
    m_outputName = names[index];
    midiOutSetMaxSysExSpeed(m_output, m_speed);
    return TRUE;
}

BOOL MidiLink::OpenInput(const std::string& name) {
    const std::vector<std::string> names = Inputs();
    const UINT index = PortNamed(names, name);
    HMIDIIN input = nullptr;
    if (names.empty() ||
        midiInOpen(&input, index, reinterpret_cast<DWORD_PTR>(OnMidiIn),
                   reinterpret_cast<DWORD_PTR>(this), CALLBACK_FUNCTION) != MMSYSERR_NOERROR)
        return FALSE;
    if (m_input) midiInClose(m_input);
    m_input = input;
    m_inputName = names[index];
    midiInStart(m_input);
    return TRUE;
}

void MidiLink::Close() {
    if (m_input) midiInClose(m_input);
    if (m_output) midiOutClose(m_output);
    m_input = nullptr;
    m_output = nullptr;
}

BOOL MidiLink::Send(const SysexBytes& message) {
    if (!CanSend()) return FALSE;
    m_sent = message;
    m_header = {};
    m_header.lpData = m_sent.data();
    m_header.dwBufferLength = static_cast<DWORD>(m_sent.size());
    midiOutPrepareHeader(m_output, &m_header, sizeof m_header);
    m_sending = midiOutLongMsg(m_output, &m_header, sizeof m_header) == MMSYSERR_NOERROR;
    return m_sending;
}

BOOL MidiLink::IsSending() {
    // The flag is set by a thread of the MIDI system.
    if (m_sending && (__atomic_load_n(&m_header.dwFlags, __ATOMIC_ACQUIRE) & MHDR_DONE)) {
        midiOutUnprepareHeader(m_output, &m_header, sizeof m_header);
        m_sending = FALSE;
    }
    return m_sending;
}

BOOL MidiLink::TakeReceived(SysexBytes& message) {
    const std::lock_guard guard(m_lock);
    if (m_received.empty()) return FALSE;
    message = std::move(m_received.front());
    m_received.pop_front();
    return TRUE;
}

BOOL MidiLink::TakeHeard(MidiMoment& moment) {
    const std::lock_guard guard(m_lock);
    if (m_heard.empty()) return FALSE;
    moment = m_heard.front();
    m_heard.pop_front();
    return TRUE;
}

void MidiLink::SendShort(BYTE status, BYTE data1, BYTE data2) {
    if (m_output) midiOutShortMsg(m_output, DWORD{status} | DWORD{data1} << 8 | DWORD{data2} << 16);
}

void MidiLink::SetSlow(BOOL slow) {
    m_speed = slow ? kSlowBytesPerSecond : kCableSpeed;
    if (m_output) midiOutSetMaxSysExSpeed(m_output, m_speed);
}

void CALLBACK MidiLink::OnMidiIn(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR parameter,
                                 DWORD_PTR) {
    MidiLink& link = *reinterpret_cast<MidiLink*>(instance);
    const auto bytes = static_cast<DWORD>(parameter);
    if (message == MIM_LONGDATA) link.Receive(*reinterpret_cast<const MIDIHDR*>(parameter));
    if (message == MIM_DATA)
        link.Hear({GetTickCount(), static_cast<BYTE>(bytes), static_cast<BYTE>(bytes >> 8),
                   static_cast<BYTE>(bytes >> 16), 0});
}

// On the receive thread. One post for any number of events that the window has not taken yet.
void MidiLink::Hear(const MidiMoment& moment) {
    bool isFirst = false;
    {
        const std::lock_guard guard(m_lock);
        isFirst = m_heard.empty();
        m_heard.push_back(moment);
        if (m_heard.size() > kMostHeard) m_heard.pop_front();
    }
    if (isFirst) m_target->PostMessage(m_message);
}

// On the receive thread. Header and bytes exist during the call only.
void MidiLink::Receive(const MIDIHDR& header) {
    {
        const std::lock_guard guard(m_lock);
        m_received.emplace_back(header.lpData, header.lpData + header.dwBytesRecorded);
    }
    Hear({GetTickCount(), 0xF0, 0, 0, header.dwBytesRecorded});
    m_target->PostMessage(m_message);
}
