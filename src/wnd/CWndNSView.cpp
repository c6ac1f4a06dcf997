#include "wnd/CWndNSView.h"
#include "wnd/deviceContexts.h"

#include <memory>
#include <utility>

#include <QtCore/QPointer>
#include <QtGui/QAction>
#include <QtGui/QDropEvent>
#include <QtGui/QKeyEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>

#include <vmcore/wnd/CWnd.h>

#include "controls/menuActions.h"
#include "platform/GraphicsContext.h"
#include "platform/PaintTarget.h"
#include "platform/eventboundary.h"
#include "platform/messagebox.h"
#include "wnd/CWndWindowController.h"
#include "wnd/accessibleView.h"
#include "wnd/dropFiles.h"
#include "wnd/heldViews.h"
#include "wnd/nativeEvents.h"
#include "wnd/responder.h"
#include "wnd/scrollBars.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"
#include "wnd/windowState.h"
#include "wnd/windowTimers.h"

CWndView::CWndView(const CREATESTRUCT& cs, CWnd* owner) : QWidget(cs.hwndParent), wnd(owner) {
    Initialise();
    setTag(static_cast<int>(cs.hMenu));
    if (cs.style & WS_TABSTOP) setFocusPolicy(Qt::StrongFocus);
    setGeometry(cs.x, cs.y, std::max(cs.cx, 0), std::max(cs.cy, 0));
    m_reported = size();
    initMode = false;
}

CWndView::CWndView(QWidget* parent) : QWidget(parent), wnd(nullptr) {
    Initialise();
    initMode = false;
}

CWndView::~CWndView() {
    if (!wnd) return;
    if (callOnDealloc) {
        vm::Windows().pluginHost = wnd;
        vm::AtEventBoundary([this] { wnd->SendMessage(WM_CLOSE, 0, 0); });
        vm::Windows().pluginHost = nullptr;
    }
    killAllTimers();
}

void CWndView::Initialise() {
    vm::WatchView(this); // so that nobody has to look for it among all views
    setMouseTracking(true);
    setFocusPolicy(Qt::ClickFocus);
    setAttribute(Qt::WA_InputMethodEnabled); // dead keys, too, come through an input method
    vm::WatchResponders();
    vm::InstallAccessibleViews();
}

void CWndView::setTag(int tag) {
    if (tag != m_tag) setProperty(vm::kTagProperty, tag); // read back by HandleEvent
}

void CWndView::setEnabledFlag(bool flag) {
    if (std::exchange(enabled, flag) != flag) vm::TellEnabled(*this);
}

void CWndView::setFrame(const QRect& frame) {
    if (!wnd) return;
    const QRect before = geometry();
    m_inSetFrame = true;
    setGeometry(frame.x(), frame.y(), std::max(frame.width(), 0), std::max(frame.height(), 0));
    m_inSetFrame = false;
    if (!initMode) ReportFrame(before);
}

void CWndView::ReportFrame(const QRect& before) {
    const QPointer<CWndView> self = this;
    m_reported = size();
    vm::LayOutScrollBars(*wnd); // a hidden view is not told of its new size yet
    const QSize client = vm::ClientSizeOf(*wnd, *this);
    wnd->WindowProc(WM_SIZE, 2, MAKELPARAM(client.width(), client.height()));
    if (self && wnd && pos() != before.topLeft()) wnd->WindowProc(WM_MOVE, 0, MAKELPARAM(x(), y()));
}

// A layout around the view changed its size, which no call of the host reports. The toolkit also
// repeats the size of a hidden view when it is shown.
void CWndView::resizeEvent(QResizeEvent*) {
    if (!wnd || initMode || m_inSetFrame || size() == m_reported) return;
    m_reported = size();
    const QSize client = vm::ClientSizeOf(*wnd, *this);
    const vm::HeldViews held; // a layout goes on with the view
    vm::AtEventBoundary(
        [&] { wnd->WindowProc(WM_SIZE, 2, MAKELPARAM(client.width(), client.height())); });
}

