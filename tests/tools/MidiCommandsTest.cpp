// `vmcore midi` on a loopback of the test's own: what arrives out of the blue, what disappears, what
// is changed on its way.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "MidiSelfTest.h"
#include "command.h"
#include "midi/midisystem.h"
#include "midiReceive.h"
#include "midiSend.h"
#include "platform/midi/loopback/LoopbackPlatform.h"
#include "support/LogCapture.h"
#include "support/TemporaryHome.h"
#include "support/Watchdog.h"

using namespace vm::tool;
using testing::HasSubstr;
using Packets = std::vector<std::vector<std::uint8_t>>;

namespace {

/// Lets packets arrive as soon as an input is open.
class TalkingLoopback : public vm::LoopbackPlatform {
public:
    explicit TalkingLoopback(Packets packets) : m_packets(std::move(packets)) {}
    int ConnectSource(vm::MidiId port, vm::MidiId source, void* reference) override {
        const int result = LoopbackPlatform::ConnectSource(port, source, reference);
        Receive(source, m_packets);
        return result;
    }

private:
    const Packets m_packets;
};

/// Does to some short messages what should not happen.
class FaultyLoopback : public vm::LoopbackPlatform {
public:
    int Send(vm::MidiId port, vm::MidiId destination,
             std::span<const std::uint8_t> bytes) override {
        std::vector<std::uint8_t> copy(bytes.begin(), bytes.end());
        if (copy[0] == 0xB3) copy[2] ^= 1;
        if (copy[0] == 0xC5 && ++m_programs == 3) return vm::kMidiOk; // lost
        if (copy[0] == 0xFA) LoopbackPlatform::Send(port, destination, bytes);
        if (copy[0] == 0xE0) return vm::kMidiSendFailed;
        if (copy[0] == 0xF2) copy[0] = 0x90;
        return LoopbackPlatform::Send(port, destination, copy);
    }

private:
    int m_programs = 0;
};

class MidiCommands : public testing::Test {
protected:
    void Use(std::shared_ptr<vm::LoopbackPlatform> platform) {
        vm::UseMidiPlatform(std::move(platform));
    }
    ~MidiCommands() override { m_log.Ignore(); }

    /// Both as they end: "1: <message>".
    template <class Command>
    static std::string EndOf(Command&& command) {
        try {
            command();
            return "0";
        } catch (const Exit& end) {
            return std::to_string(end.status) + ": " + end.message;
        }
    }

    Watchdog m_watchdog;
    LogCapture m_log;
    TemporaryHome m_home;
};

} // namespace

TEST_F(MidiCommands, MonitorPrintsALineForEachMessage) {
    Use(std::make_shared<TalkingLoopback>(
        Packets{{0x90, 0x3C, 0x40, 0xC0, 0x05}, {0xF0, 0x43, 0x10}, {0xF8}, {0x4C, 0xF7}}));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    Monitor("Loopback", {{}, 4});
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "vmcore: listening to 'Loopback', Ctrl-C ends\n");
    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::MatchesRegex(
                    " +[0-9]+\\.[0-9][0-9][0-9]  90 3C 40 +note on, channel 1, C4, velocity 64\n"
                    " +[0-9]+\\.[0-9][0-9][0-9]  C0 05 +program change, channel 1, 5\n"
                    " +[0-9]+\\.[0-9][0-9][0-9]  F8 +clock\n"
                    " +[0-9]+\\.[0-9][0-9][0-9]  F0 43 10 4C F7 +SysEx, 5 bytes\n"));
}

TEST_F(MidiCommands, ReceiveKeepsWholeMessagesOnly) {
    const std::string file = m_home.Write("a.syx", "\xF0\xF7");
    const auto receive = [&](std::size_t count, double seconds) {
        Use(std::make_shared<TalkingLoopback>(Packets{{0x90, 0x3C, 0x40},
                                                      {0xF0, 0x01, 0xF0, 0x02, 0xF7},
                                                      {0x03, 0xF7},
                                                      {0xF0, 0x04, 0xF7, 0xF0, 0x05}}));
        testing::internal::CaptureStderr();
        const std::string end = EndOf([&] { Receive("0", file, {seconds, count}, {}); });
        EXPECT_THAT(testing::internal::GetCapturedStderr(),
                    HasSubstr("vmcore: not kept, because it is incomplete: F0 01\n"));
        return end;
    };
    EXPECT_EQ(receive(1, 10), "0");
    EXPECT_EQ(m_home.Read("a.syx"), "\xF0\xF7\xF0\x02\xF7");
    EXPECT_EQ(receive(3, 0.2), "1: 2 of 3 messages received");
    EXPECT_EQ(m_home.Read("a.syx"), "\xF0\xF7\xF0\x02\xF7\xF0\x02\xF7\xF0\x04\xF7");
}

TEST_F(MidiCommands, SendNoticesThatThePortHasGone) {
    const SyxFile file(m_home.Write("a.syx", "\xF0\x01\xF7\xF0" + std::string(1000, 1) + "\xF7"));
    vm::LoopbackSetup setup = vm::LoopbackSetup::Default();
    setup.objects.push_back({3, vm::MidiObjectKind::Destination, "Another", {}, {}});
    auto platform = std::make_shared<vm::LoopbackPlatform>(std::move(setup));
    Use(platform);
    StopSignal stop;
    MidiOutput output;
    const MidiSession session;
    const Port port = FindPort(PortDirection::Out, "0");
    output.Open(port, 100'000);
    HMIDIIN in = nullptr;
    const auto removeIt = [](HMIDIIN, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        reinterpret_cast<vm::LoopbackPlatform*>(instance)->RemoveEndpoint(1);
    };
    const MIDIINPROC callback = removeIt;
    midiInOpen(&in, 0, reinterpret_cast<DWORD_PTR>(callback),
               reinterpret_cast<DWORD_PTR>(platform.get()), 0);
    EXPECT_THAT(EndOf([&] { SendMessages(output, port, file, stop); }),
                testing::MatchesRegex("1: output 'Loopback' has disappeared: [01] of 2 messages "
                                      "sent"));
}

TEST_F(MidiCommands, SelftestNamesWhatIsWrong) {
    Use(std::make_shared<FaultyLoopback>());
    testing::internal::CaptureStdout();
    EXPECT_EQ(EndOf([] { RunMidiSelfTest("", "", 10'000'000); }), "1: ");
    const std::string output = testing::internal::GetCapturedStdout();
    for (const char* line :
         {"\nnote on                ok  ",
          "\ncontrol change         failed  B3 13 7C arrived as B3 13 7D\n",
          "\nprogram change         failed  message 22 of a burst of 64: C5 15 arrived as C6 16\n",
          "\npitch bend             failed  sending E0 10 7F gave error -14\n",
          "\nsong position          failed  90 10 7F arrived too\n",
          "\nstart                  failed  FA arrived too\n", "\n24 of 29 kinds ok\n"})
        EXPECT_THAT(output, HasSubstr(line));
}
