#include "dialogs/displayedDialog.h"

#include <QtWidgets/QApplication>

#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "platform/NativeApplication.h"
#include "wnd/NativeWindow.h"

namespace vm {

DisplayedDialog::DisplayedDialog() {
    if (App().isPluginEnvironment && App().displayDlg == 0) HideMainMenu();
    ++App().displayDlg;
}

DisplayedDialog::~DisplayedDialog() {
    if (App().displayDlg > 0) --App().displayDlg;
    if (App().isPluginEnvironment && App().displayDlg == 0) ShowMainMenu();
}

QWidget* ActiveWindow() {
    if (QWidget* active = QApplication::activeWindow()) return active;
    if (NativeWindow* last = NativeApplication::Shared().MainWindow()) return last;
    const CWnd* main = App().MainApp ? App().MainApp->m_pMainWnd : nullptr;
    return main ? main->nsWindow : nullptr;
}

} // namespace vm
