// From the events that arrive to the packets that receivers get.
#pragma once

#include <map>
#include <mutex>
#include <optional>

#include "platform/midi/alsa/alsaEvents.h"
#include "platform/midi/packets.h"
#include "platform/midi/portTable.h"

namespace vm {

/// Knows which source is at which address, and that something of it was lost: what is left of a torn
/// System Exclusive message then reaches nobody. Any thread may call.
class AlsaInput {
public:
    /// What arrives from `address` is from now on `source`'s.
    void Connect(AlsaAddress address, MidiId source);
    void Disconnect(AlsaAddress address);
    std::optional<AlsaAddress> AddressOf(MidiId source) const;

    /// The port has disappeared, perhaps in the middle of a message.
    void OnGone(AlsaAddress gone);
    /// Events of any source may have been lost.
    void OnLoss();

    /// Adds what `event` brings.
    void Read(const snd_seq_event_t& event, MidiTraffic& traffic);

private:
    mutable std::mutex m_lock; // guards everything below
    std::map<AlsaAddress, MidiId> m_sources;
    TornSysexFilter m_filter;
};

} // namespace vm
