// The screens and the metric table.
#include <vmcore/wnd/screen.h>

#include <memory>

#include <QtGui/QScreen>
#include <QtGui/QStyleHints>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QStyle>

#include "platform/NativeApplication.h"
#include "platform/menuBar.h"
#include "wnd/NativeWindow.h"
#include "wnd/rects.h"
#include "wnd/screen.h"
#include "wnd/scrollBars.h"

namespace {

constexpr int kCursorSize = 32;
constexpr int kMouseButtons = 3;

QRect MainScreen() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? screen->geometry() : QRect();
}

QSize WithoutPanels() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry().size() : QSize(0, 0);
}

int TitleBarHeight() {
    for (const NSWindow* window : vm::NativeApplication::Shared().Windows()) {
        const QWindow* const native = window->windowHandle();
        if (native && native->frameMargins().top()) return native->frameMargins().top();
    }
    return QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
}

int MenuBarHeight() {
    const std::unique_ptr<QMenuBar> bar(vm::MakeMenuBar(nullptr));
    bar->setNativeMenuBar(false);
    bar->addAction(QStringLiteral("M"));
    return bar->sizeHint().height();
}

// What the style and the desktop say; needs an application object.
int MetricOfDesktop(int index) {
    const QStyle& style = *QApplication::style();
    switch (index) {
    case SM_CYCAPTION:
        return TitleBarHeight();
    case SM_CYMENU:
        return MenuBarHeight();
    case SM_CXICON:
    case SM_CYICON:
        return style.pixelMetric(QStyle::PM_LargeIconSize);
    case SM_CXSMICON:
    case SM_CYSMICON:
        return style.pixelMetric(QStyle::PM_SmallIconSize);
    case SM_CXDOUBLECLK:
    case SM_CYDOUBLECLK:
        return QGuiApplication::styleHints()->mouseDoubleClickDistance();
    case SM_CXDRAG:
    case SM_CYDRAG:
        return QApplication::startDragDistance();
    default:
        return 0;
    }
}

} // namespace

QRect vm::VirtualScreen() {
    const QScreen* const screen = QGuiApplication::primaryScreen();
    return screen ? screen->virtualGeometry() : QRect(0, 0, 0, 0);
}

RECT GetScreenRect() {
    return vm::RectOf(MainScreen());
}

RECT GetVirtualScreenRect() {
    return vm::RectOf(vm::VirtualScreen());
}

int GetSystemMetrics(int index) {
    switch (index) {
    case SM_CXSCREEN:
        return MainScreen().width();
    case SM_CYSCREEN:
        return MainScreen().height();
    case SM_CXFULLSCREEN:
        return WithoutPanels().width();
    case SM_CYFULLSCREEN:
        return WithoutPanels().height();
    case SM_XVIRTUALSCREEN:
        return vm::VirtualScreen().left();
    case SM_YVIRTUALSCREEN:
        return vm::VirtualScreen().top();
    case SM_CXVIRTUALSCREEN:
        return vm::VirtualScreen().width();
    case SM_CYVIRTUALSCREEN:
        return vm::VirtualScreen().height();
    case SM_CMONITORS:
        return static_cast<int>(QGuiApplication::screens().size());
    case SM_CXVSCROLL:
    case SM_CYHSCROLL:
    case SM_CYVSCROLL:
    case SM_CXHSCROLL:
        return vm::kScrollBarWidth;
    case SM_CXCURSOR:
    case SM_CYCURSOR:
        return kCursorSize;
    case SM_MOUSEPRESENT:
        return 1;
    case SM_CMOUSEBUTTONS:
        return kMouseButtons;
    default:
        return qobject_cast<QApplication*>(QCoreApplication::instance()) ? MetricOfDesktop(index)
                                                                         : 0;
    }
}
