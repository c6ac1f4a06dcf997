#include "harness.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

namespace bench {
namespace {

double Spread(const std::vector<double>& values, double median) {
    const auto [least, most] = std::minmax_element(values.begin(), values.end());
    return (*most - *least) / median;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

} // namespace

double NanosecondsPer(int count, const std::function<void()>& body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    const std::chrono::duration<double, std::nano> time = std::chrono::steady_clock::now() - start;
    return time.count() / count;
}

Pair Compare(int rounds, const std::function<double()>& ours, const std::function<double()>& peer) {
    std::vector<double> ourTimes;
    std::vector<double> peerTimes;
    ours(); // warm
    peer();
    for (int i = 0; i < rounds; ++i) {
        ourTimes.push_back(ours());
        peerTimes.push_back(peer());
    }
    const double peerMedian = Median(peerTimes);
    return {Median(ourTimes), peerMedian, Spread(peerTimes, peerMedian)};
}

void Report(const std::string& name, double ours, const std::string& unit,
            const std::string& peerName, double peer, Better better) {
    const double ratio = better == Better::Lower ? peer / ours : ours / peer;
    std::printf("%s\t%.2f\t%s\t%s\t%.2f\t%.2f\n", name.c_str(), ours, unit.c_str(),
                peerName.c_str(), peer, ratio);
    std::fflush(stdout);
}

void Report(const std::string& name, double ours, const std::string& unit) {
    std::printf("%s\t%.2f\t%s\t-\t-\t-\n", name.c_str(), ours, unit.c_str());
    std::fflush(stdout);
}

} // namespace bench
