// From the events that arrive to the packets that receivers get.
#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

#include "platform/midi/alsa/alsaEvents.h"
#include "platform/midi/portTable.h"

namespace vm {

/// Knows the connected sources, and holds the pieces of their System Exclusive messages together
/// until each is whole: the sequencer cuts them small, and when it loses some, the rest must not
/// reach anybody as if it were a message. Any thread may call.
class AlsaInput {
public:
    /// What arrives from `address` is from now on `source`'s.
    void Connect(AlsaAddress address, MidiId source);
    void Disconnect(AlsaAddress gone);
    std::optional<AlsaAddress> AddressOf(MidiId source) const;
    /// After a loss: drops the beginnings of messages. What is still to come of them is dropped
    /// when it comes.
    void DropUnfinished();

    /// Adds what `event` completes. A message without an end is handed on when the next begins.
    void Read(const snd_seq_event_t& event, MidiTraffic& traffic);

private:
    struct Source {
        MidiId id = 0;
        std::vector<std::uint8_t> unfinished = {}; ///< begins with F0, or is empty
    };

    static void ReadSysex(Source& source, std::span<const std::uint8_t> piece,
                          MidiTraffic& traffic);

    mutable std::mutex m_lock; // guards m_sources
    std::map<AlsaAddress, Source> m_sources;
};

} // namespace vm
