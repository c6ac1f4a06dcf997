// The one thread that paces the System Exclusive messages of all endpoints of a back end.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <span>
#include <thread>

#include "platform/midi/MidiPlatform.h"
#include "platform/midi/sysexPacing.h"

namespace vm {

class SysexSender {
public:
    /// Gives a piece of a message to the system, without waiting. kMidiBusy has it offered again a
    /// millisecond later, for ten seconds. Any other result but kMidiOk ends the message: this is
    /// how a disappeared endpoint ends what is still to be sent to it. An empty piece comes at the
    /// end and asks whether everything has left: kMidiOk, or kMidiBusy.
    using Write = std::function<int(MidiId destination, std::span<const std::uint8_t> piece)>;

    /// No piece is larger than `largestPiece`.
    explicit SysexSender(Write write, std::size_t largestPiece = 4096);
    ~SysexSender();
    SysexSender(const SysexSender&) = delete;
    SysexSender& operator=(const SysexSender&) = delete;

    /// Queues the message behind those to the same destination. `done` is called on the sender's
    /// thread once the last byte's wire time is over, or when the message was ended early.
    int Send(const MidiSysexSend& send);
    /// Also holds for the rest of a message on its way.
    int SetSpeed(MidiId destination, std::uint32_t bytesPerSecond);
    std::uint32_t Speed(MidiId destination);
    int SetGap(MidiId destination, SysexGap gap);
    /// Ends the messages to this destination, for one that has gone: soon, whatever their speed.
    void End(MidiId destination);
    /// Ends all messages and the thread; nothing can be sent afterwards.
    void Stop();

private:
    /// The messages to one destination; the first is on its way.
    struct Lane {
        std::deque<MidiSysexSend> messages;
        std::optional<SysexSchedule> schedule; ///< of the first message
        std::uint32_t speed = kMidiWireSpeed;
        SysexGap gap = {};
        std::size_t written = 0;          ///< of the first message
        std::size_t ending = 0;           ///< so many messages are to end at once
        SysexSchedule::Time retryAt = {}; ///< not before this, after kMidiBusy
        SysexSchedule::Time lastProgress = {};

        SysexSchedule::Time NextTime() const;
    };
    struct Written {
        int result;
        std::size_t bytes;
    };
    using Lock = std::unique_lock<std::mutex>;

    void Run();
    Lane* NextLane();
    void BeginFirst(Lane& lane, SysexSchedule::Time start) const;
    void Advance(Lock& lock, Lane& lane, SysexSchedule::Time now);
    void EndFirst(Lock& lock, Lane& lane, SysexSchedule::Time nextStart);
    void EndAll(Lock& lock);
    Written WritePieces(MidiId destination, std::span<const std::uint8_t> bytes) const;

    const Write m_write;
    const std::size_t m_largestPiece;
    std::mutex m_lock; // guards everything below
    std::condition_variable m_changed;
    std::map<MidiId, Lane> m_lanes; // entries stay, for their speed
    std::thread m_thread;           // started by the first message
    bool m_stopping = false;
};

} // namespace vm
