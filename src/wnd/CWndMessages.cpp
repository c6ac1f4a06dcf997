// Sending, posting and routing: how a message reaches a window object and who may take it.
#include <vmcore/wnd/CWnd.h>

#include <new>

#include <vmcore/app/CWinApp.h>

#include "app/appState.h"
#include "core/guard.h"
#include "platform/mainqueue.h"
#include "wnd/MessageTaker.h"
#include "wnd/RecoverPane.h"
#include "wnd/boundHandle.h"
#include "wnd/messageMap.h"
#include "wnd/winMessage.h"

namespace {

// A reference that is dropped at the end of its scope, also when a handler throws.
class HeldMessage {
public:
    explicit HeldMessage(winMessage* message) : m_message(message) {}
    ~HeldMessage() { m_message->Release(); }
    HeldMessage(const HeldMessage&) = delete;
    HeldMessage& operator=(const HeldMessage&) = delete;

private:
    winMessage* m_message;
};

// Takes the handle away from the scratch window, also when a handler throws.
class ScratchAttachment {
public:
    ScratchAttachment(CWnd* scratch, HWND window) : m_scratch(scratch), m_window(window) {
        m_scratch->Attach(window);
    }
    ~ScratchAttachment() {
        if (!m_scratch->view) return;
        SetControlReference(m_window, nullptr);
        m_scratch->view = nullptr;
    }
    ScratchAttachment(const ScratchAttachment&) = delete;
    ScratchAttachment& operator=(const ScratchAttachment&) = delete;

private:
    CWnd* m_scratch;
    HWND m_window;
};

// What commands are asked by: OnWndMsg, without the rest of WindowProc. A delivery all the same.
BOOL AskMap(CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    BOOL isHandled = FALSE;
    vm::Traced(wnd, message, wParam, lParam, [&] {
        isHandled = wnd.OnWndMsg(message, wParam, lParam, result);
        return *result;
    });
    return isHandled;
}

LRESULT SentToNobody(UINT message, WPARAM wParam, LPARAM lParam) {
    const vm::SenderScope sender(vm::Sender::Send);
    vm::TraceUndelivered(nullptr, message, wParam, lParam, "no such window object");
    return 0;
}

} // namespace

LRESULT CWnd::SendMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (!CWndListVerify(this)) return SentToNobody(message, wParam, lParam);
    if (vm::IsMainThread()) {
        if (!vm::MessagesAreTraced()) [[likely]]
            return WindowProc(message, wParam, lParam);
        const vm::SenderScope sender(vm::Sender::Send);
        return WindowProc(message, wParam, lParam);
    }
    auto* carrier = new (std::nothrow)
        winMessage(vm::Sender::Send, this, vm::BoundHandle(this), message, wParam, lParam);
    if (!carrier) return 0;
    carrier->Retain(); // ours, for as long as the result is read
    const HeldMessage held(carrier);
    vm::CallOnMain({winMessage::Perform, winMessage::Drop, carrier});
    return carrier->lResult;
}

LRESULT CWnd::SendMessageDirect(UINT message, WPARAM wParam, LPARAM lParam) {
    return WindowProc(message, wParam, lParam);
}

bool CWnd::PostMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    auto* carrier = new (std::nothrow)
        winMessage(vm::Sender::Post, this, vm::BoundHandle(this), message, wParam, lParam);
    if (!carrier) return false;
    vm::Guarded(vm::LogModule::App, "CWnd::PostMessage()", [&] {
        vm::PostToMain({winMessage::Perform, winMessage::Drop, carrier});
    });
    return true;
}

LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (!window) return 0;
    if (const vm::MessageTaker* taker = vm::MessageTaker::Of(window))
        return taker->Take(message, wParam, lParam);
    const RecoverPane guard(window);
    CWnd* scratch = getTempWnd(false);
    const ScratchAttachment attachment(scratch, window);
    const vm::SenderScope sender(vm::Sender::Send);
    return scratch->WindowProc(message, wParam, lParam);
}

void winMessage::TraceNobody(const char* why) const {
    vm::TraceUndelivered(hWnd, message, wParam, lParam, why);
}

bool winMessage::MayBeDelivered() const {
    const vm::AppState& app = vm::App();
    if (!app.isPluginEnvironment && app.MainApp && app.MainApp->m_pMainWnd == cWnd) return true;
    // An object whose view is not bound was sent without a handle, like one without a view.
    if (!hWnd && !(CWndListVerify(cWnd) && cWnd->view)) {
        TraceNobody("no window");
        return false;
    }
    if (hWnd && GetControlReference(hWnd) == cWnd) return true;
    vm::LogText(vm::LogModule::App,
                "Post or SendMessage sent to hWnd object not registered in ControlReference list");
    TraceNobody("not registered");
    return false;
}

