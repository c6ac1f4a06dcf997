// CWnd::CenterWindow.
#include <vmcore/wnd/CWnd.h>

#include <algorithm>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtWidgets/QWidget>

#include "wnd/NativeWindow.h"
#include "wnd/views.h"

namespace {

constexpr UINT kMoveOnly = SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE;

QRect RectOf(const CWnd& wnd) {
    RECT rect{};
    wnd.GetWindowRect(&rect);
    return {rect.left, rect.top, rect.right - rect.left, rect.bottom - rect.top};
}

// The frame of the window that a top-level one was made for, while it is in sight.
QRect OwnerFrame(const CWnd* owner) {
    const bool isLive = owner && CWndListVerify(owner) && vm::IsLiveView(owner->view);
    const NSWindow* const window = isLive ? vm::WindowOf(owner->view) : nullptr;
    return window && window->isVisible() && !window->isMinimized() ? window->Frame() : QRect();
}

// Without panels, of the screen with this point.
QRect ScreenAround(QPoint point) {
    const QScreen* screen = QGuiApplication::screenAt(point);
    if (!screen) screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

// What is larger than the screen begins with it.
QPoint Within(const QRect& screen, QPoint corner, QSize size) {
    const int left = std::min(corner.x(), screen.right() + 1 - size.width());
    const int top = std::min(corner.y(), screen.bottom() + 1 - size.height());
    return {std::max(left, screen.left()), std::max(top, screen.top())};
}

QPoint HalfOf(QSize size) {
    return {size.width() / 2, size.height() / 2};
}

QPoint PlaceOfTopLevel(const QRect& around, QSize size) {
    const QPoint middle = around.isNull() ? QPoint() : around.topLeft() + HalfOf(around.size());
    const QRect screen = ScreenAround(middle);
    const QRect& area = around.isNull() ? screen : around;
    return Within(screen, area.topLeft() + HalfOf(area.size()) - HalfOf(size), size);
}

QPoint PlaceOfChild(const QWidget& view, const QWidget& around) {
    const QPoint middle = around.mapToGlobal(HalfOf(around.size()));
    return view.parentWidget()->mapFromGlobal(middle) - HalfOf(view.size());
}

} // namespace

void CWnd::CenterWindow(const CWnd* other) {
    if (!vm::IsLiveView(view)) return;
    const bool hasOther = other && vm::IsLiveView(other->view);
    QPoint corner;
    if (nsWindow)
        corner = PlaceOfTopLevel(hasOther ? RectOf(*other) : OwnerFrame(parentWnd),
                                 nsWindow->Frame().size());
    else if (view->parentWidget())
        corner = PlaceOfChild(*view, hasOther ? *other->view : *view->parentWidget());
    else
        return;
    SetWindowPos(nullptr, corner.x(), corner.y(), 0, 0, kMoveOnly);
}
