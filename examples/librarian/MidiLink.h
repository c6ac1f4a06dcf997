// The MIDI side of the program: one output, one input, one send at a time. What arrives is copied
// on the receive thread and announced to a window by a posted message; everything else runs on the
// main thread.
#pragma once

#include <deque>
#include <mutex>
#include <string>

#include <afxwin.h>
#include <mmsystem.h>

#include "SysexInfo.h"

class MidiLink {
public:
    MidiLink() = default;
    ~MidiLink();
    MidiLink(const MidiLink&) = delete;
    MidiLink& operator=(const MidiLink&) = delete;

    /// Opens the first output and the first input. `message` is posted to `target` for each System
    /// Exclusive message that arrives; take it with TakeReceived. FALSE when either is missing:
    /// what there is stays open.
    BOOL Open(CWnd* target, UINT message);
    void Close();

    std::string OutputName() const; ///< "none" when no output is open
    std::string InputName() const;
    BOOL CanSend() const { return m_output != nullptr && !m_sending; }

    /// Begins to send; the bytes are copied. FALSE when CanSend is.
    BOOL Send(const SysexBytes& message);
    /// Whether a send is under way. It ends in the call after MHDR_DONE has appeared.
    BOOL IsSending();
    const SysexBytes& LastSent() const { return m_sent; }

    /// FALSE when nothing has arrived.
    BOOL TakeReceived(SysexBytes& message);

    /// At most 1,000 bytes a second, for instruments that lose data at the speed of the cable.
    void SetSlow(BOOL slow);

private:
    static void CALLBACK OnMidiIn(HMIDIIN input, UINT message, DWORD_PTR instance,
                                  DWORD_PTR parameter, DWORD_PTR);
    void Receive(const MIDIHDR& header);

    HMIDIOUT m_output = nullptr;
    HMIDIIN m_input = nullptr;
    CWnd* m_target = nullptr;
    UINT m_message = 0;

    SysexBytes m_sent; // what m_header points to
    MIDIHDR m_header = {};
    BOOL m_sending = FALSE;

    std::mutex m_lock;
    std::deque<SysexBytes> m_received; // under m_lock
};
