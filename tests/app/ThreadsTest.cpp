#include <vmcore/app/threads.h>

#include <atomic>
#include <chrono>
#include <semaphore>
#include <string>
#include <thread>

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <gmock/gmock.h>

#include "app/NSWinThread.h"
#include "app/threadstate.h"
#include "platform/mainqueue.h"
#include "support/Watchdog.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr UINT kStop = 32800;

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

// A worker whose function waits until the test lets it go on; it has returned when the test ends.
class HeldWorker {
public:
    HeldWorker() : m_thread(AfxBeginThread(Body, this)) { m_started.acquire(); }
    ~HeldWorker() { Finish(); }

    CWinThread* operator->() const { return m_thread; }
    CWinThread* Get() const { return m_thread; }
    int SystemId() const { return m_systemId; }

    void Finish() {
        if (!m_thread) return;
        m_release.release();
        WaitForThreadExit(m_thread);
        m_thread = nullptr;
    }

private:
    static UINT Body(LPVOID param) {
        auto* self = static_cast<HeldWorker*>(param);
        self->m_systemId = gettid();
        self->m_started.release();
        self->m_release.acquire();
        return 0;
    }

    std::atomic<int> m_systemId = 0;
    std::binary_semaphore m_started{0};
    std::binary_semaphore m_release{0};
    CWinThread* m_thread;
};

std::vector<CWinThread*> ListedThreads() {
    std::lock_guard guard(vm::Threads().listLock);
    return vm::Threads().list;
}

class Threads : public testing::Test {
protected:
    Watchdog m_watchdog;
};

} // namespace

TEST_F(Threads, WorkerFindsItselfListedAndReadsItsMessagesInOrder) {
    struct Shared {
        std::vector<MSG> received;
        bool listed = false;
    } shared;
    CWinThread* worker = AfxBeginThread(
        [](LPVOID param) -> UINT {
            auto* state = static_cast<Shared*>(param);
            state->listed = GetThreadFromList(GetCurrentThread()) != nullptr;
            MSG message;
            while (GetMessage(&message, nullptr, 0, 0) == 1 && message.message != kStop)
                state->received.push_back(message);
            return 0;
        },
        &shared);
    ASSERT_NE(worker, nullptr);
    for (UINT i = 1; i <= 50; ++i) EXPECT_EQ(worker->PostThreadMessage(i, i * 2, i * 3), TRUE);
    worker->PostThreadMessage(kStop, 0, 0);
    WaitForThreadExit(worker);

    EXPECT_TRUE(shared.listed);
    ASSERT_EQ(shared.received.size(), 50u);
    for (UINT i = 0; i < 50; ++i) {
        const MSG& message = shared.received[i];
        EXPECT_EQ(message.message, i + 1);
        EXPECT_EQ(message.wParam, (i + 1) * 2);
        EXPECT_EQ(message.lParam, (i + 1) * 3);
        EXPECT_TRUE(!message.hwnd && !message.time && !message.pt.x && !message.pt.y);
    }
}

TEST_F(Threads, MessagesOfSeveralPostersAllArrive) {
    std::atomic<int> received = 0;
    CWinThread* worker = AfxBeginThread(
        [](LPVOID param) -> UINT {
            MSG message;
            while (GetMessage(&message, nullptr, 0, 0) && message.message != kStop)
                ++*static_cast<std::atomic<int>*>(param);
            return 0;
        },
        &received);
    std::vector<std::thread> posters;
    for (int poster = 0; poster < 4; ++poster)
        posters.emplace_back([worker] {
            for (int i = 0; i < 500; ++i) worker->PostThreadMessage(1, 0, 0);
        });
    for (std::thread& poster : posters) poster.join();
    worker->PostThreadMessage(kStop, 0, 0);
    WaitForThreadExit(worker);
    EXPECT_EQ(received, 2000);
}

TEST_F(Threads, ReturnedWorkerIsUnlistedKeepsHalfASecondAndDeletesItself) {
    static std::atomic<bool> s_deleted;
    struct Observed : CSimpleWinThread {
        using CSimpleWinThread::CSimpleWinThread;
        ~Observed() override { s_deleted = true; }
    };
    s_deleted = false;
    auto* worker = new Observed([](LPVOID) -> UINT { return 7; }, nullptr);
    ASSERT_TRUE(worker->CreateThread());
    WaitForThreadExit(worker);
    const auto returned = Clock::now();
    EXPECT_FALSE(s_deleted);
    EXPECT_EQ(worker->m_hThread, nullptr);
    EXPECT_THAT(ListedThreads(), testing::Not(testing::Contains(worker)));
    EXPECT_EQ(worker->PostThreadMessage(1, 0, 0), TRUE); // freed with the object
    while (!s_deleted) Sleep(1);
    EXPECT_GT(MillisecondsSince(returned), 400);
}

