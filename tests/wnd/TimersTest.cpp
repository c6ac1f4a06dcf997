#include <vmcore/app/threads.h>
#include <vmcore/wnd/frames.h>

#include <atomic>
#include <thread>

#include "RecordingWindow.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

bool s_procedureCalled = false;
void Procedure(HWND, UINT, UINT, DWORD) {
    s_procedureCalled = true;
}

class Timers : public WindowFixture {
protected:
    // Runs the loop until this many WM_TIMER have come.
    bool WaitForTimers(RecordingWindow& wnd, std::size_t count) {
        return RunUntil([&] { return TimersOf(wnd).size() >= count; });
    }
    static Messages TimersOf(const RecordingWindow& wnd) {
        Messages timers;
        for (const Message& message : *wnd.record)
            if (message.number == WM_TIMER) timers.push_back(message);
        return timers;
    }
};

} // namespace

TEST_F(Timers, RepeatWithIDAndProcedureThatIsNeverCalled) {
    for (RecordingWindow* wnd : {&top, &child}) {
        EXPECT_NE(wnd->SetTimer(5, 1, Procedure), 0u);
        ASSERT_TRUE(WaitForTimers(*wnd, 3));
        EXPECT_EQ(TimersOf(*wnd).back(),
                  (Message{WM_TIMER, 5, reinterpret_cast<LPARAM>(&Procedure)}));
    }
    EXPECT_FALSE(s_procedureCalled);
}

TEST_F(Timers, ResultIsTheAddressOfTheTimerObject) {
    const UINT result = child.SetTimer(5, 1000);
    ASSERT_EQ(child.m_TimerList.GetSize(), 1);
    EXPECT_EQ(result, static_cast<UINT>(AsParameter(child.m_TimerList.GetAt(0))));
    EXPECT_EQ(child.m_TimerIDList.GetAt(0), 5u);
    EXPECT_EQ(child.m_TimerProcList.GetAt(0), nullptr);
}

TEST_F(Timers, SecondTimerOfOneIDOutlivesTheFirst) {
    for (RecordingWindow* wnd : {&top, &child}) {
        wnd->SetTimer(5, 100000);
        wnd->SetTimer(6, 100000);
        wnd->SetTimer(5, 1);
        EXPECT_TRUE(wnd->KillTimer(5));
        ASSERT_EQ(wnd->m_TimerList.GetSize(), 2);
        EXPECT_EQ(wnd->m_TimerIDList.GetAt(0), 6u) << "the rest keeps its order";
        EXPECT_TRUE(WaitForTimers(*wnd, 1));
        EXPECT_TRUE(wnd->KillTimer(5));
        EXPECT_FALSE(wnd->KillTimer(5));
        wnd->Take();
        RunFor(std::chrono::milliseconds(20));
        EXPECT_THAT(wnd->Take(WM_TIMER), IsEmpty());
    }
}

TEST_F(Timers, UnknownIDChangesNothing) {
    child.SetTimer(5, 1);
    EXPECT_FALSE(child.KillTimer(6));
    EXPECT_EQ(child.m_TimerList.GetSize(), 1);
    EXPECT_TRUE(WaitForTimers(child, 1));
    EXPECT_TRUE(KillTimer(child.view, 5)) << "the handle form does nothing";
    EXPECT_EQ(child.m_TimerList.GetSize(), 1);
}

TEST_F(Timers, NeedAView) {
    RecordingWindow without;
    EXPECT_EQ(without.SetTimer(1, 1), 0u);
    EXPECT_FALSE(without.KillTimer(1));
    EXPECT_EQ(without.m_TimerList.GetSize(), 0);
}

TEST_F(Timers, ViewWithoutItsObjectSaysSo) {
    View().wnd = nullptr;
    EXPECT_EQ(View().setTimer(5, 1, nullptr), 0u);
    EXPECT_THAT(log.TakeLog(), ElementsAre("ERROR! CWnd::SetTimer called with no wnd assigned"));
    EXPECT_FALSE(View().killTimer(5));
}

TEST_F(Timers, KilledInsideItsOwnMessage) {
    child.SetTimer(5, 1);
    child.SetTimer(6, 1);
    child.on[WM_TIMER] = [&](WPARAM id, LPARAM) { return id == 5 ? child.KillTimer(5) : 1; };
    ASSERT_TRUE(RunUntil([&] { return TimersOf(child).size() >= 10; }));
    int fives = 0;
    for (const Message& message : TimersOf(child)) fives += message.wParam == 5;
    EXPECT_EQ(fives, 1);
}

