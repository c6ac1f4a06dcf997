#include "dialogs/modalRun.h"

#include <algorithm>

#include <QtWidgets/QApplication>

#include <vmcore/app/CWinApp.h>
#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/dataExchange.h>

#include "app/appState.h"
#include "core/guard.h"
#include "core/typeName.h"
#include "dialogs/dialogFile.h"
#include "dialogs/dialogState.h"
#include "platform/NativeApplication.h"
#include "platform/bundle.h"
#include "platform/messagebox.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/CWndWindowController.h"
#include "wnd/NativeWindow.h"
#include "wnd/views.h"
#include "wnd/windowState.h"

namespace vm {
namespace {

constexpr DWORD kExtendedStyle = 0x40; // what every modal dialog has

// Counted for the state of the menus; the first one in a foreign program hides that's main menu.
class DisplayedDialog {
public:
    DisplayedDialog() {
        if (App().isPluginEnvironment && App().displayDlg == 0) HideMainMenu();
        ++App().displayDlg;
    }
    ~DisplayedDialog() {
        if (App().displayDlg > 0) --App().displayDlg;
        if (App().isPluginEnvironment && App().displayDlg == 0) ShowMainMenu();
    }
    DisplayedDialog(const DisplayedDialog&) = delete;
    DisplayedDialog& operator=(const DisplayedDialog&) = delete;
};

// The window that the user is in.
QWidget* ActiveWindow() {
    if (QWidget* active = QApplication::activeWindow()) return active;
    if (NativeWindow* last = NativeApplication::Shared().MainWindow()) return last;
    const CWnd* main = App().MainApp ? App().MainApp->m_pMainWnd : nullptr;
    return main ? main->nsWindow : nullptr;
}

void LogFailure(const char* text, const std::string& name) {
    LogText(LogModule::Dialogs, text);
    Log(LogModule::Dialogs, "%s", name.c_str());
}

bool IsInPlugInWithoutPath() {
    return App().isPluginEnvironment && (!App().DVBundle || App().DVBundle->Path().empty());
}

} // namespace

void Shielded(const std::function<void()>& part) {
    try {
        part();
    } catch (const PlatformError& error) {
        ShowAlert(error.Name().c_str(), error.Reason().c_str());
    } catch (const std::exception& error) {
        ShowAlert(TypeName(typeid(error)).c_str(), error.what());
    } catch (...) {
        ShowAlert("unknown exception", "");
    }
}

ModalRun::ModalRun(CDialog& dialog) : m_dialog(&dialog) {
    Dialogs().runs.push_back(this);
}

ModalRun::~ModalRun() {
    std::vector<ModalRun*>& runs = Dialogs().runs;
    runs.erase(std::remove(runs.begin(), runs.end(), this), runs.end());
}

ModalRun* ModalRun::Of(const CDialog& dialog) {
    for (ModalRun* run : Dialogs().runs)
        if (run->m_dialog == &dialog) return run;
    return nullptr;
}

void ModalRun::End() {
    if (m_controller) m_controller->SetEnded();
    m_loop.End();
}

void ModalRun::ForgetDialog() {
    m_lastResult = m_dialog->result;
    m_wasEnded = m_dialog->ended != 0;
    m_dialog = nullptr;
    End();
    m_controller.reset(); // its controls have nobody to report to
}

NSWindow* ModalRun::Window() const {
    return static_cast<NSWindow*>(m_window.data());
}

bool ModalRun::IsOpen() const {
    return m_dialog && m_window && m_dialog->nsWindow == Window();
}

int ModalRun::Result() const {
    const bool wasEnded = m_dialog ? m_dialog->ended != 0 : m_wasEnded;
    return !wasEnded ? IDCANCEL : m_dialog ? m_dialog->result : m_lastResult;
}

int ModalRun::Run() {
    if (LoopsAreEnding()) return IDCANCEL;
    const ResourceHandleScope resources(m_dialog->resourceBundle);
    Windows().CaptureWnd = nullptr;
    m_dialog->ended = 0;
    m_dialog->result = 0;
    bool isLoaded = false;
    Shielded([&] { isLoaded = Load(); });
    if (!isLoaded) return IDCANCEL;
    Bind();
    Shielded([this] { Open(); });
    Loop();
    Unbind();
    Shielded([this] { SaveAndSayGoodbye(); });
    Close();
    return Result();
}

bool ModalRun::Load() {
    if (m_dialog->templateId != 0) m_name = Format("DLG_%d", m_dialog->templateId);
    CREATESTRUCT cs{};
    m_dialog->PreCreateWindow(cs);
    if (!m_dialog) return false;
    m_dialog->exStyle |= kExtendedStyle;
    m_controller = LoadController();
    if (!m_controller) return false;
    m_window = m_controller->window();
    if (!m_window) LogFailure("DV Plugin Internal Error! Failed to create Dialog window", m_name);
    return m_window != nullptr;
}

std::unique_ptr<CWndWindowController> ModalRun::LoadController() const {
    if (IsInPlugInWithoutPath()) {
        LogFailure("DV Plugin Internal error: failed to create full path in CDialog::DoModal()",
                   m_name);
        return nullptr;
    }
    std::unique_ptr<CWndWindowController> controller;
    if (qobject_cast<QApplication*>(QCoreApplication::instance()))
        controller = LoadDialogWindow(m_name, ActiveWindow());
    if (!controller)
        LogFailure(App().isPluginEnvironment
                       ? "DV Plugin Internal Error! Failed to create Dialog from controller"
                       : "DV Plugin Internal Error! Failed to create Dialog controller",
                   m_name);
    return controller;
}

void ModalRun::Bind() {
    NSWindow* window = m_controller->window();
    m_activeBefore = QApplication::activeWindow();
    m_controller->setWnd(m_dialog);
    m_controller->onGone = [this] { m_loop.End(); };
    m_dialog->windowController = m_controller.get();
    m_dialog->nsWindow = window;
    m_dialog->view = window->ContentView();
    m_dialog->closedByPlatform = 0;
    window->SetDelegate(new CWndDelegate(window));
    SetControlReference(m_dialog->view, m_dialog);
    SetWRefCon(window, m_dialog);
}

// A dialog that is ended while it is told of its creation is never seen.
void ModalRun::Open() {
    m_dialog->WindowProc(WM_CREATE, 0, 0);
    if (IsOpen()) m_dialog->WindowProc(WM_INITDIALOG, 0, 0);
    if (!IsOpen() || m_dialog->ended) return;
    m_controller->FocusFirstControl();
    Window()->OrderFront(true); // a modal loop without its window would never end
    if (m_dialog->style & WS_VISIBLE) m_dialog->ShowWindow(SW_SHOW);
}

void ModalRun::Loop() {
    Dialogs().LimitMouseEventsToDlg = m_dialog;
    const DisplayedDialog displayed;
    if (IsOpen() && !m_dialog->ended && m_window->isVisible()) Shielded([this] { m_loop.Run(); });
}

// From here on nothing that the window and its controls do is reported.
void ModalRun::Unbind() {
    m_controller.reset();
    Dialogs().LimitMouseEventsToDlg = nullptr;
    if (m_dialog) {
        m_dialog->windowController = nullptr;
        RemoveControlReference(m_dialog);
    }
    if (CWndDelegate* delegate = DelegateOf(Window())) delegate->killAllTimers();
    if (m_window) Window()->SetDelegate(nullptr);
}

void ModalRun::SaveAndSayGoodbye() {
    if (IsOpen()) {
        CDataExchange out(m_dialog, TRUE);
        Shielded([&] { m_dialog->DoDataExchange(&out); });
    }
    if (IsOpen()) m_dialog->WindowProc(WM_CLOSE, 0, 0);
}

void ModalRun::Close() {
    Windows().CaptureWnd = nullptr;
    if (IsOpen()) {
        m_dialog->nsWindow = nullptr;
        m_dialog->view = nullptr;
    }
    if (m_window) {
        RemoveControlReference(static_cast<void*>(Window()));
        Window()->Dispose();
    }
    if (m_activeBefore && m_activeBefore->isVisible()) m_activeBefore->activateWindow();
}

} // namespace vm
