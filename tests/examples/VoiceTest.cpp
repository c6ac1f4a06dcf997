#include "librarian/plugins/patchedit/Voice.h"

#include <gmock/gmock.h>

#include "librarian/BankFile.h"
#include "librarian/plugins/patchedit/PendingChanges.h"

namespace {

MidiBytes DemoBank() {
    Bank bank;
    std::string error;
    EXPECT_TRUE(ReadBank(LIBRARIAN_DATA "/voices.syx", bank, error)) << error;
    return bank.messages.at(0).bytes;
}

// A voice whose parameters all differ from their neighbours and are in range.
Voice AnyVoice() {
    Voice voice = {};
    for (std::size_t i = 0; i < voice.size(); ++i)
        voice[i] = static_cast<unsigned char>(
            i * 7 % static_cast<std::size_t>(HighestValue(static_cast<int>(i)) + 1));
    return voice;
}

} // namespace

TEST(Voice, ParametersOfAPackedVoice) {
    const MidiBytes bank = DemoBank();
    ASSERT_EQ(VoiceCount(bank), 32u);
    const Voice voice = ReadVoice(bank, 5); // the second of the strings
    EXPECT_EQ(VoiceNameOf(voice), "STRINGS 2");
    const struct {
        int parameter;
        int value;
    } rows[] = {
        {ParameterOf(1, kRate1), 44},
        {ParameterOf(1, kLevel1 + 2), 97},
        {ParameterOf(1, kRightCurve), 1},
        {ParameterOf(1, kLeftCurve), 0},
        {ParameterOf(6, kRateScaling), 1},
        {ParameterOf(3, kRateScaling), 2},
        {ParameterOf(1, kDetune), 5},
        {ParameterOf(6, kDetune), 9},
        {ParameterOf(1, kVelocity), 3},
        {ParameterOf(1, kAmplitudeSensitivity), 0},
        {ParameterOf(5, kOutputLevel), 97},
        {ParameterOf(6, kOutputLevel), 61},
        {ParameterOf(2, kCoarse), 2},
        {ParameterOf(2, kFixedFrequency), 0},
        {kPitchRate1, 99},
        {kPitchRate1 + 7, 50},
        {kAlgorithm, 1},
        {kFeedback, 7},
        {kOscillatorSync, 1},
        {kLfoSpeed, 35},
        {kLfoPitchDepth, 4},
        {kLfoSync, 0},
        {kLfoWave, 4},
        {kPitchSensitivity, 3},
        {kTranspose, 24},
    };
    for (const auto& row : rows)
        EXPECT_EQ(voice[static_cast<std::size_t>(row.parameter)], row.value) << row.parameter;
}

TEST(Voice, WrittenComesBackAndTouchesNothingElse) {
    const MidiBytes before = DemoBank();
    MidiBytes bank = before;
    WriteVoice(bank, 5, ReadVoice(bank, 5));
    EXPECT_EQ(bank, before);

    const Voice voice = AnyVoice();
    WriteVoice(bank, 5, voice);
    EXPECT_EQ(ReadVoice(bank, 5), voice);
    EXPECT_EQ(DescribeSysex(bank).checksum, ChecksumState::Right);
    EXPECT_EQ(VoiceNameOf(ReadVoice(bank, 4)), "STRINGS 1");
    EXPECT_EQ(ReadVoice(bank, 6), ReadVoice(before, 6));

    MidiBytes single = SingleDump(2, ReadVoice(before, 0));
    EXPECT_EQ(ChannelOf(single), 2);
    WriteVoice(single, 0, voice);
    EXPECT_EQ(single, SingleDump(2, voice));
    EXPECT_EQ(ReadVoice(single, 0), voice);
    EXPECT_EQ(DescribeSysex(single).checksum, ChecksumState::Right);
}

TEST(Voice, BitsThatNoParameterUsesStay) {
    MidiBytes bank = DemoBank();
    constexpr std::size_t kByte = 6 + 110; // of the first voice: five bits are the algorithm
    bank[kByte] |= 0x60;
    Voice voice = ReadVoice(bank, 0);
    EXPECT_EQ(voice[kAlgorithm], 21);
    voice[kAlgorithm] = 3;
    WriteVoice(bank, 0, voice);
    EXPECT_EQ(bank[kByte], 0x63);
}

TEST(Voice, OtherMessagesHaveNone) {
    MidiBytes shortened = DemoBank();
    shortened.erase(shortened.end() - 2);
    MidiBytes request = DemoBank();
    request[2] = 0x20;
    for (const MidiBytes& message : {shortened, request, MidiBytes{0xF0, 0x43, 0xF7}, MidiBytes{}})
        EXPECT_EQ(VoiceCount(message), 0u);
}

TEST(Voice, NamesAreTenCharactersOfAscii) {
    Voice voice = {};
    const struct {
        const char* set;
        const char* name;
    } rows[] = {{"Pad", "Pad"}, {"0123456789x", "0123456789"}, {"\xC3\xA4 b", "?? b"}, {"", ""}};
    for (const auto& row : rows) {
        SetVoiceName(voice, row.set);
        EXPECT_EQ(VoiceNameOf(voice), row.name);
    }
}

TEST(Voice, ParameterChanges) {
    const struct {
        int parameter;
        int value;
        MidiBytes message;
    } rows[] = {
        {ParameterOf(1, kOutputLevel), 99, {0xF0, 0x43, 0x13, 0x00, 0x79, 0x63, 0xF7}},
        {kAlgorithm, 31, {0xF0, 0x43, 0x13, 0x01, 0x06, 0x1F, 0xF7}},
        {kVoiceName + 9, 'x', {0xF0, 0x43, 0x13, 0x01, 0x1A, 0x78, 0xF7}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ParameterChange(3, row.parameter, row.value), row.message) << row.parameter;
}

TEST(PendingChanges, LastValueInTheFirstPlace) {
    PendingChanges changes;
    changes.Set(121, 10);
    changes.Set(40, 3);
    changes.Set(121, 20);
    EXPECT_EQ(changes.First().parameter, 121);
    EXPECT_EQ(changes.First().value, 20);
    changes.RemoveFirst();
    EXPECT_EQ(changes.First().parameter, 40);
    changes.RemoveFirst();
    EXPECT_TRUE(changes.IsEmpty());
}
