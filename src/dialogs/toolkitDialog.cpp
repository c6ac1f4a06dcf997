#include "dialogs/toolkitDialog.h"

#include <QtWidgets/QApplication>

#include <vmcore/dialogs/commdlg.h>

#include "core/log.h"
#include "dialogs/displayedDialog.h"
#include "dialogs/modalRun.h"
#include "platform/mainqueue.h"
#include "platform/messagebox.h"

namespace vm {
namespace {

DWORD& LastError() {
    static thread_local DWORD t_error = 0;
    return t_error;
}

// A dialog asks questions of its own, and opens menus, in loops that only end with these.
void CloseWithChildren(const QPointer<QDialog>& dialog) {
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    if (!dialog) return;
    for (QDialog* question : dialog->findChildren<QDialog*>()) question->reject();
    if (dialog) dialog->reject();
}

} // namespace

bool CanShowDialog(const char* name) {
    const bool can = IsMainThread() && !IsUnattended();
    if (!can) Log(LogModule::Dialogs, "%s: cancelled, there is nobody to ask", name);
    SetDialogError(0);
    return can;
}

QWidget* DialogParent(HWND owner) {
    QWidget* const window = LiveOwner(owner);
    return window ? window : ActiveWindow();
}

bool RunToolkitDialog(QDialog* native) {
    const QPointer<QDialog> dialog = native;
    const DisplayedDialog displayed;
    const ClosedWithLoops closed([&dialog] { CloseWithChildren(dialog); });
    ModalLoop loop;
    const auto finished = QObject::connect(dialog, &QDialog::finished, [&loop] { loop.End(); });
    const auto gone = QObject::connect(dialog, &QObject::destroyed, [&loop] { loop.End(); });
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->show();
    Shielded([&loop] { loop.Run(); });
    const bool accepted = dialog && dialog->result() == QDialog::Accepted && !dialog->isVisible();
    if (!accepted) CloseWithChildren(dialog);
    QObject::disconnect(finished);
    QObject::disconnect(gone);
    return accepted;
}

void SetDialogError(DWORD error) {
    LastError() = error;
}

} // namespace vm

DWORD CommDlgExtendedError() {
    return vm::LastError();
}
