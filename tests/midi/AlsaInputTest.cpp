#include "platform/midi/alsa/alsaInput.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "core/log.h"
#include "platform/midi/alsa/alsaPace.h"

using Bytes = std::vector<std::uint8_t>;
using namespace std::chrono_literals;

namespace {

constexpr vm::AlsaAddress kFirst{20, 0};
constexpr vm::AlsaAddress kSecond{20, 1};

class AlsaInputTest : public testing::Test {
protected:
    AlsaInputTest() {
        m_input.Connect(kFirst, 1);
        m_input.Connect(kSecond, 2);
    }
    void ReadSysex(vm::AlsaAddress from, Bytes piece) { Read(from, vm::EventFromSysex(piece)); }
    void Read(vm::AlsaAddress from, snd_seq_event_t event) {
        event.source = {static_cast<unsigned char>(from.client),
                        static_cast<unsigned char>(from.port)};
        m_input.Read(event, m_traffic);
    }
    /// "1: f0 01 f7, 2: ..." since the last call.
    std::string Arrived() {
        std::string text;
        auto bytes = m_traffic.Bytes();
        for (const auto& packet : m_traffic.Packets()) {
            text += vm::Format(text.empty() ? "%u:" : ", %u:", packet.source);
            for (const auto byte : bytes.first(packet.length)) text += vm::Format(" %02x", byte);
            bytes = bytes.subspan(packet.length);
        }
        m_traffic.Clear();
        return text;
    }

    vm::AlsaInput m_input;
    vm::MidiTraffic m_traffic;
};

} // namespace

TEST_F(AlsaInputTest, PiecesOfSourcesAreHeldTogether) {
    ReadSysex(kFirst, {0xF0, 0x01});
    ReadSysex(kSecond, {0xF0, 0x11});
    ReadSysex(kFirst, {0x02});
    EXPECT_EQ(Arrived(), "");
    Read(kFirst, *vm::EventFromShortMessage(Bytes{0xF8}));
    ReadSysex(kFirst, {0x03, 0xF7});
    ReadSysex(kSecond, {0xF7});
    EXPECT_EQ(Arrived(), "1: f8, 1: f0 01 02 03 f7, 2: f0 11 f7");
}

TEST_F(AlsaInputTest, OnePieceMayHoldMoreThanOneMessage) {
    ReadSysex(kFirst, {0xF0, 0x01, 0xF7, 0xF0, 0x02, 0xF7, 0xF0});
    ReadSysex(kFirst, {0x03, 0xF7});
    EXPECT_EQ(Arrived(), "1: f0 01 f7, 1: f0 02 f7, 1: f0 03 f7");
}

TEST_F(AlsaInputTest, MessageWithoutEndIsHandedOnAsItStands) {
    ReadSysex(kFirst, {0xF0, 0x01});
    ReadSysex(kFirst, {0xF0, 0x02, 0xF0, 0x03, 0xF7});
    EXPECT_EQ(Arrived(), "1: f0 01, 1: f0 02, 1: f0 03 f7");
}

TEST_F(AlsaInputTest, TornMessagesReachNobody) {
    ReadSysex(kFirst, {0xF0, 0x01});
    m_input.DropUnfinished();
    ReadSysex(kFirst, {0x02, 0x03});
    ReadSysex(kFirst, {0x04, 0xF7});
    ReadSysex(kFirst, {0x05, 0xF7, 0xF0, 0x06, 0xF7});
    ReadSysex(kSecond, {0x07, 0xF7}); // its beginning was never here
    EXPECT_EQ(Arrived(), "1: f0 06 f7");
}

TEST_F(AlsaInputTest, ReconnectedSourceBeginsAnew) {
    ReadSysex(kFirst, {0xF0, 0x01});
    EXPECT_EQ(m_input.AddressOf(1), kFirst);
    m_input.Disconnect({20, vm::AlsaAddress::kAllPorts});
    EXPECT_EQ(m_input.AddressOf(1), std::nullopt);
    EXPECT_EQ(m_input.AddressOf(2), std::nullopt);
    ReadSysex(kFirst, {0xF0, 0x01, 0xF7});
    m_input.Connect(kFirst, 1);
    ReadSysex(kFirst, {0x02, 0xF7});
    EXPECT_EQ(Arrived(), "");
}

TEST(AlsaPace, PassesAQuarterMegabyteASecond) {
    vm::AlsaPace pace;
    const vm::AlsaPace::Time begin{10s};
    int passed = 0;
    for (auto now = begin; now < begin + 1s; now += 300us) {
        if (!pace.IsFree(7, now)) continue;
        pace.Count(7, 256, now);
        ++passed;
    }
    EXPECT_GE(passed, 995);
    EXPECT_LE(passed, 1002);
    EXPECT_TRUE(pace.IsFree(8, begin)) << "another destination";
    EXPECT_FALSE(pace.IsFree(7, begin + 999ms));
    EXPECT_TRUE(pace.IsFree(7, begin + 1002ms));
}

TEST(AlsaPace, LeavesRoomInQueuesForOthers) {
    EXPECT_TRUE(vm::HasRoom({200, 200}, 256));
    EXPECT_TRUE(vm::HasRoom({200, 43}, 256));
    EXPECT_FALSE(vm::HasRoom({200, 42}, 256));
    EXPECT_TRUE(vm::HasRoom({200, 1}, 0));
    EXPECT_FALSE(vm::HasRoom({200, 0}, 0));
    EXPECT_TRUE(vm::HasRoom({20, 20}, 256)) << "a queue that could never hold it: let it be tried";
    EXPECT_FALSE(vm::HasRoom({20, 19}, 256));
    EXPECT_TRUE(vm::HasRoom({0, 0}, 256)) << "no queue";
}
