// CWndViewController: receives the actions of the controls of an embedded dialog for its window
// object, and gives the keys that its controls leave alone to the dialog that it is in.
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>

#include "wnd/ControlActions.h"

class CWndView;

class CWndViewController : public QObject, public vm::ControlActions {
public:
    explicit CWndViewController(CWndView* view);

    CWnd* wnd() const { return m_wnd; }
    void setWnd(CWnd* wnd) { m_wnd = wnd; }
    CWndView* view() const; ///< null once it is gone

protected:
    CWnd* ActionTarget() const override { return m_wnd; }
    const char* ActionsName() const override { return "CWndWindowController"; }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    CWnd* m_wnd = nullptr;
    QPointer<QWidget> m_view;
};
