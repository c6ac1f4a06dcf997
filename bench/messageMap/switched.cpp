// The window with a switch.
#include "messageMap/windows.h"

namespace bench {

UINT Keys(WPARAM wParam) {
    return LOWORD(wParam);
}
CPoint Point(LPARAM lParam) {
    return CPoint(static_cast<SHORT>(LOWORD(lParam)), static_cast<SHORT>(HIWORD(lParam)));
}

class Switched : public CWnd {
    void OnPaint() { ++count; }
    void OnSize(UINT, int, int) { ++count; }
    void OnLButtonDown(UINT, CPoint) { ++count; }
    void OnLButtonUp(UINT, CPoint) { ++count; }
    void OnMouseMove(UINT, CPoint) { ++count; }
    void OnTimer(UINT) { ++count; }
    void OnDestroy() { ++count; }
    void OnKeyDown(UINT, UINT, UINT) { ++count; }
    void OnShowWindow(BOOL, UINT) { ++count; }
    void OnMove(int, int) { ++count; }
    void OnCommand0() { ++count; }
    void OnCommand1() { ++count; }
    void OnCommand2() { ++count; }
    void OnCommand3() { ++count; }
    void OnCommand4() { ++count; }
    void OnCommand5() { ++count; }
    void OnCommand6() { ++count; }
    void OnCommand7() { ++count; }
    void OnCommand8() { ++count; }
    void OnCommand9() { ++count; }
    long count = 0;

    // What it must also do for its menu items: say which commands it has. Its base says its own.
    void OnUpdate(WPARAM wParam, LPARAM lParam) {
        if (wParam >= kFirstCommand && wParam <= kLastCommand)
            reinterpret_cast<CCmdUI*>(lParam)->SetFnDefined(true);
    }
    int OnCommandID(WPARAM wParam) {
        switch (LOWORD(wParam)) {
        case kFirstCommand + 0:
            OnCommand0();
            return 1;
        case kFirstCommand + 1:
            OnCommand1();
            return 1;
        case kFirstCommand + 2:
            OnCommand2();
            return 1;
        case kFirstCommand + 3:
            OnCommand3();
            return 1;
        case kFirstCommand + 4:
            OnCommand4();
            return 1;
        case kFirstCommand + 5:
            OnCommand5();
            return 1;
        case kFirstCommand + 6:
            OnCommand6();
            return 1;
        case kFirstCommand + 7:
            OnCommand7();
            return 1;
        case kFirstCommand + 8:
            OnCommand8();
            return 1;
        case kFirstCommand + 9:
            OnCommand9();
            return 1;
        default:
            return 0;
        }
    }
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
        switch (message) {
        case WM_PAINT:
            OnPaint();
            return 1;
        case WM_SIZE:
            OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
            return 1;
        case WM_LBUTTONDOWN:
            OnLButtonDown(Keys(wParam), Point(lParam));
            return 1;
        case WM_LBUTTONUP:
            OnLButtonUp(Keys(wParam), Point(lParam));
            return 1;
        case WM_MOUSEMOVE:
            OnMouseMove(Keys(wParam), Point(lParam));
            return 1;
        case WM_TIMER:
            OnTimer(static_cast<UINT>(wParam));
            return 1;
        case WM_DESTROY:
            OnDestroy();
            return 1;
        case WM_KEYDOWN:
            OnKeyDown(static_cast<UINT>(wParam), 1, HIWORD(lParam));
            return 1;
        case WM_SHOWWINDOW:
            OnShowWindow(wParam != 0, static_cast<UINT>(lParam));
            return 1;
        case WM_MOVE:
            OnMove(Point(lParam).x, Point(lParam).y);
            return 1;
        case WM_COMMAND:
            if (OnCommandID(wParam)) return 1;
            break;
        case WM_UPDATECOMMANDUI:
            OnUpdate(wParam, lParam);
            break;
        default:
            break;
        }
        return CWnd::MessageMap(message, wParam, lParam);
    }
};

std::unique_ptr<CWnd> MakeSwitched() {
    return std::make_unique<Switched>();
}

} // namespace bench
