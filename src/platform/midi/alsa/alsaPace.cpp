// Counting bytes against time, and cells against a queue.
#include "platform/midi/alsa/alsaPace.h"

#include <algorithm>

namespace vm {

namespace {
constexpr std::chrono::microseconds kLate{1000};
constexpr std::size_t kBytesPerMillisecond = 256;
constexpr int kCellsForOthers = 32;
} // namespace

bool AlsaPace::IsFree(MidiId destination, Time now) const {
    const auto known = m_freeAt.find(destination);
    return known == m_freeAt.end() || known->second <= now;
}

void AlsaPace::Count(MidiId destination, std::size_t bytes, Time now) {
    Time& freeAt = m_freeAt[destination];
    freeAt = std::max(freeAt, now - kLate) +
             std::chrono::microseconds(1000 * bytes / kBytesPerMillisecond);
}

bool HasRoom(const AlsaInputPool& pool, std::size_t bytes) {
    constexpr std::size_t kCell = kAlsaCellBytes;
    const int needed = 1 + static_cast<int>((bytes + kCell - 1) / kCell);
    const int wanted = bytes == 0 ? needed : needed + kCellsForOthers;
    return pool.free >= std::min(wanted, pool.size);
}

} // namespace vm
