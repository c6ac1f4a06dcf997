// Construction, creation and the end of window objects.
#include <vmcore/wnd/CWnd.h>

#include <QtWidgets/QApplication>

#include <vmcore/app/CWinApp.h>
#include <vmcore/app/lifecycle.h>
#include <vmcore/app/threads.h>

#include "app/appState.h"
#include "core/guard.h"
#include "core/macroman.h"
#include "platform/NativeApplication.h"
#include "platform/mainqueue.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/NativeWindow.h"
#include "wnd/accessibleView.h"
#include "wnd/creation.h"
#include "wnd/scrollBars.h"
#include "wnd/tooltips.h"
#include "wnd/views.h"
#include "wnd/windowState.h"
#include "wnd/windowTimers.h"

namespace {

constexpr int kTopMinimum = 46; // no window starts under a menu bar at the top of the screen
constexpr int kSmallest = 10;   // in place of a negative width or height

// Switches the resource handle to the library's instance and back at the end.
class InstanceResources {
public:
    InstanceResources() : m_before(AfxGetResourceHandle()) {
        AfxSetResourceHandle(vm::App().hInstance);
    }
    ~InstanceResources() { AfxSetResourceHandle(m_before); }
    InstanceResources(const InstanceResources&) = delete;
    InstanceResources& operator=(const InstanceResources&) = delete;

private:
    void* m_before;
};

bool HasApplication() {
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

// Handles 1 to 3 stand for places in the window order and are no views.
bool IsReservedHandle(HWND handle) {
    const auto value = reinterpret_cast<std::uintptr_t>(handle);
    return value >= 1 && value <= 3;
}

HWND ReservedHandle(std::uintptr_t value) {
    return reinterpret_cast<HWND>(value);
}

// False when the object was deleted in one of them.
bool SendCreationMessages(CWnd& wnd, CREATESTRUCT& cs) {
    wnd.WindowProc(WM_CREATE, 0, reinterpret_cast<LPARAM>(&cs));
    if (!CWndListVerify(&wnd)) return false;
    wnd.WindowProc(WM_SIZE, 2, MAKELPARAM(cs.cx, cs.cy));
    if (!CWndListVerify(&wnd)) return false;
    wnd.WindowProc(WM_MOVE, 0, MAKELPARAM(cs.x, cs.y));
    return CWndListVerify(&wnd);
}

vm::FrameStyle FrameStyleOf(const CREATESTRUCT& cs) {
    if (cs.style & WS_OVERLAPPEDWINDOW) return vm::FrameStyle::Decorated;
    return cs.dwExStyle & WS_EX_TOPMOST ? vm::FrameStyle::Fixed : vm::FrameStyle::FixedMinimisable;
}

} // namespace

const CWnd CWnd::wndTop{ReservedHandle(2)};
const CWnd CWnd::wndBottom{ReservedHandle(1)};
const CWnd CWnd::wndTopMost{ReservedHandle(0)};
const CWnd CWnd::wndNoTopMost{ReservedHandle(3)};

CWnd::CWnd() {
    Init();
}

CWnd::CWnd(HWND handle) {
    Init();
    view = handle;
}

void CWnd::Init() {
    CWndListAdd(this);
    parentWnd = nullptr;
    view = nullptr;
    style = 0;
    exStyle = 0;
    accelTable = nullptr;
    font = nullptr;
    redrawEnabled = 1;
    vScrollMin = vScrollMax = scrollPosition = hScrollMin = hScrollMax = 0;
    resourceBundle = AfxGetResourceHandle();
    vScrollView = hScrollView = nullptr;
    vScrollShown = hScrollShown = scrollFillShown = 0;
    childOriginY = childOriginX = 0;
    m_reserved1 = m_reserved2 = 1;
    nsWindow = nullptr;
    paintContext = nullptr;
    bkColor = 0xFFFFFF;
    textColor = 0;
    m_reserved3 = 1;
    closedByPlatform = 0;
    tooltipText = nullptr;
    scaleX = scaleY = 1.0f;
}

CWnd::~CWnd() {
    CWndListRemove(this);
    vm::WindowState& windows = vm::Windows();
    if (windows.ActiveWnd == this) windows.ActiveWnd = nullptr;
    if (windows.lastMainWindow == this) windows.lastMainWindow = nullptr;
    if (windows.lastCreatedCWnd == this) windows.lastCreatedCWnd = nullptr;
    CWinApp* app = vm::App().MainApp;
    if (app && app->m_pMainWnd == this) app->m_pMainWnd = nullptr;
    vm::KillAllTimersOf(this);
    vm::FreeTooltipText(*this);
    // Views and windows may outlive their object; they must not call it any more.
    for (NSWindow* window : vm::NativeApplication::Shared().Windows())
        if (GetWRefCon(window) == this) SetWRefCon(window, nullptr);
    if (vm::IsMainThread()) vm::ForgetOwner(this);
    if (vm::IsMainThread()) vm::ForgetAccessible(this);
    RemoveControlReference(this);
}

CREATESTRUCT vm::CreationRecord(const char* className, const char* windowName, DWORD style,
                                const RECT& rect, const CWnd* parent, UINT id) {
    CREATESTRUCT cs{};
    cs.hInstance = AfxGetResourceHandle();
    cs.hMenu = static_cast<std::intptr_t>(id);
    cs.hwndParent = parent ? parent->view : nullptr;
    cs.cx = rect.right - rect.left;
    cs.cy = rect.bottom - rect.top;
    cs.x = rect.left;
    cs.y = rect.top;
    cs.style = style;
    cs.lpszName = windowName;
    cs.lpszClass = className;
    return cs;
}

BOOL CWnd::PreCreateWindow(CREATESTRUCT& cs) {
    if (cs.cx < 0) cs.cx = kSmallest;
    if (cs.cy < 0) cs.cy = kSmallest;
    return TRUE;
}

BOOL CWnd::Create(const char* className, const char* windowName, DWORD newStyle, const RECT& rect,
                  CWnd* parent, UINT id, void*) {
    if (view) view = nullptr;
    if (hScrollView) {
        hScrollView = nullptr;
        vm::PrintError("Warning! HScroll initialized on CWnd::Create\n");
    }
    if (vScrollView) {
        vScrollView = nullptr;
        vm::PrintError("Warning! VScroll initialized on CWnd::Create\n");
    }
    CREATESTRUCT cs = vm::CreationRecord(className, windowName, newStyle, rect, parent, id);
    PreCreateWindow(cs);
    parentWnd = parent;
    return parent ? CreateChild(cs) : CreateLWindow(&cs, this) != nullptr;
}

BOOL CWnd::CreateChild(CREATESTRUCT& cs) {
    cs.x -= parentWnd->childOriginX;
    cs.y -= parentWnd->childOriginY;
    if (!HasApplication()) return FALSE;
    if (cs.hwndParent && !vm::IsLiveView(cs.hwndParent)) return FALSE;
    view = new CWndView(cs, this);
    style = cs.style;
    SetControlReference(view, this);
    if (!SendCreationMessages(*this, cs) || !view) return FALSE;
    // Outside of a parent a view would be a window of its own.
    view->setVisible((cs.style & WS_VISIBLE) && view->parentWidget());
    const bool vertical = cs.style & WS_VSCROLL;
    const bool horizontal = cs.style & WS_HSCROLL;
    if (vertical) CreateVScroll();
    if (horizontal) CreateHScroll();
    if (vertical && horizontal) CreateVHScrollFill();
    return TRUE;
}

NSWindow* CreateLWindow(CREATESTRUCT* cs, CWnd* wnd) {
    if (!cs || !wnd) return nullptr;
    SetMainThread();
    const InstanceResources resources;
    vm::WindowState& windows = vm::Windows();
    windows.CaptureWnd = nullptr;
    if (!HasApplication()) {
        vm::Log(vm::LogModule::Wnd, "CreateLWindow: no application object to make a window with");
        return nullptr;
    }
    cs->y = std::max(cs->y, kTopMinimum);
    const QRect content(cs->x, cs->y, std::max(cs->cx, 0), std::max(cs->cy, 0));
    auto* window =
        new vm::NativeWindow(content, FrameStyleOf(*cs), (cs->dwExStyle & WS_EX_TOPMOST) != 0);
    wnd->nsWindow = window;
    window->SetDelegate(new CWndDelegate(window));
    window->setWindowTitle(vm::FromMacRoman(cs->lpszName ? cs->lpszName : ""));
    wnd->view = window->ContentView();
    SetControlReference(wnd->view, wnd);
    SetWRefCon(window, wnd);
    wnd->style = cs->style;
    window->OrderFront(true);
    if (!SendCreationMessages(*wnd, *cs)) return nullptr;
    windows.lastCreatedCWnd = wnd;
    return wnd->nsWindow;
}

BOOL CWnd::DestroyWindow() {
    if (IsReservedHandle(view)) {
        view = nullptr;
        return FALSE;
    }
    if (!view) return FALSE;
    return vm::Guarded(vm::LogModule::Wnd, "CWnd::DestroyWindow()", BOOL{FALSE}, [this] {
        vm::WindowState& windows = vm::Windows();
        if (windows.ActiveWnd == this) windows.ActiveWnd = nullptr;
        vm::KillAllTimersOf(this);
        if (windows.CaptureWnd == view) windows.CaptureWnd = nullptr;
        if (nsWindow && windows.LastFocusWindow == nsWindow) windows.LastFocusWindow = nullptr;
        if (nsWindow)
            DestroyTopLevel();
        else
            DestroyChild();
        return BOOL{TRUE};
    });
}

void CWnd::DestroyTopLevel() {
    NSWindow* window = nsWindow;
    nsWindow = nullptr;
    view = nullptr;
    SetWRefCon(window, nullptr);
    const QPointer<QWidget> alive = window;
    // A window that the user is closing hides by itself; the pieces are freed the same way. Hosts ask
    // its controls for their last values in WM_DESTROY.
    window->Leave();
    const CWinApp* app = vm::App().MainApp;
    if (app && app->m_pMainWnd == this) AfxSetMainWnd(nullptr);
    if (CWndListVerify(this)) WindowProc(WM_DESTROY, 0, 0);
    RemoveControlReference(static_cast<void*>(window));
    if (alive) window->Dispose();
}

void CWnd::DestroyChild() {
    vm::RemoveScrollBars(*this);
    HWND old = view;
    view = nullptr;
    auto* own = vm::ViewExists(old) ? dynamic_cast<CWndView*>(old) : nullptr;
    if (own && own->wnd == this) own->wnd = nullptr;
    RemoveControlReference(this);
    const bool keepsView = vm::Windows().pluginHost == this;
    WindowProc(WM_DESTROY, 0, 0);
    if (!keepsView && vm::ViewExists(old)) vm::DisposeOfView(old);
}

BOOL CWnd::CreateEx(DWORD, const char*, const char*, DWORD, int, int, int, int, HWND, HMENU,
                    void*) {
    return FALSE;
}

BOOL CWnd::CreateEx(DWORD, const char*, const char*, DWORD, const RECT&, CWnd*, UINT, void*) {
    return TRUE;
}

BOOL CWnd::AttachMacWnd(NSWindow* window) {
    nsWindow = window;
    view = window ? window->ContentView() : nullptr;
    SetWRefCon(window, this);
    if (view) SetControlReference(view, this);
    return TRUE;
}

NSWindow* CWnd::DetachMacWnd() {
    NSWindow* window = nsWindow;
    view = nullptr;
    nsWindow = nullptr;
    return window;
}

BOOL CWnd::SubclassWindow(HWND handle) {
    view = handle;
    return TRUE;
}

HWND CWnd::UnsubclassWindow() {
    HWND old = view;
    view = nullptr;
    return old;
}

BOOL CWnd::isCustomNSView() const {
    return vm::ViewExists(view) && dynamic_cast<CWndView*>(view) != nullptr;
}

void CWnd::setAutorelease() {
    if (vm::IsLiveView(view)) view->deleteLater();
}

void CWnd::setCallOnDealloc(bool notice) {
    if (isCustomNSView()) static_cast<CWndView*>(view)->callOnDealloc = notice;
}

CWnd* CWnd::getLastCreatedCWnd() {
    return vm::Windows().lastCreatedCWnd;
}

int CWnd::MessageBox(const char* message, const char* caption, UINT type) const {
    return ::MessageBox(view, message, caption ? caption : AfxGetAppName(), type);
}

int CWnd::MessageBox(HWND owner, const char* message, const char* caption, UINT type) {
    return ::MessageBox(owner, message, caption, type);
}

HWND CreateWindow(const char*, const char*, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE,
                  void*) {
    return nullptr;
}

BOOL DestroyWindow(HWND) {
    MessageBox(nullptr,
               "Warning 'DestroyWindow' is not properly supported. Use 'CWnd::DestroyWindow'",
               "VMCore", MB_OKCANCEL);
    return FALSE;
}
