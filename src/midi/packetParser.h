// Splits the bytes of one received packet into short messages and System Exclusive messages. No
// device, no thread, no log: what happens is told to a sink, in order.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace vm {

/// What the parser notices beside the messages; it comes before the message it is about.
enum class MidiRemark {
    StandardEvent,    ///< a channel message follows
    RealTimeEvent,    ///< a byte that is no channel status, of whatever use
    EmbeddedSysEx,    ///< F0 or F7 among short messages, dropped
    OutOfContextByte, ///< a byte without meaning here, dropped
    SysExPacket,      ///< the packet goes to the accumulator
    SysExNotEnded,    ///< F0 before F7: what there is of the message is delivered
};

class MidiEventSink {
public:
    virtual void ShortMessage(std::uint32_t message) = 0; ///< status byte lowest
    virtual void SysEx(std::span<const std::uint8_t> message) = 0;
    virtual void Remark(MidiRemark remark, std::uint8_t byte) = 0;

protected:
    ~MidiEventSink() = default;
};

/// `accumulator` holds a System Exclusive message from its first packet to its last. The sink must
/// not change it.
void ParseMidiPacket(std::span<const std::uint8_t> packet, std::vector<std::uint8_t>& accumulator,
                     MidiEventSink& sink);

} // namespace vm
