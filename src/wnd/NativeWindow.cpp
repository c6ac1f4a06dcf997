#include "wnd/NativeWindow.h"

#include <utility>

#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QCloseEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>

#include <vmcore/app/registry.h>

#include "controls/menuActions.h"
#include "platform/NativeApplication.h"
#include "platform/eventboundary.h"
#include "platform/mainqueue.h"
#include "platform/menuBar.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/heldViews.h"
#include "wnd/nativeEvents.h"
#include "wnd/views.h"
#include "wnd/windowState.h"

namespace vm {
namespace {

// A window manager answers a request within this time, or it has decided otherwise.
constexpr int kConfirmMilliseconds = 500;

// Nothing tells when the frame of a shown window is there, so it is looked for; a window shown
// again is also moved about for a while.
constexpr int kSettleMilliseconds = 20;
constexpr int kSettleSteps = 25;
constexpr int kSettleStepsAgain = 6;

Qt::WindowFlags FlagsOf(FrameStyle style, bool floating) {
    Qt::WindowFlags flags = (style == FrameStyle::Dialog ? Qt::Dialog : Qt::Window) |
                            Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                            Qt::WindowSystemMenuHint;
    if (style != FrameStyle::FixedMinimisable) flags |= Qt::WindowCloseButtonHint;
    if (style == FrameStyle::Decorated) flags |= Qt::WindowMinMaxButtonsHint;
    if (style == FrameStyle::FixedMinimisable) flags |= Qt::WindowMinimizeButtonHint;
    if (floating) flags |= Qt::WindowStaysOnTopHint;
    return flags;
}

void AskForPaint(QWidget& window) {
    QCoreApplication::postEvent(&window, new QEvent(QEvent::UpdateRequest), Qt::LowEventPriority);
}

// A program without windows cannot be reached on this desktop: it ends with its last one.
void EndWithLastWindow() {
    PostToMain({[](void*) {
                    NativeApplication& application = NativeApplication::Shared();
                    for (const NativeWindow* window : application.Windows())
                        if (!window->isHidden()) return;
                    if (application.Delegate()) application.Terminate();
                },
                nullptr, nullptr});
}

} // namespace

NativeWindow::NativeWindow(const QRect& content, FrameStyle style, bool floating)
    : QWidget(nullptr, FlagsOf(style, floating)), m_style(style), m_content(new QWidget(this)),
      m_userResizable(style == FrameStyle::Decorated), m_told(content.size()), m_frame(content) {
    WatchView(m_content);
    setGeometry(content);
    if (!m_userResizable) setFixedSize(content.size());
    m_content->setGeometry(0, 0, content.width(), content.height());
    NativeApplication::Shared().AddWindow(this);
}

NativeWindow::~NativeWindow() {
    NativeApplication::Shared().RemoveWindow(this);
    delete m_delegate;
}

void NativeWindow::SetDelegate(CWndDelegate* delegate) {
    if (delegate == m_delegate) return;
    delete m_delegate;
    m_delegate = delegate;
}

int NativeWindow::MenuBarHeight() const {
    return m_menuBar ? m_menuBar->heightForWidth(width()) : 0;
}

void NativeWindow::PlaceContent() {
    const int top = MenuBarHeight();
    if (m_menuBar) m_menuBar->setGeometry(0, 0, width(), top);
    m_content->setGeometry(0, top, width(), std::max(height() - top, 0));
}

// Unknown until the window manager has put its frame around the window: counted as nothing, and for
// a window shown again as before.
QMargins NativeWindow::KnownMargins() const {
    const QWindow* native = windowHandle();
    const QMargins margins = native ? native->frameMargins() : QMargins();
    return margins.isNull() && (m_settling || !isVisible()) ? m_margins : margins;
}

QRect NativeWindow::NativeFrame() const {
    return geometry().marginsAdded(KnownMargins());
}

// From now on the toolkit's reports are only believed when they confirm the frame.
void NativeWindow::Expect() {
    m_asked.start();
    QTimer::singleShot(kConfirmMilliseconds + 20, this, [this] {
        if (!m_asked.isValid() || m_asked.elapsed() < kConfirmMilliseconds) return;
        m_asked.invalidate();
        AtEventBoundary([this] { ReportChanges(); });
    });
}

void NativeWindow::MoveFrame(const QPoint& topLeft) {
    m_frame.moveTopLeft(topLeft);
    m_placeAsked = KnownMargins().isNull();
    m_silent = true;
    move(topLeft);
    m_silent = false;
    if (isVisible()) Expect();
}

void NativeWindow::ResizeFrame(const QSize& size) {
    m_frame.setSize(size);
    m_sizeAsked = KnownMargins().isNull();
    ApplySize();
    m_told = m_content->size(); // by the caller
    if (isVisible()) Expect();
}

void NativeWindow::ResizeContent(const QSize& size) {
    m_sizeAsked = false;
    m_silent = true;
    ApplyNativeSize(WithMenuBar(size));
    PlaceContent();
    m_silent = false;
    m_frame.setSize(NativeFrame().size());
    if (isVisible()) Expect();
}

void NativeWindow::ApplySize() {
    const QMargins margins = KnownMargins();
    m_margins = margins;
    m_silent = true;
    ApplyNativeSize(m_frame.size().shrunkBy(margins));
    PlaceContent();
    m_silent = false;
}

void NativeWindow::SetMenuBarShown(bool shown) {
    shown = shown && MenuBarShown(); // a host may have hidden the menu bar of the application
    if (shown == (m_menuBar != nullptr)) return;
    const QSize content = m_content->size();
    const int heightBefore = MenuBarHeight();
    if (shown) {
        QMenu* menu = MainMenu();
        if (!menu) return;
        m_menuBar = MakeMenuBar(this);
        m_menuBar->setNativeMenuBar(false);
        m_menuBar->addActions(menu->actions());
        m_menuBar->show();
    } else {
        m_menuBar->hide();
        m_menuBar->deleteLater();
        m_menuBar = nullptr;
    }
    ShiftLimits(MenuBarHeight() - heightBefore);
    // A frame that was asked for before its margins are known includes the menu bar as well.
    if (m_sizeAsked)
        ApplySize();
    else
        ResizeContent(content);
}

void NativeWindow::OrderFront(bool activate) {
    if (!windowHandle()) PlaceOverOwner();
    setAttribute(Qt::WA_ShowWithoutActivating, !activate);
    show();
    raise();
    if (activate) activateWindow();
}

void NativeWindow::OrderOut() {
    hide();
}

void NativeWindow::Leave() {
    if (std::exchange(m_closing, true)) return;
    NativeApplication::Shared().RemoveWindow(this);
    hide();
}

void NativeWindow::Dispose() {
    Leave();
    if (std::exchange(m_disposed, true)) return;
    DisposeOfView(this);
    if (m_endsProgram) EndWithLastWindow();
}

void NativeWindow::resizeEvent(QResizeEvent*) {
    PlaceContent();
    ScheduleReport();
}

void NativeWindow::moveEvent(QMoveEvent*) {
    ScheduleReport();
}

// What climbs up to here was of no use to the control with the focus, and passed no view.
void NativeWindow::keyPressEvent(QKeyEvent* event) {
    event->ignore();
    if (m_closing || IsSilentKey(*event) || FocusStepOf(*event) != FocusStep::None) return;
    QWidget& control = focusWidget() ? *focusWidget() : *m_content;
    bool taken = false;
    AtEventBoundary([&] { taken = KeyLeftAlone(control, RecordOf(*event, control)); });
    event->setAccepted(taken);
}

// A drag of the frame brings many events a turn; the host hears of the last.
void NativeWindow::ScheduleReport() {
    if (m_silent || m_reportPending || !isVisible()) return;
    m_reportPending = true;
    QTimer::singleShot(0, this, [this] {
        m_reportPending = false;
        AtEventBoundary([this] { ReportChanges(); });
    });
}

void NativeWindow::StartSettling() {
    m_settleSteps = m_margins.isNull() ? 0 : kSettleSteps - kSettleStepsAgain;
    if (std::exchange(m_settling, true)) return;
    Settle();
}

void NativeWindow::Settle() {
    const QWindow* native = windowHandle();
    const bool isFirst = m_margins.isNull();
    const bool hasFrame = native && !native->frameMargins().isNull();
    if (isVisible() && ++m_settleSteps < kSettleSteps && !(isFirst && hasFrame)) {
        QTimer::singleShot(kSettleMilliseconds, this, &NativeWindow::Settle);
        return;
    }
    m_settling = false;
    ScheduleReport();
}

// The window manager's frame came or changed. What was asked for before includes it.
void NativeWindow::TakeMargins() {
    m_margins = KnownMargins();
    if (!m_placeAsked && !m_sizeAsked) return m_asked.invalidate();
    m_silent = true;
    if (std::exchange(m_placeAsked, false)) move(m_frame.topLeft());
    m_silent = false;
    if (std::exchange(m_sizeAsked, false)) ApplySize();
    Expect();
}

void NativeWindow::ReportChanges() {
    if (!isVisible() || isMinimized() || m_closing || m_settling) return;
    if (KnownMargins() != m_margins) TakeMargins();
    const QRect now = NativeFrame();
    if (m_asked.isValid()) {
        if (now == m_frame) m_asked.invalidate();
        if (m_asked.isValid() && m_asked.elapsed() < kConfirmMilliseconds) return; // a stale report
        m_asked.invalidate();
    }
    const QRect before = m_frame;
    m_frame = now;
    const QPointer<NativeWindow> self = this;
    const bool resized = now.size() != before.size();
    AskLimits(resized);
    if (!self) return;
    // The content may have another size in the frame that was asked for.
    const bool isNews = std::exchange(m_told, m_content->size()) != m_content->size();
    if (m_delegate && (resized || isNews)) m_delegate->windowDidResize();
    if (self && m_delegate && now.topLeft() != before.topLeft()) m_delegate->windowDidMove();
}

// A loop inside a handler may free the window, here and wherever the delegate is told something.
bool NativeWindow::event(QEvent* event) {
    const QPointer<NativeWindow> self = this;
    if (event->type() == QEvent::UpdateRequest && Windows().paints > 0) {
        HeldViews::WhenReleased(this, [this] { AskForPaint(*this); }); // in a loop inside a paint
        return true;
    }
    const bool handled = QWidget::event(event);
    if (self) AtEventBoundary([&] { HandleEvent(event); });
    return handled;
}

void NativeWindow::HandleEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::WindowActivate:
        BecomeKey();
        break;
    case QEvent::WindowDeactivate:
        ResignKey();
        break;
    case QEvent::WindowStateChange:
        WindowStateChanged(static_cast<QWindowStateChangeEvent*>(event)->oldState());
        break;
    case QEvent::Hide:
        if (NativeApplication::Shared().MainWindow() == this)
            NativeApplication::Shared().SetMainWindow(nullptr);
        break;
    case QEvent::Show:
        if (!event->spontaneous()) StartSettling();
        if (m_delegate) m_delegate->windowDidShow();
        break;
    case QEvent::UpdateRequest:
        if (KnownMargins() != m_margins) ScheduleReport();
        break;
    case QEvent::DragEnter:
        if (m_delegate) m_delegate->draggingEntered(static_cast<QDropEvent*>(event));
        break;
    case QEvent::Drop:
        if (m_delegate) m_delegate->performDragOperation(static_cast<QDropEvent*>(event));
        break;
    default:
        break;
    }
}

