#include "Voice.h"

#include <algorithm>
#include <numeric>

namespace {

constexpr std::size_t kHeader = 6; // F0 43 <channel> <format> <count: two 7-bit bytes>
constexpr std::size_t kPackedOperator = 17;
constexpr std::size_t kPackedSize = 128;
constexpr unsigned kParameterGroup = 0x10; // in the byte with the channel

struct Format {
    unsigned char number;
    std::size_t voices;
    std::size_t voiceSize;
};

constexpr Format kSingle = {0, 1, std::tuple_size_v<Voice>};
constexpr Format kPacked = {9, 32, kPackedSize};

std::size_t DataSize(const Format& format) {
    return format.voices * format.voiceSize;
}

bool IsOf(const MidiBytes& message, const Format& format) {
    return message.size() == kHeader + DataSize(format) + 2 && message[0] == 0xF0 &&
           message[1] == 0x43 && message[2] < 0x10 && message[3] == format.number;
}

// Where a parameter is in a packed voice or operator.
struct Field {
    std::size_t byte;
    unsigned shift;
    unsigned bits;
    int parameter;
};

// What comes before and between these has a byte of its own.
constexpr Field kOperatorFields[] = {
    {11, 0, 2, kLeftCurve},   {11, 2, 2, kRightCurve},           {12, 0, 3, kRateScaling},
    {12, 3, 4, kDetune},      {13, 0, 2, kAmplitudeSensitivity}, {13, 2, 3, kVelocity},
    {14, 0, 7, kOutputLevel}, {15, 0, 1, kFixedFrequency},       {15, 1, 5, kCoarse},
    {16, 0, 7, kFine},
};
constexpr Field kVoiceFields[] = {
    {110, 0, 5, kAlgorithm},         {111, 0, 3, kFeedback},  {111, 3, 1, kOscillatorSync},
    {112, 0, 7, kLfoSpeed},          {113, 0, 7, kLfoDelay},  {114, 0, 7, kLfoPitchDepth},
    {115, 0, 7, kLfoAmplitudeDepth}, {116, 0, 1, kLfoSync},   {116, 1, 3, kLfoWave},
    {116, 4, 3, kPitchSensitivity},  {117, 0, 7, kTranspose},
};

constexpr std::size_t kPitchByte = kOperators * kPackedOperator;
constexpr std::size_t kNameByte = 118;

std::vector<Field> MakePackedFields() {
    std::vector<Field> fields;
    for (std::size_t place = 0; place < kOperators; ++place) {
        const std::size_t byte = place * kPackedOperator;
        const int parameter = static_cast<int>(place) * kOperatorParameters;
        for (int i = 0; i < kLeftCurve; ++i)
            fields.push_back({byte + static_cast<std::size_t>(i), 0, 7, parameter + i});
        for (const Field& field : kOperatorFields)
            fields.push_back(
                {byte + field.byte, field.shift, field.bits, parameter + field.parameter});
    }
    for (int i = 0; i < kAlgorithm - kPitchRate1; ++i)
        fields.push_back({kPitchByte + static_cast<std::size_t>(i), 0, 7, kPitchRate1 + i});
    fields.insert(fields.end(), std::begin(kVoiceFields), std::end(kVoiceFields));
    for (int i = 0; i < kVoiceNameLength; ++i)
        fields.push_back({kNameByte + static_cast<std::size_t>(i), 0, 7, kVoiceName + i});
    return fields;
}

const std::vector<Field>& PackedFields() {
    static const std::vector<Field> s_fields = MakePackedFields();
    return s_fields;
}

unsigned MaskOf(const Field& field) {
    return ((1u << field.bits) - 1) << field.shift;
}

Voice Unpack(const unsigned char* packed) {
    Voice voice = {};
    for (const Field& field : PackedFields())
        voice[static_cast<std::size_t>(field.parameter)] =
            static_cast<unsigned char>((packed[field.byte] & MaskOf(field)) >> field.shift);
    return voice;
}

void Pack(const Voice& voice, unsigned char* packed) {
    for (const Field& field : PackedFields()) {
        const unsigned value = voice[static_cast<std::size_t>(field.parameter)];
        const unsigned others = packed[field.byte] & ~MaskOf(field);
        packed[field.byte] =
            static_cast<unsigned char>(others | (value << field.shift & MaskOf(field)));
    }
}

// The 7-bit two's complement of the sum of the data.
void SetChecksum(MidiBytes& message) {
    const auto end = message.end() - 2;
    const unsigned sum = std::accumulate(message.begin() + kHeader, end, 0u);
    *end = static_cast<unsigned char>(-sum & 0x7F);
}

} // namespace

