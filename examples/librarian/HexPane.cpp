#include "HexPane.h"

#include <algorithm>

#include "FontScale.h"
#include "HexDump.h"

namespace {

constexpr COLORREF kBackground = RGB(255, 255, 255);
constexpr COLORREF kThumb = RGB(196, 202, 212);
constexpr COLORREF kAddress = RGB(130, 138, 150);
constexpr COLORREF kBytes = RGB(20, 24, 32);
constexpr COLORREF kCharacters = RGB(24, 84, 160);
constexpr int kFontHeight = 13;
constexpr int kLineHeight = 17;
constexpr int kMargin = 8;
constexpr int kThumbWidth = 8;
constexpr int kWheelStep = 120 / 3; // three lines a notch

// Key codes of WM_KEYDOWN.
enum KeyCode : unsigned {
    kHome = 0x01,
    kEnd = 0x04,
    kPageUp = 0x0B,
    kPageDown = 0x0C,
    kUp = 0x1E,
    kDown = 0x1F
};

void Write(CDC& dc, COLORREF color, const std::string& text) {
    dc.SetTextColor(color);
    dc.TextOut(0, 0, text.c_str(), static_cast<int>(text.size()));
}

} // namespace

HexPane::HexPane() {
    m_background.CreateSolidBrush(kBackground);
    m_thumb.CreateSolidBrush(kThumb);
    SetAccessibleName("Bytes of the message");
    SetAccessibleRole(ACCESSIBLE_PICTURE);
}

void HexPane::ShowMessage(const SysexBytes& message) {
    m_message = message;
    m_top = 0;
    Invalidate();
}

void HexPane::Clear() {
    ShowMessage({});
}

int HexPane::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 1;
    case WM_SIZE:
        ScrollTo(m_top);
        return 1;
    case WM_LBUTTONDOWN:
        SetFocus();
        return 1;
    case WM_CONTEXTMENU: // the window knows the commands
        return parentWnd->SendMessage(WM_CONTEXTMENU, wParam, lParam) != 0;
    case WM_KEYDOWN:
        return OnKey(wParam) ? 1 : CWnd::MessageMap(message, wParam, lParam);
    case WM_MOUSEWHEEL: {
        m_wheelRest += static_cast<short>(HIWORD(wParam));
        const int lines = m_wheelRest / kWheelStep;
        m_wheelRest -= lines * kWheelStep;
        ScrollTo(m_top - lines);
        return 1;
    }
    default:
        return CWnd::MessageMap(message, wParam, lParam);
    }
}

BOOL HexPane::OnKey(WPARAM key) {
    switch (key) {
    case kHome:
        ScrollTo(0);
        return TRUE;
    case kEnd:
        ScrollTo(LastTop());
        return TRUE;
    case kPageUp:
        ScrollTo(m_top - VisibleLines());
        return TRUE;
    case kPageDown:
        ScrollTo(m_top + VisibleLines());
        return TRUE;
    case kUp:
        ScrollTo(m_top - 1);
        return TRUE;
    case kDown:
        ScrollTo(m_top + 1);
        return TRUE;
    default:
        return FALSE;
    }
}

int HexPane::VisibleLines() const {
    CRect client;
    GetClientRect(client);
    return std::max(1, (client.bottom - 2 * kMargin) / Scaled(kLineHeight));
}

int HexPane::LastTop() const {
    return std::max(0, HexLineCount(m_message) - VisibleLines());
}

void HexPane::ScrollTo(int line) {
    m_top = std::clamp(line, 0, LastTop());
    Invalidate();
}

void HexPane::Paint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    dc.FillRect(client, &m_background);
    SelectScaledFont(dc, m_font, kFontHeight, "Courier New");
    dc.SetTextAlign(TA_UPDATECP | TA_TOP);
    if (m_message.empty()) {
        dc.MoveTo(kMargin, kMargin);
        Write(dc, kAddress, "Select a message to see its bytes");
        return;
    }
    const int last = std::min(HexLineCount(m_message), m_top + VisibleLines());
    for (int line = m_top; line < last; ++line)
        PaintLine(dc, line, kMargin + (line - m_top) * Scaled(kLineHeight));
    PaintThumb(dc, client);
}

void HexPane::PaintLine(CDC& dc, int line, int y) {
    const HexLine parts = MakeHexLine(m_message, line);
    dc.MoveTo(kMargin, y);
    Write(dc, kAddress, parts.address);
    Write(dc, kBytes, " " + parts.bytes);
    Write(dc, kCharacters, "  " + parts.characters);
}

// How much of the message is in view, and where.
void HexPane::PaintThumb(CDC& dc, const CRect& client) {
    const int lines = HexLineCount(m_message);
    const int visible = VisibleLines();
    if (lines <= visible) return;
    const int length = std::max(24, client.bottom * visible / lines);
    const int top = (client.bottom - length) * m_top / LastTop();
    CRect thumb(client.right - kThumbWidth - 1, top, client.right - 1, top + length);
    dc.FillRect(thumb, &m_thumb);
}