TEST_F(Threads, ListKeepsTheOrderOfCreation) {
    HeldWorker first;
    HeldWorker second;
    HeldWorker third;
    const auto isOurs = [&](CWinThread* thread) {
        return thread == first.Get() || thread == second.Get() || thread == third.Get();
    };
    std::vector<CWinThread*> ours = ListedThreads();
    std::erase_if(ours, std::not_fn(isOurs));
    EXPECT_THAT(ours, testing::ElementsAre(first.Get(), second.Get(), third.Get()));
    RemoveCWinThreadFromList(second.Get());
    EXPECT_EQ(GetThreadFromList(second->m_hThread), nullptr);
    EXPECT_EQ(GetThreadFromList(third->m_hThread), third.Get());
    RemoveThreadFromList(third->m_hThread);
    EXPECT_EQ(GetThreadFromList(third->m_hThread), nullptr);
    RemoveCWinThreadFromList(second.Get()); // absent: nothing
    EXPECT_EQ(GetThreadFromList(first->m_hThread), first.Get());
}

TEST_F(Threads, ScanOfTheListStopsAtANullEntry) {
    HeldWorker worker;
    auto& list = vm::Threads().list;
    {
        std::lock_guard guard(vm::Threads().listLock);
        list.insert(list.begin(), nullptr);
    }
    EXPECT_EQ(GetThreadFromList(worker->m_hThread), nullptr);
    RemoveThreadFromList(worker->m_hThread);
    RemoveCWinThreadFromList(nullptr);
    EXPECT_EQ(GetThreadFromList(worker->m_hThread), worker.Get());
}

TEST_F(Threads, UnlistedThreadsGetNoMessage) {
    MSG message{};
    EXPECT_EQ(GetMessage(&message, nullptr, 0, 0), 0);
    int answer = -1;
    std::thread([&] { answer = GetMessage(&message, nullptr, 0, 0); }).join();
    EXPECT_EQ(answer, 0);
}

TEST_F(Threads, TerminatedWorkerIsUnlistedMarkedAndRunsOn) {
    struct Shared {
        std::binary_semaphore terminated{0};
        std::atomic<int> answer = -1;
    } shared;
    CWinThread* worker = AfxBeginThread(
        [](LPVOID param) -> UINT {
            auto* state = static_cast<Shared*>(param);
            state->terminated.acquire();
            MSG message;
            state->answer = GetMessage(&message, nullptr, 0, 0);
            return 0;
        },
        &shared);
    worker->PostThreadMessage(1, 0, 0);
    NSWinThread* handle = worker->m_hThread;
    EXPECT_EQ(TerminateThread(handle, 3), TRUE);
    EXPECT_TRUE(handle->IsCancelled());
    EXPECT_FALSE(handle->IsFinished());
    EXPECT_EQ(GetThreadFromList(handle), nullptr);
    shared.terminated.release();
    WaitForThreadExit(worker);
    EXPECT_EQ(shared.answer, 0);
    EXPECT_EQ(TerminateThread(nullptr, 0), TRUE);
}

TEST_F(Threads, WaitForThreadExitReturnsAtOnceWithoutARunningThread) {
    WaitForThreadExit(nullptr);
    CWinThread neverStarted;
    EXPECT_FALSE(neverStarted.CreateThread());
    WaitForThreadExit(&neverStarted);
}

TEST_F(Threads, PriorityIsMappedAndAskedOfTheSystem) {
    const struct {
        int priority;
        double platform;
        int nice;
    } cases[] = {{-15, 0.03125, 19}, {-2, 0.4375, 3}, {0, 0.5, 0}, {15, 0.96875, -19}};
    for (const auto& row : cases) {
        HeldWorker worker;
        EXPECT_EQ(worker->SetThreadPriority(row.priority), TRUE);
        EXPECT_EQ(worker->m_hThread.load()->Priority(), row.platform) << row.priority;
        EXPECT_EQ(vm::NiceForPriority(row.platform), row.nice) << row.priority;
    }
    HeldWorker lowered;
    lowered->SetThreadPriority(-2);
    EXPECT_EQ(getpriority(PRIO_PROCESS, static_cast<id_t>(lowered.SystemId())),
              std::min(19, getpriority(PRIO_PROCESS, static_cast<id_t>(getpid())) + 3));
    CWinThread neverStarted;
    EXPECT_EQ(neverStarted.SetThreadPriority(15), TRUE);
}

