// Workers that send and post to windows while the main thread makes and destroys them. The
// sanitizer runs of this test are its point.
#include <vmcore/app/CWinApp.h>
#include <vmcore/app/threads.h>
#include <vmcore/wnd/CWnd.h>

#include <array>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "support/LogCapture.h"
#include "support/Watchdog.h"

namespace {

constexpr UINT kMessage = WM_USER + 7;
constexpr int kWorkers = 8;
constexpr int kWindows = 16;
constexpr int kWindowsInAll = 600;

class Counter : public CWnd {
public:
    int MessageMap(int message, WPARAM, LPARAM) override {
        if (message == static_cast<int>(kMessage)) ++s_delivered;
        return message == static_cast<int>(kMessage);
    }
    static inline int s_delivered = 0; // main thread
};

// What the workers see of the windows: pointers that may be dead at any moment.
std::array<std::atomic<CWnd*>, kWindows> s_windows;
std::atomic<bool> s_stop;
std::atomic<int> s_running;
std::atomic<int> s_answered;

UINT Worker(LPVOID seed) {
    std::minstd_rand random(static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(seed)));
    while (!s_stop) {
        CWnd* window = s_windows[random() % kWindows].load();
        if (!window) continue;
        if (random() % 4 == 0)
            s_answered += static_cast<int>(window->SendMessage(kMessage));
        else
            window->PostMessage(kMessage);
        std::this_thread::yield();
    }
    --s_running;
    return 0;
}

} // namespace

TEST(ThreadStress, WorkersSendAndPostToWindowsThatComeAndGo) {
    Watchdog watchdog(std::chrono::seconds(110));
    LogCapture log; // dropped messages say so
    CWinApp app;
    CWnd frame;
    frame.Create("", "stress", 0x10000, RECT{60, 60, 260, 200}, nullptr, 0);
    s_running = kWorkers;
    for (std::uintptr_t i = 1; i <= kWorkers; ++i)
        ASSERT_NE(AfxBeginThread(Worker, reinterpret_cast<LPVOID>(i), 0, 0, 0, nullptr), nullptr);

    std::minstd_rand random(42);
    int made = 0;
    while (s_running > 0) {
        s_stop = made >= kWindowsInAll;
        std::atomic<CWnd*>& place = s_windows[random() % kWindows];
        if (CWnd* window = place.load()) {
            if (random() % 2) place = nullptr; // else the workers go on using the dead pointer
            if (random() % 2) window->DestroyWindow();
            delete window;
            place = nullptr;
        } else {
            auto* fresh = new Counter;
            fresh->Create("", "", 0, RECT{0, 0, 8, 8}, &frame, static_cast<UINT>(++made));
            place = fresh;
        }
        RunFor(std::chrono::milliseconds(0));
        log.Ignore();
    }
    RunFor(std::chrono::milliseconds(20));
    for (std::atomic<CWnd*>& place : s_windows) delete place.exchange(nullptr);
    frame.DestroyWindow();
    RunFor(std::chrono::milliseconds(5));
    log.Ignore();
    EXPECT_GT(Counter::s_delivered, 0);
    EXPECT_GE(Counter::s_delivered, s_answered.load());
}
