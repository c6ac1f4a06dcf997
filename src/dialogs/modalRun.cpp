#include "dialogs/modalRun.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <QtWidgets/QApplication>

#include <vmcore/app/CWinApp.h>
#include <vmcore/wnd/CWnd.h>

#include "app/appState.h"
#include "core/guard.h"
#include "core/typeName.h"
#include "dialogs/dialogState.h"
#include "dialogs/displayedDialog.h"
#include "platform/messagebox.h"
#include "wnd/CWndNSWindow.h"
#include "wnd/CWndWindowController.h"
#include "wnd/NativeWindow.h"
#include "wnd/views.h"
#include "wnd/windowState.h"

namespace vm {
namespace {

constexpr DWORD kExtendedStyle = 0x40; // what every modal dialog has

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

ModalRun::ModalRun(ModalClient client) : m_client(std::move(client)), m_wnd(m_client.wnd) {
    Dialogs().runs.push_back(this);
}

ModalRun::~ModalRun() {
    std::vector<ModalRun*>& runs = Dialogs().runs;
    runs.erase(std::remove(runs.begin(), runs.end(), this), runs.end());
}

ModalRun* ModalRun::Of(const CWnd& wnd) {
    for (ModalRun* run : Dialogs().runs)
        if (run->m_wnd == &wnd) return run;
    return nullptr;
}

void ModalRun::End() {
    if (m_controller) m_controller->SetEnded();
    m_loop.End();
}

void ModalRun::ForgetObject() {
    m_lastResult = *m_client.result;
    m_wasEnded = *m_client.ended != 0;
    m_wnd = nullptr;
    End();
    m_controller.reset(); // its controls have nobody to report to
}

NSWindow* ModalRun::Window() const {
    return static_cast<NSWindow*>(m_window.data());
}

bool ModalRun::IsOpen() const {
    return m_wnd && m_window && m_wnd->nsWindow == Window();
}

bool ModalRun::IsMainWindow() const {
    return m_wnd && App().MainApp && App().MainApp->m_pMainWnd == m_wnd;
}

int ModalRun::Result() const {
    const bool wasEnded = m_wnd ? *m_client.ended != 0 : m_wasEnded;
    return !wasEnded ? IDCANCEL : m_wnd ? *m_client.result : m_lastResult;
}

int ModalRun::Run() {
    if (LoopsAreEnding()) return IDCANCEL;
    const ResourceHandleScope resources(m_wnd->resourceBundle);
    Windows().CaptureWnd = nullptr;
    *m_client.ended = 0;
    *m_client.result = 0;
    bool isLoaded = false;
    Shielded([&] { isLoaded = Load(); });
    if (!isLoaded) return m_client.failure;
    Bind();
    Shielded([this] { Open(); });
    Loop();
    Unbind();
    Shielded([this] { SaveAndSayGoodbye(); });
    Close();
    return Result();
}

bool ModalRun::Load() {
    CREATESTRUCT cs{};
    m_wnd->PreCreateWindow(cs);
    if (!m_wnd) return false;
    m_wnd->exStyle |= kExtendedStyle;
    m_controller = m_client.makeWindow(ActiveWindow());
    if (m_controller) m_window = m_controller->window();
    if (!m_window) return false;
    TakePlace();
    Window()->PlaceOverOwner();
    return true;
}

// A dialog that is the main window has the application's menu bar, and its program's other windows stay
// in use. Hosts name it before it runs, or in OnInitDialog.
void ModalRun::TakePlace() {
    if (IsMainWindow()) ShowMenuBarOf(Window());
    m_window->setWindowModality(IsMainWindow() ? Qt::NonModal : Qt::ApplicationModal);
}

void ModalRun::Bind() {
    NSWindow* window = m_controller->window();
    m_activeBefore = QApplication::activeWindow();
    m_controller->setWnd(m_wnd);
    m_controller->onGone = [this] { m_loop.End(); };
    *m_client.controller = m_controller.get();
    m_wnd->nsWindow = window;
    m_wnd->view = window->ContentView();
    m_wnd->closedByPlatform = 0;
    window->SetDelegate(new CWndDelegate(window));
    SetControlReference(m_wnd->view, m_wnd);
    SetWRefCon(window, m_wnd);
}

// A dialog that is ended while it is told of its creation is never seen.
void ModalRun::Open() {
    m_wnd->WindowProc(WM_CREATE, 0, 0);
    if (IsOpen()) m_wnd->WindowProc(WM_INITDIALOG, 0, 0);
    if (!IsOpen() || *m_client.ended) return;
    TakePlace();
    m_controller->FocusFirstControl();
    Window()->OrderFront(true); // a modal loop without its window would never end
    if (m_wnd->style & WS_VISIBLE) m_wnd->ShowWindow(SW_SHOW);
}

void ModalRun::Loop() {
    Dialogs().LimitMouseEventsToDlg = m_wnd;
    std::optional<DisplayedDialog> displayed;
    if (!IsMainWindow()) displayed.emplace();
    if (IsOpen() && !*m_client.ended && m_window->isVisible()) Shielded([this] { m_loop.Run(); });
}

// From here on nothing that the window and its controls do is reported.
void ModalRun::Unbind() {
    m_controller.reset();
    Dialogs().LimitMouseEventsToDlg = nullptr;
    if (m_wnd) {
        *m_client.controller = nullptr;
        RemoveControlReference(m_wnd);
    }
    if (CWndDelegate* delegate = DelegateOf(Window())) delegate->killAllTimers();
    if (m_window) Window()->SetDelegate(nullptr);
}

void ModalRun::SaveAndSayGoodbye() {
    if (IsOpen()) Shielded(m_client.atEnd);
    if (IsOpen()) m_wnd->WindowProc(WM_CLOSE, 0, 0);
}

void ModalRun::Close() {
    Windows().CaptureWnd = nullptr;
    if (IsOpen()) {
        m_wnd->nsWindow = nullptr;
        m_wnd->view = nullptr;
    }
    if (m_window) {
        RemoveControlReference(static_cast<void*>(Window()));
        Window()->Dispose();
    }
    if (m_activeBefore && m_activeBefore->isVisible()) m_activeBefore->activateWindow();
}

} // namespace vm
