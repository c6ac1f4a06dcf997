#include "platform/midi/packets.h"

#include <vector>

#include <gmock/gmock.h>

#include "platform/midi/portTable.h"

using Bytes = std::vector<std::uint8_t>;
using Verdict = vm::TornSysexFilter::Verdict;

namespace {

struct Received {
    Bytes bytes;
    bool afterLoss;
    bool operator==(const Received&) const = default;
};

} // namespace

TEST(MidiPackets, MessageEndsWhereItsStatusSays) {
    const struct {
        Bytes packet, message;
    } rows[] = {
        {{0x90, 0x3C, 0x40}, {0x90, 0x3C, 0x40}},
        {{0xE0, 0x00, 0x40}, {0xE0, 0x00, 0x40}},
        {{0xC3, 0x40, 0x7F}, {0xC3, 0x40}},
        {{0xDF, 0x01}, {0xDF, 0x01}},
        {{0xF1, 0x25, 0x00}, {0xF1, 0x25}},
        {{0xF2, 0x01, 0x02}, {0xF2, 0x01, 0x02}},
        {{0xF3, 0x01, 0x00}, {0xF3, 0x01}},
        {{0xF6, 0x00, 0x00}, {0xF6}},
        {{0xF7, 0x00, 0x00}, {0xF7}},
        {{0xF8, 0x00, 0x00}, {0xF8}},
        {{0xFF, 0x00, 0x00}, {0xFF}},
        {{0xF0, 0x43, 0x10}, {0xF0, 0x43, 0x10}},
        {{0x10, 0x20, 0x30}, {0x10, 0x20, 0x30}},
        {{0xF8, 0xF8, 0xF8, 0xF8}, {0xF8, 0xF8, 0xF8, 0xF8}},
        {{0xF2}, {0xF2}},
        {{}, {}},
    };
    for (const auto& row : rows) {
        const auto message = vm::MessageInPacket(row.packet);
        EXPECT_EQ(Bytes(message.begin(), message.end()), row.message)
            << testing::PrintToString(row.packet);
    }
}

TEST(MidiPackets, RestOfATornMessageIsDropped) {
    vm::TornSysexFilter filter;
    const auto judge = [&](const Bytes& packet) { return filter.Judge(7, packet); };
    EXPECT_EQ(judge({0x01, 0xF7}), Verdict::Deliver);
    filter.Lost(7);
    EXPECT_EQ(filter.Judge(8, Bytes{0x01}), Verdict::Deliver) << "another source";
    EXPECT_EQ(judge({0x01, 0x02}), Verdict::Drop);
    EXPECT_EQ(judge({0xF8}), Verdict::DeliverAfterLoss);
    EXPECT_EQ(judge({0x90, 0x3C, 0x40}), Verdict::Deliver);
    EXPECT_EQ(judge({0x03, 0xF7}), Verdict::Drop);
    EXPECT_EQ(judge({0xF0, 0x01}), Verdict::Deliver);
    EXPECT_EQ(judge({0x02, 0xF7}), Verdict::Deliver);
}

TEST(MidiPackets, NextMessageEndsTheTornOne) {
    vm::TornSysexFilter filter;
    filter.Lost(7);
    EXPECT_EQ(filter.Judge(7, Bytes{0xF0, 0x01}), Verdict::DeliverAfterLoss);
    EXPECT_EQ(filter.Judge(7, Bytes{0x02, 0xF7}), Verdict::Deliver);
    filter.Lost(7);
    filter.Lost(7);
    EXPECT_EQ(filter.Judge(7, Bytes{0xF7}), Verdict::Drop);
    EXPECT_EQ(filter.Judge(7, Bytes{0xF0}), Verdict::DeliverAfterLoss);
}

TEST(MidiPackets, LossIsDeliveredWithItsPacket) {
    vm::PortTable ports;
    std::vector<Received> received;
    const vm::MidiId port = ports.CreateInput(
        [](std::span<const vm::MidiPacket> packets, void*, void* reference) {
            for (const vm::MidiPacket& each : packets)
                static_cast<std::vector<Received>*>(reference)->push_back(
                    {Bytes(each.bytes.begin(), each.bytes.end()), each.afterLoss});
        },
        nullptr);
    ASSERT_EQ(ports.Connect(port, 7, &received), vm::kMidiOk);
    vm::MidiTraffic traffic;
    traffic.Append(7, Bytes{0x01});
    traffic.Append(7, Bytes{0x02, 0x03}, vm::MidiTraffic::Loss::Before);
    ports.Deliver(traffic);
    EXPECT_EQ(received, (std::vector<Received>{{{0x01}, false}, {{0x02, 0x03}, true}}));
}
