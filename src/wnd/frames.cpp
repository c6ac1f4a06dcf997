// Frame windows and the status bar.
#include <vmcore/wnd/frames.h>

#include <QtWidgets/QWidget>

#include <vmcore/app/CWinApp.h>

#include "app/appState.h"
#include "core/guard.h"
#include "core/macroman.h"
#include "gdi/shutdown.h"
#include "platform/NativeApplication.h"
#include "wnd/NativeWindow.h"
#include "wnd/creation.h"
#include "wnd/windowTimers.h"

namespace {

constexpr int kBarHeight = 16;

} // namespace

IMPLEMENT_DYNCREATE(CFrameWnd, CWnd)
IMPLEMENT_DYNCREATE(CMDIFrameWnd, CFrameWnd)
IMPLEMENT_DYNCREATE(CMDIChildWnd, CFrameWnd)
IMPLEMENT_DYNCREATE(CMiniFrameWnd, CFrameWnd)
IMPLEMENT_DYNAMIC(CControlBar, CWnd)
IMPLEMENT_DYNAMIC(CToolBar, CControlBar)
IMPLEMENT_DYNAMIC(CStatusBar, CWnd)

CFrameWnd::CFrameWnd() = default;
CFrameWnd::~CFrameWnd() = default;
BOOL CFrameWnd::LoadFrame(UINT, DWORD frameStyle, CWnd* parent, CCreateContext* context) {
    return Create("", "", frameStyle, RECT{0, 0, 100, 100}, parent, context);
}

void CFrameWnd::GetMessageString(UINT, CString&) const {}

BOOL CFrameWnd::Create(const char* className, const char* windowName, DWORD frameStyle,
                       const RECT& rect, CWnd* parent, CCreateContext*) {
    CREATESTRUCT cs = vm::CreationRecord(className, windowName, frameStyle, rect, parent, 0);
    PreCreateWindow(cs);
    parentWnd = parent;
    style = frameStyle;
    return CreateLWindow(&cs, this) != nullptr;
}

CString CFrameWnd::GetTitle() const {
    return title;
}

void CFrameWnd::SetTitle(const char* newTitle) {
    if (!nsWindow || !newTitle) return;
    // Every frame class logs under this one name; log filters of hosts know it.
    vm::Guarded(vm::LogModule::Wnd, "CMDIFrameWnd::SetTitle()", [&] {
        title = newTitle;
        nsWindow->setWindowTitle(vm::FromMacRoman(newTitle));
    });
}

void CFrameWnd::OnClose() {
    const CWinApp* app = vm::App().MainApp;
    if (app && app->m_pMainWnd == this) vm::SetCloseRequestVerified();
    DestroyWindow();
}

CMDIFrameWnd::CMDIFrameWnd() : m_timer(new CMDIFrameWndTimer) {
    m_timer->setWnd(this);
}

CMDIFrameWnd::~CMDIFrameWnd() {
    m_timer->killAllTimers();
    delete m_timer;
}

BOOL CMDIFrameWnd::LoadFrame(UINT, DWORD, CWnd*, CCreateContext*) {
    CREATESTRUCT cs{};
    WindowProc(WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs));
    return TRUE;
}

CWnd* CMDIFrameWnd::MDIGetActive(BOOL* maximized) const {
    if (maximized) *maximized = FALSE;
    return GetActiveWindow();
}

BOOL CMDIFrameWnd::KillTimer(UINT id) {
    return vm::Guarded(vm::LogModule::Wnd, "CMDIFrameWnd::KillTimer()", BOOL{FALSE},
                       [&] { return static_cast<BOOL>(!view && m_timer->killTimer(id)); });
}

namespace {

// GetWindow(0): the first child view that belongs to a window object.
BOOL ForwardCommand(CWnd& frame, WPARAM wParam, LPARAM lParam) {
    CWnd* target = frame.GetWindow(0);
    return target ? static_cast<BOOL>(target->SendMessage(WM_COMMAND, wParam, lParam)) : FALSE;
}

} // namespace

BOOL CMDIChildWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    return ForwardCommand(*this, wParam, lParam);
}
BOOL CMiniFrameWnd::OnCommand(WPARAM wParam, LPARAM lParam) {
    return ForwardCommand(*this, wParam, lParam);
}

BOOL CStatusBar::Create(CWnd* parent, DWORD barStyle, UINT id) {
    if (!parent || !parent->view) return TRUE;
    RECT rect;
    parent->GetClientRect(&rect);
    rect.top = rect.bottom - kBarHeight;
    SetAccessibleRole(ACCESSIBLE_STATUSBAR);
    return CWnd::Create(nullptr, "", barStyle, rect, parent, id);
}

int CStatusBar::MessageMap(int message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_CREATE:
        return OnCreate(reinterpret_cast<CREATESTRUCT*>(lParam));
    case WM_SIZE:
        OnSize(static_cast<UINT>(wParam), LOWORD(lParam), HIWORD(lParam));
        return 1;
    default:
        return CWnd::MessageMap(message, wParam, lParam);
    }
}

RECT CStatusBar::StripRect() const {
    RECT rect;
    GetClientRect(&rect);
    return {rect.left + 2, 1, rect.right - 2, rect.bottom};
}

int CStatusBar::OnCreate(CREATESTRUCT* cs) {
    if (CWnd::OnCreate(cs) == -1) return -1;
    m_strip.Create("", 3, StripRect(), this, 1);
    return 0;
}

void CStatusBar::OnSize(UINT, int, int) {
    const RECT rect = StripRect();
    m_strip.MoveWindow(&rect);
    m_strip.Invalidate();
}

BOOL CStatusBar::SetPaneText(int, const char* newText, BOOL) {
    if (!view || !m_strip.view) return FALSE;
    m_strip.SetWindowText(newText);
    return TRUE;
}
