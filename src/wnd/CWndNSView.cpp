#include "wnd/CWndNSView.h"
#include "wnd/deviceContexts.h"

#include <memory>

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
#include "wnd/dropFiles.h"
#include "wnd/heldViews.h"
#include "wnd/nativeEvents.h"
#include "wnd/scrollBars.h"
#include "wnd/views.h"
#include "wnd/windowState.h"
#include "wnd/windowTimers.h"

CWndView::CWndView(const CREATESTRUCT& cs, CWnd* owner)
    : QWidget(cs.hwndParent), wnd(owner), m_tag(static_cast<int>(cs.hMenu)) {
    Initialise();
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
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
}

void CWndView::setTag(int tag) {
    m_tag = tag;
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
    const QSize client = vm::ClientSizeOf(*wnd);
    wnd->WindowProc(WM_SIZE, 2, MAKELPARAM(client.width(), client.height()));
    if (self && wnd && pos() != before.topLeft()) wnd->WindowProc(WM_MOVE, 0, MAKELPARAM(x(), y()));
}

// A layout around the view changed its size, which no call of the host reports. The toolkit also
// repeats the size of a hidden view when it is shown.
void CWndView::resizeEvent(QResizeEvent*) {
    if (!wnd || initMode || m_inSetFrame || size() == m_reported) return;
    m_reported = size();
    const QSize client = vm::ClientSizeOf(*wnd);
    const vm::HeldViews held; // a layout goes on with the view
    vm::AtEventBoundary(
        [&] { wnd->WindowProc(WM_SIZE, 2, MAKELPARAM(client.width(), client.height())); });
}

// Tab is a key like any other for a view of the host.
bool CWndView::focusNextPrevChild(bool) {
    return false;
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

// A menu that opens or closes leaves the focus where it is; the toolkit only says otherwise.
static bool OfPopup(const QEvent& event) {
    return static_cast<const QFocusEvent&>(event).reason() == Qt::PopupFocusReason;
}

// True ends the event here: a view's mouse and keys never climb to its parent.
bool CWndView::HandleEvent(QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        Press(static_cast<QMouseEvent*>(event), 1);
        return true;
    case QEvent::MouseButtonDblClick:
        Press(static_cast<QMouseEvent*>(event), 2);
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
    case QEvent::KeyPress: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (!vm::IsSilentKey(key)) vm::KeyPressed(*this, vm::RecordOf(key, *this));
        return true;
    }
    case QEvent::KeyRelease: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (!vm::IsSilentKey(key)) vm::KeyReleased(*this, vm::RecordOf(key, *this));
        return true;
    }
    case QEvent::FocusIn:
        if (wnd && !OfPopup(*event))
            wnd->WindowProc(WM_SETFOCUS, reinterpret_cast<WPARAM>(vm::Windows().lastResponder), 0);
        return false;
    case QEvent::FocusOut:
        if (OfPopup(*event)) return false;
        vm::Windows().lastResponder = this;
        if (wnd) wnd->WindowProc(WM_KILLFOCUS, 0, 0);
        return false;
    case QEvent::ContextMenu:
        event->accept();
        return true; // the press has asked already
    case QEvent::DragEnter:
        return vm::AcceptFileDrag(static_cast<QDropEvent*>(event));
    case QEvent::Drop:
        if (wnd) vm::SendDroppedFiles(*wnd, static_cast<QDropEvent*>(event));
        return true;
    default:
        return false;
    }
}

void CWndView::Press(QMouseEvent* event, int clickCount) {
    event->accept();
    vm::MousePressed(*this, vm::ButtonOf(*event), vm::RecordOf(*event, clickCount));
}

void CWndView::Release(QMouseEvent* event) {
    event->accept();
    vm::MouseReleased(*this, vm::ButtonOf(*event), vm::RecordOf(*event, 1));
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
    for (CWnd* target = wnd; target; target = target->parentWnd) {
        BYTE itemEnabled = 0;
        BYTE second = 0;
        SHORT mark = 0;
        char text[256] = "";
        MacCmdUI state(id, itemEnabled, second, mark, text);
        LRESULT extra = 0;
        if (!target->OnCmdMsg(static_cast<UINT>(id), 0, &extra,
                              reinterpret_cast<AFX_CMDHANDLERINFO*>(static_cast<CCmdUI*>(&state))))
            continue;
        if (!target->OnCmdMsg(WM_COMMAND, id, &extra, nullptr))
            target->WindowProc(WM_COMMAND, static_cast<WPARAM>(id), 0);
        return;
    }
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