TEST_F(Threads, EveryThreadHasOneObjectOfItsOwn) {
    NSWinThread* const here = GetCurrentThread();
    EXPECT_EQ(GetCurrentThreadId(), here);
    EXPECT_EQ(here->winThread, nullptr);
    std::thread([&] {
        EXPECT_NE(GetCurrentThread(), here);
        EXPECT_EQ(GetCurrentThread(), GetCurrentThreadId());
    }).join();
    std::atomic<NSWinThread*> inside = nullptr;
    CWinThread* worker = AfxBeginThread(
        [](LPVOID param) -> UINT {
            *static_cast<std::atomic<NSWinThread*>*>(param) = GetCurrentThread();
            MSG message;
            GetMessage(&message, nullptr, 0, 0);
            return 0;
        },
        &inside);
    NSWinThread* const handle = worker->m_hThread;
    worker->PostThreadMessage(kStop, 0, 0);
    WaitForThreadExit(worker);
    EXPECT_EQ(inside, handle);
}

TEST_F(Threads, MainThreadIsRecordedOnceAndItsIdentifierByTheApplication) {
    SetMainThread();
    EXPECT_EQ(MainThread, GetCurrentThread());
    vm::RecordMainThreadID();
    EXPECT_TRUE(vm::IsMainThread());
    std::thread([] {
        SetMainThread();
        EXPECT_NE(MainThread, GetCurrentThread());
        EXPECT_NE(MainThreadID, MPCurrentTaskID());
    }).join();
    EXPECT_EQ(MainThreadID, MPCurrentTaskID());
}

TEST_F(Threads, SleepTakesSecondsAndMilliseconds) {
    const auto start = Clock::now();
    Sleep(0);
    EXPECT_LT(MillisecondsSince(start), 100);
    Sleep(1050);
    EXPECT_GE(MillisecondsSince(start), 1050);
    EXPECT_LT(MillisecondsSince(start), 1900);
}

// In a process of its own: the lock stays taken.
TEST(ThreadsDeathTest, FailedStartKeepsTheListLockedForOthersOnly) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto failToStart = [] {
        pthread_attr_t attributes;
        pthread_attr_t before;
        pthread_getattr_default_np(&before);
        pthread_getattr_default_np(&attributes);
        pthread_attr_setstacksize(&attributes, std::size_t{1} << 48); // more than there is
        pthread_setattr_default_np(&attributes);
        CWinThread* worker = AfxBeginThread([](LPVOID) -> UINT { return 0; }, nullptr);
        pthread_setattr_default_np(&before);
        bool takenByOther = true;
        std::thread([&] { takenByOther = vm::Threads().listLock.try_lock(); }).join();
        const bool goesOn = GetThreadFromList(GetCurrentThread()) == nullptr;
        _exit(!worker && !takenByOther && goesOn && vm::Threads().list.empty() ? 0 : 1);
    };
    EXPECT_EXIT(failToStart(), testing::ExitedWithCode(0), "");
}

TEST(ThreadsDeathTest, WorkersThatStillRunDoNotDisturbTheEndOfTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    const auto endWithWorkers = [] {
        for (int i = 0; i < 8; ++i)
            AfxBeginThread(
                [](LPVOID) -> UINT {
                    for (;;) {
                        GetThreadFromList(GetCurrentThread());
                        GetCurrentThreadId();
                    }
                },
                nullptr);
        Sleep(20);
        std::exit(0);
    };
    EXPECT_EXIT(endWithWorkers(), testing::ExitedWithCode(0), "");
}

TEST(CriticalSection, IsRecursiveAndExcludesOtherThreads) {
    CRITICAL_SECTION section;
    InitializeCriticalSection(&section);
    int counter = 0;
    const auto count = [&] {
        for (int i = 0; i < 2000; ++i) {
            EnterCriticalSection(&section);
            EnterCriticalSection(&section);
            ++counter;
            LeaveCriticalSection(&section);
            LeaveCriticalSection(&section);
        }
    };
    std::thread other(count);
    count();
    other.join();
    EXPECT_EQ(counter, 4000);
    DeleteCriticalSection(&section);
    EXPECT_EQ(section.lock, nullptr);
    EnterCriticalSection(&section); // without a lock: nothing
    LeaveCriticalSection(&section);
    DeleteCriticalSection(&section);
}
