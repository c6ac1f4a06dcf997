// The multimedia MIDI functions: devices, output of short and System Exclusive messages, and input
// through a callback. What the system offers as MIDI (see VMCORE_MIDI) is found by index.
//
// A host that echoes what it receives and sends a dump:
//
//     void CALLBACK OnMidi(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR param1,
//     DWORD_PTR) {
//         HMIDIOUT out = reinterpret_cast<HMIDIOUT>(instance);
//         if (message == MIM_DATA) midiThruShortMsg(out, static_cast<DWORD>(param1));
//     }
//
//     HMIDIOUT out;
//     HMIDIIN in;
//     if (midiOutOpen(&out, 0, 0, 0, 0) == 0)
//         midiInOpen(&in, 0, reinterpret_cast<DWORD_PTR>(OnMidi), reinterpret_cast<DWORD_PTR>(out),
//                    CALLBACK_FUNCTION);
//     MIDIHDR header = {};
//     header.lpData = dump;
//     header.dwBufferLength = dumpLength;
//     midiOutLongMsg(out, &header, sizeof header); // dump and header stay valid until MHDR_DONE
//
// Differences from the documented interface that hosts rely on: messages leave at once, there are
// no time stamps, output never calls back, client buffers of input are never filled, and the two
// callback messages have the values 1 and 2.
//
// Names and speeds are the user's to set: docs/midi.md describes the set-up file, the back ends, and
// what happens while a device is unplugged.
//
// Threads: every function may be called from any thread. Input callbacks come on the MIDI receive
// thread, never on the main thread.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

using MMRESULT = UINT;
constexpr MMRESULT MMSYSERR_NOERROR = 0;
constexpr MMRESULT MMSYSERR_ERROR = 1; ///< the one failure that most functions report

using HMIDIOUT = void*; ///< a destination; needs no closing and never dangles
using HMIDIIN = void*;  ///< an input port, from midiInOpen to midiInClose

// Callback messages: the library's own numbers.
constexpr UINT MIM_DATA = 1;     ///< param1: the message, status byte lowest, then the data bytes
constexpr UINT MIM_LONGDATA = 2; ///< param1: a MIDIHDR that exists during the call only

// The flags of the open functions are ignored; ported code names these two.
constexpr DWORD CALLBACK_NULL = 0;
constexpr DWORD CALLBACK_FUNCTION = 0x00030000;

/// MIDIHDR::dwFlags: the long message has been sent. Set from another thread, so poll it with an
/// atomic or volatile read.
constexpr DWORD MHDR_DONE = 1;

/// One System Exclusive message in the hands of the MIDI system. It lives inside a MIDIHDR and is
/// filled by midiOutLongMsg; hosts leave it alone.
struct MIDISysexSendRequest {
    DWORD destination;
    const BYTE* data;
    DWORD byteCount;
    BOOL complete;
    void (*completionProc)(MIDISysexSendRequest* request);
    void* reference;
};

/// The header of a long message. The order of the fields is part of the binary interface.
struct tagMIDIHDR {
    DWORD dwFlags;         ///< MHDR_DONE or 0
    DWORD dwBytesRecorded; ///< of a received message: valid bytes at lpData
    DWORD dwBufferLength;  ///< bytes at lpData, to send or received
    DWORD dwReserved;      ///< the host's, never touched
    std::uint64_t dwUser;  ///< the host's, never touched
    BYTE* lpData;
    MIDISysexSendRequest sysexRequest;
};
using MIDIHDR = tagMIDIHDR;
using LPMIDIHDR = tagMIDIHDR*;

constexpr UINT MAXPNAMELEN = 256; ///< bytes of a device name, the terminator included

/// Only the name is filled in (Mac Roman, cut at 255 characters); the rest is not even cleared.
struct tagMIDIOUTCAPS {
    char szPname[MAXPNAMELEN];
    WORD wMid;
    WORD wPid;
    DWORD vDriverVersion;
    WORD wTechnology;
    WORD wVoices;
    WORD wNotes;
    WORD wChannelMask;
    DWORD dwSupport;
};
using MIDIOUTCAPS = tagMIDIOUTCAPS;
using LPMIDIOUTCAPS = tagMIDIOUTCAPS*;

/// As tagMIDIOUTCAPS.
struct tagMIDIINCAPS {
    char szPname[MAXPNAMELEN];
    WORD wMid;
    WORD wPid;
    DWORD vDriverVersion;
    DWORD dwSupport;
};
using MIDIINCAPS = tagMIDIINCAPS;
using LPMIDIINCAPS = tagMIDIINCAPS*;

/// What midiInOpen's callback argument points to. `param2` is always 0.
using MIDIINPROC = void (*)(HMIDIIN handle, UINT message, DWORD_PTR instance, DWORD_PTR param1,
                            DWORD_PTR param2);

// Life of the MIDI system. The first MIDI function that a program calls starts it, and the library's
// own shutdown ends it.

/// Starts the MIDI system of this computer, in the background: the first function that needs it
/// waits. A program calls it to have that time pass earlier. Logs "InitCoreMIDI - enter", a line for each part that failed ("MIDIClientCreate failed",
/// "Failed to create MIDINetworkSession", "MIDIOutputPortCreate for MIDI OUT failed",
/// "MIDIOutputPortCreate for MIDI THRU failed") and "InitCoreMIDI - finished". The network line
/// always comes where the system has no MIDI network session, and means nothing else. Does nothing
/// when the system is up.
VM_API void initCoreMIDI();

