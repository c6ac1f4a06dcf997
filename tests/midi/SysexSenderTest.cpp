#include "platform/midi/sysexSender.h"

#include <latch>
#include <vector>

#include <gmock/gmock.h>

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

TEST(SysexSender, EndsAllMessagesToADestinationAndNoOthers) {
    Watchdog watchdog;
    Messages gone(2), staying(1);
    vm::SysexSender sender([](vm::MidiId, std::span<const std::uint8_t>) { return vm::kMidiOk; });
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
}

} // namespace