void CWndView::paintEvent(QPaintEvent* event) {
    vm::AtEventBoundary([&] { SendPaint(event); });
}

namespace {

// The context of one paint, which ends however its handler ends.
class PaintInProgress {
public:
    PaintInProgress(QPainter& painter, const QRegion& region, CWnd* wnd, QWidget& view)
        : m_target(std::make_shared<vm::PaintTarget>(&painter)),
          m_context(vm::GraphicsContext::ForView(m_target, QPoint(0, 0), region)), m_wnd(wnd),
          m_current(view, m_target, m_context, region) {
        const double scale = vm::ScaleOf(*wnd);
        if (scale != 1.0) m_context->Scale(scale, scale);
        wnd->paintContext = m_context;
        ++vm::Windows().paints;
    }
    ~PaintInProgress() {
        --vm::Windows().paints;
        if (CWndListVerify(m_wnd) && m_wnd->paintContext == m_context)
            m_wnd->paintContext = nullptr;
        m_target->End(); // a host that kept the handle draws into nothing
        m_context->Release();
    }
    PaintInProgress(const PaintInProgress&) = delete;
    PaintInProgress& operator=(const PaintInProgress&) = delete;

private:
    vm::HeldViews m_held;
    std::shared_ptr<vm::PaintTarget> m_target;
    vm::GraphicsContext* m_context;
    CWnd* m_wnd; // may go during the paint
    vm::CurrentPaint m_current;
};

} // namespace

void CWndView::SendPaint(QPaintEvent* event) {
    if (!wnd) return;
    QPainter painter(this);
    const PaintInProgress paint(painter, event->region(), wnd, *this);
    wnd->WindowProc(WM_PAINT, 0, 0);
}

// A loop inside a handler may free the view.
bool CWndView::event(QEvent* event) {
    const QPointer<CWndView> self = this;
    bool handled = false;
    vm::AtEventBoundary([&] { handled = HandleEvent(event); });
    return handled || !self || QWidget::event(event);
}

// True ends the event here: a view's mouse and keys never climb to its parent.
bool CWndView::HandleEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        PressKey(*static_cast<QKeyEvent*>(event));
        return true;
    case QEvent::KeyRelease: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (!vm::IsSilentKey(key)) vm::KeyReleased(*this, vm::RecordOf(key, *this));
        return true;
    }
    case QEvent::InputMethod:
        event->accept();
        TakeInput(*static_cast<QInputMethodEvent*>(event));
        return true;
    case QEvent::ContextMenu: {
        const auto& menu = *static_cast<QContextMenuEvent*>(event);
        // The press of a button has asked already.
        if (menu.reason() == QContextMenuEvent::Keyboard) AskForContextMenu(menu.globalPos());
        event->accept();
        return true;
    }
    case QEvent::DragEnter:
        return vm::AcceptFileDrag(static_cast<QDropEvent*>(event));
    case QEvent::Drop:
        if (wnd) vm::SendDroppedFiles(*wnd, static_cast<QDropEvent*>(event));
        return true;
    case QEvent::DynamicPropertyChange:
        m_tag = property(vm::kTagProperty).toInt();
        return false;
    default:
        return HandleMouse(event);
    }
}

bool CWndView::HandleMouse(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        Press(static_cast<QMouseEvent*>(event));
        return true;
    case QEvent::MouseButtonRelease:
        Release(static_cast<QMouseEvent*>(event));
        return true;
    case QEvent::MouseMove:
        vm::MouseMoved(*this, vm::RecordOf(*static_cast<QMouseEvent*>(event), 0));
        return true;
    case QEvent::Enter:
        vm::MouseEntered(*this, vm::RecordOf(*static_cast<QEnterEvent*>(event)));
        return false;
    case QEvent::Leave:
        vm::MouseLeft(*this, vm::MouseNow(*this));
        return false;
    case QEvent::Wheel:
        vm::WheelTurned(*this, vm::RecordOf(*static_cast<QWheelEvent*>(event)));
        event->accept();
        return true;
    default:
        return false;
    }
}

