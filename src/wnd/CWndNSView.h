// CWndView: the view of every child window made by CWnd::Create. It turns the toolkit's events into
// neutral records (viewEvents.h) and holds what the window object's view needs to know.
#pragma once

#include <QtCore/QSize>
#include <QtWidgets/QWidget>

#include <vmcore/core/types.h>

#include "wnd/ControlActions.h"
#include "wnd/viewEvents.h"

class CWnd;
class QAction;
struct tagCREATESTRUCT;

class CWndView : public QWidget, public vm::ControlActions {
public:
    /// Frame and tag from the record, added to the record's parent view.
    CWndView(const tagCREATESTRUCT& cs, CWnd* wnd);
    /// A view from an interface file: bound to its object later.
    explicit CWndView(QWidget* parent);
    ~CWndView() override;

    /// The property "tag", which interface files set too.
    int tag() const { return m_tag; }
    void setTag(int tag);
    CWnd* getCWnd() const { return wnd; }
    bool isFlipped() const { return flipped; }
    void setFlipped(bool flag) { flipped = flag; }
    void setEnabledFlag(bool flag);
    void TakeSizeAsKnown() { m_reported = size(); } ///< the object needs no WM_SIZE for it

    /// Moves and resizes the view; sends WM_SIZE (2) and, when the origin changed, WM_MOVE.
    void setFrame(const QRect& frame);
    /// Whether files may be dropped on the view: not before this.
    void dragAcceptFiles(bool accept) { setAcceptDrops(accept); }

    /// A chosen menu item while this view has the focus: the first object up the parents with a
    /// handler gets the command. Null stands for a sender that is no menu item.
    void winCmd(QAction* sender);

    // The timers of a child window: see CWnd::SetTimer.
    UINT setTimer(UINT id, UINT elapse, void* procedure);
    BOOL killTimer(UINT id);
    void killAllTimers();

    CWnd* wnd;           ///< receives the messages; null once its object is gone
    bool flipped = true; ///< top-down
    bool callOnDealloc = false;
    bool LButtonDownInternal = false;
    int dragged = 0;     ///< 0 after a plain move, 1 after a left drag, 2 after another drag
    bool enabled = true; ///< when false, mouse, wheel and key events are ignored

protected:
    CWnd* ActionTarget() const override { return wnd; }
    const char* ActionsName() const override { return "CWndNSView"; }
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Initialise();
    bool HandleEvent(QEvent* event);
    bool HandleMouse(QEvent* event);
    void Press(QMouseEvent* event);
    void Release(QMouseEvent* event);
    void PressKey(const QKeyEvent& event);
    void TakeInput(const QInputMethodEvent& event);
    void AskForContextMenu(const QPoint& screen);
    CWnd* HandlerOf(int command) const;
    void SendPaint(QPaintEvent* event);
    void ReportFrame(const QRect& before);

    int m_tag = 0;
    bool initMode = true; ///< no WM_SIZE and WM_MOVE while the view is being made
    bool m_inSetFrame = false;
    QSize m_reported; ///< the size that the object knows
};
