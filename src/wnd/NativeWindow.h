// A top-level window: a menu bar, when it is the application's main window, above a content view.
// It keeps the frame last asked for and tells its delegate what the user and the window manager do.
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <vmcore/core/types.h>

class CWndDelegate;
class QMenuBar;

namespace vm {

/// How the frame of a window looks and what its user may do: Decorated has everything, Fixed a title
/// and a close button, FixedMinimisable a title and a minimise button, Dialog a title and a close
/// button. Only a decorated one can be resized by its user, and a dialog that is given a minimum and
/// a maximum of its own.
enum class FrameStyle { Decorated, Fixed, FixedMinimisable, Dialog };

class NativeWindow : public QWidget {
public:
    /// `content` is where the content view goes, in screen coordinates. The window is hidden.
    NativeWindow(const QRect& content, FrameStyle style, bool floating);
    ~NativeWindow() override;

    QWidget* ContentView() const { return m_content; }
    /// Owned by the window; one at a time.
    CWndDelegate* Delegate() const { return m_delegate; }
    void SetDelegate(CWndDelegate* delegate);

    /// The frame last asked for or reported, in screen coordinates, title bar and menu bar
    /// included.
    QRect Frame() const { return m_frame; }
    /// Moves or resizes the frame without a report: who asks sends the messages.
    void MoveFrame(const QPoint& topLeft);
    void ResizeFrame(const QSize& size);
    /// The same with the size of the content, whatever the margins of the frame turn out to be.
    void ResizeContent(const QSize& size);

    /// How small and large the user may make the frame. MoveFrame and ResizeFrame go beyond.
    void SetTrackSizes(const QSize& smallest, const QSize& largest);

    /// Of a dialog, how small and large its user may make the content; both the same: not at all.
    void SetContentLimits(const QSize& smallest, const QSize& largest);

    /// Before the first show: the window stays in front of its owner, and a dialog appears over the
    /// middle of it (of the screen without one), unless it was moved before.
    void SetOwner(QWidget* owner);
    /// Does that now, for a dialog that its host may still move.
    void PlaceOverOwner();

    /// Whether the program ends when this was its last window, as it does at first: a dialog's end
    /// is not the program's.
    void SetEndsProgram(bool ends) { m_endsProgram = ends; }

    /// Shows the application's main menu as this window's menu bar, or takes it away. The frame
    /// grows or shrinks by it; the content keeps its size.
    void SetMenuBarShown(bool shown);
    QMenuBar* MenuBar() const { return m_menuBar; }

    void OrderFront(bool activate);
    void OrderOut();
    /// Takes it off the screen; its views still answer.
    void Leave();
    /// The same, and frees it when control is back in the event loop.
    void Dispose();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void HandleEvent(QEvent* event);
    void PlaceContent();
    int MenuBarHeight() const;
    QSize WithMenuBar(const QSize& content) const;
    void ShiftLimits(int height);
    QMargins KnownMargins() const;
    void StartSettling();
    void Settle();
    void TakeMargins();
    QRect NativeFrame() const;
    void ApplySize();
    void ApplyNativeSize(const QSize& size);
    void ApplyLimits(const QSize& size);
    void AskLimits(bool resized);
    void ScheduleReport();
    void ReportChanges();
    void Expect();
    void BecomeKey();
    void ResignKey();
    void WindowStateChanged(Qt::WindowStates before);

    const FrameStyle m_style;
    QWidget* m_content;
    QPointer<QWidget> m_owner;
    const bool m_userResizable;
    bool m_limitsAsked = false;
    QSize m_smallest{0, 0}; // of the frame, for the user
    QSize m_largest;        // invalid without a limit
    QSize m_told;           // the content's size that the object knows
    QMenuBar* m_menuBar = nullptr;
    CWndDelegate* m_delegate = nullptr;
    QRect m_frame;             // last asked for or reported
    bool m_placeAsked = false; // the frame was asked for while its margins were unknown:
    bool m_sizeAsked = false;  // it is set once more when they are
    QMargins m_margins;        // of the frame, as last seen
    bool m_settling = false;   // shown, and the window manager is still putting its frame on
    int m_settleSteps = 0;
    QElapsedTimer m_asked; // since the last request; invalid once it is confirmed
    bool m_silent = false; // inside a request of ours
    bool m_reportPending = false;
    bool m_closing = false;
    bool m_disposed = false;
    bool m_endsProgram = true;
    bool m_isKey = false; // told that it has the focus, and not yet that it lost it
};

CWndDelegate* DelegateOf(NSWindow* window);

/// Makes `window` the one that shows the application's main menu; null takes it from all.
void ShowMenuBarOf(NSWindow* window);

} // namespace vm
