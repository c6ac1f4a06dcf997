#include "MonitorPane.h"

#include <algorithm>

#include "FontScale.h"

namespace {

constexpr UINT kTimer = 1;
constexpr UINT kFrame = 33;                 // milliseconds
constexpr DWORD kSpan = 8000;               // milliseconds from the right end to the left one
constexpr int kLowest = 21, kHighest = 108; // the keys of a piano
constexpr int kKeysWidth = 36;
constexpr int kMargin = 8;

constexpr COLORREF kBackground = RGB(250, 251, 253);
constexpr COLORREF kRule = RGB(184, 194, 208);
constexpr COLORREF kOctave = RGB(228, 232, 240);
constexpr COLORREF kText = RGB(70, 82, 100);
constexpr COLORREF kHint = RGB(130, 138, 150);
constexpr COLORREF kSysexLine = RGB(192, 112, 24);
constexpr COLORREF kChannels[] = {RGB(36, 108, 190), RGB(34, 139, 90),  RGB(176, 72, 148),
                                  RGB(200, 120, 30), RGB(100, 90, 190), RGB(0, 140, 150),
                                  RGB(190, 60, 60),  RGB(120, 130, 40)};

bool IsBlack(int pitch) {
    constexpr unsigned kBlackKeys = 1u << 1 | 1u << 3 | 1u << 6 | 1u << 8 | 1u << 10;
    return kBlackKeys >> pitch % 12 & 1;
}

// The rows share the height without gaps.
CRect RowOf(int pitch, int left, int right, const CRect& area) {
    const int rows = kHighest - kLowest + 1;
    const int height = area.bottom - area.top;
    const int row = kHighest - std::clamp(pitch, kLowest, kHighest);
    const int top = area.top + row * height / rows;
    return CRect(left, top, right, std::max(top + 1, int(area.top) + (row + 1) * height / rows));
}

int PlaceOf(DWORD time, const CRect& roll, DWORD now) {
    const auto age = static_cast<long long>(static_cast<std::int32_t>(now - time));
    const long long width = roll.right - roll.left;
    return static_cast<int>(
        std::clamp<long long>(roll.right - age * width / kSpan, roll.left, roll.right));
}

} // namespace

MonitorPane::MonitorPane() {
    m_background.CreateSolidBrush(kBackground);
    m_black.CreateSolidBrush(RGB(60, 66, 78));
    m_white.CreateSolidBrush(RGB(255, 255, 255));
    m_octave.CreateSolidBrush(kOctave);
    m_rule.CreateSolidBrush(kRule);
    m_sysex.CreateSolidBrush(kSysexLine);
    for (std::size_t i = 0; i < std::size(m_notes); ++i)
        m_notes[i].CreateSolidBrush(kChannels[i % std::size(kChannels)]);
    SetAccessibleName("Monitor of the MIDI input");
    SetAccessibleRole(ACCESSIBLE_PICTURE);
}

void MonitorPane::Add(const MidiMoment& moment) {
    m_log.Add(moment);
    if (std::string words = DescribeMoment(moment); !words.empty()) m_last = std::move(words);
    if (m_isMoving) return;
    m_isMoving = true;
    SetTimer(kTimer, kFrame);
    Invalidate();
}

int MonitorPane::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    if (message != static_cast<int>(WM_TIMER))
        return PaintedPane::MessageMap(message, wParam, lParam);
    OnTick();
    return 1;
}

// Stands still when there is nothing left to move.
void MonitorPane::OnTick() {
    m_log.ForgetBefore(GetTickCount() - kSpan);
    if (m_log.IsEmpty()) {
        KillTimer(kTimer);
        m_isMoving = false;
    }
    Invalidate();
}

void MonitorPane::Paint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillRect(client, &m_background);
    CRect roll(kKeysWidth, 1, client.right, client.bottom);
    PaintRoll(dc, roll, GetTickCount());
    PaintKeys(dc, client);
    PaintLegend(dc, roll);
    const CRect rule(0, 0, client.right, 1);
    dc.FillRect(rule, &m_rule);
}

void MonitorPane::PaintKeys(CDC& dc, const CRect& client) {
    const CRect keys(0, 1, kKeysWidth, client.bottom);
    dc.FillRect(keys, &m_white);
    for (int pitch = kLowest; pitch <= kHighest; ++pitch)
        if (IsBlack(pitch)) {
            const CRect key = RowOf(pitch, 0, kKeysWidth * 3 / 5, keys);
            dc.FillRect(key, &m_black);
        }
    const CRect edge(kKeysWidth - 1, 1, kKeysWidth, client.bottom);
    dc.FillRect(edge, &m_rule);
}

void MonitorPane::PaintRoll(CDC& dc, const CRect& roll, DWORD now) {
    for (int pitch = 24; pitch <= kHighest; pitch += 12) { // every C
        const CRect row = RowOf(pitch, roll.left, roll.right, roll);
        dc.FillRect(row, &m_octave);
    }
    for (const MidiMoment& moment : m_log.Sysex()) {
        const int x = PlaceOf(moment.time, roll, now);
        const CRect line(x, roll.top, x + 2, roll.bottom);
        dc.FillRect(line, &m_sysex);
    }
    for (const Note& note : m_log.Notes()) PaintNote(dc, roll, note, now);
}

// Soft notes are paler.
void MonitorPane::PaintNote(CDC& dc, const CRect& roll, const Note& note, DWORD now) {
    const int left = PlaceOf(note.begin, roll, now);
    const int right = note.isSounding ? int(roll.right) : PlaceOf(note.end, roll, now);
    CRect bar = RowOf(note.pitch, left, std::max(left + 2, right), roll);
    bar.top -= 1; // rows of a pixel would be hard to see
    bar.bottom += 1;
    dc.SetAlphaTransparency(150 - std::clamp(note.velocity, 0, 127) * 150 / 127);
    dc.FillRect(bar, &m_notes[note.channel & 15]);
    dc.SetAlphaTransparency(0);
}

void MonitorPane::PaintLegend(CDC& dc, const CRect& roll) {
    const std::string words = m_last.empty() ? "Nothing has arrived yet" : m_last;
    SelectScaledFont(dc, m_font, 12, "Arial");
    dc.SetTextColor(m_last.empty() ? kHint : kText);
    dc.TextOut(roll.left + kMargin, roll.top + 4, words.c_str(), static_cast<int>(words.size()));
}
