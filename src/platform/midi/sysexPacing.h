// When the bytes of a System Exclusive message may leave: arithmetic on an absolute schedule,
// without a clock and without a thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>

namespace vm {

/// Bytes that leave together at this speed: what the wire carries in 10 ms, rounded up.
std::size_t SysexChunk(std::uint32_t bytesPerSecond);

/// A pause for devices that need time to store what they have got: after every `bytes` bytes, and
/// after the end of a message. No pause when `bytes` is 0.
struct SysexGap {
    std::size_t bytes = 0;
    std::chrono::milliseconds pause{0};
    bool operator==(const SysexGap&) const = default;
};

/// One message on its way. Each chunk leaves when the bytes before it have passed at the given
/// speed, counted from the start, so that late wake-ups do not add up. Who is late by more than one
/// chunk makes up for one only: in any time T at most speed * T + 2 chunks leave.
class SysexSchedule {
public:
    using Time = std::chrono::nanoseconds; ///< since the epoch of the caller's clock

    SysexSchedule(std::size_t byteCount, std::uint32_t bytesPerSecond, Time start,
                  SysexGap gap = {});

    /// The bytes to send now: none, one chunk, or two when one chunk behind. They count as sent.
    std::size_t Take(Time now);
    /// When to look again: the next chunk's time, and after the last one the end of its wire time.
    Time NextTime() const;
    /// Everything has left, the wire is free again and the last pause is over.
    bool IsDone(Time now) const;
    /// Changes the speed for the bytes that have not been taken yet.
    void SetSpeed(std::uint32_t bytesPerSecond);
    std::size_t Sent() const { return m_sent; }

private:
    Time WireTime(std::size_t bytes) const;
    Time Pauses(std::size_t bytes) const;

    std::size_t m_byteCount;
    std::size_t m_sent = 0;
    std::uint32_t m_speed;
    Time m_start;
    SysexGap m_gap;
};

} // namespace vm
