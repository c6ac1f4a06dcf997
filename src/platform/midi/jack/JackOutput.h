// The way to one destination: filled by any thread, emptied into a JACK port by the process
// callback, which never waits for the others.
#pragma once

#include <atomic>
#include <chrono>
#include <mutex>
#include <span>

#include "platform/midi/MidiPlatform.h"
#include "platform/midi/jack/JackLibrary.h"
#include "platform/midi/jack/RecordRing.h"
#include "platform/midi/jack/Semaphore.h"
#include "platform/midi/sysexSender.h"

namespace vm {

class JackOutput {
public:
    static constexpr std::size_t kLargestPiece = 4096;

    /// Data wait for the process cycle `firstCycle`, from which on the port is connected.
    JackOutput(jack_port_t* port, std::uint64_t firstCycle);

    /// Waits while there is no room, this long at most; then, and for as long as nothing moves
    /// after that, kMidiSendFailed. kMidiUnknownEndpoint once it is closed.
    int Send(std::span<const std::uint8_t> bytes, std::chrono::milliseconds limit);
    /// A piece of a System Exclusive message, or kMidiBusy. Leaves room for short messages. `end` is
    /// behind the piece before it; kMidiUnknownEndpoint if that went to another connection.
    int WritePiece(std::span<const std::uint8_t> piece, SysexMark& end);
    /// kMidiOk once everything before `end` has been given to JACK, else as the sender asks for it.
    int HasLeft(const SysexMark& end);
    /// Nothing can be sent any more; waiting senders return.
    void Close();

    jack_port_t* Port() const { return m_port; }
    /// In the process callback only.
    void Process(const JackLibrary& jack, jack_nframes_t frames, std::uint64_t cycle);

private:
    using Clock = std::chrono::steady_clock;
    using Lock = std::unique_lock<std::mutex>;

    int Push(std::span<const std::uint8_t> bytes, Clock::time_point until);
    void WaitForRoom(Lock& lock, Clock::time_point until);
    void Drain(const JackLibrary& jack, void* buffer);

    const std::uint64_t m_connection; // no other output of the process has this number
    jack_port_t* const m_port;
    const std::uint64_t m_firstCycle;
    RecordRing m_ring; // taken from in the process callback, pushed to under m_lock
    std::atomic<int> m_waiting = 0;
    Semaphore m_room; // posted in every cycle while somebody waits

    std::mutex m_lock; // guards these two
    bool m_isClosed = false;
    std::uint64_t m_stalledAt = kNotStalled;

    static constexpr std::uint64_t kNotStalled = ~std::uint64_t{0};
};

} // namespace vm
