// Runs a dialog of the toolkit's, which may be the desktop's own, as a modal dialog of the library.
#pragma once

#include <QtCore/QPointer>
#include <QtWidgets/QDialog>

#include <vmcore/core/types.h>

namespace vm {

/// Whether there is anybody to ask. Else, and on another than the main thread, a log line says that
/// `name` is cancelled.
bool CanShowDialog(const char* name);

/// The window that a dialog appears over: the owner's, else the one in use.
QWidget* DialogParent(HWND owner);

/// Whether the dialog was accepted. It may be gone afterwards, with its parent. What a handler throws
/// meanwhile is shown in an alert, and the dialog is cancelled.
bool RunToolkitDialog(QDialog* dialog);

/// What CommDlgExtendedError answers.
void SetDialogError(DWORD error);

} // namespace vm
