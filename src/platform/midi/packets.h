// Two rules about packets that back ends share: what of a packet goes out on the wire, and what of
// the received ones still makes sense after some were lost.
#pragma once

#include <cstdint>
#include <map>
#include <span>

#include "platform/midi/midiRecords.h"

namespace vm {

/// The one message in a packet of at most three bytes, without what follows it: hosts send every
/// message as two or three bytes, a clock tick too. Longer packets are returned as they are, and so
/// is what begins without a status or with F0.
std::span<const std::uint8_t> MessageInPacket(std::span<const std::uint8_t> packet);

/// Keeps the rests of System Exclusive messages back that lost something on their way.
class TornSysexFilter {
public:
    enum class Verdict {
        Deliver,
        DeliverAfterLoss, ///< with MidiPacket::afterLoss
        Drop,
    };

    /// Some of the source's packets before the next one are missing.
    void Lost(MidiId source);
    Verdict Judge(MidiId source, std::span<const std::uint8_t> packet);

private:
    struct State {
        bool isReported = false; ///< a packet with afterLoss was delivered
        bool isInside = true;    ///< perhaps still inside the torn message
    };
    std::map<MidiId, State> m_states; // of those that lost something
};

} // namespace vm
