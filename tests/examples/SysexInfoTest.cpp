#include "librarian/SysexInfo.h"

#include <ostream>

#include <gmock/gmock.h>

namespace {

struct InfoCase {
    SysexBytes message;
    const char* manufacturer;
    const char* kind;
    ChecksumState checksum;

    friend void PrintTo(const InfoCase& row, std::ostream* out) {
        *out << row.manufacturer << ", " << row.kind;
    }
};

class SysexDescription : public testing::TestWithParam<InfoCase> {};

constexpr auto kNone = ChecksumState::None;
constexpr auto kRight = ChecksumState::Right;
constexpr auto kWrong = ChecksumState::Wrong;

// The Roland and Yamaha checksums are worked examples: 05+01+02 = 8, so 0x78; 1+2+3 = 6, so 0x7A.
const InfoCase kInfos[] = {
    {{0xF0, 0x41, 0x10, 0x16, 0x12, 5, 1, 2, 0x78, 0xF7}, "Roland", "Data set", kRight},
    {{0xF0, 0x41, 0x10, 0x16, 0x12, 5, 1, 2, 0x77, 0xF7}, "Roland", "Data set", kWrong},
    {{0xF0, 0x41, 0x10, 0x00, 0x11, 0x12, 5, 1, 2, 0x78, 0xF7}, "Roland", "Data set", kRight},
    {{0xF0, 0x41, 0x10, 0x16, 0x11, 5, 1, 2, 0x78, 0xF7}, "Roland", "Data request", kRight},
    {{0xF0, 0x41, 0x10, 0x16, 0x43, 0xF7}, "Roland", "Acknowledge", kNone},
    {{0xF0, 0x41, 0x10, 0x16, 0x12, 0xF7}, "Roland", "Data set", kWrong},
    {{0xF0, 0x43, 0, 4, 0, 3, 1, 2, 3, 0x7A, 0xF7}, "Yamaha", "Bulk dump", kRight},
    {{0xF0, 0x43, 0, 4, 0, 3, 1, 2, 4, 0x7A, 0xF7}, "Yamaha", "Bulk dump", kWrong},
    {{0xF0, 0x43, 0, 9, 0x20, 0, 1, 0x7F, 0xF7}, "Yamaha", "32-voice bank dump", kWrong},
    {{0xF0, 0x43, 0x10, 1, 2, 3, 0xF7}, "Yamaha", "Parameter change", kNone},
    {{0xF0, 0x43, 0x20, 9, 0xF7}, "Yamaha", "Dump request", kNone},
    {{0xF0, 0x42, 0x30, 0x19, 0x40, 1, 2, 0xF7}, "Korg", "Program dump", kNone},
    {{0xF0, 0x7E, 0, 6, 1, 0xF7}, "Universal", "Identity request", kNone},
    {{0xF0, 0x7E, 1, 2, 5, 0x78, 0xF7}, "Universal", "Sample data", kRight},
    {{0xF0, 0x7F, 0x7F, 4, 1, 0, 0x7F, 0xF7}, "Universal (real time)", "Master volume", kNone},
    {{0xF0, 0, 0x20, 0x33, 1, 0x10, 0x10, 0, 2, 5, 0x27, 0xF7}, "Access", "Single dump", kRight},
    {{0xF0, 0, 0x20, 0x29, 1, 0xF7}, "Focusrite/Novation", "Message", kNone},
    {{0xF0, 0x5A, 1, 0xF7}, "Unknown (5A)", "Message", kNone},
    {{0xF0, 0, 0x7F, 1, 1, 0xF7}, "Unknown (00 7F 01)", "Message", kNone},
    {{0xF0, 0xF7}, "Unknown", "Message", kNone},
    {{0xF0, 0, 0xF7}, "Unknown", "Message", kNone},
    {{0xF0, 0x43, 0}, "Yamaha", "Message (cut short)", kNone},
    {{0xF0, 0x43, 0, 9, 0x20, 0, 1}, "Yamaha", "32-voice bank dump (cut short)", kWrong},
};

TEST_P(SysexDescription, NamesMakerKindAndChecksum) {
    const SysexInfo info = DescribeSysex(GetParam().message);
    EXPECT_EQ(info.manufacturer, GetParam().manufacturer);
    EXPECT_EQ(info.kind, GetParam().kind);
    EXPECT_STREQ(ChecksumText(info.checksum), ChecksumText(GetParam().checksum));
}

INSTANTIATE_TEST_SUITE_P(Formats, SysexDescription, testing::ValuesIn(kInfos));

} // namespace

TEST(SysexInstrument, IsMakerModelAndDevice) {
    const struct {
        SysexBytes message;
        const char* instrument;
    } rows[] = {
        {{0xF0, 0x41, 0x10, 0x16, 0x12, 0xF7}, "Roland, model 16, device 10"},
        {{0xF0, 0x41, 0x10, 0x00, 0x11, 0x12, 0xF7}, "Roland, model 00 11, device 10"},
        {{0xF0, 0x41, 0x10, 0, 0, 0, 0, 0, 0xF7}, "Roland, model 00 00 00 00, device 10"},
        {{0xF0, 0x41, 0x10, 0xF7}, "Roland, device 10"},
        {{0xF0, 0x42, 0x3A, 0x19, 0xF7}, "Korg, model 19, device 0A"},
        {{0xF0, 0x43, 0x13, 0xF7}, "Yamaha, device 03"},
        {{0xF0, 0x43, 0xF7}, "Yamaha"},
        {{0xF0, 0x43}, "Yamaha"},
        {{0xF0, 0, 0x20, 0x33, 1, 0x10, 0xF7}, "Access, model 01, device 10"},
        {{0xF0, 0x04, 1, 0xF7}, "Moog"},
        {{0xF0, 0, 0x7F, 1, 1, 0xF7}, "Unknown (00 7F 01)"},
        {{0xF0, 0x7D, 1, 0xF7}, ""},
        {{0xF0, 0x7E, 0, 6, 1, 0xF7}, ""},
        {{0xF0, 0x7F, 0, 6, 1, 0xF7}, ""},
        {{0xF0, 0xF7}, ""},
    };
    for (const auto& row : rows) EXPECT_EQ(InstrumentOf(row.message), row.instrument);
}

TEST(SysexEcho, NamesTheFirstDifference) {
    const SysexBytes sent = {0xF0, 1, 2, 0xF7};
    EXPECT_EQ(EchoText(sent, sent), "Sent 4 bytes, received 4 bytes: identical");
    EXPECT_EQ(EchoText(sent, {0xF0, 1, 3, 0xF7}),
              "Sent 4 bytes, received 4 bytes: byte 3 differs (03, not 02)");
    EXPECT_EQ(EchoText(sent, {0xF0, 1}),
              "Sent 4 bytes, received 2 bytes: they differ from byte 3 on");
    EXPECT_EQ(EchoText(sent, {0xF0, 1, 2, 0xF7, 0}),
              "Sent 4 bytes, received 5 bytes: they differ from byte 5 on");
}