int ParameterOf(int number, int operatorParameter) {
    return (kOperators - number) * kOperatorParameters + operatorParameter;
}

int HighestValue(int parameter) {
    constexpr int kOfOperator[] = {99, 99, 99, 99, 99, 99, 99, 99, 99, 99, 99,
                                   3,  3,  7,  3,  7,  99, 1,  31, 99, 14};
    constexpr int kOfVoice[] = {99, 99, 99, 99, 99, 99, 99, 99, 31, 7,
                                1,  99, 99, 99, 99, 1,  5,  7,  48};
    if (parameter < kPitchRate1) return kOfOperator[parameter % kOperatorParameters];
    return parameter < kVoiceName ? kOfVoice[parameter - kPitchRate1] : 0x7F;
}

std::size_t VoiceCount(const MidiBytes& message) {
    for (const Format& format : {kSingle, kPacked})
        if (IsOf(message, format)) return format.voices;
    return 0;
}

Voice ReadVoice(const MidiBytes& message, std::size_t index) {
    const unsigned char* data = message.data() + kHeader;
    if (IsOf(message, kPacked)) return Unpack(data + index * kPackedSize);
    Voice voice;
    std::copy_n(data, voice.size(), voice.begin());
    return voice;
}

void WriteVoice(MidiBytes& message, std::size_t index, const Voice& voice) {
    unsigned char* data = message.data() + kHeader;
    if (IsOf(message, kPacked))
        Pack(voice, data + index * kPackedSize);
    else
        std::copy(voice.begin(), voice.end(), data);
    SetChecksum(message);
}

std::string VoiceNameOf(const Voice& voice) {
    std::string name;
    for (int i = 0; i < kVoiceNameLength; ++i) {
        const unsigned char c = voice[static_cast<std::size_t>(kVoiceName + i)];
        name += c >= ' ' && c < 0x7F ? static_cast<char>(c) : '?';
    }
    name.erase(name.find_last_not_of(' ') + 1);
    return name;
}

void SetVoiceName(Voice& voice, const std::string& name) {
    for (std::size_t i = 0; i < kVoiceNameLength; ++i) {
        const char c = i < name.size() ? name[i] : ' ';
        voice[kVoiceName + i] = static_cast<unsigned char>(c >= ' ' && c < 0x7F ? c : '?');
    }
}

int ChannelOf(const MidiBytes& message) {
    return message.size() > 2 ? message[2] & 0x0F : 0;
}

MidiBytes SingleDump(int channel, const Voice& voice) {
    MidiBytes dump = {0xF0, 0x43, static_cast<unsigned char>(channel), kSingle.number, 0x01, 0x1B};
    dump.insert(dump.end(), voice.begin(), voice.end());
    dump.insert(dump.end(), {0, 0xF7});
    SetChecksum(dump);
    return dump;
}

MidiBytes ParameterChange(int channel, int parameter, int value) {
    const auto number = static_cast<unsigned>(parameter);
    return {0xF0,
            0x43,
            static_cast<unsigned char>(kParameterGroup | static_cast<unsigned>(channel)),
            static_cast<unsigned char>(number >> 7),
            static_cast<unsigned char>(number & 0x7F),
            static_cast<unsigned char>(value & 0x7F),
            0xF7};
}
