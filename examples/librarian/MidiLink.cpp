#include "MidiLink.h"

namespace {

constexpr UINT kDevice = 0;
constexpr DWORD kSlowBytesPerSecond = 1000;
constexpr DWORD kCableSpeed = 0;

} // namespace

MidiLink::~MidiLink() {
    Close();
}

BOOL MidiLink::Open(CWnd* target, UINT message) {
    m_target = target;
    m_message = message;
    if (midiOutOpen(&m_output, kDevice, 0, 0, CALLBACK_NULL) != MMSYSERR_NOERROR)
        m_output = nullptr;
    if (midiInOpen(&m_input, kDevice, reinterpret_cast<DWORD_PTR>(OnMidiIn),
                   reinterpret_cast<DWORD_PTR>(this), CALLBACK_FUNCTION) != MMSYSERR_NOERROR)
        m_input = nullptr;
    if (m_input) midiInStart(m_input);
    return m_output && m_input;
}

void MidiLink::Close() {
    if (m_input) midiInClose(m_input);
    if (m_output) midiOutClose(m_output);
    m_input = nullptr;
    m_output = nullptr;
}

std::string MidiLink::OutputName() const {
    MIDIOUTCAPS caps;
    if (!m_output || midiOutGetDevCaps(kDevice, &caps, sizeof caps) != MMSYSERR_NOERROR)
        return "none";
    return caps.szPname;
}

std::string MidiLink::InputName() const {
    MIDIINCAPS caps;
    if (!m_input || midiInGetDevCaps(kDevice, &caps, sizeof caps) != MMSYSERR_NOERROR)
        return "none";
    return caps.szPname;
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

void MidiLink::SetSlow(BOOL slow) {
    if (m_output) midiOutSetMaxSysExSpeed(m_output, slow ? kSlowBytesPerSecond : kCableSpeed);
}

void CALLBACK MidiLink::OnMidiIn(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR parameter,
                                 DWORD_PTR) {
    if (message != MIM_LONGDATA) return;
    reinterpret_cast<MidiLink*>(instance)->Receive(*reinterpret_cast<const MIDIHDR*>(parameter));
}

// On the receive thread. Header and bytes exist during the call only.
void MidiLink::Receive(const MIDIHDR& header) {
    {
        const std::lock_guard guard(m_lock);
        m_received.emplace_back(header.lpData, header.lpData + header.dwBytesRecorded);
    }
    m_target->PostMessage(m_message);
}
