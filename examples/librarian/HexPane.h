// The bytes of one message in hexadecimal, scrolled with the wheel and the keyboard.
#pragma once

#include <afxwin.h>

#include "SysexInfo.h"

class HexPane : public CWnd {
public:
    HexPane();

    void ShowMessage(const SysexBytes& message);
    void Clear();

    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;

private:
    void Paint();
    void PaintLine(CDC& dc, int line, int y);
    void PaintThumb(CDC& dc, const CRect& client);
    BOOL OnKey(WPARAM key);
    void ScrollTo(int line);
    int VisibleLines() const;
    int LastTop() const;

    CFont m_font;
    CBrush m_background;
    CBrush m_thumb;
    SysexBytes m_message;
    int m_top = 0;       // the first line shown
    int m_wheelRest = 0; // what a wheel turned beyond whole lines
};
