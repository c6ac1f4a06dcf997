#include "platform/midi/jack/RecordRing.h"

#include <random>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

using Bytes = std::vector<std::uint8_t>;

namespace {

Bytes Record(std::uint32_t number) {
    Bytes bytes(number * 37 % 300);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(number + i);
    return bytes;
}

} // namespace

TEST(RecordRing, RefusesWhatDoesNotFitAndKeepsTheRest) {
    vm::RecordRing ring(64);
    EXPECT_FALSE(ring.Front());
    EXPECT_FALSE(ring.Push(1, Bytes(57))); // with its header 72
    EXPECT_TRUE(ring.Push(1, Bytes(24, 0xAA)));
    EXPECT_FALSE(ring.Push(2, Bytes(16), 9)); // leaves 8
    EXPECT_TRUE(ring.Push(2, Bytes(16, 0xBB), 8));
    EXPECT_TRUE(ring.Push(3, {}));
    EXPECT_FALSE(ring.Push(4, {}));
    for (const std::uint32_t tag : {1U, 2U, 3U}) {
        ASSERT_TRUE(ring.Front());
        EXPECT_EQ(ring.Front()->tag, tag);
        ring.Pop();
    }
    EXPECT_FALSE(ring.Front());
    EXPECT_EQ(ring.Taken(), ring.Written());
}

TEST(RecordRing, CarriesRecordsOfAllSizesBetweenThreads) {
    constexpr std::uint32_t kCount = 200'000;
    vm::RecordRing ring(1024);
    std::thread producer([&] {
        for (std::uint32_t i = 0; i < kCount; ++i)
            while (!ring.Push(i, Record(i))) std::this_thread::yield();
    });
    std::uint32_t wrong = 0;
    for (std::uint32_t i = 0; i < kCount; ++i) {
        auto record = ring.Front();
        for (; !record; record = ring.Front()) std::this_thread::yield();
        const Bytes bytes(record->bytes.begin(), record->bytes.end());
        wrong += record->tag != i || bytes != Record(i);
        ring.Pop();
    }
    producer.join();
    EXPECT_EQ(wrong, 0U);
}
