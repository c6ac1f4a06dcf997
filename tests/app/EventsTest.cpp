#include <vmcore/app/sync.h>

#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

#include "support/Watchdog.h"

namespace {

using Clock = std::chrono::steady_clock;

double MillisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

class Events : public testing::Test {
protected:
    ~Events() override { DeleteEvent(m_event); }

    // A thread that sets the event; `m_hasSet` says when SetEvent has returned.
    std::thread Setter() {
        return std::thread([this] {
            m_aboutToSet = true;
            SetEvent(m_event);
            m_hasSet = true;
        });
    }

    Watchdog m_watchdog;
    HANDLE m_event = CreateEvent(nullptr, FALSE, TRUE, nullptr);
    std::atomic<bool> m_aboutToSet = false;
    std::atomic<bool> m_hasSet = false;
};

} // namespace

TEST_F(Events, InitialStateTrueMeansBlocked) {
    HANDLE signalled = CreateEvent(nullptr, FALSE, FALSE, nullptr);
    EXPECT_EQ(WaitForSingleObject(m_event, 0), WAIT_TIMEOUT);
    EXPECT_EQ(WaitForSingleObject(signalled, 0), WAIT_OBJECT_0);
    EXPECT_EQ(WaitForSingleObject(signalled, INFINITE), WAIT_OBJECT_0);
    DeleteEvent(signalled);
}

TEST_F(Events, WaitAfterResetTimesOutAtItsDeadline) {
    ResetEvent(m_event);
    const auto start = Clock::now();
    EXPECT_EQ(WaitForSingleObject(m_event, 100), WAIT_TIMEOUT);
    EXPECT_GE(MillisecondsSince(start), 99.5);
    EXPECT_LT(MillisecondsSince(start), 1000);
}

TEST_F(Events, StaysSignalledUntilResetWhateverTheManualResetFlagSays) {
    for (BOOL manualReset : {FALSE, TRUE}) {
        HANDLE event = CreateEvent(nullptr, manualReset, TRUE, "named");
        SetEvent(event);
        SetEvent(event);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_OBJECT_0);
        ResetEvent(event);
        EXPECT_EQ(WaitForSingleObject(event, 0), WAIT_TIMEOUT);
        DeleteEvent(event);
    }
}

TEST_F(Events, SetOfAnotherThreadBlocksUntilTheResettingThreadWaits) {
    ResetEvent(m_event);
    std::thread setter = Setter();
    while (!m_aboutToSet) std::this_thread::yield();
    const auto start = Clock::now();
    while (MillisecondsSince(start) < 30) ASSERT_FALSE(m_hasSet);
    EXPECT_EQ(WaitForSingleObject(m_event, INFINITE), WAIT_OBJECT_0);
    setter.join();
    EXPECT_TRUE(m_hasSet);
}

TEST_F(Events, TimedOutWaitGivesTheEventFree) {
    ResetEvent(m_event);
    EXPECT_EQ(WaitForSingleObject(m_event, 0), WAIT_TIMEOUT);
    Setter().join(); // would hang
    ResetEvent(m_event);
    std::thread other([this] { EXPECT_EQ(WaitForSingleObject(m_event, 0), WAIT_TIMEOUT); });
    other.join(); // the wait of a thread that does not hold it gives it free too
    Setter().join();
    EXPECT_EQ(WaitForSingleObject(m_event, 0), WAIT_OBJECT_0);
}

TEST_F(Events, ResettingThreadMaySetAndResetAgain) {
    ResetEvent(m_event);
    ResetEvent(m_event);
    EXPECT_EQ(SetEvent(m_event), TRUE);
    Setter().join(); // the set gave it free
    EXPECT_EQ(WaitForSingleObject(m_event, INFINITE), WAIT_OBJECT_0);
}

TEST_F(Events, SetWakesAllWaiters) {
    std::atomic<int> woken = 0;
    std::vector<std::thread> waiters;
    for (int i = 0; i < 4; ++i)
        waiters.emplace_back([&] { woken += WaitForSingleObject(m_event, INFINITE) == 0; });
    SetEvent(m_event);
    for (std::thread& waiter : waiters) waiter.join();
    EXPECT_EQ(woken, 4);
}

TEST_F(Events, ManyRoundsLoseNoSignalAndTheWaiterMayDeleteTheEvent) {
    for (int round = 0; round < 300; ++round) {
        HANDLE done = CreateEvent(nullptr, FALSE, TRUE, nullptr);
        ResetEvent(done);
        std::thread setter([done] { SetEvent(done); });
        EXPECT_EQ(WaitForSingleObject(done, INFINITE), WAIT_OBJECT_0);
        DeleteEvent(done);
        setter.join();
    }
}

TEST_F(Events, LongNameIsCut) {
    HANDLE event = CreateEvent(nullptr, FALSE, FALSE, std::string(1000, 'n').c_str());
    const char* name = static_cast<const char*>(event) + 10;
    EXPECT_EQ(std::string(name), std::string(255, 'n'));
    DeleteEvent(event);
}

TEST_F(Events, NullHandleIsAnsweredWithZero) {
    EXPECT_EQ(SetEvent(nullptr), FALSE);
    EXPECT_EQ(ResetEvent(nullptr), FALSE);
    EXPECT_EQ(DeleteEvent(nullptr), FALSE);
    EXPECT_EQ(WaitForSingleObject(nullptr, INFINITE), 0u);
}
