#include "platform/mainqueue.h"

#include <thread>
#include <vector>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

#include <gmock/gmock.h>

#include "platform/runloop.h"
#include "support/Watchdog.h"

namespace {

std::vector<int>* s_ran;

void Note(void* argument) {
    s_ran->push_back(static_cast<int>(reinterpret_cast<std::intptr_t>(argument)));
}
void PostNote(int number) {
    vm::PostToMain({Note, nullptr, reinterpret_cast<void*>(static_cast<std::intptr_t>(number))});
}

class MainQueue : public testing::Test {
protected:
    void SetUp() override {
        vm::RecordMainThread();
        s_ran = &m_ran;
    }
    Watchdog m_watchdog;
    std::vector<int> m_ran;
};

} // namespace

TEST_F(MainQueue, KeepsTheOrderOfOneThread) {
    std::thread worker([] {
        for (int i = 0; i < 1000; ++i) PostNote(i);
    });
    ASSERT_TRUE(RunUntil([&] { return m_ran.size() == 1000; }));
    worker.join();
    EXPECT_TRUE(std::is_sorted(m_ran.begin(), m_ran.end()));
}

TEST_F(MainQueue, NeverRunsInsideThePost) {
    PostNote(1);
    EXPECT_TRUE(m_ran.empty());
    RunUntil([&] { return !m_ran.empty(); });
    EXPECT_THAT(m_ran, testing::ElementsAre(1));
}

TEST_F(MainQueue, NestedLoopGoesOnWithTheRestOfTheBatch) {
    vm::PostToMain({[](void*) {
                        RunUntil([] { return s_ran->size() == 3; });
                        s_ran->push_back(99);
                    },
                    nullptr, nullptr});
    for (int i = 1; i <= 3; ++i) PostNote(i);
    ASSERT_TRUE(RunUntil([&] { return m_ran.size() == 4; }));
    EXPECT_THAT(m_ran, testing::ElementsAre(1, 2, 3, 99));
}

TEST_F(MainQueue, EndlessRepostingLeavesTimersRunning) {
    static bool s_stop;
    s_stop = false;
    struct Repost {
        static void Again(void*) {
            if (!s_stop) vm::PostToMain({Again, nullptr, nullptr});
        }
    };
    Repost::Again(nullptr);
    int ticks = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(1);
    EXPECT_TRUE(RunUntil([&] { return ticks >= 5; }));
    s_stop = true;
    vm::RunPostedCalls();
}

TEST_F(MainQueue, CarriedCallWaitsForItsEndAndThrowsToTheCaller) {
    std::string caught;
    std::atomic<bool> done = false;
    std::thread worker([&] {
        try {
            vm::CallOnMain({[](void*) { throw std::runtime_error("from the main thread"); },
                            nullptr, nullptr});
        } catch (const std::runtime_error& error) {
            caught = error.what();
        }
        done = true;
    });
    ASSERT_TRUE(RunUntil([&] { return done.load(); }));
    worker.join();
    EXPECT_EQ(caught, "from the main thread");
}

TEST_F(MainQueue, ExceptionOfAPostedCallEndsTheLoopAndIsThrownByIt) {
    vm::PostToMain({[](void*) { throw std::logic_error("handler"); }, nullptr, nullptr});
    EXPECT_THROW(vm::RunLoop(), std::logic_error);
    EXPECT_EQ(vm::RunningLoops(), 0);
}

TEST_F(MainQueue, LoopThatHasEndedBeforeItsStartDoesNotRun) {
    vm::RunLoop([] { return true; }); // would hang
    EXPECT_EQ(vm::RunningLoops(), 0);
}

TEST_F(MainQueue, RunLoopForWaitsWhenIdle) {
    QElapsedTimer timer;
    timer.start();
    vm::RunLoopFor(10);
    EXPECT_GE(timer.nsecsElapsed(), 9'500'000);
}
