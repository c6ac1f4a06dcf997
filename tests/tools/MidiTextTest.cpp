// How `vmcore midi` reads files and shows messages.
#include <gmock/gmock.h>

#include "SyxFile.h"
#include "core/macroman.h"
#include "midiKinds.h"
#include "midiText.h"

using namespace vm::tool;
using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

TEST(MidiText, NamesAreMacRoman) {
    for (int code = 0; code < 256; ++code) {
        const std::string name(1, static_cast<char>(code));
        EXPECT_EQ(Utf8FromMacRoman(name), vm::FromMacRoman(name).toStdString()) << code;
    }
}

TEST(MidiText, ShortMessages) {
    const struct {
        std::uint32_t message;
        const char* hex;
        const char* text;
    } rows[] = {
        {0x00403C90, "90 3C 40", "note on, channel 1, C4, velocity 64"},
        {0x0000008F, "8F 00 00", "note off, channel 16, C-1, velocity 0"},
        {0x00017FA0, "A0 7F 01", "key pressure, channel 1, G9, pressure 1"},
        {0x007F07B2, "B2 07 7F", "control change, channel 3, volume, value 127"},
        {0x000002B0, "B0 02 00", "control change, channel 1, controller 2, value 0"},
        {0x000005C0, "C0 05", "program change, channel 1, 5"},
        {0x000040DF, "DF 40", "channel pressure, channel 16, 64"},
        {0x004000E0, "E0 00 40", "pitch bend, channel 1, +0"},
        {0x000000E1, "E1 00 00", "pitch bend, channel 2, -8192"},
        {0x007F7FE0, "E0 7F 7F", "pitch bend, channel 1, +8191"},
        {0x3C9025F1, "F1 25 90 3C", "quarter frame, piece 2, value 5"},
        {0x000000F8, "F8", "clock"},
        {0x000000FF, "FF", "reset"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Hex(BytesOf(row.message)), row.hex);
        EXPECT_EQ(Described(row.message), row.text);
    }
}

TEST(MidiText, LongMessagesAreAbbreviated) {
    MidiBytes bytes(12, 0x55);
    bytes.front() = 0xF0;
    bytes.back() = 0xF7;
    EXPECT_EQ(AbbreviatedHex(bytes), "F0 55 55 55 55 55 55 55 55 55 55 F7");
    bytes.insert(bytes.begin() + 8, 0x11);
    EXPECT_EQ(AbbreviatedHex(bytes), "F0 55 55 55 55 55 55 55 .. F7");
    EXPECT_EQ(DescribedSysex(bytes), "SysEx, 13 bytes");
    bytes.pop_back();
    EXPECT_EQ(DescribedSysex(bytes), "SysEx, 12 bytes, incomplete");
    EXPECT_FALSE(IsWholeSysex(MidiBytes{0xF0}));
    EXPECT_FALSE(IsWholeSysex(MidiBytes{0x01, 0xF7}));
}

TEST(MidiText, Quantities) {
    EXPECT_EQ(FormatSeconds(0.0000214), "21 us");
    EXPECT_EQ(FormatSeconds(0.00674), "6.7 ms");
    EXPECT_EQ(FormatSeconds(20.97), "21.0 s");
    EXPECT_EQ(FormatRate(3125), "3125 B/s");
    EXPECT_EQ(FormatRate(31'250), "31.2 kB/s");
    EXPECT_EQ(FormatRate(9'840'000), "9.8 MB/s");
}

TEST(SyxFile, SplitsIntoMessages) {
    const struct {
        std::string bytes;
        std::vector<std::string_view> messages;
        std::string problem = "";
    } rows[] = {
        {"\xF0\xF7", {"\xF0\xF7"}},
        {"\xF0\x43\x7F\xF7\xF0\x01\xF7", {"\xF0\x43\x7F\xF7", "\xF0\x01\xF7"}},
        {"", {}, "it is empty"},
        {"MThd", {}, "byte 0 is 4D, where a SysEx message should begin with F0"},
        {"\xF0\x01\xF7\n", {}, "byte 3 is 0A, where a SysEx message should begin with F0"},
        {"\xF0\x01\xF7\xF7", {}, "byte 3 is F7, where a SysEx message should begin with F0"},
        {"\xF0\x01\xF7\xF0\x01\x90\xF7",
         {},
         "byte 5 is 90, inside the SysEx message that begins at byte 3"},
        {"\xF0\x01\xF0\xF7", {}, "byte 2 is F0, inside the SysEx message that begins at byte 0"},
        {"\xF0\xF8\xF7", {}, "byte 1 is F8, inside the SysEx message that begins at byte 0"},
        {"\xF0\x01\xF7\xF0", {}, "the SysEx message that begins at byte 3 has no end (F7)"},
    };
    for (const auto& row : rows) {
        const SyxMessages split = SplitSyx(row.bytes);
        EXPECT_EQ(split.problem, row.problem);
        EXPECT_EQ(split.messages, row.messages) << row.problem;
    }
}

TEST(MidiKinds, ProbesAreRightlyPacked) {
    for (const MidiKind& kind : ShortKinds()) {
        SCOPED_TRACE(kind.name);
        for (const ShortProbe& probe : ProbesOf(kind)) {
            EXPECT_EQ(probe.sent & probe.mask, probe.sent);
            EXPECT_EQ(probe.sent & ~(0xFFFFFFU >> (8 * (3 - probe.byteCount))), 0U);
            EXPECT_EQ(probe.sent & 0x808000, 0U) << "data bytes";
            EXPECT_NE(probe.sent & 0x80, 0U);
        }
    }
    EXPECT_EQ(ProbesOf({"", 0xC0})[15].sent, 0x1FCFU);
    EXPECT_EQ(ProbesOf({"", 0xE0})[2].sent, 0x7D12E2U);
    EXPECT_EQ(ProbesOf({"", 0xF1})[1].mask, 0xFFFFU);
}

TEST(MidiKinds, DifferencesAreNamed) {
    const MidiBytes sent = SysexOf(5);
    MidiBytes changed = sent;
    changed[2] ^= 1;
    const MidiBytes shorter(sent.begin(), sent.end() - 1);
    MidiBytes missing = sent;
    missing.erase(missing.begin() + 2);
    EXPECT_EQ(DifferenceOf(sent, sent), "");
    EXPECT_EQ(DifferenceOf(sent, changed), "byte 2 is 12 instead of 13");
    EXPECT_EQ(DifferenceOf(sent, shorter), "4 bytes instead of 5 arrived");
    EXPECT_EQ(DifferenceOf(shorter, sent), "5 bytes instead of 4 arrived");
    EXPECT_EQ(DifferenceOf(sent, missing),
              "4 bytes instead of 5 arrived, byte 2 is 1A instead of 13");
    EXPECT_EQ(Hex(SysexOf(2)), "F0 F7");
}

} // namespace
