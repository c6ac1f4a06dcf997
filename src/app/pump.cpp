// The message-pump functions. The platform's run loop is the only queue for windows, so most of
// them are entry points with a fixed answer that ported loops behave well with.
#include <vmcore/app/messages.h>

#include <atomic>
#include <chrono>

#include "core/log.h"
#include "platform/NativeApplication.h"
#include "platform/mainqueue.h"
#include "platform/messagebox.h"
#include "platform/runloop.h"

namespace {

constexpr int kPeekMilliseconds = 10;

std::int64_t Microseconds() {
    using namespace std::chrono;
    return duration_cast<microseconds>(system_clock::now().time_since_epoch()).count();
}

} // namespace

BOOL PeekMessage(MSG*, HWND, UINT, UINT, UINT) {
    vm::RunLoopFor(kPeekMilliseconds);
    return FALSE;
}

BOOL TranslateMessage(const MSG*) {
    return FALSE;
}

LRESULT DispatchMessage(const MSG*) {
    vm::ShowMessageBox(nullptr, "DispatchMessage should never be called!", "Error", 1);
    return 0;
}

BOOL IsDialogMessage(HWND, MSG*) {
    return TRUE;
}

BOOL PostThreadMessage(NSWinThread*, UINT, WPARAM, LPARAM) {
    return TRUE;
}

void PostQuitMessage(int) {
    vm::PostToMain({[](void*) { vm::NativeApplication::Shared().Terminate(); }, nullptr, nullptr});
}

DWORD GetTickCount() {
    // 0 stands for "not started"; the first call of any thread sets the origin.
    static std::atomic<std::int64_t> s_origin{0};
    const std::int64_t now = Microseconds();
    std::int64_t origin = 0;
    if (s_origin.compare_exchange_strong(origin, now)) origin = now;
    return static_cast<DWORD>((now - origin) / 1000);
}

DWORD GetCurrentTime() {
    return GetTickCount();
}

void OutputDebugString(const char* text) {
    vm::LogText(vm::LogModule::App, text ? text : "");
}

int MessageBox(HWND owner, const char* text, const char* caption, UINT type) {
    return vm::ShowMessageBox(owner, text, caption, type);
}
