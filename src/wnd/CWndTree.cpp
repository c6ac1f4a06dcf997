// Parents, children and dialog items.
#include <vmcore/wnd/CWnd.h>

#include <QtWidgets/QWidget>

#include <vmcore/app/CWinApp.h>

#include "core/guard.h"
#include "core/log.h"
#include "platform/NativeApplication.h"
#include "platform/messagebox.h"
#include "wnd/NativeWindow.h"
#include "wnd/tagTable.h"
#include "wnd/views.h"

namespace {

QWidget* DirectChildNamed(const QWidget& parent, const std::string& name) {
    const QString identifier = QString::fromStdString(name);
    return parent.findChild<QWidget*>(identifier, Qt::FindDirectChildrenOnly);
}

// By tag among all descendants, then by identifier among the children.
QWidget* FindItem(const QWidget& parent, int id) {
    if (QWidget* tagged = vm::FindTagged(&parent, id)) return tagged;
    return DirectChildNamed(parent, vm::Format("%d", id));
}

} // namespace

CWnd* CWnd::GetParent() {
    if (parentWnd) return parentWnd;
    if (!view) return nullptr;
    HWND parentView = nullptr;
    try {
        parentView = vm::LiveView(view).parentWidget();
    } catch (const vm::PlatformError& error) {
        vm::Log(vm::LogModule::Wnd, "exception at CWnd::GetParent() - %s", error.what());
    }
    if (!parentView) return AfxGetMainWnd();
    // The object's own binding is looked up, not the parent's: hosts rely on a child without a
    // recorded parent getting itself back.
    return GetControlReference(view);
}

HWND GetParent(HWND window) {
    if (!vm::IsLiveView(window) || vm::IsContentView(window)) return nullptr;
    return window->parentWidget();
}

BOOL CWnd::IsChild(const CWnd* other) const {
    return other && ::IsChild(view, other->view);
}

BOOL IsChild(HWND parent, HWND child) {
    if (parent == child || !vm::IsLiveView(parent) || !vm::IsLiveView(child)) return FALSE;
    return parent->isAncestorOf(child);
}

CWnd* CWnd::GetParentFrame() const {
    return vm::IsLiveView(view) ? GetWRefCon(vm::WindowOf(view)) : nullptr;
}

HWND CWnd::GetFrameWnd() const {
    const NSWindow* window = vm::IsLiveView(view) ? vm::WindowOf(view) : nullptr;
    return window ? window->ContentView() : nullptr;
}

CWnd* CWnd::GetActiveWindow() {
    return GetWRefCon(vm::NativeApplication::Shared().MainWindow());
}

CWnd* CWnd::GetWindow(UINT which) {
    if (which != 0 || !vm::IsLiveView(view)) return nullptr;
    for (QObject* child : view->children())
        if (auto* childView = qobject_cast<QWidget*>(child))
            if (CWnd* wnd = vm::ObjectOf(childView)) return wnd;
    return nullptr;
}

UINT CWnd::CreateUniqueID(CWnd*, int) {
    vm::ShowMessageBox(nullptr, "CreateUniqueID not required with XCode", "Error", 1);
    return 0xFFFFFFFF;
}

CWnd* CWnd::GetDlgItem(int id) {
    if (!view) return nullptr;
    const HWND root = view; // this may be the scratch window itself
    CWnd* scratch = getTempWnd(false);
    scratch->view = nullptr;
    return vm::Guarded(vm::LogModule::Wnd, "CWnd::GetDlgItem()", scratch, [&] {
        QWidget* item = FindItem(vm::LiveView(root), id);
        CWnd* known = item ? GetControlReference(item) : nullptr;
        if (known && known != scratch) return known;
        QWidget* named = DirectChildNamed(*root, vm::Format("%d", id));
        known = named ? GetControlReference(named) : nullptr;
        if (known && known != scratch) return known;
        scratch->view = item;
        return scratch;
    });
}

void CWnd::GetDlgItem(int id, HWND* handle) {
    const CWnd* item = GetDlgItem(id);
    if (handle) *handle = item ? item->view : nullptr;
}

UINT CWnd::GetDlgCtrlID() const {
    if (!view) return 0xFFFFFFFF;
    if (nsWindow || !vm::IsLiveView(view)) return 0;
    return static_cast<UINT>(vm::TagOf(view));
}

void CWnd::SetCommandID(int id) {
    if (!vm::IsLiveView(view)) return;
    vm::SetTagOf(view, id);
    vm::ForgetTagsAround(view);
}
