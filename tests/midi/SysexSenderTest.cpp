#include "platform/midi/sysexSender.h"

#include <atomic>
#include <latch>
#include <vector>

#include <gmock/gmock.h>

#include "support/LogCapture.h"
#include "support/Watchdog.h"

namespace {

/// Gives every message of a test the same data and counts their ends.
struct Messages {
    static constexpr std::size_t kLength = 100'000;

    explicit Messages(std::ptrdiff_t count) : ended(count) {}
    vm::MidiSysexSend To(vm::MidiId destination) {
        return {destination, data.data(), data.size(),
                [](void* self) { static_cast<Messages*>(self)->ended.count_down(); }, this};
    }

    std::vector<std::uint8_t> data = std::vector<std::uint8_t>(kLength);
    std::latch ended;
};

int TakesAll(vm::MidiId, std::span<const std::uint8_t>, vm::SysexMark&) {
    return vm::kMidiOk;
}

/// A queue that takes everything and lets it leave when told.
class Queue {
public:
    vm::SysexOutlet Outlet() {
        return {[this](vm::MidiId, std::span<const std::uint8_t> piece, vm::SysexMark& end) {
                    end = {1, m_written += piece.size()};
                    m_written.notify_all();
                    return vm::kMidiOk;
                },
                [this](vm::MidiId, const vm::SysexMark& end) {
                    ++m_questions;
                    m_questions.notify_all();
                    return end.position <= m_left ? vm::kMidiOk : vm::kMidiBusy;
                }};
    }
    void WaitForWritten(std::uint64_t count) {
        for (std::uint64_t now = m_written; now < count; now = m_written) m_written.wait(now);
    }
    /// Afterwards a question that began later than this call has been answered.
    void WaitForQuestion() {
        const int until = m_questions + 2;
        for (int now = m_questions; now < until; now = m_questions) m_questions.wait(now);
    }
    void Leave(std::uint64_t count) { m_left = count; }
    std::uint64_t Written() const { return m_written; }

private:
    std::atomic<std::uint64_t> m_written = 0;
    std::atomic<std::uint64_t> m_left = 0;
    std::atomic<int> m_questions = 0;
};

TEST(SysexSender, GoesOnWhileMessagesLeaveAndReportsThemInOrderOnceTheyHave) {
    Watchdog watchdog;
    constexpr std::size_t kSize = 40'000;
    Queue queue;
    vm::SysexSender sender(queue.Outlet());
    sender.SetSpeed(1, 1'000'000'000);
    Messages sent[] = {Messages(1), Messages(1), Messages(1)};
    for (Messages& each : sent) {
        vm::MidiSysexSend message = each.To(1);
        message.byteCount = kSize;
        ASSERT_EQ(vm::kMidiOk, sender.Send(message));
    }
    queue.WaitForWritten(2 * kSize); // the second begins below the limit of 64 KB
    queue.WaitForQuestion();
    EXPECT_EQ(2 * kSize, queue.Written());
    EXPECT_FALSE(sent[0].ended.try_wait());
    queue.Leave(kSize);
    sent[0].ended.wait();
    queue.WaitForWritten(3 * kSize);
    queue.WaitForQuestion();
    EXPECT_FALSE(sent[1].ended.try_wait());
    queue.Leave(3 * kSize);
    sent[2].ended.wait();
    EXPECT_TRUE(sent[1].ended.try_wait());
}

TEST(SysexSender, LogsWhatWasNotSentWholeAndGoesOn) {
    Watchdog watchdog;
    constexpr std::size_t kLost = 5'000;
    LogCapture log;
    vm::SysexSender sender(
        {[](vm::MidiId, std::span<const std::uint8_t> piece, vm::SysexMark& end) {
            end.position += piece.size();
            return piece.size() < 4096 && end.position == kLost ? vm::kMidiUnknownEndpoint
                                                                : vm::kMidiOk;
        }});
    sender.SetSpeed(1, 1'000'000'000);
    Messages sent(2);
    vm::MidiSysexSend torn = sent.To(1);
    torn.byteCount = kLost;
    sender.Send(torn);
    sender.Send(sent.To(1));
    sent.ended.wait();
    sender.Stop();
    EXPECT_THAT(log.TakeLog(),
                testing::ElementsAre("Error! A System Exclusive message of 5000 bytes was "
                                     "not sent whole: its destination has gone"));
}

TEST(SysexSender, EndsAllMessagesToADestinationAndNoOthers) {
    Watchdog watchdog;
    LogCapture log;
    Messages gone(2), staying(1);
    vm::SysexSender sender({TakesAll});
    sender.SetSpeed(1, 1);
    sender.SetSpeed(2, 1);
    sender.Send(gone.To(1));
    sender.Send(gone.To(1));
    sender.Send(staying.To(2));
    sender.End(1);
    sender.End(3);
    gone.ended.wait();
    EXPECT_FALSE(staying.ended.try_wait());
    Messages later(1); // is not concerned
    sender.SetSpeed(1, 100 * Messages::kLength);
    sender.Send(later.To(1));
    later.ended.wait();
    sender.Stop();
    staying.ended.wait();
    EXPECT_EQ(3U, log.TakeLog().size());
}

} // namespace
