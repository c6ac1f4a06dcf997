#include "wnd/windowTimers.h"

#include <algorithm>
#include <atomic>
#include <climits>

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtCore/QThread>
#include <QtCore/QTimer>

#include <vmcore/wnd/CWnd.h>

#include "core/guard.h"
#include "platform/eventboundary.h"

namespace vm {
namespace {

class WindowTimer : public QTimer {
public:
    WindowTimer(CWnd* wnd, TimerHost host) : m_wnd(wnd), m_host(host) {
        setTimerType(Qt::PreciseTimer);
    }

    // Stops it for good and frees it, now or, inside its own call, after it. A worker's timer is
    // freed by the worker's loop, when it runs again.
    void Invalidate() {
        m_wnd = nullptr;
        if (thread() != QThread::currentThread()) return deleteLater();
        stop();
        if (m_firing)
            deleteLater();
        else
            delete this;
    }

protected:
    void timerEvent(QTimerEvent*) override {
        const QPointer<WindowTimer> self = this; // a loop inside the call may free it
        const bool outer = !m_firing;
        m_firing = true;
        AtEventBoundary([this] { timerCallback(); });
        if (self && outer) m_firing = false;
    }

private:
    void timerCallback() {
        CWnd* const wnd = m_wnd;
        if (!wnd) {
            if (m_host == TimerHost::View)
                LogText(LogModule::Wnd, "ERROR! CWnd timerCallback called with no wnd assigned");
            return;
        }
        for (int i = 0; i < wnd->m_TimerList.GetSize(); ++i) {
            if (wnd->m_TimerList.GetAt(i) != this) continue;
            const SenderScope sender(Sender::Timer);
            wnd->WindowProc(WM_TIMER, wnd->m_TimerIDList.GetAt(i),
                            reinterpret_cast<LPARAM>(wnd->m_TimerProcList.GetAt(i)));
            return;
        }
        if (m_host == TimerHost::View)
            LogText(LogModule::Wnd,
                    "ERROR! MSTimer callback - no timer match found, no WM_TIMER sent");
    }

    std::atomic<CWnd*> m_wnd;
    TimerHost m_host;
    bool m_firing = false;
};

void RemoveEntry(CWnd& wnd, int index) {
    wnd.m_TimerList.RemoveAt(index);
    wnd.m_TimerIDList.RemoveAt(index);
    wnd.m_TimerProcList.RemoveAt(index);
}

WindowTimer* TimerAt(const CWnd& wnd, int index) {
    return static_cast<WindowTimer*>(wnd.m_TimerList.GetAt(index));
}

} // namespace

UINT StartTimer(CWnd* wnd, TimerHost host, UINT id, UINT elapse, void* procedure) {
    if (!wnd) {
        if (host == TimerHost::View)
            LogText(LogModule::Wnd, "ERROR! CWnd::SetTimer called with no wnd assigned");
        return 0;
    }
    QEventLoop loop; // a worker gets its event loop with the first one made on it
    auto* timer = new WindowTimer(wnd, host);
    timer->start(static_cast<int>(std::min<UINT>(elapse, INT_MAX)));
    if (timer->timerId() <= 0) { // no application object yet
        LogText(LogModule::Wnd, "ERROR! CWnd::SetTimer failed to allocate NSTimer");
        delete timer;
        return 0;
    }
    wnd->m_TimerList.Add(timer);
    wnd->m_TimerIDList.Add(id);
    wnd->m_TimerProcList.Add(procedure);
    return static_cast<UINT>(reinterpret_cast<std::uintptr_t>(timer));
}

BOOL KillTimerOf(CWnd* wnd, UINT id) {
    if (!wnd) return FALSE;
    for (int i = 0; i < wnd->m_TimerIDList.GetSize(); ++i) {
        if (wnd->m_TimerIDList.GetAt(i) != id) continue;
        WindowTimer* timer = TimerAt(*wnd, i);
        RemoveEntry(*wnd, i);
        timer->Invalidate();
        return TRUE;
    }
    return FALSE;
}

void KillAllTimersOf(CWnd* wnd) {
    if (!wnd) return;
    for (int i = wnd->m_TimerList.GetSize() - 1; i >= 0; --i) {
        WindowTimer* timer = TimerAt(*wnd, i);
        RemoveEntry(*wnd, i);
        timer->Invalidate();
    }
}

} // namespace vm

UINT CMDIFrameWndTimer::setTimer(UINT id, UINT elapse, void* procedure) {
    return vm::StartTimer(m_wnd, vm::TimerHost::MDIFrame, id, elapse, procedure);
}
BOOL CMDIFrameWndTimer::killTimer(UINT id) {
    return vm::KillTimerOf(m_wnd, id);
}
void CMDIFrameWndTimer::killAllTimers() {
    vm::KillAllTimersOf(m_wnd);
}
