// Visibility, state, painting, focus, capture, timers, font and colours.
#include <vmcore/wnd/CWnd.h>

#include <cstring>

#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QAbstractSlider>
#include <QtWidgets/QAbstractSpinBox>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QGroupBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QProgressBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTextEdit>

#include <vmcore/wnd/frames.h>

#include "controls/menuActions.h"
#include "core/guard.h"
#include "gdi/temporaryFont.h"
#include "platform/NativeApplication.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/NativeWindow.h"
#include "wnd/SpinArrows.h"
#include "wnd/deviceContexts.h"
#include "wnd/heldViews.h"
#include "wnd/responder.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"
#include "wnd/windowState.h"
#include "wnd/windowTimers.h"

namespace {

// The object of a view, or the scratch window bound to it for a view without one.
CWnd* ObjectOrScratch(HWND view) {
    if (!view) return nullptr;
    if (CWnd* known = GetControlReference(view)) return known;
    CWnd* scratch = getTempWnd(false);
    scratch->view = view;
    return scratch;
}

// A view that was never shown or hidden by anybody appears with its window.
bool IsHidden(const QWidget& view) {
    return view.testAttribute(Qt::WA_WState_Hidden) &&
           view.testAttribute(Qt::WA_WState_ExplicitShowHide);
}

template <class... Classes>
bool IsOneOf(const QWidget& view) {
    return (... || (qobject_cast<const Classes*>(&view) != nullptr));
}

// What a person works or reads, other than the views that only hold such.
bool IsControl(const QWidget& view) {
    if (dynamic_cast<const vm::SpinArrows*>(&view)) return true;
    const auto* frame = qobject_cast<const QGroupBox*>(&view);
    if (frame && !frame->findChild<QWidget*>()) return true;
    return IsOneOf<QAbstractButton, QLineEdit, QComboBox, QAbstractSpinBox, QAbstractSlider, QLabel,
                   QAbstractItemView, QTextEdit, QPlainTextEdit, QTabBar, QTabWidget, QProgressBar>(
        view);
}

void ShowTopLevel(NSWindow& window, int show) {
    switch (show) {
    case SW_HIDE:
        window.OrderOut();
        break;
    case SW_SHOWNORMAL:
    case SW_SHOWNOACTIVATE:
        window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
        break;
    case SW_SHOW:
        window.OrderFront(false);
        break;
    case SW_MINIMIZE:
        window.setWindowState(window.windowState() | Qt::WindowMinimized);
        break;
    default:
        break;
    }
}

} // namespace

BOOL CWnd::ModifyStyle(DWORD remove, DWORD add, UINT) {
    style = (style & ~remove) | add;
    return TRUE;
}

BOOL CWnd::ModifyStyleEx(DWORD, DWORD, UINT) {
    return TRUE;
}

// A view without a parent would become a window of the desktop.
static void ShowView(QWidget& view, bool show) {
    if (view.parentWidget() || !show) view.setVisible(show);
}

BOOL CWnd::ShowWindow(int show) {
    if (!view) return FALSE;
    vm::Guarded(vm::LogModule::Wnd, "CWnd::ShowWindow()", [&] {
        const vm::HeldViews held; // hiding may move the focus
        if (nsWindow)
            ShowTopLevel(*nsWindow, show);
        else if (show == SW_HIDE || show == SW_SHOW)
            ShowView(vm::LiveView(view), show == SW_SHOW);
        vm::WindowState& windows = vm::Windows();
        if (show == SW_HIDE && windows.ActiveWnd == this) windows.ActiveWnd = nullptr;
    });
    // Hiding takes the focus away, which may have ended it.
    if (CWndListVerify(this)) WindowProc(WM_SHOWWINDOW, show == SW_SHOW, 0);
    return TRUE;
}

