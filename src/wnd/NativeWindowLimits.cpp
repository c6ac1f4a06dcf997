// The limits of a window's frame, and where a window with an owner appears.
#include "wnd/NativeWindow.h"

#include <algorithm>

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

#include "wnd/CWndNSWindow.h"

namespace vm {

void NativeWindow::ApplyNativeSize(const QSize& size) {
    const QSize possible = size.expandedTo(QSize(1, 1));
    ApplyLimits(possible);
    resize(possible);
}

// What binds the user, but never the size that was asked for.
void NativeWindow::ApplyLimits(const QSize& size) {
    const bool isFixed = !m_userResizable && minimumSize() == maximumSize();
    QSize smallest = isFixed ? size : minimumSize().boundedTo(size);
    QSize largest = isFixed ? size : maximumSize().expandedTo(size);
    if (m_userResizable) {
        const QMargins margins = KnownMargins();
        smallest = m_smallest.shrunkBy(margins).boundedTo(size).expandedTo(QSize(0, 0));
        largest = QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        if (m_largest.isValid()) largest = m_largest.shrunkBy(margins).expandedTo(size);
    }
    setMinimumSize(smallest);
    setMaximumSize(largest);
}

QSize NativeWindow::WithMenuBar(const QSize& content) const {
    const int height = content.height() + MenuBarHeight();
    return {content.width(), std::min(height, QWIDGETSIZE_MAX)};
}

void NativeWindow::SetContentLimits(const QSize& smallest, const QSize& largest) {
    setMinimumSize(WithMenuBar(smallest));
    setMaximumSize(WithMenuBar(largest));
}

// The menu bar came or went. Only the limits of dialogs are those of their content.
void NativeWindow::ShiftLimits(int height) {
    if (m_userResizable) return;
    const bool isLimited = maximumHeight() < QWIDGETSIZE_MAX;
    m_silent = true;
    if (isLimited) setMaximumHeight(maximumHeight() + height);
    setMinimumHeight(minimumHeight() + height);
    m_silent = false;
}

void NativeWindow::SetTrackSizes(const QSize& smallest, const QSize& largest) {
    m_smallest = smallest;
    m_largest = largest;
    ApplyLimits(size());
}

void NativeWindow::SetOwner(QWidget* owner) {
    m_owner = owner;
}

// Where a frame like the owner's would be in the middle, on the screen that the owner is on.
void NativeWindow::PlaceOverOwner() {
    const bool hasOwner = m_owner && m_owner->isVisible() && !m_owner->isMinimized();
    winId(); // the toolkit's window
    QWindow* const ownerWindow = hasOwner ? m_owner->windowHandle() : nullptr;
    if (ownerWindow) windowHandle()->setTransientParent(ownerWindow);
    const QScreen* const screen = hasOwner ? m_owner->screen() : QGuiApplication::primaryScreen();
    if (m_style != FrameStyle::Dialog || m_placeAsked || !screen) return;
    const QRect area = screen->availableGeometry();
    const QMargins margins = ownerWindow ? ownerWindow->frameMargins() : QMargins();
    QRect place(QPoint(), size().grownBy(margins));
    place.moveCenter(hasOwner ? m_owner->frameGeometry().center() : area.center());
    place.moveRight(std::min(place.right(), area.right()));
    place.moveBottom(std::min(place.bottom(), area.bottom()));
    place.moveLeft(std::max(place.left(), area.left()));
    place.moveTop(std::max(place.top(), area.top()));
    MoveFrame(place.topLeft());
}

// Nothing tells that the user is about to resize the frame: the object is asked before it can have
// happened, and again with every step of it.
void NativeWindow::AskLimits(bool resized) {
    if (!m_userResizable || !m_delegate || (m_limitsAsked && !resized)) return;
    m_limitsAsked = true;
    m_delegate->windowWillStartLiveResize();
}

} // namespace vm
