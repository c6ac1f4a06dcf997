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
    /// "1: f0 01 f7, 2 after loss: ..." since the last call.
    std::string Arrived() {
        std::string text;
        auto bytes = m_traffic.Bytes();
        for (const auto& packet : m_traffic.Packets()) {
            const bool isAfterLoss = packet.loss == vm::MidiTraffic::Loss::Before;
            text += (text.empty() ? "" : ", ") + std::to_string(packet.source) +
                    (isAfterLoss ? " after loss:" : ":");
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

TEST_F(AlsaInputTest, PacketsAreTheirSources) {
    ReadSysex(kFirst, {0xF0, 0x01});
    Read(kSecond, *vm::EventFromShortMessage(Bytes{0xF8}));
    ReadSysex(kFirst, {0x02, 0xF7});
    ReadSysex({20, 7}, {0xF0, 0x03, 0xF7});
    EXPECT_EQ(Arrived(), "1: f0 01, 2: f8, 1: 02 f7");
    EXPECT_EQ(m_input.AddressOf(2), kSecond);
    m_input.Disconnect(kSecond);
    EXPECT_EQ(m_input.AddressOf(2), std::nullopt);
    Read(kSecond, *vm::EventFromShortMessage(Bytes{0xF8}));
    EXPECT_EQ(Arrived(), "");
}

TEST_F(AlsaInputTest, WhatIsLeftOfTornMessagesReachesNobody) {
    ReadSysex(kFirst, {0xF0, 0x01});
    m_input.OnLoss();
    ReadSysex(kFirst, {0x02, 0x03});
    ReadSysex(kFirst, {0x04, 0xF7});
    Read(kSecond, *vm::EventFromShortMessage(Bytes{0xF8}));
    ReadSysex(kFirst, {0xF0, 0x05, 0xF7});
    EXPECT_EQ(Arrived(), "1: f0 01, 2 after loss: f8, 1 after loss: f0 05 f7");
}

TEST_F(AlsaInputTest, PortThatComesBackBeginsAnew) {
    ReadSysex(kFirst, {0xF0, 0x01});
    m_input.OnGone({20, vm::AlsaAddress::kAllPorts});
    EXPECT_EQ(m_input.AddressOf(1), std::nullopt);
    EXPECT_EQ(m_input.AddressOf(2), std::nullopt);
    m_input.Connect({24, 0}, 1);
    ReadSysex({24, 0}, {0x02, 0xF7});
    ReadSysex({24, 0}, {0xF0, 0x03, 0xF7});
    EXPECT_EQ(Arrived(), "1: f0 01, 1 after loss: f0 03 f7");
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
