// One run of a modal dialog, from its file to its result. It outlives the dialog: any handler may
// delete that.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <vmcore/core/types.h>

#include "platform/runloop.h"

class CDialog;
class CWndWindowController;

namespace vm {

class ModalRun {
public:
    explicit ModalRun(CDialog& dialog);
    ~ModalRun();
    ModalRun(const ModalRun&) = delete;
    ModalRun& operator=(const ModalRun&) = delete;

    /// What DoModal returns.
    int Run();

    /// The dialog's run, null when it has none.
    static ModalRun* Of(const CDialog& dialog);
    void End();
    /// The dialog is being deleted.
    void ForgetDialog();

private:
    bool Load();
    std::unique_ptr<CWndWindowController> LoadController() const;
    void Bind();
    void Open();
    void Loop();
    void Unbind();
    void SaveAndSayGoodbye();
    void Close();
    NSWindow* Window() const; // null once it is gone
    bool IsOpen() const;
    int Result() const;

    CDialog* m_dialog; // null once it has been deleted
    int m_lastResult = 0;
    bool m_wasEnded = false;
    std::string m_name; // of the interface file
    std::unique_ptr<CWndWindowController> m_controller;
    QPointer<QWidget> m_window;
    QPointer<QWidget> m_activeBefore;
    ModalLoop m_loop;
};

/// Runs a part of a dialog. What it throws is shown in an alert: no exception leaves a dialog.
void Shielded(const std::function<void()>& part);

} // namespace vm
