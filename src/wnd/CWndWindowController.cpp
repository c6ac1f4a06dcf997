#include "wnd/CWndWindowController.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QtGui/QKeyEvent>
#include <QtWidgets/QPushButton>

#include <vmcore/app/messages.h>
#include <vmcore/app/registry.h>
#include <vmcore/wnd/CWnd.h>

#include "platform/eventboundary.h"
#include "wnd/NativeWindow.h"
#include "wnd/tabStops.h"
#include "wnd/tagTable.h"

namespace {

std::vector<CWndWindowController*>& Controllers() {
    static auto* const s_controllers = new std::vector<CWndWindowController*>;
    return *s_controllers;
}

} // namespace

CWndWindowController::CWndWindowController(NSWindow* window) : m_window(window) {
    Controllers().push_back(this);
    window->installEventFilter(this);
    connect(window, &QObject::destroyed, this, &CWndWindowController::TellGone);
}

CWndWindowController::~CWndWindowController() {
    std::vector<CWndWindowController*>& all = Controllers();
    all.erase(std::remove(all.begin(), all.end(), this), all.end());
}

NSWindow* CWndWindowController::window() const {
    return static_cast<NSWindow*>(m_window.data());
}

CWndWindowController* CWndWindowController::Of(const QWidget* window) {
    for (CWndWindowController* controller : Controllers())
        if (window && controller->m_window == window) return controller;
    return nullptr;
}

bool CWndWindowController::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::Close:
        event->ignore();
        vm::AtEventBoundary([this] { Close(); });
        return true;
    case QEvent::KeyPress:
        return TakeKey(*static_cast<QKeyEvent*>(event));
    case QEvent::Hide:
        if (!IsValidWindowPtr(window())) TellGone();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool CWndWindowController::TakeKey(const QKeyEvent& key) {
    if (m_ended || key.modifiers() & ~Qt::KeypadModifier) return false;
    const bool repeats = key.isAutoRepeat(); // a key held down acts once
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (QAbstractButton* button = repeats ? nullptr : ButtonForReturn()) button->click();
        return true;
    case Qt::Key_Escape:
        if (!repeats) vm::AtEventBoundary([this] { Cancel(); });
        return true;
    default:
        return false;
    }
}

QAbstractButton* CWndWindowController::ButtonForReturn() const {
    if (!m_window) return nullptr;
    if (auto* focused = qobject_cast<QPushButton*>(m_window->focusWidget())) return focused;
    for (QPushButton* button : m_window->findChildren<QPushButton*>())
        if (button->isDefault() && button->isVisible()) return button;
    return qobject_cast<QAbstractButton*>(vm::FindTagged(window()->ContentView(), IDOK));
}

// A dialog may refuse to be closed like any window.
void CWndWindowController::Close() {
    if (m_ended || !m_wnd) return;
    const QPointer<CWndWindowController> self = this;
    if (m_wnd->SendMessage(WM_QUERYCLOSE, 0, 0) == 0 && self) Cancel();
}

// As a click of the button with the tag 2, which may be disabled, or missing.
void CWndWindowController::Cancel() {
    if (m_ended || !m_wnd || !m_window) return;
    const QWidget* button = vm::FindTagged(window()->ContentView(), IDCANCEL);
    if (!button || button->isEnabled()) m_wnd->WindowProc(WM_COMMAND, IDCANCEL, 0);
}

void CWndWindowController::FocusFirstControl() {
    if (m_window && !m_window->focusWidget()) vm::FocusFirstTabStop(*m_window);
}

void CWndWindowController::TellGone() {
    if (const auto tell = std::exchange(onGone, nullptr)) tell();
}
