// The part of message maps that is not in the macros.
#include "wnd/messageMap.h"

#include <algorithm>
#include <vector>

#include <vmcore/wnd/messageMap.h>

#include "app/appState.h"

namespace vm::map {
namespace {

// An answer that stands for a kept result: this, with a serial number in the bytes between.
constexpr unsigned kTicket = 0x7E000001;
constexpr unsigned kTicketMask = 0xFF0000FF;

// A result waits here while the maps of derived classes return. What was kept after it belongs to
// messages that have been answered by then, and goes with it. Who calls a map and drops the answer
// leaves one behind, so that there is a limit: then the older half goes.
struct Kept {
    unsigned ticket;
    LRESULT result;
};
constexpr std::size_t kMostKept = 4096;
thread_local std::vector<Kept> s_kept;
thread_local unsigned s_serial;

constexpr bool IsTicket(LRESULT answer) {
    return (static_cast<unsigned>(answer) & kTicketMask) == kTicket;
}

} // namespace

int AnswerOf(LRESULT result) {
    const int answer = static_cast<int>(result);
    if (answer == result && (answer & 0xFF) && !IsTicket(answer)) return answer;
    const unsigned serial = s_serial++ & 0xFFFF;
    if (s_kept.size() == kMostKept) s_kept.erase(s_kept.begin(), s_kept.begin() + kMostKept / 2);
    s_kept.push_back({kTicket | serial << 8, result});
    return static_cast<int>(kTicket | serial << 8);
}

LRESULT ResultOf(int answer) {
    if (!IsTicket(answer)) [[likely]]
        return answer;
    const auto ticket = static_cast<unsigned>(answer);
    auto kept = std::find_if(s_kept.rbegin(), s_kept.rend(),
                             [=](const Kept& each) { return each.ticket == ticket; });
    if (kept == s_kept.rend()) return answer; // a host's own number
    const LRESULT result = kept->result;
    s_kept.erase(kept.base() - 1, s_kept.end());
    return result;
}

int AskApplication(UINT message, WPARAM wParam, LPARAM lParam) {
    CWinApp* const app = App().MainApp;
    const int answer = app ? app->MessageMap(static_cast<int>(message), wParam, lParam) : 0;
    return answer & 0xFF ? answer : 0;
}

CCmdUI* Enabled(LPARAM lParam) {
    auto* state = reinterpret_cast<CCmdUI*>(lParam);
    state->SetFnDefined(true);
    state->Enable(true);
    return state;
}

bool HasCommand(CWnd& wnd, WPARAM wParam, LPARAM lParam) {
    if (LOWORD(wParam) != IDOK && LOWORD(wParam) != IDCANCEL) return false;
    CommandQuestion question{};
    const WPARAM command = lParam ? wParam : LOWORD(wParam); // without a control any code is one
    wnd.MessageMap(static_cast<int>(kHasCommand), command, reinterpret_cast<LPARAM>(&question));
    return question.isKnown;
}

CWnd* WindowOf(std::uintptr_t handle) {
    const HWND window = reinterpret_cast<HWND>(handle);
    if (!window) return nullptr;
    if (CWnd* known = GetControlReference(window)) return known;
    if (!IsWindow(window)) return nullptr;
    CWnd* scratch = getTempWnd(false);
    scratch->view = window;
    return scratch;
}

CWnd* ScrollBarOf(const CWnd& wnd, std::uintptr_t handle) {
    const HWND window = reinterpret_cast<HWND>(handle);
    return window == wnd.vScrollView || window == wnd.hScrollView ? nullptr : WindowOf(handle);
}

bool IsFrom(const CWnd& wnd, std::uintptr_t handle) {
    const HWND window = reinterpret_cast<HWND>(handle);
    return window && (window == wnd.view || GetControlReference(window) == &wnd);
}

} // namespace vm::map
