// The schedule of one System Exclusive message.
#include "platform/midi/sysexPacing.h"

#include <algorithm>

namespace vm {

namespace {
constexpr std::uint32_t kTicksPerSecond = 100;
constexpr std::uint64_t kNanosecondsPerSecond = 1'000'000'000;
} // namespace

std::size_t SysexChunk(std::uint32_t bytesPerSecond) {
    return std::max<std::size_t>(1, (std::size_t{bytesPerSecond} + kTicksPerSecond - 1) /
                                        kTicksPerSecond);
}

SysexSchedule::SysexSchedule(std::size_t byteCount, std::uint32_t bytesPerSecond, Time start,
                             SysexGap gap)
    : m_byteCount(byteCount), m_speed(std::max(1U, bytesPerSecond)), m_start(start), m_gap(gap) {}

SysexSchedule::Time SysexSchedule::WireTime(std::size_t bytes) const {
    return Time(bytes / m_speed * kNanosecondsPerSecond +
                bytes % m_speed * kNanosecondsPerSecond / m_speed);
}

// How long the pauses are that follow the first `bytes` bytes.
SysexSchedule::Time SysexSchedule::Pauses(std::size_t bytes) const {
    if (m_gap.bytes == 0) return Time::zero();
    const bool isEnd = bytes == m_byteCount;
    const std::size_t count = (isEnd ? bytes + m_gap.bytes - 1 : bytes) / m_gap.bytes;
    return m_gap.pause * static_cast<std::int64_t>(count);
}

SysexSchedule::Time SysexSchedule::NextTime() const {
    return m_start + WireTime(m_sent) + Pauses(m_sent);
}

bool SysexSchedule::IsDone(Time now) const {
    return m_sent == m_byteCount && now >= NextTime();
}

std::size_t SysexSchedule::Take(Time now) {
    Time late = now - NextTime();
    if (late < Time::zero() || m_sent == m_byteCount) return 0;
    const std::size_t chunk = SysexChunk(m_speed);
    const Time oneChunk = WireTime(chunk);
    if (late > oneChunk) {
        m_start += late - oneChunk;
        late = oneChunk;
    }
    const std::size_t due = late == oneChunk ? 2 * chunk : chunk;
    std::size_t taken = std::min(due, m_byteCount - m_sent);
    if (m_gap.bytes != 0) taken = std::min(taken, m_gap.bytes - m_sent % m_gap.bytes);
    m_sent += taken;
    return taken;
}

void SysexSchedule::SetSpeed(std::uint32_t bytesPerSecond) {
    const Time next = NextTime();
    m_speed = std::max(1U, bytesPerSecond);
    m_start = next - WireTime(m_sent) - Pauses(m_sent);
}

} // namespace vm
