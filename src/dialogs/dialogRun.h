// How a CDialog takes part in a modal run, and how its view is bound when it is embedded.
#pragma once

#include <memory>

#include "dialogs/modalRun.h"

class CDialog;
class CWndViewController;

namespace vm {

/// The window comes from DLG_<templateId>.ui, the values go to the variables at the end.
ModalClient ClientOf(CDialog& dialog);

/// The dialog is the object of the loaded view from now on; a view that it had before goes.
void BindView(CDialog& dialog, std::unique_ptr<CWndViewController> controller, CWnd* parent);
/// WM_CREATE and WM_INITDIALOG. False when the dialog or its view went away in one of them.
bool TellOfCreation(CDialog& dialog);

} // namespace vm
