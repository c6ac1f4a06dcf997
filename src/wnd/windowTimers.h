// The timers of a window: platform timers in step with the window's three tables. The window
// delegate, the view and an MDI frame's timer object host them and differ in what they log.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

namespace vm {

enum class TimerHost { View, Delegate, MDIFrame };

/// Starts a repeating timer on the calling thread's loop. The low half of the timer's address, or
/// 0.
UINT StartTimer(CWnd* wnd, TimerHost host, UINT id, UINT elapse, void* procedure);
/// Ends the first timer with this ID.
BOOL KillTimerOf(CWnd* wnd, UINT id);
void KillAllTimersOf(CWnd* wnd);

} // namespace vm

/// The timer object of an MDI frame, which has neither window nor view of its own.
class CMDIFrameWndTimer {
public:
    CWnd* wnd() const { return m_wnd; }
    void setWnd(CWnd* wnd) { m_wnd = wnd; }
    UINT setTimer(UINT id, UINT elapse, void* procedure);
    BOOL killTimer(UINT id);
    void killAllTimers();

private:
    CWnd* m_wnd = nullptr;
};
