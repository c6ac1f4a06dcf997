// The parser of received MIDI packets. The input is packets, one a line, in hexadecimal: a blank is
// skipped, and of any other byte the low four bits count, so that every input means something.
#include "midi/packetParser.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "target.h"

using fuzz::Require;

namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr std::size_t kLongestToSplit = 64; // the work grows with the square

std::uint8_t Digit(char c) {
    const bool isLetter = (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
    return static_cast<std::uint8_t>(isLetter ? (c & 7) + 9 : c & 15);
}

std::vector<Bytes> PacketsOf(std::string_view text) {
    std::vector<Bytes> packets(1);
    bool isHalf = false;
    for (const char c : text) {
        if (c == ' ') continue;
        if (c == '\n') {
            packets.emplace_back();
            isHalf = false;
            continue;
        }
        if (isHalf)
            packets.back().back() =
                static_cast<std::uint8_t>(packets.back().back() << 4 | Digit(c));
        else
            packets.back().push_back(Digit(c));
        isHalf = !isHalf;
    }
    return packets;
}

/// Everything that the host is given, as bytes that are equal only if that is.
class Recorder final : public vm::MidiEventSink {
public:
    void ShortMessage(std::uint32_t message) override {
        Require((message & 0x80) != 0, "a short message begins with its status");
        calls.push_back('s');
        for (int shift = 0; shift < 32; shift += 8)
            calls.push_back(static_cast<std::uint8_t>(message >> shift));
    }
    void SysEx(std::span<const std::uint8_t> message) override {
        Require(!message.empty(), "no empty message is delivered");
        Require(message.front() != 0xF7, "an end alone is dropped");
        Require(std::find(message.begin() + 1, message.end(), 0xF0) == message.end(),
                "a message begins once");
        Require(std::find(message.begin(), message.end() - 1, 0xF7) == message.end() - 1,
                "a message ends once");
        calls.push_back('x');
        calls.insert(calls.end(), message.begin(), message.end());
        taken.insert(taken.end(), message.begin(), message.end());
    }
    void Remark(vm::MidiRemark remark, std::uint8_t) override {
        if (remark == vm::MidiRemark::SysExPacket) hasSysex = true;
    }

    Bytes calls;
    Bytes taken; ///< the bytes of all long messages
    bool hasSysex = false;
};

// From memory of exactly this size, so that reading on is noticed.
void Parse(std::span<const std::uint8_t> packet, Bytes& accumulator, vm::MidiEventSink& sink) {
    const auto copy = std::make_unique_for_overwrite<std::uint8_t[]>(packet.size());
    std::copy(packet.begin(), packet.end(), copy.get());
    vm::ParseMidiPacket({copy.get(), packet.size()}, accumulator, sink);
}

// What a packet of the kind that goes to the accumulator leaves of its bytes.
Bytes Kept(const Bytes& packet, bool isOpen) {
    Bytes kept;
    for (const std::uint8_t byte : packet) {
        if (byte != 0xF7 || isOpen) kept.push_back(byte);
        isOpen = byte != 0xF7;
    }
    return kept;
}

// No byte of a long message is lost, doubled or out of place.
void CheckPacket(const Bytes& packet, Bytes& accumulator) {
    const Bytes before = accumulator;
    Recorder recorder;
    Parse(packet, accumulator, recorder);
    if (!recorder.hasSysex) {
        Require(accumulator == before, "short messages leave a long one alone");
        Require(recorder.taken.empty(), "short messages complete no long one");
        return;
    }
    Bytes expected = before;
    const Bytes kept = Kept(packet, !before.empty());
    expected.insert(expected.end(), kept.begin(), kept.end());
    Bytes found = recorder.taken;
    found.insert(found.end(), accumulator.begin(), accumulator.end());
    Require(found == expected, "long messages and what is left of them are what came");
}

/// The packets' bytes as a stream that a sender may cut anywhere: long messages, whole or not.
Bytes LongMessages(const std::vector<Bytes>& packets) {
    Bytes stream;
    for (const Bytes& packet : packets) {
        stream.push_back(0xF0);
        for (const std::uint8_t byte : packet)
            stream.push_back(byte < 0x80 ? byte : byte % 2 == 0 ? 0xF0 : 0xF7);
        stream.push_back(0xF7);
    }
    stream.resize(std::min(stream.size(), kLongestToSplit));
    return stream;
}

Bytes CallsFor(std::initializer_list<std::span<const std::uint8_t>> packets, Bytes& accumulator) {
    Recorder recorder;
    for (const auto packet : packets) Parse(packet, accumulator, recorder);
    return recorder.calls;
}

void CheckSplits(const Bytes& stream) {
    Bytes left;
    const Bytes whole = CallsFor({stream}, left);
    for (std::size_t at = 0; at <= stream.size(); ++at) {
        Bytes accumulator;
        const auto all = std::span(stream);
        Require(CallsFor({all.first(at), all.subspan(at)}, accumulator) == whole,
                "a long message in two packets is the same message");
        Require(accumulator == left, "two packets leave what one leaves");
    }
    Bytes accumulator;
    Recorder recorder;
    for (const std::uint8_t& byte : stream) Parse({&byte, 1}, accumulator, recorder);
    Require(recorder.calls == whole && accumulator == left,
            "a long message byte by byte is the same message");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<Bytes> packets = PacketsOf(fuzz::Text(data, size));
    Bytes accumulator;
    for (const Bytes& packet : packets) CheckPacket(packet, accumulator);
    CheckSplits(LongMessages(packets));
    return 0;
}