BOOL CWnd::IsWindowVisible() const {
    if (nsWindow) return nsWindow->isVisible();
    if (!vm::IsLiveView(view)) return FALSE;
    const QWidget* const window = vm::WindowOf(view); // shown or not, it is not asked
    for (const QWidget* step = view; step && step != window; step = step->parentWidget())
        if (IsHidden(*step)) return FALSE;
    return TRUE;
}

BOOL CWnd::EnableWindow(BOOL enable) {
    if (!view) return FALSE;
    return vm::Guarded(vm::LogModule::Wnd, "CWnd::EnableWindow()", BOOL{TRUE}, [&] {
        if (!nsWindow) {
            QWidget& live = vm::LiveView(view);
            if (auto* own = dynamic_cast<CWndView*>(&live))
                own->setEnabledFlag(enable != 0);
            else if (IsControl(live))
                live.setEnabled(enable != 0);
        }
        vm::WindowState& windows = vm::Windows();
        if (!enable && windows.ActiveWnd == this) windows.ActiveWnd = nullptr;
        return BOOL{TRUE};
    });
}

BOOL CWnd::IsWindowEnabled() const {
    if (nsWindow || !vm::IsLiveView(view)) return TRUE;
    if (const auto* own = dynamic_cast<const CWndView*>(view)) return own->enabled;
    // A control in a disabled group is not disabled itself.
    return !IsControl(*view) || !view->testAttribute(Qt::WA_ForceDisabled);
}

void CWnd::BringWindowToTop() {
    vm::Guarded(vm::LogModule::Wnd, "CWnd::BringWindowToTop()", [this] {
        if (nsWindow) nsWindow->OrderFront(true);
    });
}

CWnd* CWnd::SetActiveWindow() {
    if (!view) return nullptr;
    vm::Guarded(vm::LogModule::Wnd, "CWnd::SetActiveWindow()", [this] {
        if (nsWindow)
            nsWindow->OrderFront(true);
        else
            vm::Windows().ActiveWnd = this;
    });
    return nullptr;
}

void CWnd::Invalidate(BOOL) {
    if (!view) return;
    vm::Guarded(vm::LogModule::Wnd, "CWnd::Invalidate()", [this] { vm::LiveView(view).update(); });
}

void CWnd::InvalidateRect(const RECT* rect, BOOL erase) {
    if (!rect) return Invalidate(erase);
    if (!view) return;
    vm::Guarded(vm::LogModule::Wnd, "CWnd::InvalidateRect()", [&] {
        const double scale = vm::ScaleOf(*this);
        const QRectF area(rect->left * scale, rect->top * scale, (rect->right - rect->left) * scale,
                          (rect->bottom - rect->top) * scale);
        vm::LiveView(view).update(area.toAlignedRect());
    });
}

BOOL CWnd::NeedsToDrawRect(CGRect rect) const {
    const vm::CurrentPaint* const paint = vm::CurrentPaint::OfView(view);
    if (!paint) return FALSE;
    const double scale = vm::ScaleOf(*this);
    const QRectF area(rect.origin.x * scale, rect.origin.y * scale, rect.size.width * scale,
                      rect.size.height * scale);
    return paint->Region().intersects(area.toAlignedRect());
}

void CWnd::DragAcceptFiles(BOOL accept) {
    if (nsWindow) {
        if (CWndDelegate* delegate = vm::DelegateOf(nsWindow)) delegate->dragAcceptFiles(accept);
    } else if (isCustomNSView()) {
        static_cast<CWndView*>(view)->dragAcceptFiles(accept != 0);
    }
}

BOOL CWnd::UpdateWindow() {
    if (!view) return FALSE;
    return vm::Guarded(vm::LogModule::Wnd, "CWnd::UpdateWindow()", BOOL{TRUE}, [this] {
        QWidget& live = vm::LiveView(view);
        // The toolkit cannot paint inside a paint; what is invalid then is painted right after it.
        if (live.isVisible() && vm::Windows().paints == 0)
            QApplication::sendPostedEvents(live.window(), QEvent::UpdateRequest);
        return BOOL{TRUE};
    });
}

