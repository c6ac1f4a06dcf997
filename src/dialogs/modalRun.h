// One run of a modal dialog, from its window to its result. It outlives the dialog: any handler may
// delete that. What the window is made of is the client's matter: see dialogRun.cpp, Sheet.cpp.
#pragma once

#include <functional>
#include <memory>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <vmcore/core/types.h>

#include "platform/runloop.h"

class CWnd;
class CWndWindowController;

namespace vm {

/// The window object that is run, its fields that the run writes, and what it does in its own way.
struct ModalClient {
    CWnd* wnd;
    int* ended;
    int* result;
    CWndWindowController** controller;
    /// Makes the window in front of `over`: hidden, its controls wired. Null, or a controller without
    /// a window, with log lines, when it cannot be made.
    std::function<std::unique_ptr<CWndWindowController>(QWidget* over)> makeWindow;
    std::function<void()> atEnd; ///< before the closing notice; the object and its window are there
    int failure;                 ///< what Run returns when there is no window
};

class ModalRun {
public:
    explicit ModalRun(ModalClient client);
    ~ModalRun();
    ModalRun(const ModalRun&) = delete;
    ModalRun& operator=(const ModalRun&) = delete;

    /// What DoModal returns.
    int Run();

    /// The object's run, null when it has none.
    static ModalRun* Of(const CWnd& wnd);
    void End();
    /// The object is being deleted.
    void ForgetObject();

private:
    bool Load();
    void TakePlace();
    void Bind();
    void Open();
    void Loop();
    void Unbind();
    void SaveAndSayGoodbye();
    void Close();
    NSWindow* Window() const; // null once it is gone
    bool IsOpen() const;
    bool IsMainWindow() const;
    int Result() const;

    ModalClient m_client;
    CWnd* m_wnd; // null once it has been deleted
    int m_lastResult = 0;
    bool m_wasEnded = false;
    std::unique_ptr<CWndWindowController> m_controller;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_activeBefore;
    ModalLoop m_loop;
};

/// Runs a part of a dialog. What it throws is shown in an alert: no exception leaves a dialog.
void Shielded(const std::function<void()>& part);

} // namespace vm
