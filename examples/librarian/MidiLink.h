// The MIDI side of the program: one output, one input, one send at a time. What arrives is copied
// on the receive thread and announced to a window by a posted message; everything else runs on the
// main thread.
#pragma once

#include <deque>
#include <mutex>
#include <string>
#include <vector>

#include <afxwin.h>
#include <mmsystem.h>

#include "NoteLog.h"
#include "SysexInfo.h"

/// The index of `wanted` among the names, or 0 when it is not there.
UINT PortNamed(const std::vector<std::string>& names, const std::string& wanted);

class MidiLink {
public:
    MidiLink() = default;
    ~MidiLink();
    MidiLink(const MidiLink&) = delete;
    MidiLink& operator=(const MidiLink&) = delete;

    /// The names of the ports there are now; a port's index is its place.
    static std::vector<std::string> Outputs();
    static std::vector<std::string> Inputs();

    /// `message` is posted to `target` when something has arrived: take it with TakeReceived and
    /// TakeHeard.
    void SetTarget(CWnd* target, UINT message);
    /// Each goes over to the port with this name, or to the first when it is gone, and leaves the
    /// port that was open before. FALSE, and that one stays, when there is no port to open.
    BOOL OpenOutput(const std::string& name);
    BOOL OpenInput(const std::string& name);
    void Close();

    const std::string& OutputName() const { return m_outputName; } ///< "none" without a port
    const std::string& InputName() const { return m_inputName; }
    BOOL CanSend() { return m_output != nullptr && !IsSending(); }

    /// Begins to send; the bytes are copied. FALSE when CanSend is.
    BOOL Send(const SysexBytes& message);
    /// Whether a send is under way. It ends in the call after MHDR_DONE has appeared.
    BOOL IsSending();
    const SysexBytes& LastSent() const { return m_sent; }

    /// A short message; lost without an output.
    void SendShort(BYTE status, BYTE data1, BYTE data2);

    /// The next System Exclusive message; FALSE when none has arrived.
    BOOL TakeReceived(SysexBytes& message);
    /// The next event of any kind, for the monitor. FALSE when there is none.
    BOOL TakeHeard(MidiMoment& moment);

    /// At most 1,000 bytes a second, for instruments that lose data at the speed of the cable.
    void SetSlow(BOOL slow);

private:
    static void CALLBACK OnMidiIn(HMIDIIN input, UINT message, DWORD_PTR instance,
                                  DWORD_PTR parameter, DWORD_PTR);
    void Receive(const MIDIHDR& header);
    void Hear(const MidiMoment& moment);

    HMIDIOUT m_output = nullptr;
    HMIDIIN m_input = nullptr;
    std::string m_outputName = "none";
    std::string m_inputName = "none";
    DWORD m_speed = 0; // bytes a second; 0 is that of the cable
    CWnd* m_target = nullptr;
    UINT m_message = 0;

    SysexBytes m_sent; // what m_header points to
    MIDIHDR m_header = {};
    BOOL m_sending = FALSE;

    std::mutex m_lock;
    std::deque<SysexBytes> m_received; // under m_lock, as is the next
    std::deque<MidiMoment> m_heard;
};
