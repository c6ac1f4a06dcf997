// The window with a message map.
#include <vmcore/wnd/messageMap.h>

#include "messageMap/windows.h"

namespace bench {

class Mapped : public CWnd {
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
    DECLARE_MESSAGE_MAP()
};

BEGIN_MESSAGE_MAP(Mapped, CWnd)
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_TIMER()
ON_WM_DESTROY()
ON_WM_KEYDOWN()
ON_WM_SHOWWINDOW()
ON_WM_MOVE()
ON_COMMAND(kFirstCommand + 0, &Mapped::OnCommand0)
ON_COMMAND(kFirstCommand + 1, &Mapped::OnCommand1)
ON_COMMAND(kFirstCommand + 2, &Mapped::OnCommand2)
ON_COMMAND(kFirstCommand + 3, &Mapped::OnCommand3)
ON_COMMAND(kFirstCommand + 4, &Mapped::OnCommand4)
ON_COMMAND(kFirstCommand + 5, &Mapped::OnCommand5)
ON_COMMAND(kFirstCommand + 6, &Mapped::OnCommand6)
ON_COMMAND(kFirstCommand + 7, &Mapped::OnCommand7)
ON_COMMAND(kFirstCommand + 8, &Mapped::OnCommand8)
ON_COMMAND(kFirstCommand + 9, &Mapped::OnCommand9)
END_MESSAGE_MAP()

std::unique_ptr<CWnd> MakeMapped() {
    return std::make_unique<Mapped>();
}

} // namespace bench
