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

/// Where a written message ends: the connection it was written to and the place in that.
struct SysexMark {
    std::uint64_t connection = 0; ///< 0: nothing has been written yet
    std::uint64_t position = 0;
};

/// What the sender needs of its back end. Both are called on the sender's thread and never wait.
struct SysexOutlet {
    /// Gives a piece of a message to the system and moves `end` behind it, which comes as the piece
    /// before left it. kMidiBusy has the piece offered again a millisecond later, for ten seconds.
    /// Any other result but kMidiOk ends the message: this is how a disappeared endpoint ends what
    /// is still to be sent to it.
    std::function<int(MidiId destination, std::span<const std::uint8_t> piece, SysexMark& end)>
        write;
    /// Whether everything before `end` has left: kMidiOk, kMidiBusy, or why it never will. None:
    /// what was written has left.
    std::function<int(MidiId destination, const SysexMark& end)> hasLeft = nullptr;
};

/// The next message begins while the one before it leaves, as far as the speed allows; at most
/// 64 KB are on their way.
class SysexSender {
public:
    /// No piece is larger than `largestPiece`.
    explicit SysexSender(SysexOutlet outlet, std::size_t largestPiece = 4096);
    ~SysexSender();
    SysexSender(const SysexSender&) = delete;
    SysexSender& operator=(const SysexSender&) = delete;

    /// Queues the message behind those to the same destination. `done` is called on the sender's
    /// thread, in the order of sending, once the last byte has left and its wire time is over, or
    /// when the message was ended early, which is logged. It must not call Stop.
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
    using Time = SysexSchedule::Time;
    using Lock = std::unique_lock<std::mutex>;

    struct Message {
        MidiSysexSend send;
        SysexMark end = {};
        int result = kMidiOk; ///< of its writing
    };
    /// The messages to one destination: first those that are leaving, then the one being written.
    struct Lane {
        std::deque<Message> messages;
        std::size_t leaving = 0; ///< so many are written and not known to have left
        std::size_t leavingBytes = 0;
        std::optional<SysexSchedule> schedule; ///< of the message being written
        std::uint32_t speed = kMidiWireSpeed;
        SysexGap gap = {};
        std::size_t written = 0;       ///< of the message being written
        std::size_t ending = 0;        ///< so many messages are to end at once
        Time retryAt = {};             ///< no writing before this, after kMidiBusy
        Time askAt = {};               ///< when to ask whether the first has left
        std::optional<Time> busySince; ///< since when nothing has moved

        bool MayWrite() const;
        Time WriteTime() const;
        Time NextTime() const;
        void BeginWriting(Time start);
        void EndWriting(int result, Time nextStart);
        MidiSysexSend TakeFirst();
        bool MayWait(int result, Time now);
    };

    void Run();
    Lane* NextLane();
    void Advance(Lock& lock, Lane& lane, Time now);
    void WriteDue(Lock& lock, Lane& lane, Time now);
    void AskFirst(Lock& lock, Lane& lane, Time now);
    void EndFirst(Lock& lock, Lane& lane, int result);
    void EndAll(Lock& lock);
    int HasLeft(const Message& message) const;
    int WritePieces(Message& message, std::span<const std::uint8_t> bytes,
                    std::size_t& written) const;

    const SysexOutlet m_outlet;
    const std::size_t m_largestPiece;
    std::mutex m_lock; // guards everything below
    std::condition_variable m_changed;
    std::map<MidiId, Lane> m_lanes; // entries stay, for their speed
    std::thread m_thread;           // started by the first message
    bool m_stopping = false;
};

} // namespace vm
