#include "NoteLog.h"

#include <algorithm>

namespace {

constexpr std::size_t kMostNotes = 4096; // a broken cable can send anything

enum Kind : BYTE {
    kNoteOff = 0x80,
    kNoteOn = 0x90,
    kKeyPressure = 0xA0,
    kControl = 0xB0,
    kProgram = 0xC0,
    kPressure = 0xD0,
    kBend = 0xE0,
};

constexpr BYTE kAllSoundOff = 120;
constexpr BYTE kAllNotesOff = 123;

// Tick counts wrap around every 49 days.
bool IsBefore(DWORD a, DWORD b) {
    return static_cast<std::int32_t>(a - b) < 0;
}

std::string Number(int value) {
    return std::to_string(value);
}

std::string DescribeChannelMessage(const MidiMoment& moment) {
    switch (moment.status & 0xF0) {
    case kNoteOff:
        return "Note off " + PitchName(moment.data1);
    case kNoteOn:
        if (moment.data2 == 0) return "Note off " + PitchName(moment.data1);
        return "Note on " + PitchName(moment.data1) + ", velocity " + Number(moment.data2);
    case kKeyPressure:
        return "Key pressure " + PitchName(moment.data1) + " = " + Number(moment.data2);
    case kControl:
        return "Control " + Number(moment.data1) + " = " + Number(moment.data2);
    case kProgram:
        return "Program " + Number(moment.data1 + 1);
    case kPressure:
        return "Pressure " + Number(moment.data1);
    default:
        return "Pitch bend " + Number((moment.data2 << 7 | moment.data1) - 8192);
    }
}

const char* DescribeSystemMessage(BYTE status) {
    switch (status) {
    case 0xF1:
        return "Time code";
    case 0xF2:
        return "Song position";
    case 0xF3:
        return "Song select";
    case 0xF6:
        return "Tune request";
    case 0xFA:
        return "Start";
    case 0xFB:
        return "Continue";
    case 0xFC:
        return "Stop";
    case 0xFF:
        return "Reset";
    default:
        return "";
    }
}

} // namespace

void NoteLog::Add(const MidiMoment& moment) {
    const int channel = moment.status & 0x0F;
    const int kind = moment.status & 0xF0;
    const bool isOn = kind == kNoteOn && moment.data2 > 0;
    if (moment.sysexBytes > 0) m_sysex.push_back(moment);
    if (isOn || kind == kNoteOn || kind == kNoteOff) End(channel, moment.data1, moment.time);
    if (isOn)
        m_notes.push_back({channel, moment.data1, moment.data2, moment.time, moment.time, true});
    if (kind == kControl && (moment.data1 == kAllSoundOff || moment.data1 >= kAllNotesOff))
        EndAll(channel, moment.time);
    if (m_notes.size() > kMostNotes) m_notes.pop_front();
    if (m_sysex.size() > kMostNotes) m_sysex.pop_front();
}

void NoteLog::End(int channel, int pitch, DWORD time) {
    for (Note& note : m_notes) {
        if (!note.isSounding || note.channel != channel || note.pitch != pitch) continue;
        note.isSounding = false;
        note.end = time;
    }
}

void NoteLog::EndAll(int channel, DWORD time) {
    for (Note& note : m_notes)
        if (note.channel == channel) End(channel, note.pitch, time);
}

void NoteLog::ForgetBefore(DWORD time) {
    const auto hasEnded = [time](const Note& note) {
        return !note.isSounding && IsBefore(note.end, time);
    };
    const auto isOld = [time](const MidiMoment& moment) { return IsBefore(moment.time, time); };
    m_notes.erase(std::remove_if(m_notes.begin(), m_notes.end(), hasEnded), m_notes.end());
    m_sysex.erase(std::remove_if(m_sysex.begin(), m_sysex.end(), isOld), m_sysex.end());
}

std::string PitchName(int pitch) {
    static constexpr const char* kNames[] = {"C",  "C#", "D",  "D#", "E",  "F",
                                             "F#", "G",  "G#", "A",  "A#", "B"};
    return kNames[pitch % 12] + Number(pitch / 12 - 1);
}

std::string DescribeMoment(const MidiMoment& moment) {
    if (moment.sysexBytes > 0)
        return "System Exclusive, " + std::to_string(moment.sysexBytes) + " bytes";
    if (moment.status >= 0xF0) return DescribeSystemMessage(moment.status);
    if (moment.status < 0x80) return {};
    return DescribeChannelMessage(moment) + ", channel " + Number((moment.status & 0x0F) + 1);
}
