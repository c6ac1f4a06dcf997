// The rules by which a packet is read. They are the ones that librarians were written against:
// system common messages other than the quarter frame are not delivered, running status is unknown.
#include "midi/packetParser.h"

#include <algorithm>

namespace vm {

namespace {

using Bytes = std::span<const std::uint8_t>;
using Accumulator = std::vector<std::uint8_t>;

constexpr bool IsChannelStatus(std::uint8_t byte) {
    return byte >= 0x80 && byte <= 0xEF;
}
constexpr std::size_t ChannelMessageLength(std::uint8_t status) {
    return (status >> 5) == 6 ? 2 : 3;
}

// A packet of more bytes than a short message can have, or one that goes on with earlier ones.
bool IsSysexPacket(Bytes packet) {
    constexpr std::size_t kLongestSystemPacket = 4;
    const std::uint8_t first = packet.front();
    if (IsChannelStatus(first)) return false;
    if (first < 0x80 || first == 0xF0 || first == 0xF7) return true;
    return packet.size() > kLongestSystemPacket;
}

// Bytes missing at the packet's end count as 0.
std::uint32_t Pack(Bytes bytes, std::size_t count) {
    std::uint32_t message = 0;
    for (std::size_t i = 0; i < std::min(count, bytes.size()); ++i)
        message |= std::uint32_t{bytes[i]} << (8 * i);
    return message;
}

// Each of these consumes a message from the front and returns its length.

std::size_t ParseChannelMessage(Bytes bytes, MidiEventSink& sink) {
    const std::size_t length = ChannelMessageLength(bytes.front());
    sink.Remark(MidiRemark::StandardEvent, bytes.front());
    sink.ShortMessage(Pack(bytes, length));
    return length;
}

// A quarter frame has two bytes; hosts are used to getting four, at the cost of what follows it.
std::size_t ParseQuarterFrame(Bytes bytes, MidiEventSink& sink) {
    sink.ShortMessage(Pack(bytes, 4));
    return 4;
}

std::size_t ParseSystemByte(Bytes bytes, MidiEventSink& sink) {
    const std::uint8_t byte = bytes.front();
    sink.Remark(MidiRemark::RealTimeEvent, byte);
    switch (byte) {
    case 0xF8:
    case 0xFA:
    case 0xFB:
    case 0xFC:
    case 0xFE:
    case 0xFF:
        sink.ShortMessage(byte);
        return 1;
    case 0xF0:
    case 0xF7:
        sink.Remark(MidiRemark::EmbeddedSysEx, byte);
        return 1;
    case 0xF1:
        return ParseQuarterFrame(bytes, sink);
    default:
        sink.Remark(MidiRemark::OutOfContextByte, byte);
        return 1;
    }
}

void ParseMessages(Bytes bytes, MidiEventSink& sink) {
    while (!bytes.empty()) {
        const std::size_t consumed = IsChannelStatus(bytes.front())
                                         ? ParseChannelMessage(bytes, sink)
                                         : ParseSystemByte(bytes, sink);
        bytes = bytes.subspan(std::min(consumed, bytes.size()));
    }
}

void EndSysex(Accumulator& accumulator, MidiEventSink& sink) {
    sink.SysEx(accumulator);
    accumulator.clear();
}

// Nothing checks that a message begins with F0, and real-time bytes stay in it: librarians get the
// bytes as they came.
void ParseSysex(Bytes bytes, Accumulator& accumulator, MidiEventSink& sink) {
    sink.Remark(MidiRemark::SysExPacket, bytes.front());
    for (const std::uint8_t byte : bytes) {
        if (byte == 0xF7 && accumulator.empty()) continue;
        if (byte == 0xF0 && !accumulator.empty()) {
            sink.Remark(MidiRemark::SysExNotEnded, byte);
            EndSysex(accumulator, sink);
        }
        accumulator.push_back(byte);
        if (byte == 0xF7) EndSysex(accumulator, sink);
    }
}

} // namespace

void ParseMidiPacket(Bytes packet, Accumulator& accumulator, MidiEventSink& sink) {
    if (packet.empty()) return;
    if (IsSysexPacket(packet))
        ParseSysex(packet, accumulator, sink);
    else
        ParseMessages(packet, sink);
}

} // namespace vm
