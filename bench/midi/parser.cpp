// It counts allocations by operators of its own, which the library uses too.
#include "parser.h"

#include <atomic>
#include <cstdlib>
#include <new>
#include <string>
#include <thread>

#include "figures.h"
#include "harness.h"
#include "link.h"
#include "midi/packetParser.h"

namespace {

std::atomic<std::size_t> s_allocations = 0;

} // namespace

void* operator new(std::size_t size) {
    s_allocations.fetch_add(1, std::memory_order_relaxed);
    if (void* const memory = std::malloc(size ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept {
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace bench {
namespace {

class CountingSink final : public vm::MidiEventSink {
public:
    void ShortMessage(std::uint32_t message) override {
        ++shortMessages;
        sum += message;
    }
    void SysEx(std::span<const std::uint8_t> message) override { sum += message.size(); }
    void Remark(vm::MidiRemark, std::uint8_t byte) override { sum += byte; }

    std::size_t shortMessages = 0;
    std::size_t sum = 0; // so that nothing is left out
};

/// Notes, controllers, programs and clocks, as they come from a keyboard; exactly `size` bytes.
Bytes ShortMessages(std::size_t size) {
    static constexpr std::uint8_t kPlayed[] = {0x90, 60,   100, 0xB0, 7,  80, 0xF8, 0x91, 64,
                                               90,   0xC2, 5,   0x80, 60, 0,  0xE0, 0,    64};
    Bytes bytes;
    for (std::size_t i = 0; i < sizeof kPlayed;) {
        const std::size_t length = kPlayed[i] == 0xF8 ? 1 : (kPlayed[i] >> 5) == 6 ? 2 : 3;
        if (bytes.size() + length > size) break;
        bytes.insert(bytes.end(), kPlayed + i, kPlayed + i + length);
        i = (i + length) % sizeof kPlayed;
    }
    bytes.resize(size, 0xF8);
    return bytes;
}

/// Two packets of short messages, then a System Exclusive message over two packets, and so on.
std::vector<Bytes> MixedPackets(std::size_t size, std::size_t total) {
    const Bytes sysex = NumberedSysex(2 * size, 0);
    const auto middle = sysex.begin() + static_cast<std::ptrdiff_t>(size);
    const Bytes played = ShortMessages(size);
    std::vector<Bytes> packets;
    while (packets.size() * size < total)
        packets.insert(packets.end(),
                       {played, played, Bytes(sysex.begin(), middle), Bytes(middle, sysex.end())});
    return packets;
}

void Parse(const std::vector<Bytes>& packets, Bytes& accumulator, CountingSink& sink) {
    for (const Bytes& packet : packets) vm::ParseMidiPacket(packet, accumulator, sink);
}

// In processor time: nothing here waits, and what else the machine does is of no interest.
void ReportSpeed(std::size_t size) {
    constexpr std::size_t kTotal = 1'000'000;
    const std::vector<Bytes> packets = MixedPackets(size, kTotal);
    Bytes accumulator;
    CountingSink sink;
    const Competitor parser = {"VMCore", [&] {
                                   const Nanoseconds start = ProcessTime();
                                   Parse(packets, accumulator, sink);
                                   return static_cast<double>(ProcessTime() - start);
                               }};
    const Figure figure = CompareAll(15, {parser}).front();
    const auto bytes = static_cast<double>(packets.size() * size);
    Report("parse-" + std::to_string(size), 1000 * bytes / figure.value, "MB/s");
}

void ReportParserAllocations() {
    constexpr std::size_t kSize = 64;
    const std::vector<Bytes> packets(10'000, ShortMessages(kSize));
    Bytes accumulator;
    CountingSink sink;
    const std::size_t before = s_allocations;
    Parse(packets, accumulator, sink);
    Report("parse-allocations",
           static_cast<double>(s_allocations - before) / static_cast<double>(sink.shortMessages),
           "per message");
}

// Once the queues have grown to what the traffic needs.
void ReportWayAllocations() {
    constexpr std::uint32_t kCount = 10'000;
    Receiver receiver(2 * kCount, Receiver::Stamps::No);
    const std::unique_ptr<Link> link = OpenLink("VMCore", "loopback", receiver);
    const auto send = [&](std::uint32_t first) {
        for (std::uint32_t i = first; i < first + kCount; ++i) {
            link->SendShort(Numbered(i));
            if (i % 4 != 3) continue;
            while (receiver.Count() <= i) std::this_thread::yield();
        }
    };
    send(0);
    const std::size_t before = s_allocations;
    send(kCount);
    Report("loopback-allocations",
           static_cast<double>(s_allocations - before) / static_cast<double>(kCount),
           "per message");
}

} // namespace

void ReportParser() {
    for (const std::size_t size : {3U, 64U, 4096U}) ReportSpeed(size);
    ReportParserAllocations();
    ReportWayAllocations();
}

} // namespace bench