void CWndView::Press(QMouseEvent* event) {
    event->accept();
    vm::MousePressed(*this, vm::ButtonOf(*event), vm::RecordOf(*event, vm::ClickCountOf(*event)));
}

void CWndView::Release(QMouseEvent* event) {
    event->accept();
    vm::MouseReleased(*this, vm::ButtonOf(*event), vm::RecordOf(*event, 1));
}

// What the object leaves alone is worked as in any dialog.
void CWndView::PressKey(const QKeyEvent& event) {
    if (vm::IsSilentKey(event)) return;
    const QPointer<CWndView> self = this;
    if (vm::KeyPressed(*this, vm::RecordOf(event, *this)) || !self || !wnd) return;
    if (vm::AsksForContextMenu(event)) AskForContextMenu(mapToGlobal(rect().center()));
    if (auto* dialog = self ? CWndWindowController::Of(window()) : nullptr)
        if (dialog->TakeKey(event)) return;
    const vm::FocusStep step = vm::FocusStepOf(event);
    if (step == vm::FocusStep::None || !self || !(focusPolicy() & Qt::TabFocus)) return;
    focusNextPrevChild(step == vm::FocusStep::Next);
}

void CWndView::TakeInput(const QInputMethodEvent& event) {
    const QPointer<CWndView> self = this;
    for (const vm::KeyRecord& record : vm::RecordsOf(event, *this))
        if (self) vm::KeyPressed(*this, record);
}

void CWndView::AskForContextMenu(const QPoint& screen) {
    if (wnd && enabled)
        wnd->WindowProc(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(this),
                        MAKELPARAM(screen.x(), screen.y()));
}

void CWndView::winCmd(QAction* sender) {
    if (!sender) {
        vm::ShowMessageBox(this, "CWndView winCmd called by a non-MenuItem", "Internal Error", 1);
        return;
    }
    if (!wnd) {
        vm::ShowMessageBox(this, "wnd not assigned in CWndView - cancelling command",
                           "Internal Error", 1);
        return;
    }
    const int id = vm::MenuItemTag(sender);
    CWnd* const target = HandlerOf(id);
    if (!target) return;
    LRESULT extra = 0;
    if (!target->OnCmdMsg(WM_COMMAND, id, &extra, nullptr) && CWndListVerify(target))
        target->WindowProc(WM_COMMAND, static_cast<WPARAM>(id), 0);
}

// The first object from this view's up the parents that says it handles the command. A handler that
// is asked may be the last that its object hears.
CWnd* CWndView::HandlerOf(int command) const {
    for (CWnd* target = wnd; target && CWndListVerify(target); target = target->parentWnd) {
        BYTE itemEnabled = 0;
        BYTE second = 0;
        SHORT mark = 0;
        char text[256] = "";
        MacCmdUI state(command, itemEnabled, second, mark, text);
        LRESULT extra = 0;
        const bool handles =
            target->OnCmdMsg(static_cast<UINT>(command), 0, &extra,
                             reinterpret_cast<AFX_CMDHANDLERINFO*>(static_cast<CCmdUI*>(&state)));
        if (!CWndListVerify(target)) return nullptr;
        if (handles) return target;
    }
    return nullptr;
}

UINT CWndView::setTimer(UINT id, UINT elapse, void* procedure) {
    return vm::StartTimer(wnd, vm::TimerHost::View, id, elapse, procedure);
}
BOOL CWndView::killTimer(UINT id) {
    return vm::KillTimerOf(wnd, id);
}
void CWndView::killAllTimers() {
    vm::KillAllTimersOf(wnd);
}
