#include "wnd/CWndNSWindow.h"

#include <QtCore/QPointer>

#include <vmcore/wnd/CWnd.h>

#include "core/guard.h"
#include "wnd/NativeWindow.h"
#include "wnd/dropFiles.h"
#include "wnd/screen.h"
#include "wnd/views.h"
#include "wnd/windowState.h"
#include "wnd/windowTimers.h"

namespace {

// Runs one notification; what the platform reports on the way is logged under its name, and the
// message is then not sent.
template <class Body>
void Notification(const char* name, Body&& body) {
    vm::Guarded(vm::LogModule::Wnd, vm::Format("CWndDelegate::%s()", name).c_str(), body);
}

LPARAM HandleOf(const CWnd* wnd) {
    return reinterpret_cast<LPARAM>(wnd ? wnd->view : nullptr);
}

constexpr int kMaximisedTop = 40; // below a menu bar of the desktop

QSize SizeOf(const POINT& point) {
    return {point.x, point.y};
}

} // namespace

MINMAXINFO vm::MinMaxInfoFor(int screensWidth, int screensHeight) {
    const POINT screens{screensWidth, screensHeight};
    return {{0, 0}, screens, {0, kMaximisedTop}, {0, 0}, screens};
}

CWndDelegate::~CWndDelegate() {
    killAllTimers();
}

bool CWndDelegate::windowShouldClose() {
    if (!m_wnd) return true;
    const QPointer<QWidget> window = m_window; // gone, this goes with it
    if (m_wnd->SendMessage(WM_QUERYCLOSE, 0, 0) != 0) return false;
    if (window && m_wnd) m_wnd->closedByPlatform = 1;
    return true;
}

void CWndDelegate::windowWillClose() {
    Notification("windowWillClose", [this] {
        if (m_wnd) m_wnd->SendMessage(WM_CLOSE, 0, 0);
    });
}

void CWndDelegate::windowDidResize() {
    Notification("windowDidResize", [this] {
        const QSize size = m_window->Frame().size();
        if (m_wnd) m_wnd->SendMessage(WM_SIZE, 0, MAKELPARAM(size.width(), size.height()));
    });
}

void CWndDelegate::SendMove(WPARAM state) {
    const QPoint corner = m_window->Frame().topLeft();
    if (m_wnd) m_wnd->SendMessage(WM_MOVE, state, MAKELPARAM(corner.x(), corner.y()));
}

void CWndDelegate::windowDidMove() {
    Notification("windowDidMove", [this] { SendMove(0); });
}

void CWndDelegate::windowDidMiniaturize() {
    Notification("windowDidMiniaturize", [this] { SendMove(1); });
}

void CWndDelegate::windowDidDeminiaturize() {
    Notification("windowDidDeminiaturize", [this] { SendMove(0); });
}

// The "Edit" menu is part of the main menu, which stays the application's whatever window is in front:
// nothing has to be attached or renamed here.
void CWndDelegate::windowDidResignMain() {
    Notification("windowDidResignMain", [this] {
        if (!m_wnd) return;
        CWnd* self = m_wnd;
        const QPointer<QWidget> window = m_window;
        vm::Windows().lastMainWindow = self;
        self->SendMessage(WM_ACTIVATE, 0, HandleOf(self));
        // Pop-up windows go when they are no longer active.
        if (!window || m_wnd != self) return;
        self->SendMessage(WM_MDIACTIVATE, static_cast<WPARAM>(HandleOf(self)), 0);
    });
}

void CWndDelegate::windowDidBecomeMain() {
    Notification("windowDidBecomeMain", [this] {
        if (!m_wnd) return;
        CWnd* self = m_wnd;
        CWnd*& last = vm::Windows().lastMainWindow;
        const LPARAM other = CWndListVerify(last) ? HandleOf(last) : 0;
        self->SendMessage(WM_MDIACTIVATE, static_cast<WPARAM>(other), HandleOf(self));
        self->SendMessage(WM_ACTIVATE, 1, other);
        last = nullptr;
    });
}

void CWndDelegate::windowDidBecomeKey() {
    vm::Windows().LastFocusWindow = m_window;
    if (m_wnd) m_wnd->SendMessage(WM_SETFOCUS, static_cast<WPARAM>(HandleOf(m_wnd)), 0);
}

void CWndDelegate::windowDidResignKey() {
    if (m_wnd) m_wnd->SendMessage(WM_KILLFOCUS, static_cast<WPARAM>(HandleOf(m_wnd)), 0);
}

void CWndDelegate::windowWillStartLiveResize() {
    Notification("windowWillStartLiveResize", [this] {
        if (!m_wnd) return;
        const QPointer<QWidget> window = m_window;
        const QSize screens = vm::VirtualScreen().size();
        MINMAXINFO limits = vm::MinMaxInfoFor(screens.width(), screens.height());
        const LRESULT taken =
            m_wnd->WindowProc(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));
        if (taken == 1 && window)
            m_window->SetTrackSizes(SizeOf(limits.ptMinTrackSize), SizeOf(limits.ptMaxTrackSize));
    });
}

void CWndDelegate::windowDidShow() {
    if (m_wnd) m_wnd->closedByPlatform = 0;
}

void CWndDelegate::dragAcceptFiles(BOOL accept) {
    Notification("dragAcceptFiles", [&] { vm::LiveView(m_window).setAcceptDrops(accept != 0); });
}

bool CWndDelegate::draggingEntered(QDropEvent* drag) {
    return vm::Guarded(vm::LogModule::Wnd, "CWndDelegate::draggingEntered()", false,
                       [&] { return vm::AcceptFileDrag(drag); });
}

void CWndDelegate::performDragOperation(QDropEvent* drop) {
    Notification("performDragOperation", [&] {
        if (m_wnd) vm::SendDroppedFiles(*m_wnd, drop);
    });
}

UINT CWndDelegate::setTimer(UINT id, UINT elapse, void* procedure) {
    return vm::Guarded(vm::LogModule::Wnd, "CWndDelegate::setTimer()", UINT{0}, [&] {
        return vm::StartTimer(m_wnd, vm::TimerHost::Delegate, id, elapse, procedure);
    });
}
BOOL CWndDelegate::killTimer(UINT id) {
    return vm::KillTimerOf(m_wnd, id);
}
void CWndDelegate::killAllTimers() {
    vm::KillAllTimersOf(m_wnd);
}
