#include "wnd/views.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <QtCore/QVariant>
#include <QtWidgets/QApplication>

#include <vmcore/wnd/CWnd.h>

#include "core/guard.h"
#include "wnd/CWndNSView.h"
#include "wnd/NativeWindow.h"
#include "wnd/boundHandle.h"
#include "wnd/heldViews.h"
#include "wnd/windowState.h"

namespace vm {
namespace {

struct ViewState {
    // Live views with the objects that were bound to them, and the same the other way round. Unlike
    // the registry's bindings these stay until one of the two goes.
    std::unordered_map<const QObject*, std::vector<CWnd*>> watched;
    std::unordered_map<const CWnd*, std::unordered_set<QWidget*>> viewsOf;
    std::unordered_set<const QObject*> doomed; // hidden, to be freed by the event loop
};

ViewState& State() {
    static auto* const s_state = new ViewState;
    return *s_state;
}

// The toolkit frees the view: every object that still names it forgets it.
void ViewIsGone(QObject* object) {
    ViewState& state = State();
    auto* view = static_cast<QWidget*>(object); // only compared, never followed
    for (CWnd* wnd : state.watched[object]) {
        state.viewsOf[wnd].erase(view);
        if (wnd->view != view) continue;
        wnd->view = nullptr;
        wnd->nsWindow = nullptr;
    }
    state.watched.erase(object);
    state.doomed.erase(object);
    WindowState& windows = Windows();
    if (windows.CaptureWnd == view) windows.CaptureWnd = nullptr;
    RemoveBindingsOf(view);
}

bool IsDoomed(const QWidget* view) {
    for (; view; view = view->parentWidget())
        if (State().doomed.count(view)) return true;
    return false;
}

} // namespace

int TagOf(const QWidget* view) {
    if (const auto* own = dynamic_cast<const CWndView*>(view)) return own->tag();
    return view->property(kTagProperty).toInt();
}

void SetTagOf(QWidget* view, int tag) {
    if (auto* own = dynamic_cast<CWndView*>(view))
        own->setTag(tag);
    else
        view->setProperty(kTagProperty, tag);
}

QWidget* FindViewWithTag(const QWidget* root, int tag) {
    const QList<QWidget*> children = root->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
    for (QWidget* child : children)
        if (TagOf(child) == tag) return child;
    for (QWidget* child : children)
        if (QWidget* found = FindViewWithTag(child, tag)) return found;
    return nullptr;
}

CWnd* ObjectOf(QWidget* view) {
    const auto* own = ViewExists(view) ? dynamic_cast<const CWndView*>(view) : nullptr;
    return own && own->wnd ? own->wnd : GetControlReference(view);
}

CWnd* ObjectAround(const QWidget& view) {
    for (QWidget* around = view.parentWidget(); around; around = around->parentWidget())
        if (CWnd* wnd = ObjectOf(around)) return wnd;
    return nullptr;
}

NSWindow* WindowOf(const QWidget* view) {
    return view ? dynamic_cast<NativeWindow*>(view->window()) : nullptr;
}

bool IsContentView(const QWidget* view) {
    const NSWindow* window = WindowOf(view);
    return window && window->ContentView() == view;
}

bool ViewExists(const QWidget* view) {
    if (reinterpret_cast<std::uintptr_t>(view) <= 3) return false; // null and the reserved handles
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return false;
    return State().watched.count(view) != 0 ||
           QApplication::allWidgets().contains(const_cast<QWidget*>(view));
}

bool IsLiveView(const QWidget* view) {
    return ViewExists(view) && !IsDoomed(view);
}

QWidget& LiveView(HWND view) {
    if (!IsLiveView(view)) throw PlatformError("DeadView");
    return *view;
}

void DisposeOfView(QWidget* view) {
    WatchView(view);
    State().doomed.insert(view);
    view->hide();
    HeldViews::WhenReleased(view, [view] { view->deleteLater(); });
}

void WatchView(QWidget* view, CWnd* owner) {
    ViewState& state = State();
    const auto [watched, isNew] = state.watched.try_emplace(view);
    if (isNew) QObject::connect(view, &QObject::destroyed, view, ViewIsGone, Qt::DirectConnection);
    if (owner && state.viewsOf[owner].insert(view).second) watched->second.push_back(owner);
}

void ForgetOwner(CWnd* owner) {
    ViewState& state = State();
    const auto found = state.viewsOf.find(owner);
    if (found == state.viewsOf.end()) return;
    for (QWidget* view : found->second) {
        std::vector<CWnd*>& owners = state.watched[view];
        owners.erase(std::remove(owners.begin(), owners.end(), owner), owners.end());
        auto* own = dynamic_cast<CWndView*>(view);
        if (own && own->wnd == owner) own->wnd = nullptr;
    }
    state.viewsOf.erase(found);
}

} // namespace vm