void winMessage::run() {
    const HeldMessage creatorReference(this);
    const vm::SenderScope origin(sender, thread);
    if (cWnd && MayBeDelivered()) lResult = cWnd->WindowProc(message, wParam, lParam);
}

// A handler may have deleted the object. The scratch window is in no list.
static bool IsGone(const CWnd* wnd) {
    return !CWndListVerify(wnd) && wnd != getTempWnd(true);
}

LRESULT CWnd::WindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    return vm::Traced(*this, message, wParam, lParam, [=, this]() -> LRESULT {
        LRESULT result = 0;
        if (OnWndMsg(message, wParam, lParam, &result) || IsGone(this)) return result;
        return DefWindowProc(message, wParam, lParam);
    });
}

BOOL CWnd::OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result) {
    LRESULT local = 0;
    if (message == WM_NOTIFY && lParam) {
        const HWND sender = reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
        if (sender && sender != view && OnNotify(wParam, lParam, &local)) {
            *result = 1;
            return TRUE;
        }
    } else if (message == WM_COMMAND) {
        if (TakenByControl(wParam, lParam) || OnCommand(wParam, lParam)) {
            *result = 1;
            return TRUE;
        }
    }
    if (message == WM_COMMAND && IsGone(this)) return TRUE; // ended by the control
    const int answer = MessageMap(static_cast<int>(message), wParam, lParam);
    *result = vm::map::ResultOf(answer);
    // Only the low byte says "handled": hosts' maps answer with 8-bit truth values.
    return (answer & 0xFF) != 0;
}

// The control that sent a command handles it first.
bool CWnd::TakenByControl(WPARAM wParam, LPARAM lParam) {
    if (!lParam) return false;
    CWnd* control = GetControlReference(reinterpret_cast<HWND>(lParam));
    return control && control != this && control->WindowProc(WM_COMMAND, wParam, lParam) != 0;
}

LRESULT CWnd::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_CLOSE) {
        DestroyWindow();
        return 0;
    }
    if (message == WM_CONTEXTMENU) {
        CWnd* parent = GetParent();
        // An object that the tree names as its own parent would ask itself for ever.
        if (parent && parent != this) return parent->WindowProc(WM_CONTEXTMENU, wParam, lParam);
    }
    return 0;
}

BOOL CWnd::OnNotify(WPARAM wParam, LPARAM lParam, LRESULT*) {
    if (!lParam) return FALSE;
    const HWND sender = reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
    CWnd* control = GetControlReference(sender);
    if (!control) return FALSE;
    // Bound to a view that is not its own (the scratch window stays in front after a use), it would
    // reflect the notification to itself for ever.
    if (control == this && view != sender) return FALSE;
    return control->WindowProc(WM_NOTIFY, wParam, lParam) != 0;
}

BOOL CWnd::OnCommand(WPARAM wParam, LPARAM) {
    BYTE enabled = 1;
    BYTE second = 0;
    SHORT mark = 0;
    char label[256] = "";
    const int id = LOWORD(wParam);
    MacCmdUI state(id, enabled, second, mark, label);
    LRESULT result = 0;
    OnWndMsg(WM_UPDATECOMMANDUI, static_cast<WPARAM>(id),
             reinterpret_cast<LPARAM>(static_cast<CCmdUI*>(&state)), &result);
    if (!state.m_bHandled || !state.m_bFnDefined) return FALSE;
    return !enabled;
}

BOOL CWnd::OnCmdMsg(UINT message, int id, void* extra, AFX_CMDHANDLERINFO* info) {
    LRESULT local = 0;
    auto* result = static_cast<LRESULT*>(extra);
    LRESULT* slot = result ? result : &local;
    if (!info) {
        if (AskMap(*this, message, static_cast<WPARAM>(id), 0, slot)) return TRUE;
        *slot = 0;
        return FALSE;
    }
    auto* state = reinterpret_cast<CCmdUI*>(info);
    if (AskMap(*this, WM_UPDATECOMMANDUI, message, reinterpret_cast<LPARAM>(state), slot))
        return TRUE;
    *slot = state->GetFnDefined();
    if (!*slot) return FALSE;
    state->Enable(true);
    return TRUE;
}

BOOL CWnd::PreTranslateMessage(MSG*) {
    return FALSE;
}
int CWnd::MessageMap(int, WPARAM, LPARAM) {
    return 0;
}
int CWnd::BaseMessageMap(int, WPARAM, LPARAM) {
    return 0;
}
void CWnd::DoDataExchange(CDataExchange*) {}
void CWnd::CalcWindowRect(RECT*, UINT) {}
void CWnd::OnClose() {
    DestroyWindow();
}
void CWnd::OnContextMenu(CWnd* clicked, CPoint point) {
    DefWindowProc(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(clicked ? clicked->view : nullptr),
                  MAKELPARAM(point.x, point.y));
}
