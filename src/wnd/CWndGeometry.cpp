// Rectangles and positions: top-down, in pixels, of the screen or of the client area.
#include <vmcore/wnd/CWnd.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include "wnd/CWndNSView.h"
#include "wnd/NativeWindow.h"
#include "wnd/rects.h"
#include "wnd/screen.h"
#include "wnd/scrollBars.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"

namespace {

void PlaceView(QWidget& view, int x, int y, int width, int height) {
    if (auto* own = dynamic_cast<CWndView*>(&view); own && own->wnd)
        own->setFrame({x, y, width, height});
    else
        view.setGeometry(x, y, std::max(width, 0), std::max(height, 0));
}

// Whether the object still has its window after a message, in which it may have been deleted.
bool HasWindow(const CWnd* wnd) {
    return CWndListVerify(wnd) && wnd->nsWindow;
}

// SetWindowPos refuses sizes that leave no window to grab.
int Corrected(int value, int tooSmall, int instead, const char* text) {
    if (value > tooSmall) return value;
    MessageBox(nullptr, text, "Msg", MB_OKCANCEL);
    return instead;
}

} // namespace

void CWnd::GetWindowRect(RECT* rect) const {
    if (!rect) return;
    const QRect screen = vm::VirtualScreen();
    *rect = {screen.left(), 0, screen.left() + screen.width(), screen.height()};
    if (!view) return;
    if (nsWindow) {
        *rect = vm::RectOf(nsWindow->Frame());
        const QSize bars = vm::ScrollBarSpace(*this);
        rect->right -= bars.width();
        rect->bottom -= bars.height();
    } else if (vm::IsLiveView(view)) {
        const double scale = vm::ScaleOf(*this);
        ::GetWindowRect(view, rect);
        rect->right = rect->left + vm::ToHost(rect->right - rect->left, scale);
        rect->bottom = rect->top + vm::ToHost(rect->bottom - rect->top, scale);
    }
}

void GetWindowRect(HWND window, RECT* rect) {
    if (!rect || !vm::IsLiveView(window)) return;
    const QPoint corner = window->mapToGlobal(QPoint(0, 0));
    *rect = vm::RectOf(QRect(corner, window->size()));
}

void CWnd::GetClientRect(RECT* rect) const {
    if (!rect) return;
    if (!vm::IsLiveView(view)) {
        const QRect screen = vm::VirtualScreen();
        *rect = {0, 0, screen.width(), screen.height()};
        return;
    }
    const double scale = vm::ScaleOf(*this);
    const QSize bars = nsWindow ? QSize(0, 0) : vm::ScrollBarSpace(*this);
    *rect = {0, 0, vm::ToHost(view->width(), scale) - bars.width(),
             vm::ToHost(view->height(), scale) - bars.height()};
}

void CWnd::MoveWindow(int x, int y, int width, int height, BOOL) {
    if (!vm::IsLiveView(view)) return;
    if (!nsWindow) {
        PlaceView(*view, x, y, width, height);
        return;
    }
    const QSize before = nsWindow->Frame().size();
    nsWindow->MoveFrame({x, y});
    nsWindow->ResizeFrame({width, height});
    // The content has its new size by now: the host lays out before control returns.
    if (before != QSize(width, height)) WindowProc(WM_SIZE, 0, MAKELPARAM(width, height));
    if (HasWindow(this)) WindowProc(WM_MOVE, 0, MAKELPARAM(x, y));
}

void CWnd::MoveWindow(const RECT* rect, BOOL repaint) {
    if (rect)
        MoveWindow(rect->left, rect->top, rect->right - rect->left, rect->bottom - rect->top,
                   repaint);
}

BOOL CWnd::SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags) {
    if (!nsWindow)
        return ::SetWindowPos(view, insertAfter ? insertAfter->view : nullptr, x, y, cx, cy, flags);
    if (flags & SWP_HIDEWINDOW) ShowWindow(SW_HIDE);
    // Every message below may end the window.
    if (HasWindow(this) && !(flags & SWP_NOACTIVATE)) nsWindow->OrderFront(true);
    if (HasWindow(this) && !(flags & SWP_NOMOVE)) {
        nsWindow->MoveFrame({x, y});
        WindowProc(WM_MOVE, 0, MAKELPARAM(x, y));
    }
    if (HasWindow(this) && !(flags & SWP_NOSIZE)) {
        cx = Corrected(cx, 9, 100, "SetWindowPos width error - correcting");
        cy = Corrected(cy, 21, 50, "SetWindowPos height error - correcting");
    }
    if (HasWindow(this) && !(flags & SWP_NOSIZE)) {
        const QSize before = nsWindow->Frame().size();
        nsWindow->ResizeFrame({cx, cy});
        if (before != QSize(cx, cy)) WindowProc(WM_SIZE, 0, MAKELPARAM(cx, cy));
    }
    if (HasWindow(this) && (flags & SWP_SHOWWINDOW)) ShowWindow(SW_SHOW);
    if (HasWindow(this) && !(flags & SWP_NOZORDER) && insertAfter) OrderAfter(*insertAfter);
    return TRUE;
}

void CWnd::OrderAfter(const CWnd& other) {
    if (&other == &wndTop)
        nsWindow->raise();
    else if (&other == &wndBottom)
        nsWindow->lower();
    else if (CWndListVerify(&other) && other.nsWindow) { // a message above may have ended it
        // The toolkit cannot put a window below another: both come to the front, the other last.
        nsWindow->raise();
        other.nsWindow->raise();
    }
}

BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int cx, int cy, UINT flags) {
    if (!vm::IsLiveView(window)) return FALSE;
    if (flags & SWP_HIDEWINDOW) window->hide();
    const QRect now = window->geometry();
    const QPoint corner = flags & SWP_NOMOVE ? now.topLeft() : QPoint(x, y);
    const QSize size = flags & SWP_NOSIZE ? now.size() : QSize(cx, cy);
    if (!(flags & SWP_NOMOVE) || !(flags & SWP_NOSIZE))
        PlaceView(*window, corner.x(), corner.y(), size.width(), size.height());
    if (!vm::IsLiveView(window)) return TRUE; // it went in a handler of its new place
    if (flags & SWP_SHOWWINDOW) window->show();
    if (flags & SWP_NOZORDER) return TRUE;
    if (insertAfter == CWnd::wndBottom.view)
        window->lower();
    else if (insertAfter == CWnd::wndTop.view)
        window->raise();
    else if (vm::IsLiveView(insertAfter))
        window->stackUnder(insertAfter);
    return TRUE;
}

namespace {

// A view of a window object with a scale counts in larger pixels; one without a window has no place
// from left to right.
double ScaleOfView(HWND window) {
    const CWnd* const wnd = vm::ObjectOf(window);
    return wnd ? vm::ScaleOf(*wnd) : 1.0;
}

} // namespace

void ClientToScreen(HWND window, POINT* point) {
    if (!point || !vm::IsLiveView(window)) return;
    const double scale = ScaleOfView(window);
    const QPoint inView(vm::ToView(point->x, scale), vm::ToView(point->y, scale));
    const QPoint onScreen = window->mapToGlobal(inView);
    *point = {vm::WindowOf(window) ? onScreen.x() : 0, onScreen.y()};
}

void ScreenToClient(HWND window, POINT* point) {
    if (!point || !vm::IsLiveView(window)) return;
    const double scale = ScaleOfView(window);
    const QPoint inView = window->mapFromGlobal(QPoint(point->x, point->y));
    *point = {vm::ToHost(inView.x(), scale), vm::ToHost(inView.y(), scale)};
}

namespace {

// The two corners, one after the other.
template <class Convert>
void ConvertCorners(HWND view, RECT* rect, Convert convert) {
    if (!rect) return;
    POINT topLeft{rect->left, rect->top};
    POINT bottomRight{rect->right, rect->bottom};
    convert(view, &topLeft);
    convert(view, &bottomRight);
    *rect = {topLeft.x, topLeft.y, bottomRight.x, bottomRight.y};
}

} // namespace

void CWnd::ClientToScreen(POINT* point) const {
    ::ClientToScreen(view, point);
}
void CWnd::ScreenToClient(POINT* point) const {
    ::ScreenToClient(view, point);
}
void CWnd::ClientToScreen(RECT* rect) const {
    ConvertCorners(view, rect, [](HWND window, POINT* point) { ::ClientToScreen(window, point); });
}
void CWnd::ScreenToClient(RECT* rect) const {
    ConvertCorners(view, rect, [](HWND window, POINT* point) { ::ScreenToClient(window, point); });
}

void CWnd::setFlipped(bool flag) {
    if (isCustomNSView()) static_cast<CWndView*>(view)->setFlipped(flag);
}

void CWnd::SetWindowScaling(float scale) {
    scaleY = scale;
    if (!vm::IsLiveView(view) || nsWindow) return;
    const QRect frame = view->geometry();
    view->update();
    PlaceView(*view, frame.x(), frame.y(), frame.width(), frame.height());
}

float CWnd::GetBackingScaleFactor() const {
    const bool hasWindow = vm::IsLiveView(view) && vm::WindowOf(view);
    return hasWindow ? static_cast<float>(view->devicePixelRatioF()) : 1.0f;
}

namespace {

// The deepest view with an object from `found` up to and including `root`.
CWnd* ObjectFrom(const QWidget* found, QWidget& root) {
    for (auto* view = const_cast<QWidget*>(found); view && view != &root;
         view = view->parentWidget())
        if (CWnd* wnd = GetControlReference(view)) return wnd;
    return GetControlReference(&root);
}

CWnd* ObjectAt(QWidget& root, QPoint inView) {
    if (!root.rect().contains(inView)) return nullptr;
    return ObjectFrom(root.childAt(inView), root);
}

} // namespace

CWnd* CWnd::ChildWindowFromPoint(POINT point) const {
    if (!vm::IsLiveView(view)) return nullptr;
    const double scale = vm::ScaleOf(*this);
    return ObjectAt(*view, {vm::ToView(point.x, scale), vm::ToView(point.y, scale)});
}

CWnd* CWnd::ChildWindowFromPoint(POINT point, UINT) const {
    return ChildWindowFromPoint(point);
}

CWnd* CWnd::WindowFromPoint(POINT point) {
    if (!qobject_cast<QApplication*>(QCoreApplication::instance())) return nullptr;
    const QPoint onScreen(point.x, point.y);
    NSWindow* const window = vm::WindowOf(QApplication::topLevelAt(onScreen));
    if (!window) return nullptr;
    QWidget& content = *window->ContentView();
    return ObjectAt(content, content.mapFromGlobal(onScreen));
}
