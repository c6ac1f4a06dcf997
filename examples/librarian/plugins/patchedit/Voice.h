// The voice data of six-operator synthesizers: a voice as the 155 parameters that its instruments
// number, and how a dump of one voice and a packed one of 32 hold it. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <vector>

using MidiBytes = std::vector<unsigned char>;
using Voice = std::array<unsigned char, 155>;

constexpr int kOperators = 6;
constexpr int kVoiceNameLength = 10;

/// The parameters of an operator, counted from its first.
enum OperatorParameter : int {
    kRate1 = 0,
    kLevel1 = 4,
    kLeftCurve = 11,
    kRightCurve = 12,
    kRateScaling = 13,
    kAmplitudeSensitivity = 14,
    kVelocity = 15,
    kOutputLevel = 16,
    kFixedFrequency = 17,
    kCoarse = 18,
    kFine = 19,
    kDetune = 20,
    kOperatorParameters,
};

/// The parameters of the whole voice, behind those of the operators.
enum VoiceParameter : int {
    kPitchRate1 = kOperators * kOperatorParameters,
    kAlgorithm = kPitchRate1 + 8,
    kFeedback,
    kOscillatorSync,
    kLfoSpeed,
    kLfoDelay,
    kLfoPitchDepth,
    kLfoAmplitudeDepth,
    kLfoSync,
    kLfoWave,
    kPitchSensitivity,
    kTranspose,
    kVoiceName,
};

/// Where a parameter of operator 1 to 6 is in the voice: operator 6 comes first.
int ParameterOf(int number, int operatorParameter);
/// The highest value of a parameter; the lowest is 0.
int HighestValue(int parameter);

/// How many voices a message holds, 1 or 32; 0 when it is no voice dump. The checksum does not count.
std::size_t VoiceCount(const MidiBytes& message);
/// One of the voices that VoiceCount says. A dump may hold values beyond the highest: they stay.
Voice ReadVoice(const MidiBytes& message, std::size_t index);
/// Puts the voice in the place of that one and makes the checksum right. Whatever the voice does not
/// say, such as bits that no parameter uses, stays.
void WriteVoice(MidiBytes& message, std::size_t index, const Voice& voice);

/// Without the blanks at its end; what is no ASCII is a question mark.
std::string VoiceNameOf(const Voice& voice);
void SetVoiceName(Voice& voice, const std::string& name);

/// The channel, 0 to 15, that a dump is for.
int ChannelOf(const MidiBytes& message);
/// A dump of the one voice, which instruments put into their edit buffer.
MidiBytes SingleDump(int channel, const Voice& voice);
/// F0 43 1n pp pp dd F7: changes one parameter of the voice in the edit buffer.
MidiBytes ParameterChange(int channel, int parameter, int value);
