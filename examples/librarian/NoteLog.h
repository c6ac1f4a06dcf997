// What arrives at the MIDI input, as notes that begin and end. Pure; no window, no device.
#pragma once

#include <cstddef>
#include <deque>
#include <string>

#include <vmcore/core/types.h>

/// A message, or the arrival of a System Exclusive one of `sysexBytes` bytes.
struct MidiMoment {
    DWORD time = 0; ///< milliseconds, as GetTickCount counts
    BYTE status = 0;
    BYTE data1 = 0;
    BYTE data2 = 0;
    std::size_t sysexBytes = 0;
};

struct Note {
    int channel; ///< from 0
    int pitch;
    int velocity;
    DWORD begin;
    DWORD end; ///< of one that still sounds: nothing that counts
    bool isSounding;
};

class NoteLog {
public:
    void Add(const MidiMoment& moment);
    /// Forgets what ended, or arrived, before `time`. Notes that still sound stay.
    void ForgetBefore(DWORD time);

    const std::deque<Note>& Notes() const { return m_notes; }
    const std::deque<MidiMoment>& Sysex() const { return m_sysex; }
    bool IsEmpty() const { return m_notes.empty() && m_sysex.empty(); }

private:
    void End(int channel, int pitch, DWORD time);
    void EndAll(int channel, DWORD time);

    std::deque<Note> m_notes;
    std::deque<MidiMoment> m_sysex;
};

/// "C4" for 60.
std::string PitchName(int pitch);
/// "Note on C4, velocity 100, channel 1"; "" for what arrives all the time (clock, active sensing).
std::string DescribeMoment(const MidiMoment& moment);
