#include "wnd/responder.h"

#include <algorithm>
#include <vector>

#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>

#include <vmcore/wnd/CWnd.h>

#include "platform/eventboundary.h"
#include "wnd/CWndNSView.h"
#include "wnd/heldViews.h"

namespace vm {
namespace {

struct Responder {
    QPointer<QWidget> window;
    QPointer<QWidget> view;
};

struct ResponderState {
    std::vector<Responder> windows;
    QPointer<QObject> watcher; // goes with the application object
};

ResponderState& State() {
    static auto* const s_state = new ResponderState;
    return *s_state;
}

Responder& Of(QWidget* window) {
    std::vector<Responder>& windows = State().windows;
    for (Responder& known : windows)
        if (known.window == window) return known;
    windows.erase(std::remove_if(windows.begin(), windows.end(),
                                 [](const Responder& one) { return !one.window; }),
                  windows.end());
    windows.push_back({window, nullptr});
    return windows.back();
}

void Tell(QWidget* view, UINT message, const QWidget* previous) {
    auto* const own = dynamic_cast<CWndView*>(view);
    if (!own || !own->wnd) return;
    AtEventBoundary([&] { own->wnd->WindowProc(message, reinterpret_cast<WPARAM>(previous), 0); });
}

void Become(QWidget* window, QWidget* view) {
    Responder& responder = Of(window);
    const QPointer<QWidget> before = responder.view;
    if (before == view) return;
    responder.view = view;
    const QPointer<QWidget> now = view;
    const HeldViews held; // the toolkit follows both after this
    Tell(before, WM_KILLFOCUS, nullptr);
    // The handler may have moved the focus on, which has been told then.
    if (now && QApplication::focusWidget() == now) Tell(now, WM_SETFOCUS, before);
}

bool IsMenuBar(const QWidget* view) {
    return qobject_cast<const QMenuBar*>(view) != nullptr;
}

void FocusMoved(QWidget* old, QWidget* now) {
    if (IsMenuBar(now)) return;
    if (now) return Become(now->window(), now);
    // Without a new one, either the view gave the focus up, or its window is no longer active.
    if (old && old->window() == QApplication::activeWindow()) Become(old->window(), nullptr);
}

} // namespace

void WatchResponders() {
    ResponderState& state = State();
    if (state.watcher) return;
    state.watcher = new QObject(qApp);
    QObject::connect(qApp, &QApplication::focusChanged, state.watcher, FocusMoved);
    if (QWidget* view = QApplication::focusWidget(); view && !IsMenuBar(view))
        Of(view->window()).view = view;
}

QWidget* FocusOrResponder() {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return nullptr;
    QWidget* const focus = QApplication::focusWidget();
    return IsMenuBar(focus) ? Of(focus->window()).view.data() : focus;
}

CWndView* FirstViewFrom(QWidget* start) {
    for (QWidget* view = start; view; view = view->parentWidget())
        if (auto* own = dynamic_cast<CWndView*>(view)) return own;
    return nullptr;
}

CWndView* FirstResponderView() {
    return FirstViewFrom(FocusOrResponder());
}

} // namespace vm
