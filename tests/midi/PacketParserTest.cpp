#include "midi/packetParser.h"

#include <string>

#include <gmock/gmock.h>

#include "core/log.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) text += vm::Format(text.empty() ? "%02x" : " %02x", byte);
    return text;
}

/// What the parser tells, as words: "short 00403c90", "sysex f0 f7", remarks by name.
class TextSink final : public vm::MidiEventSink {
public:
    void ShortMessage(std::uint32_t message) override { Add(vm::Format("short %08x", message)); }
    void SysEx(std::span<const std::uint8_t> message) override { Add("sysex " + Hex(message)); }
    void Remark(vm::MidiRemark remark, std::uint8_t byte) override {
        switch (remark) {
        case vm::MidiRemark::StandardEvent:
            return;
        case vm::MidiRemark::RealTimeEvent:
            return;
        case vm::MidiRemark::EmbeddedSysEx:
            return Add("embedded");
        case vm::MidiRemark::OutOfContextByte:
            return Add(vm::Format("lost %02x", byte));
        case vm::MidiRemark::SysExPacket:
            return;
        case vm::MidiRemark::SysExNotEnded:
            return Add("not ended");
        }
    }
    std::string events;

private:
    void Add(const std::string& event) { events += (events.empty() ? "" : ", ") + event; }
};

struct Case {
    std::vector<Bytes> packets;
    std::string events;
    std::string left = ""; // in the accumulator
};

} // namespace

TEST(PacketParser, ReadsEveryKindOfPacket) {
    const Case cases[] = {
        {{{}}, ""},
        // channel messages
        {{{0x90, 0x3C, 0x40, 0x80, 0x3C, 0x00}}, "short 00403c90, short 00003c80"},
        {{{0xC0, 0x05, 0xD0, 0x40}}, "short 000005c0, short 000040d0"},
        {{{0xEF, 0x7F, 0x7F, 0xBF, 0x07, 0x10}}, "short 007f7fef, short 001007bf"},
        {{{0x90, 0x3C}}, "short 00003c90"},
        {{{0xDF}}, "short 000000df"},
        {{{0x90, 0x3C, 0x40, 0x3E, 0x40}}, "short 00403c90, lost 3e, lost 40"},
        // system messages in packets of up to four bytes
        {{{0xF8}}, "short 000000f8"},
        {{{0xFA, 0xFB, 0xFC, 0xFE}},
         "short 000000fa, short 000000fb, short 000000fc, short 000000fe"},
        {{{0xFF, 0x00, 0x00}}, "short 000000ff, lost 00, lost 00"},
        {{{0xF1, 0x25, 0x90, 0x3C}}, "short 3c9025f1"},
        {{{0xF1, 0x25}}, "short 000025f1"},
        {{{0xF2, 0x01, 0x02}}, "lost f2, lost 01, lost 02"},
        {{{0xF6, 0xF9, 0xFD, 0xF4}}, "lost f6, lost f9, lost fd, lost f4"},
        {{{0xF8, 0xF0, 0xF7}}, "short 000000f8, embedded, embedded"},
        // among channel messages the length does not matter
        {{{0x90, 0x01, 0x02, 0xF8, 0x80, 0x01, 0x00}},
         "short 00020190, short 000000f8, short 00000180"},
        {{{0x90, 0x01, 0x02, 0xF1, 0x11, 0x90, 0x05, 0x06}},
         "short 00020190, short 059011f1, lost 06"},
        // System Exclusive
        {{{0xF0, 0x43, 0x10}, {0x4C, 0x00, 0xF7}}, "sysex f0 43 10 4c 00 f7"},
        {{{0xF0, 0x01, 0xF7, 0xF0, 0x02, 0xF7}}, "sysex f0 01 f7, sysex f0 02 f7"},
        {{{0xF0, 0x01, 0xF0, 0x02, 0xF7}}, "not ended, sysex f0 01, sysex f0 02 f7"},
        {{{0xF0, 0x01}, {0xF7}}, "sysex f0 01 f7"},
        {{{0xF7}, {0xF7, 0xF7}}, ""},
        {{{0xF0, 0x01, 0xF8, 0x02, 0xF7}}, "sysex f0 01 f8 02 f7"},
        {{{0x3C, 0x40}}, "", "3c 40"},
        {{{0xF8, 0xF8, 0xF8, 0xF8, 0xF8, 0xF8}}, "", "f8 f8 f8 f8 f8 f8"},
        {{{0xF8, 0xF8, 0xF8, 0xF8}},
         "short 000000f8, short 000000f8, short 000000f8, short 000000f8"},
        // short messages between the packets of a long one leave it alone
        {{{0xF0, 0x01}, {0xF8}, {0x90, 0x3C, 0x40}, {0x02, 0xF7}},
         "short 000000f8, short 00403c90, sysex f0 01 02 f7"},
    };
    for (const Case& test : cases) {
        std::string packets;
        for (const Bytes& packet : test.packets) packets += "[" + Hex(packet) + "]";
        SCOPED_TRACE(packets);
        TextSink sink;
        Bytes accumulator;
        for (const Bytes& packet : test.packets) vm::ParseMidiPacket(packet, accumulator, sink);
        EXPECT_EQ(sink.events, test.events);
        EXPECT_EQ(Hex(accumulator), test.left);
    }
}

TEST(PacketParser, AssemblesALargeMessageFromAnyPieces) {
    Bytes message(100'000, 0x55);
    message.front() = 0xF0;
    message.back() = 0xF7;
    for (const std::size_t piece : {1UL, 3UL, 32UL, 65'535UL}) {
        TextSink sink;
        Bytes accumulator;
        for (std::size_t at = 0; at < message.size(); at += piece)
            vm::ParseMidiPacket(
                std::span(message).subspan(at, std::min(piece, message.size() - at)), accumulator,
                sink);
        EXPECT_EQ(sink.events, "sysex " + Hex(message)) << piece;
        EXPECT_TRUE(accumulator.empty());
    }
}
