// CWndWindowController: the window of a modal dialog. Receives the actions of its controls, and
// does with Return, Escape and the close button what dialogs do.
#pragma once

#include <functional>

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QAbstractButton>

#include <vmcore/core/types.h>

#include "wnd/ControlActions.h"

class QKeyEvent;

class CWndWindowController : public QObject, public vm::ControlActions {
public:
    explicit CWndWindowController(NSWindow* window);
    ~CWndWindowController() override;

    CWnd* wnd() const { return m_wnd; }
    void setWnd(CWnd* wnd) { m_wnd = wnd; }
    NSWindow* window() const; ///< null once it is gone

    /// Return clicks the button that has the focus, else the default button; Escape is the command
    /// 2. False for any other key.
    bool TakeKey(const QKeyEvent& key);
    /// The dialog has ended: keys and the close button do nothing more.
    void SetEnded() { m_ended = true; }
    /// Puts the focus on the first control, unless some control has it already.
    void FocusFirstControl();

    std::function<void()> onGone; ///< called when the window is destroyed by someone else

    /// The controller of a dialog's window; null for any other.
    static CWndWindowController* Of(const QWidget* window);

protected:
    CWnd* ActionTarget() const override { return m_wnd; }
    const char* ActionsName() const override { return "CWndWindowController"; }
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAbstractButton* ButtonForReturn() const;
    void Close();
    void Cancel();
    void TellGone();

    CWnd* m_wnd = nullptr;
    QPointer<QWidget> m_window;
    bool m_ended = false;
};
