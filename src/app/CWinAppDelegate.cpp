#include "app/CWinAppDelegate.h"

#include <cstring>

#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "app/programIcon.h"
#include "app/userDefaults.h"
#include "controls/menuActions.h"
#include "core/log.h"
#include "platform/mainqueue.h"
#include "platform/pathList.h"
#include "wnd/CWndNSView.h"
#include "wnd/CWndWindowController.h"
#include "wnd/NativeWindow.h"
#include "wnd/responder.h"

namespace {

// A chosen menu item: the focused view decides when there is one, else the application's delegate.
void RunMenuAction(QAction* item) {
    CWinAppDelegate& delegate = CWinAppDelegate::Shared();
    const char* action = vm::MenuActionOf(item);
    if (std::strcmp(action, "preferences") == 0) return delegate.preferences();
    if (std::strcmp(action, "about") == 0) return delegate.about();
    if (std::strcmp(action, "terminate") == 0) return PostQuitMessage(0);
    if (std::strcmp(action, "winCmd") != 0) return;
    if (CWndView* view = vm::FirstResponderView()) return view->winCmd(item);
    delegate.winCmd(item);
}

// A program that is a dialog ends with it: true when its user was asked to close the dialog.
bool CloseDialog(const CWnd& main) {
    if (!main.nsWindow || !CWndWindowController::Of(main.nsWindow)) return false;
    main.nsWindow->close();
    return true;
}

} // namespace

CWinAppDelegate& CWinAppDelegate::Shared() {
    static auto* const s_delegate = [] {
        vm::SetMenuActionTarget(RunMenuAction);
        return new CWinAppDelegate;
    }();
    return *s_delegate;
}

bool CWinAppDelegate::hasApplication() const {
    return vm::App().MainApp != nullptr;
}

void CWinAppDelegate::applicationWillFinishLaunching() {
    vm::SetUserDefault("NSDisabledDictationMenuItem", true);
    vm::SetUserDefault("NSDisabledCharacterPaletteMenuItem", true);
    // When a loop runs, also that of a dialog which is the whole program.
    vm::PostToMain({[](void*) { vm::ShowProgramIcon(); }, nullptr, nullptr});
    if (CWinApp* app = AfxGetApp()) {
        app->InitInstance();
        // Hosts also assign the field themselves, and expect the menu bar all the same.
        if (app->m_pMainWnd) AfxSetMainWnd(app->m_pMainWnd);
    }
    if (QMenu* menu = vm::MainMenu()) vm::AssignMenuDelegate(menu);
}

void CWinAppDelegate::applicationDidFinishLaunching() {}

bool CWinAppDelegate::openFile(const std::string& name) {
    CWnd* main = AfxGetMainWnd();
    if (!main) return false;
    vm::PathList paths{{name}};
    main->WindowProc(WM_DROPFILES, reinterpret_cast<WPARAM>(&paths), 0);
    return true;
}

vm::ApplicationDelegate::Reply CWinAppDelegate::applicationShouldTerminate() {
    if (vm::App().displayDlg) {
        vm::LogText(vm::LogModule::App, "the application does not end while a dialog is open");
        return Reply::Cancel;
    }
    CWnd* main = AfxGetMainWnd();
    if (!main) return Reply::Now;
    if (CloseDialog(*main)) return Reply::Cancel;
    return main->SendMessage(WM_QUERYCLOSE, 0, 0) == 0 ? Reply::Now : Reply::Cancel;
}

void CWinAppDelegate::applicationWillTerminate() {
    if (CWnd* main = AfxGetMainWnd()) main->WindowProc(WM_CLOSE, 0, 0);
    if (CWinApp* app = AfxGetApp()) app->ExitInstance();
}

void CWinAppDelegate::winCmd(QAction* sender) {
    if (!sender) {
        OutputDebugString("winCmd called by a non-MenuItem");
        return;
    }
    const int id = vm::MenuItemTag(sender);
    LRESULT handled = 0;
    // The key window says by the flag whether it took the command, the main window by its answer:
    // hosts' main windows leave the flag alone.
    if (CWnd* key = GetWRefCon(vm::NativeApplication::Shared().MainWindow()))
        key->OnCmdMsg(WM_COMMAND, id, &handled, nullptr);
    if (handled) return;
    CWnd* main = AfxGetMainWnd();
    if (!main) {
        OutputDebugString("winCmd called but MainWindow not assigned - cancelling command");
        return;
    }
    if (main->OnCmdMsg(WM_COMMAND, id, &handled, nullptr)) return;
    if (!CWndListVerify(main)) return; // the command has ended it
    OutputDebugString(
        "Warning!! winCmd called but CWndAppDelegate winCmd failure. May need to call "
        "dstWnd->WindowProc directly!!");
    main->WindowProc(WM_COMMAND, static_cast<WPARAM>(id), 0);
}

void CWinAppDelegate::preferences() {
    if (vm::App().displayDlg) return;
    if (CWnd* main = AfxGetMainWnd()) main->SendMessage(WM_COMMAND, ID_APP_PREFERENCES, 0);
}

void CWinAppDelegate::about() {
    if (vm::App().displayDlg) return;
    if (CWinApp* app = AfxGetApp()) app->MessageMap(WM_COMMAND, ID_APP_ABOUT, 0);
}
