// CWndDelegate: what happens to a top-level window as messages for its window object.
#pragma once

#include <vmcore/core/types.h>

class CWnd;
class QDropEvent;
struct tagMINMAXINFO;

namespace vm {
/// The limits as a window is asked for them, on screens of this size together.
tagMINMAXINFO MinMaxInfoFor(int screensWidth, int screensHeight);
} // namespace vm

class CWndDelegate {
public:
    explicit CWndDelegate(NSWindow* window) : m_window(window) {}
    ~CWndDelegate();

    CWnd* wnd() const { return m_wnd; }
    void setWnd(CWnd* wnd) { m_wnd = wnd; }

    bool windowShouldClose();
    void windowWillClose();
    void windowDidResize();
    void windowDidMove();
    void windowDidMiniaturize();
    void windowDidDeminiaturize();
    void windowDidBecomeMain();
    void windowDidResignMain();
    void windowDidBecomeKey();
    void windowDidResignKey();
    /// Asks the object for its limits with WM_GETMINMAXINFO; they bind the user only.
    void windowWillStartLiveResize();
    /// Shown again, the window is no longer one that the platform is closing.
    void windowDidShow();
    void dragAcceptFiles(BOOL accept);
    bool draggingEntered(QDropEvent* drag); ///< whether its files are taken
    void performDragOperation(QDropEvent* drop);

    // The timers of a top-level window: see CWnd::SetTimer.
    UINT setTimer(UINT id, UINT elapse, void* procedure);
    BOOL killTimer(UINT id);
    void killAllTimers();

private:
    void SendMove(WPARAM state);

    NSWindow* m_window;
    CWnd* m_wnd = nullptr;
};