// The toolkit tells the new window first; the old one has to resign before, because the new one is
// told who it was.
void NativeWindow::BecomeKey() {
    const QPointer<NativeWindow> self = this;
    NativeApplication& application = NativeApplication::Shared();
    for (NativeWindow* other : std::vector(application.Windows()))
        if (other != this && IsValidWindowPtr(other)) other->ResignKey();
    if (!self || m_closing) return;
    application.SetMainWindow(this);
    m_isKey = true;
    if (m_delegate) m_delegate->windowDidBecomeKey();
    if (self && m_delegate) m_delegate->windowDidBecomeMain();
}

void NativeWindow::ResignKey() {
    if (!m_isKey) return;
    m_isKey = false;
    const QPointer<NativeWindow> self = this;
    if (m_delegate) m_delegate->windowDidResignKey();
    if (self && m_delegate) m_delegate->windowDidResignMain();
}

void NativeWindow::WindowStateChanged(Qt::WindowStates before) {
    const bool wasMinimised = before & Qt::WindowMinimized;
    if (!m_delegate || wasMinimised == isMinimized()) return;
    if (isMinimized())
        m_delegate->windowDidMiniaturize();
    else
        m_delegate->windowDidDeminiaturize();
}

void NativeWindow::closeEvent(QCloseEvent* event) {
    const QPointer<NativeWindow> self = this;
    bool close = false; // a query that fails refuses
    AtEventBoundary([&] { close = !m_delegate || m_delegate->windowShouldClose(); });
    event->setAccepted(close);
    if (!close || !self) return;
    AtEventBoundary([&] {
        if (m_delegate) m_delegate->windowWillClose();
    });
    // Nobody could show or destroy a window without an object again.
    if (self && !m_closing && (!m_delegate || !m_delegate->wnd())) return Dispose();
    if (self && m_endsProgram) EndWithLastWindow();
}

CWndDelegate* DelegateOf(NSWindow* window) {
    return window ? window->Delegate() : nullptr;
}

void ShowMenuBarOf(NSWindow* window) {
    for (NativeWindow* other : NativeApplication::Shared().Windows())
        if (other != window) other->SetMenuBarShown(false);
    if (window) window->SetMenuBarShown(true);
}

} // namespace vm
