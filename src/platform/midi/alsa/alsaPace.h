// How fast System Exclusive messages may go into the sequencer at the most. It has no flow control:
// a receiver whose queue is full loses all that it has not read yet.
#pragma once

#include <chrono>
#include <cstddef>
#include <map>

#include "platform/midi/alsa/alsaKernel.h"
#include "platform/midi/midiRecords.h"

namespace vm {

/// No piece is larger: the size that all readers and drivers can take.
inline constexpr std::size_t kAlsaLargestPiece = 256;

/// 256 bytes in every millisecond for each destination. Who comes late may make up for one.
class AlsaPace {
public:
    using Time = std::chrono::steady_clock::time_point;

    bool IsFree(MidiId destination, Time now) const;
    void Count(MidiId destination, std::size_t bytes, Time now); ///< they have left

private:
    std::map<MidiId, Time> m_freeAt; ///< when everything counted has left at this speed
};

/// True when an event with `bytes` of System Exclusive data (0: another event) fits into the queue
/// and leaves some room for the short messages of others.
bool HasRoom(const AlsaInputPool& pool, std::size_t bytes);

} // namespace vm