/// Ends sends (their headers become done), closes inputs and stops the MIDI threads. Returns the
/// system's result of closing the client, 0 when it was not up. Logs "MIDIPortDispose - error
/// closing MIDIOutputPort" or "MIDIPortDispose - error closing MIDIThruPort" when that fails. Do
/// not call it while other threads open or close inputs.
VM_API int destroyCoreMIDI();

/// Does nothing: the system starts when it is used.
VM_API void AfxInitializeMIDISystem(bool enable);

// Devices

VM_API UINT midiOutGetNumDevs();
VM_API UINT midiInGetNumDevs();

/// The name of what the user says is plugged into the device, else of the device itself. 0, or 1
/// with the name "<no ascii name>" for a bad index. `size` is ignored. A device without any name
/// leaves `caps` untouched.
VM_API MMRESULT midiOutGetDevCaps(UINT index, tagMIDIOUTCAPS* caps, UINT size);
/// The same for inputs, except that a device without any name is called "<no ascii name>".
VM_API MMRESULT midiInGetDevCaps(UINT index, tagMIDIINCAPS* caps, UINT size);

// Output

/// 1 and a null handle when there is no such device. The other arguments are ignored: nothing is
/// ever called back.
VM_API MMRESULT midiOutOpen(HMIDIOUT* handle, UINT index, DWORD_PTR callback, DWORD_PTR instance,
                            DWORD flags);
VM_API MMRESULT midiOutClose(HMIDIOUT handle); ///< 0

/// Sends a message whose status byte is the lowest byte: two bytes for status 0xC0 to 0xDF, three
/// for every other, system messages included. Returns 0, the system's own (negative) error code, or
/// 0xFFFFFFFF when the MIDI system is not up. There is no running status.
VM_API MMRESULT midiOutShortMsg(HMIDIOUT handle, DWORD message);
/// The same through the port for echoed input, so that a patch bay can tell the two apart. Always
/// 0.
VM_API MMRESULT midiThruShortMsg(HMIDIOUT handle, DWORD message);

/// Sends dwBufferLength bytes at lpData in the background, at the endpoint's System Exclusive speed
/// and after earlier ones to the same endpoint. Always 0. Header and data must stay valid until
/// MHDR_DONE is set in dwFlags, which happens when the last byte has left; also, so that nobody
/// waits for ever, when the send ends early (the endpoint disappears, the MIDI system is shut down)
/// and at once when it cannot begin. The log then has a line "Error! A System Exclusive message of
/// %u bytes was not sent whole: ..." or "... could not be sent: ...".
VM_API MMRESULT midiOutLongMsg(HMIDIOUT handle, LPMIDIHDR header, UINT size);
/// Bytes a second of long messages to this endpoint; 0 means 3125, the speed of a MIDI cable. From
/// now on the user's set-up does not count, which else holds, or 3125 without it. Returns the
/// system's result.
VM_API MMRESULT midiOutSetMaxSysExSpeed(HMIDIOUT handle, DWORD bytesPerSecond);

VM_API MMRESULT midiOutReset(HMIDIOUT handle);                                        ///< 0
VM_API MMRESULT midiOutPrepareHeader(HMIDIOUT handle, LPMIDIHDR header, UINT size);   ///< 0
VM_API MMRESULT midiOutUnprepareHeader(HMIDIOUT handle, LPMIDIHDR header, UINT size); ///< 0
/// Writes "no MIDI OUT Error text available", 33 bytes whatever `size` says. 0.
VM_API MMRESULT midiOutGetErrorText(MMRESULT code, char* text, UINT size);

// Input

/// Connects an input to `callback` (a MIDIINPROC), which is called from now on: midiInStart is not
/// needed. The callback may come before this returns; the handle is stored by then. 0, or 1 with a
/// null handle and the line "midiInOpen failure - MIDIClient not assigned", "midiInOpen error -
/// MIDIInputPortCreate failed" (also for more than 256 open inputs) or "midiInOpen error -
/// MIDIPortConnectSource failed" (also for a bad index). Success logs "midiInOpen - successfully
/// opened MIDI IN port %d". With a null callback what arrives is dropped.
VM_API MMRESULT midiInOpen(HMIDIIN* handle, UINT index, DWORD_PTR callback, DWORD_PTR instance,
                           DWORD flags);
/// Always 0. After it returns, the callback runs no more; closed from inside the callback, that
/// call is the last. A callback under way on the receive thread is waited for, for two seconds at
/// most. A handle that is not open logs "midiInClose error - request to close port which is already
/// closed".
VM_API MMRESULT midiInClose(HMIDIIN handle);

VM_API MMRESULT midiInStart(HMIDIIN handle); ///< 0; input flows from open to close
VM_API MMRESULT midiInStop(HMIDIIN handle);  ///< 0
VM_API MMRESULT midiInReset(HMIDIIN handle); ///< 0
/// Sets MHDR_DONE. 0.
VM_API MMRESULT midiInPrepareHeader(HMIDIIN handle, LPMIDIHDR header, UINT size);
VM_API MMRESULT midiInUnprepareHeader(HMIDIIN handle, LPMIDIHDR header, UINT size); ///< 0
VM_API MMRESULT midiInAddBuffer(HMIDIIN handle, LPMIDIHDR header, UINT size);       ///< 0
/// Writes "no MIDI IN Error text available", 32 bytes whatever `size` says. 0.
VM_API MMRESULT midiInGetErrorText(MMRESULT code, char* text, UINT size);