TEST_F(Timers, KilledInsideALoopThatItsOwnMessageRuns) {
    child.SetTimer(5, 1);
    child.on[WM_TIMER] = [&](WPARAM id, LPARAM) {
        if (id == 6) return child.KillTimer(5);
        child.SetTimer(6, 1);
        EXPECT_TRUE(RunUntil([&] { return child.m_TimerList.GetSize() == 1; }));
        RunFor(std::chrono::milliseconds(5)); // frees what was killed
        return BOOL{TRUE};
    };
    ASSERT_TRUE(WaitForTimers(child, 3));
    EXPECT_EQ(TimersOf(child).front().wParam, 5u);
    child.Take();
    ASSERT_TRUE(WaitForTimers(child, 3));
    for (const Message& message : child.Take(WM_TIMER)) EXPECT_EQ(message.wParam, 6u);
}

TEST_F(Timers, WindowDestroyedInsideTheMessage) {
    for (RecordingWindow* wnd : {&child, &top}) {
        wnd->SetTimer(5, 1);
        wnd->SetTimer(6, 1);
        wnd->on[WM_TIMER] = [wnd](WPARAM, LPARAM) { return wnd->DestroyWindow(); };
        ASSERT_TRUE(WaitForTimers(*wnd, 1));
        RunFor(std::chrono::milliseconds(20));
        EXPECT_EQ(wnd->Take(WM_TIMER).size(), 1u);
        EXPECT_EQ(wnd->m_TimerList.GetSize() + wnd->m_TimerIDList.GetSize() +
                      wnd->m_TimerProcList.GetSize(),
                  0);
    }
}

TEST_F(Timers, ObjectDeletedInsideTheMessage) {
    auto* doomed = new RecordingWindow;
    const std::shared_ptr<Messages> record = doomed->record;
    doomed->Create("", "", 0, RECT{0, 0, 5, 5}, &top, 9);
    doomed->SetTimer(5, 1);
    doomed->on[WM_TIMER] = [doomed](WPARAM, LPARAM) {
        delete doomed;
        return 1;
    };
    record->clear();
    ASSERT_TRUE(RunUntil([&] { return !record->empty(); }));
    RunFor(std::chrono::milliseconds(20));
    EXPECT_THAT(NumbersOf(*record), ElementsAre(WM_TIMER));
}

TEST_F(Timers, MDIFrameHasThemWithoutAWindow) {
    Recording<CMDIFrameWnd> frame;
    EXPECT_NE(frame.SetTimer(5, 1), 0u);
    ASSERT_TRUE(RunUntil([&] { return !frame.record->empty(); }));
    EXPECT_THAT(frame.record->front(), (Message{WM_TIMER, 5, 0}));
    EXPECT_FALSE(frame.KillTimer(6));
    EXPECT_TRUE(static_cast<CWnd&>(frame).KillTimer(5)) << "the base knows the class by its name";
    frame.SetTimer(7, 100000);
    EXPECT_TRUE(frame.KillTimer(7));
    EXPECT_EQ(frame.m_TimerList.GetSize(), 0);
    frame.SetTimer(8, 1); // ends with the frame
}

TEST_F(Timers, FireOnTheLoopOfTheThreadThatSetThem) {
    struct Job : CWnd { // touched by the worker alone until it is done
        int MessageMap(int message, WPARAM, LPARAM) override {
            if (message == WM_TIMER) firedOn = std::this_thread::get_id();
            return message == WM_TIMER;
        }
        std::thread::id worker{};
        std::thread::id firedOn{};
        bool firedBeforeItsLoop = false;
        std::atomic<bool> done{false};
    } job;
    job.Create("", "", 0, RECT{0, 0, 10, 10}, &top, 77);
    AfxBeginThread(
        [](LPVOID parameter) -> UINT {
            auto& mine = *static_cast<Job*>(parameter);
            mine.worker = std::this_thread::get_id();
            mine.SetTimer(5, 1);
            Sleep(10);
            mine.firedBeforeItsLoop = mine.firedOn != std::thread::id();
            while (mine.firedOn == std::thread::id()) PeekMessage(nullptr, nullptr, 0, 0, 0);
            mine.KillTimer(5);
            mine.done = true;
            return 0;
        },
        &job);
    ASSERT_TRUE(RunUntil([&] { return job.done.load(); }));
    EXPECT_EQ(job.firedOn, job.worker);
    EXPECT_FALSE(job.firedBeforeItsLoop);
}
