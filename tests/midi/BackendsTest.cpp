#include "platform/midi/backends.h"

#include <gmock/gmock.h>

#include "support/LogCapture.h"

namespace {

std::shared_ptr<vm::MidiPlatform> MakeNone() {
    return nullptr;
}
constexpr vm::MidiBackend kBackends[] = {
    {"first", [] { return false; }, MakeNone},
    {"second", [] { return true; }, MakeNone},
    {"third", [] { return true; }, MakeNone},
};

std::string Choose(std::span<const vm::MidiBackend> backends, std::string_view wanted) {
    const vm::MidiBackend* chosen = vm::ChooseMidiBackend(backends, wanted);
    return chosen ? chosen->name : "none";
}

} // namespace

TEST(Backends, FirstAvailableIsTheDefaultAndANameIsObeyed) {
    LogCapture log;
    EXPECT_EQ(Choose(kBackends, ""), "second");
    EXPECT_EQ(Choose(kBackends, "third"), "third");
    EXPECT_EQ(Choose(kBackends, "first"), "first");
    EXPECT_EQ(Choose({kBackends, 1}, ""), "none");
}

TEST(Backends, UnknownNameIsLoggedAndTheDefaultUsed) {
    LogCapture log;
    EXPECT_EQ(Choose(kBackends, "Third"), "second");
    EXPECT_THAT(log.TakeLog(),
                testing::ElementsAre(testing::HasSubstr("\"Third\" - using second")));
}

TEST(Backends, LoopbackIsTheLastResort) {
    LogCapture log;
    const vm::MidiBackend& last = vm::MidiBackends().back();
    EXPECT_STREQ(last.name, "loopback");
    EXPECT_TRUE(last.available());
    EXPECT_EQ(Choose(vm::MidiBackends(), "loopback"), "loopback");
    EXPECT_NE(last.create(), nullptr);
}
