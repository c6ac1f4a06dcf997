#include <atomic>
#include <filesystem>
#include <thread>

#include "AlsaFixture.h"

namespace fs = std::filesystem;
using testing::Contains;
using testing::HasSubstr;

namespace {

class AlsaLife : public AlsaFixture {};

constexpr char kThrough[] = "Midi Through Port-0";

/// The number of this process's threads.
std::ptrdiff_t Threads() {
    return std::distance(fs::directory_iterator("/proc/self/task"), fs::directory_iterator());
}

} // namespace

TEST_F(AlsaLife, StopsInTheMiddleOfTraffic) {
    AlsaPeer peer("Keys");
    const int port = peer.AddPort("io");
    MidiRecorder recorder;
    OpenIn("Keys io", recorder);
    const HMIDIOUT through = OpenOut(kThrough), keys = OpenOut("Keys io");
    const Bytes message = Dump(200'000, 0);
    std::future<void> ends[] = {SendSysex(through, message), SendSysex(through, message),
                                SendSysex(keys, message)};
    std::atomic<bool> stop = false;
    std::thread flood([&] {
        while (!stop) peer.SendEvent(port, *vm::EventFromShortMessage(Bytes{0x90, 0x3C, 0x40}));
    });
    std::thread sender([&] {
        while (!stop) midiOutShortMsg(through, 0x00403C90);
    });
    recorder.Wait(50);
    EXPECT_EQ(destroyCoreMIDI(), 0);
    const std::size_t calls = recorder.Wait(0).size();
    for (std::future<void>& end : ends)
        EXPECT_EQ(end.wait_for(std::chrono::seconds(0)), std::future_status::ready);
    peer.SendEvent(port, *vm::EventFromShortMessage(Bytes{0x90, 0x3C, 0x40}));
    stop = true;
    flood.join();
    sender.join();
    EXPECT_EQ(recorder.Wait(0).size(), calls);
    m_log.Ignore(); // the flood may have been too much before the end
}

TEST_F(AlsaLife, LeavesNoThreadAndNoClientBehind) {
    destroyCoreMIDI();
    const std::ptrdiff_t threads = Threads();
    for (int i = 0; i < 20; ++i) {
        const auto platform = std::make_shared<vm::AlsaPlatform>();
        vm::UseMidiPlatform(platform);
        initCoreMIDI();
        if (i % 2 == 0) midiOutGetNumDevs(); // otherwise it may end before it has begun
        destroyCoreMIDI();
        EXPECT_EQ(platform.use_count(), 1);
    }
    m_log.Ignore();
    EXPECT_EQ(Threads(), threads);
    EXPECT_EQ(vm::AlsaPlatform().Stop(), vm::kMidiNotRunning);
}

namespace {

std::promise<int> s_stopped;

} // namespace

TEST_F(AlsaLife, MayBeStoppedByTheReceiver) {
    const auto stop = [](std::span<const vm::MidiPacket>, void* platform, void*) {
        s_stopped.set_value(static_cast<vm::AlsaPlatform*>(platform)->Stop());
    };
    const HMIDIOUT out = OpenOut(kThrough);
    const vm::MidiId port = m_platform->CreateInputPort("in", stop, m_platform.get());
    const vm::MidiId source = m_platform->EndpointAt(
        vm::MidiDirection::Input, static_cast<std::uint32_t>(InputNames().size() - 1));
    ASSERT_EQ(m_platform->ConnectSource(port, source, nullptr), vm::kMidiOk);
    midiOutShortMsg(out, 0x00403C90);
    EXPECT_EQ(s_stopped.get_future().get(), vm::kMidiOk);
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x00403C90)), vm::kMidiNotRunning);
    EXPECT_EQ(midiOutGetNumDevs(), 0U);
    destroyCoreMIDI();
    m_log.Ignore(); // its ports cannot be disposed of any more
}

TEST_F(AlsaLife, RefusesWhatIsNotThere) {
    const vm::MidiId out = m_platform->CreateOutputPort("out");
    const vm::MidiId in = m_platform->CreateInputPort(
        "in", [](auto, void*, void*) {}, nullptr);
    const Bytes note = {0x90, 0x3C, 0x40};
    const vm::MidiId through = vm::MidiReference(OpenOut(kThrough));
    EXPECT_EQ(m_platform->Send(in, through, note), vm::kMidiUnknownPort);
    EXPECT_EQ(m_platform->Send(out, 12345, note), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(m_platform->Send(out, through, note), vm::kMidiOk);
    EXPECT_EQ(m_platform->SendSysex({12345}), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(m_platform->SetMaxSysexSpeed(12345, 1), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(m_platform->ConnectSource(out, through, nullptr), vm::kMidiUnknownPort);
    EXPECT_EQ(m_platform->ConnectSource(in, through, nullptr), vm::kMidiUnknownEndpoint)
        << "a destination is no source";
    EXPECT_EQ(m_platform->DisposePort(out), vm::kMidiOk);
    EXPECT_EQ(m_platform->DisposePort(out), vm::kMidiUnknownPort);
    EXPECT_EQ(m_platform->Send(out, through, note), vm::kMidiUnknownPort);
}

TEST(AlsaAvailable, OnlyWhereThereIsASequencer) {
    LogCapture log;
    EXPECT_TRUE(vm::AlsaPlatform::IsAvailable());
    fs::rename("/dev/snd/seq", "/dev/snd/not-seq");
    EXPECT_FALSE(vm::AlsaPlatform::IsAvailable());
    const auto platform = std::make_shared<vm::AlsaPlatform>();
    EXPECT_NE(platform->Start("client"), 0U);
    EXPECT_EQ(platform->Count(vm::MidiDirection::Output), 0);
    EXPECT_THAT(log.TakeLog(), Contains(HasSubstr("cannot open the ALSA sequencer")));
    EXPECT_EQ(platform->CreateOutputPort("out"), 0U);
    EXPECT_EQ(platform->SendSysex({1}), vm::kMidiNotRunning);
    EXPECT_EQ(platform->Stop(), vm::kMidiOk);
    fs::rename("/dev/snd/not-seq", "/dev/snd/seq");
    EXPECT_TRUE(vm::AlsaPlatform::IsAvailable());
}
