#include "traffic.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <thread>

#include "link.h"

namespace bench {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kSettle{100};
constexpr double kMicrosecond = 1000;

std::unique_ptr<Link> Opened(const std::string& side, const std::string& system,
                             Receiver& receiver) {
    std::unique_ptr<Link> link = OpenLink(side, system, receiver);
    std::this_thread::sleep_for(kSettle);
    return link;
}

/// Until all have arrived, or none more do for half a second. Returns the process's processor time
/// by the last arrival, to a millisecond.
Nanoseconds AwaitArrivals(const Receiver& receiver, std::size_t all) {
    constexpr int kQuiet = 500;
    Nanoseconds time = ProcessTime();
    std::size_t arrived = receiver.Count();
    for (int quiet = 0; arrived < all && quiet < kQuiet; ++quiet) {
        std::this_thread::sleep_for(milliseconds(1));
        if (receiver.Count() == arrived) continue;
        arrived = receiver.Count();
        time = ProcessTime();
        quiet = 0;
    }
    return time;
}

Figures ArrivedAndTime(const Receiver& receiver, std::size_t count, Nanoseconds start) {
    const Nanoseconds end = AwaitArrivals(receiver, count);
    return {{"arrived", static_cast<double>(receiver.Count())},
            {"time", static_cast<double>(end - start) / kMicrosecond / static_cast<double>(count)}};
}

Figures MedianAndTail(std::vector<Nanoseconds> times) {
    if (times.empty()) throw NotMeasured("nothing arrived");
    std::ranges::sort(times);
    return {{"median", static_cast<double>(times[times.size() / 2]) / kMicrosecond},
            {"p99", static_cast<double>(times[times.size() * 99 / 100]) / kMicrosecond}};
}

struct SysexRow {
    const char* name;
    std::size_t length, count;
};

Figures MeasureSysexRow(const SysexRow& row, const std::string& side, const std::string& system) {
    std::vector<Bytes> messages;
    for (std::size_t i = 0; i < row.count; ++i)
        messages.push_back(NumberedSysex(row.length, static_cast<std::uint32_t>(i)));
    Receiver receiver(messages);
    const std::unique_ptr<Link> link = Opened(side, system, receiver);
    const Nanoseconds start = Now();
    link->SendSysex(messages);
    AwaitArrivals(receiver, row.count);
    const auto whole = static_cast<double>(receiver.Count());
    const double bytes = whole * static_cast<double>(row.length);
    const auto time = static_cast<double>(receiver.LastArrival() - start);
    const std::string name = row.name;
    return {{name + "-whole", 100 * whole / static_cast<double>(row.count)},
            {name + "-speed", receiver.Count() == row.count ? bytes / time * 1000 : 0}};
}

} // namespace

// Longer apart than a cycle of the graph.
Figures MeasureLatency(const std::string& side, const std::string& system) {
    constexpr std::uint32_t kCount = 2000;
    Receiver receiver(kCount, Receiver::Stamps::Yes);
    const std::unique_ptr<Link> link = Opened(side, system, receiver);
    std::minstd_rand random(1);
    std::uniform_int_distribution<int> pause(2000, 4000);
    std::vector<Nanoseconds> sentAt;
    for (std::uint32_t i = 0; i < kCount; ++i) {
        std::this_thread::sleep_for(microseconds(pause(random)));
        sentAt.push_back(Now());
        link->SendShort(Numbered(i));
    }
    AwaitArrivals(receiver, kCount);
    std::vector<Nanoseconds> times;
    for (std::uint32_t i = 0; i < kCount; ++i)
        if (receiver.ArrivedAt(i) != 0) times.push_back(receiver.ArrivedAt(i) - sentAt[i]);
    return MedianAndTail(std::move(times));
}

Figures MeasureBurst(const std::string& side, const std::string& system) {
    constexpr std::uint32_t kCount = 100'000;
    Receiver receiver(kCount, Receiver::Stamps::No);
    const std::unique_ptr<Link> link = Opened(side, system, receiver);
    const Nanoseconds start = ProcessTime();
    for (std::uint32_t i = 0; i < kCount; ++i) link->SendShort(Numbered(i));
    return ArrivedAndTime(receiver, kCount, start);
}

Figures MeasureSteady(const std::string& side, const std::string& system) {
    constexpr std::uint32_t kCount = 20'000;
    constexpr std::uint32_t kAtOnce = 4;
    Receiver receiver(kCount, Receiver::Stamps::No);
    const std::unique_ptr<Link> link = Opened(side, system, receiver);
    Clock::time_point next = Clock::now();
    const Nanoseconds start = ProcessTime();
    for (std::uint32_t i = 0; i < kCount; ++i) {
        if (i % kAtOnce == 0) std::this_thread::sleep_until(next += milliseconds(1));
        link->SendShort(Numbered(i));
    }
    return ArrivedAndTime(receiver, kCount, start);
}

Figures MeasureSysex(const std::string& side, const std::string& system) {
    constexpr SysexRow kRows[] = {
        {"1KB", 1024, 200}, {"10KB", 10'240, 50}, {"64KB", 65'536, 16}, {"1MB", 1'048'576, 2}};
    Figures figures;
    for (const SysexRow& row : kRows) figures.merge(MeasureSysexRow(row, side, system));
    return figures;
}

} // namespace bench