BOOL CWnd::RedrawWindow(const RECT*, CRgn*, UINT) {
    UpdateWindow();
    return TRUE;
}

void CWnd::SetRedraw(BOOL redraw) {
    redrawEnabled = redraw;
}

CWnd* CWnd::SetFocus() {
    if (!vm::IsLiveView(view)) return nullptr;
    if (view->focusPolicy() == Qt::NoFocus) {
        if (!nsWindow)
            vm::LogText(vm::LogModule::Wnd,
                        "Request to SetFocus to an NSView which doesn't accept focus");
        return nullptr;
    }
    QWidget* const target = view; // GetFocus rebinds the scratch window, which this may be
    CWnd* previous = GetFocus();
    const vm::HeldViews held; // what is told of the focus may destroy both
    target->window()->activateWindow();
    target->setFocus(Qt::OtherFocusReason);
    return previous;
}

CWnd* CWnd::GetFocus() {
    return ObjectOrScratch(vm::FocusOrResponder());
}

CWnd* CWnd::SetCapture() {
    return ObjectOrScratch(::SetCapture(view));
}

CWnd* CWnd::GetCaptureWnd() {
    return GetControlReference(vm::Windows().CaptureWnd);
}

HWND SetCapture(HWND window) {
    HWND previous = vm::Windows().CaptureWnd;
    vm::Windows().CaptureWnd = window;
    return previous;
}

HWND GetCapture() {
    return vm::Windows().CaptureWnd;
}

BOOL ReleaseCapture() {
    vm::Windows().CaptureWnd = nullptr;
    return TRUE;
}

UINT CWnd::SetTimer(UINT id, UINT elapse, TIMERPROC procedure) {
    void* stored = reinterpret_cast<void*>(procedure);
    if (nsWindow) {
        CWndDelegate* delegate = vm::DelegateOf(nsWindow);
        return delegate ? delegate->setTimer(id, elapse, stored) : 0;
    }
    if (view) {
        return isCustomNSView() ? static_cast<CWndView*>(view)->setTimer(id, elapse, stored)
                                : vm::StartTimer(this, vm::TimerHost::View, id, elapse, stored);
    }
    auto* frame = dynamic_cast<CMDIFrameWnd*>(this);
    return frame && frame->m_timer ? frame->m_timer->setTimer(id, elapse, stored) : 0;
}

// By name: a host may have a record of its own for its frame.
static bool IsMDIFrame(const CRuntimeClass* record) {
    while (record && strcasecmp(record->m_lpszClassName, "CMDIFrameWnd") != 0)
        record = record->m_pfnGetBaseClass ? record->m_pfnGetBaseClass() : nullptr;
    return record != nullptr;
}

BOOL CWnd::KillTimer(UINT id) {
    if (nsWindow) {
        CWndDelegate* delegate = vm::DelegateOf(nsWindow);
        return delegate && delegate->killTimer(id);
    }
    if (view) return vm::KillTimerOf(this, id);
    if (!IsMDIFrame(GetRuntimeClass())) return FALSE;
    auto* frame = dynamic_cast<CMDIFrameWnd*>(this);
    return frame && frame->m_timer && frame->m_timer->killTimer(id);
}

BOOL KillTimer(HWND, UINT) {
    return TRUE;
}

CMenu* CWnd::GetMenu() {
    if (view && !nsWindow) return nullptr;
    if (!menu.GetSafeHmenu()) menu.Attach(vm::MainMenu());
    return &menu;
}

void CWnd::SetFont(CFont* newFont, BOOL redraw) {
    font = newFont;
    if (redraw) Invalidate(TRUE);
}

CFont* CWnd::GetFont() const {
    return font ? font : vm::TemporaryFont();
}

COLORREF CWnd::SetBkColor(COLORREF color) {
    return std::exchange(bkColor, color);
}
COLORREF CWnd::SetTextColor(COLORREF color) {
    return std::exchange(textColor, color);
}
