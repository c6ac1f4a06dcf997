#include "platform/midi/alsa/alsaEvents.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "core/log.h"

using Bytes = std::vector<std::uint8_t>;

namespace {

std::string Hex(std::span<const std::uint8_t> bytes) {
    std::string text;
    for (const std::uint8_t byte : bytes) text += vm::Format(text.empty() ? "%02x" : " %02x", byte);
    return text;
}

std::string ThereAndBack(const Bytes& message) {
    const auto event = vm::EventFromShortMessage(message);
    if (!event) return "none";
    const std::string sysex = Hex(vm::SysexBytes(*event));
    return sysex.empty() ? Hex(vm::EventBytes(*event).Bytes()) : "sysex " + sysex;
}

std::string FromControl(snd_seq_event_type_t type, unsigned parameter, int value) {
    snd_seq_event_t event = {};
    event.type = type;
    event.data.control.channel = 5;
    event.data.control.param = parameter;
    event.data.control.value = value;
    return Hex(vm::EventBytes(event).Bytes());
}

} // namespace

TEST(AlsaEvents, EveryShortMessageGoesThereAndBack) {
    const std::pair<Bytes, std::string> cases[] = {
        {{0x80, 0x3C, 0x00}, "80 3c 00"},
        {{0x9F, 0x3C, 0x00}, "9f 3c 00"},
        {{0xA1, 0x3C, 0x7F}, "a1 3c 7f"},
        {{0xB2, 0x7F, 0x01}, "b2 7f 01"},
        {{0xC3, 0x05, 0x77}, "c3 05"},
        {{0xC3}, "c3 00"},
        {{0xD4, 0x40}, "d4 40"},
        {{0xE5, 0x00, 0x00}, "e5 00 00"},
        {{0xE5, 0x00, 0x40}, "e5 00 40"},
        {{0xE5, 0x7F, 0x7F}, "e5 7f 7f"},
        {{0x90, 0x83, 0xFF}, "90 03 7f"},
        {{0xF1, 0x25, 0x00}, "f1 25"},
        {{0xF2, 0x01, 0x02}, "f2 01 02"},
        {{0xF3, 0x07, 0x00}, "f3 07"},
        {{0xF6, 0x00, 0x00}, "f6"},
        {{0xF8, 0x00, 0x00}, "f8"},
        {{0xFA}, "fa"},
        {{0xFB}, "fb"},
        {{0xFC}, "fc"},
        {{0xFE}, "fe"},
        {{0xFF}, "ff"},
        {{0xF0, 0x7E, 0xF7}, "sysex f0 7e f7"},
        {{}, "none"},
        {{0x3C, 0x40, 0x00}, "none"},
        {{0xF4, 0, 0}, "none"},
        {{0xF7, 0, 0}, "none"},
        {{0xFD, 0, 0}, "none"},
    };
    for (const auto& [message, expected] : cases)
        EXPECT_EQ(ThereAndBack(message), expected) << Hex(message);
}

TEST(AlsaEvents, ControllersOfMoreBitsBecomeSeveralMessages) {
    EXPECT_EQ(FromControl(SND_SEQ_EVENT_CONTROL14, 7, 0x1234), "b5 07 24 b5 27 34");
    EXPECT_EQ(FromControl(SND_SEQ_EVENT_CONTROL14, 64, 0x7F), "b5 40 7f");
    EXPECT_EQ(FromControl(SND_SEQ_EVENT_REGPARAM, 0x81, 0x102),
              "b5 65 01 b5 64 01 b5 06 02 b5 26 02");
    EXPECT_EQ(FromControl(SND_SEQ_EVENT_NONREGPARAM, 0x81, 0x102),
              "b5 63 01 b5 62 01 b5 06 02 b5 26 02");
}

TEST(AlsaEvents, WhatIsNoMidiHasNoBytes) {
    for (const int type : {SND_SEQ_EVENT_PORT_START, SND_SEQ_EVENT_ECHO, SND_SEQ_EVENT_TEMPO,
                           SND_SEQ_EVENT_NOTE, SND_SEQ_EVENT_SYSEX, SND_SEQ_EVENT_NONE}) {
        snd_seq_event_t event = {};
        event.type = static_cast<snd_seq_event_type_t>(type);
        EXPECT_TRUE(vm::EventBytes(event).Bytes().empty()) << type;
        EXPECT_TRUE(vm::SysexBytes(event).empty()) << type;
    }
}

TEST(AlsaEvents, AddressesAreWrittenAndRead) {
    EXPECT_EQ(vm::AddressText({128, 3}), "128:3");
    EXPECT_EQ(vm::AddressFromText("128:3"), (vm::AlsaAddress{128, 3}));
    for (const char* text : {"", "128", "128:", ":3", "128:3x", "a:3"})
        EXPECT_EQ(vm::AddressFromText(text), vm::AlsaAddress{}) << text;
}
