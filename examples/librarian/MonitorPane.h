// What arrives, as a piano roll that moves to the left: a row for each key, a bar for each note, a
// line for each System Exclusive message, and the last event in words.
#pragma once

#include <string>

#include "NoteLog.h"
#include "PaintedPane.h"

class MonitorPane : public PaintedPane {
public:
    MonitorPane();

    void Add(const MidiMoment& moment);

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint() override;
    void PaintKeys(CDC& dc, const CRect& client);
    void PaintRoll(CDC& dc, const CRect& roll, DWORD now);
    void PaintNote(CDC& dc, const CRect& roll, const Note& note, DWORD now);
    void PaintLegend(CDC& dc, const CRect& roll);
    void OnTick();

    NoteLog m_log;
    std::string m_last;
    CFont m_font;
    CBrush m_background, m_black, m_white, m_octave, m_rule, m_sysex;
    CBrush m_notes[16]; // by channel
    bool m_isMoving = false;
};
