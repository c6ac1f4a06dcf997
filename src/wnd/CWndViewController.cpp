#include "wnd/CWndViewController.h"

#include <QtGui/QKeyEvent>

#include "wnd/CWndNSView.h"
#include "wnd/CWndWindowController.h"

CWndViewController::CWndViewController(CWndView* view) : m_view(view) {
    view->installEventFilter(this);
}

CWndView* CWndViewController::view() const {
    return static_cast<CWndView*>(m_view.data());
}

// A key that arrives here although another view has the focus is one that a control left alone.
bool CWndViewController::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress || !m_view || m_view->hasFocus())
        return QObject::eventFilter(watched, event);
    CWndWindowController* outer = CWndWindowController::Of(m_view->window());
    return outer && outer->TakeKey(*static_cast<QKeyEvent*>(event));
}
