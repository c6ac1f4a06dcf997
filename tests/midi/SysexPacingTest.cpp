#include "platform/midi/sysexPacing.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using vm::SysexSchedule;
using Time = SysexSchedule::Time;

TEST(SysexPacing, ChunkIsWhatTheWireCarriesInTenMilliseconds) {
    EXPECT_EQ(vm::SysexChunk(1), 1U);
    EXPECT_EQ(vm::SysexChunk(3125), 32U);
    EXPECT_EQ(vm::SysexChunk(31'250), 313U);
    EXPECT_EQ(vm::SysexChunk(0xFFFFFFFF), 42'949'673U);
}

TEST(SysexPacing, ChunksLeaveOnTheAbsoluteSchedule) {
    SysexSchedule schedule(70, 3125, 1s);
    EXPECT_EQ(schedule.Take(1s - 1ns), 0U);
    EXPECT_EQ(schedule.Take(1s), 32U);
    EXPECT_EQ(schedule.NextTime(), 1s + 10'240us);
    EXPECT_EQ(schedule.Take(1s + 10'239us), 0U);
    EXPECT_EQ(schedule.Take(1s + 15ms), 32U); // late: the next time does not move
    EXPECT_EQ(schedule.NextTime(), 1s + 20'480us);
    EXPECT_EQ(schedule.Take(schedule.NextTime()), 6U);
    EXPECT_EQ(schedule.Take(10s), 0U);
}

TEST(SysexPacing, IsDoneAfterTheLastChunksWireTime) {
    SysexSchedule schedule(64, 3125, 0s);
    schedule.Take(0s);
    schedule.Take(10'240us);
    EXPECT_EQ(schedule.Sent(), 64U);
    EXPECT_FALSE(schedule.IsDone(20'479us));
    EXPECT_TRUE(schedule.IsDone(20'480us));
    EXPECT_TRUE(SysexSchedule(0, 3125, 5s).IsDone(5s));
}

TEST(SysexPacing, CatchesUpByOneChunkAtMost) {
    SysexSchedule schedule(1000, 3125, 0s);
    EXPECT_EQ(schedule.Take(10'240us), 64U);
    EXPECT_EQ(schedule.Take(2s), 64U); // idle time gives no credit
    EXPECT_EQ(schedule.Take(2s), 0U);
    EXPECT_EQ(schedule.NextTime(), 2s + 10'240us);
}

TEST(SysexPacing, NoWindowCarriesMoreThanTheSpeedAndTwoChunks) {
    SysexSchedule schedule(1'000'000, 3125, 0s);
    std::vector<std::pair<Time, std::size_t>> taken;
    Time now = 0s;
    for (int wake = 0; wake < 2000; ++wake) {
        now = std::max(now, schedule.NextTime()) + (wake % 7) * 3ms; // an unreliable sleeper
        taken.emplace_back(now, schedule.Take(now));
    }
    for (std::size_t first = 0; first < taken.size(); first += 50) {
        std::size_t bytes = 0;
        for (std::size_t i = first; i < taken.size(); ++i) {
            bytes += taken[i].second;
            const double window =
                std::chrono::duration<double>(taken[i].first - taken[first].first).count();
            ASSERT_LE(static_cast<double>(bytes), window * 3125 + 64 + 0.001)
                << first << " to " << i;
        }
    }
}

TEST(SysexPacing, DoesNotDriftWithLateWakeUps) {
    SysexSchedule schedule(93'750, 3125, 0s);
    while (schedule.Sent() < 93'750) schedule.Take(schedule.NextTime() + 4ms);
    EXPECT_EQ(schedule.NextTime(), 30s);
}

TEST(SysexPacing, NewSpeedHoldsForTheRest) {
    SysexSchedule schedule(3200, 3125, 0s);
    schedule.Take(0s);
    schedule.SetSpeed(31'250);
    EXPECT_EQ(schedule.NextTime(), 10'240us);
    EXPECT_EQ(schedule.Take(10'240us), 313U);
    EXPECT_EQ(schedule.NextTime(), 10'240us + 10'016us);
}

TEST(SysexPacing, PausesAfterEveryChunkAndAtTheEnd) {
    SysexSchedule schedule(70, 3200, 0s, {64, 100ms});
    EXPECT_EQ(schedule.Take(0s), 32U);
    EXPECT_EQ(schedule.Take(10ms), 32U);
    EXPECT_EQ(schedule.NextTime(), 20ms + 100ms);
    EXPECT_EQ(schedule.Take(119ms), 0U);
    schedule.SetSpeed(600);
    EXPECT_EQ(schedule.NextTime(), 120ms) << "a new speed moves nothing that is past";
    EXPECT_EQ(schedule.Take(120ms), 6U);
    EXPECT_FALSE(schedule.IsDone(229ms));
    EXPECT_TRUE(schedule.IsDone(230ms));
    SysexSchedule late(200, 3200, 0s, {40, 50ms});
    EXPECT_EQ(late.Take(1s), 40U) << "catching up ends where a pause begins";
}
