// The interface that every MIDI back end implements: ports, endpoints, sending, receiving. Nothing
// here knows the Win32 shape of the library's own MIDI functions.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/midi/midiRecords.h"
#include "platform/midi/sysexPacing.h"

namespace vm {

// Results of the interface. Hosts see them as results of midiOutShortMsg, so that none is 1 or -1,
// which have meanings of their own there.
inline constexpr int kMidiOk = 0;
inline constexpr int kMidiNotRunning = -10;      ///< not started, failed to start, or stopped
inline constexpr int kMidiUnknownPort = -11;     ///< no such port, or one of the other direction
inline constexpr int kMidiUnknownEndpoint = -12; ///< no such endpoint, or it has disappeared
inline constexpr int kMidiBadArgument = -13;
inline constexpr int kMidiSendFailed = -14; ///< the system refused
inline constexpr int kMidiBusy = -15;       ///< not now: only between a back end and its sender

inline constexpr std::uint32_t kMidiWireSpeed = 3125; ///< bytes a second on a MIDI cable

/// Bytes that arrived together. They are the back end's and end with the receive call.
struct MidiPacket {
    std::uint64_t time = 0;
    std::span<const std::uint8_t> bytes;
    bool afterLoss = false; ///< bytes before it were lost: a message they were part of is no more
};

/// Called with what arrived at `port`'s connected source, in order. `portReference` was given with
/// the port, `sourceReference` with the connection.
using MidiReceive = void (*)(std::span<const MidiPacket> packets, void* portReference,
                             void* sourceReference);

/// A System Exclusive message to send in its own time. `data` stays the caller's and must stay
/// valid until `done(reference)` has been called, on a thread of the back end.
struct MidiSysexSend {
    MidiId destination = 0;
    const std::uint8_t* data = nullptr;
    std::size_t byteCount = 0;
    void (*done)(void* reference) = nullptr;
    void* reference = nullptr;
};

/// All functions may be called from any thread. Those that need the started back end wait for it.
class MidiPlatform {
public:
    virtual ~MidiPlatform() = default;

    /// Begins to start under this client name and returns the client (not 0), or 0 when it is clear
    /// at once that there will be none. Never waits: what takes time runs on a thread of the back
    /// end.
    virtual MidiId Start(const char* clientName) = 0;
    /// Ends all sends (their `done` is called), all deliveries and all threads. Called from a
    /// receive call, it does not wait for that one. A stopped back end stays stopped.
    virtual int Stop() = 0;
    /// Offers the computer's endpoints to the network; false where there is no such service.
    virtual bool OpenNetworkSession() { return false; }

    /// The new port, or 0. Both return without waiting for the start.
    virtual MidiId CreateOutputPort(const char* name) = 0;
    virtual MidiId CreateInputPort(const char* name, MidiReceive receive, void* portReference) = 0;
    /// A receive call that has begun may still run after this: its receiver copes with that.
    virtual int DisposePort(MidiId port) = 0;

    virtual int Count(MidiDirection direction) = 0;
    virtual MidiId EndpointAt(MidiDirection direction, std::uint32_t index) = 0; ///< 0 for none
    virtual std::optional<MidiObject> FindObject(MidiId id) = 0;

    /// Sends now. `bytes` are one packet.
    virtual int Send(MidiId outputPort, MidiId destination,
                     std::span<const std::uint8_t> bytes) = 0;
    /// Takes the message over and returns at once; `done` is called only if the result is kMidiOk.
    /// Messages to one destination go out one after the other.
    virtual int SendSysex(const MidiSysexSend& send) = 0;
    virtual int SetMaxSysexSpeed(MidiId destination, std::uint32_t bytesPerSecond) = 0;
    virtual std::uint32_t MaxSysexSpeed(MidiId destination) = 0;
    /// For the messages that begin from now on.
    virtual int SetSysexGap(MidiId destination, SysexGap gap) = 0;

    /// From here on, what `source` sends reaches the port. Receive calls of all ports come from one
    /// thread, one at a time.
    virtual int ConnectSource(MidiId inputPort, MidiId source, void* sourceReference) = 0;
    virtual int DisconnectSource(MidiId inputPort, MidiId source) = 0;
};

} // namespace vm
