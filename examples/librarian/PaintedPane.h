// A part of the window that paints all of itself, anew after a change of its size.
#pragma once

#include <afxwin.h>

class PaintedPane : public CWnd {
public:
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_PAINT:
            Paint();
            return 1;
        case WM_SIZE:
            Invalidate();
            return 1;
        default:
            return CWnd::MessageMap(message, wParam, lParam);
        }
    }

protected:
    virtual void Paint() = 0;
};
