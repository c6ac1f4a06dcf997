// The registry's functions: the list of window objects, the bindings of views, and whether a
// pointer is still alive.
#include <vmcore/app/registry.h>

#include <vmcore/wnd/CWnd.h>

#include "app/ControlReferences.h"
#include "app/WindowList.h"
#include "app/appState.h"
#include "core/guard.h"
#include "gdi/temporaryFont.h"
#include "platform/NativeApplication.h"
#include "platform/mainqueue.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/NativeWindow.h"
#include "wnd/RecoverPane.h"
#include "wnd/accessibleView.h"
#include "wnd/boundHandle.h"
#include "wnd/views.h"

namespace {

// Made on first use and never freed: window objects may be static, and threads look up until the
// process ends.
struct Registry {
    vm::WindowList CWndList;
    vm::ControlReferences references;
    CWnd* tempWnd = nullptr;
};

Registry& State() {
    static auto* const s_registry = new Registry;
    return *s_registry;
}

} // namespace

namespace vm {
HWND BoundHandle(const CWnd* wnd) {
    return State().references.HandleOf(wnd);
}
void RemoveBindingsOf(HWND view) {
    State().references.RemoveView(view);
}
} // namespace vm

void CWndListAdd(CWnd* wnd) {
    State().CWndList.Add(wnd);
}

void CWndListRemove(CWnd* wnd) {
    if (State().CWndList.Remove(wnd)) return;
    vm::Log(vm::LogModule::App,
            "CWndListRemove - request to remove CWnd not in list: %p, %d entries",
            static_cast<void*>(wnd), static_cast<int>(State().CWndList.Count()));
}

bool CWndListVerify(const CWnd* wnd) {
    return State().CWndList.Contains(wnd);
}

void SetControlReference(HWND view, CWnd* wnd) {
    vm::ControlReferences& references = State().references;
    if (!wnd) {
        if (CWnd* first = references.Find(view)) references.RemoveObject(first);
        return;
    }
    // A view is not asked for its window off the main thread.
    const bool isLive = vm::IsMainThread() && vm::IsLiveView(view);
    if (isLive) vm::WatchView(view, wnd);
    references.Bind(view, wnd, isLive ? vm::WindowOf(view) : nullptr);
    if (isLive && wnd->view == view) vm::ApplyAccessible(*wnd);
}

CWnd* GetControlReference(HWND view) {
    return State().references.Find(view);
}
CWnd* CWnd::FromHandlePermanent(HWND handle) {
    return GetControlReference(handle);
}
void RemoveControlReference(CWnd* wnd) {
    State().references.RemoveObject(wnd);
}
void RemoveControlReference(void* nativeWindow) {
    State().references.RemoveWindow(nativeWindow);
}

CWnd* GetWRefCon(NSWindow* window) {
    return vm::Guarded(vm::LogModule::App, "GetRefCon()", static_cast<CWnd*>(nullptr),
                       [&]() -> CWnd* {
                           CWndDelegate* delegate = vm::DelegateOf(window);
                           return delegate ? delegate->wnd() : nullptr;
                       });
}

void SetWRefCon(NSWindow* window, CWnd* wnd) {
    vm::Guarded(vm::LogModule::App, "SetWRefCon()", [&] {
        if (CWndDelegate* delegate = vm::DelegateOf(window)) delegate->setWnd(wnd);
    });
}

BOOL IsWindow(HWND window) {
    return vm::IsLiveView(window) && !dynamic_cast<vm::NativeWindow*>(window);
}

bool IsValidWindowPtr(const NSWindow* window) {
    for (const NSWindow* known : vm::NativeApplication::Shared().Windows())
        if (known == window) return true;
    return false;
}

bool NSViewIsValid(HWND view) {
    if (vm::App().isPluginEnvironment) return true;
    if (!vm::IsLiveView(view)) return false;
    for (const NSWindow* window : vm::NativeApplication::Shared().Windows())
        if (window->ContentView() == view || window->ContentView()->isAncestorOf(view)) return true;
    return false;
}

bool CWnd::VerifyWindow() const {
    if (nsWindow) return IsValidWindowPtr(nsWindow);
    return !view || NSViewIsValid(view);
}

LRESULT CWnd::VerifyWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return VerifyWindow() ? WindowProc(message, wParam, lParam) : 0;
}

BOOL CWnd::Attach(HWND handle) {
    if (view) SetControlReference(view, nullptr);
    view = handle;
    SetControlReference(handle, this);
    return TRUE;
}

HWND CWnd::Detach() {
    HWND old = view;
    if (old) SetControlReference(old, nullptr);
    view = nullptr;
    return old;
}

CWnd* getTempWnd(bool existingOnly) {
    CWnd*& temporary = State().tempWnd;
    if (!temporary && !existingOnly) temporary = new CWnd;
    return temporary;
}

void CWndCleanup() {
    CWnd*& temporary = State().tempWnd;
    if (temporary) {
        temporary->view = nullptr; // destroying it must not touch the view it last stood for
        delete temporary;
        temporary = nullptr;
    }
    vm::ClearTemporaryFont();
}

RecoverPane::RecoverPane(HWND view) : m_view(view), m_remembered(GetControlReference(view)) {}

RecoverPane::~RecoverPane() {
    try {
        // An object that was deleted meanwhile must not be bound again.
        if (m_remembered && !CWndListVerify(m_remembered)) return;
        if (m_view) SetControlReference(m_view, m_remembered);
    } catch (...) { // a guard's end never throws
    }
}
