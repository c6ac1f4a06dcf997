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

std::vector<Figure> CompareAll(int rounds, const std::vector<Competitor>& competitors) {
    const std::size_t count = competitors.size();
    std::vector<std::vector<double>> times(count);
    for (const Competitor& competitor : competitors) competitor.measure(); // warm
    for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round) {
        for (std::size_t i = 0; i < count; ++i) {
            const std::size_t turn = (round + i) % count;
            times[turn].push_back(competitors[turn].measure());
        }
    }
    std::vector<Figure> medians;
    for (std::size_t i = 0; i < count; ++i)
        medians.push_back({competitors[i].name, Median(times[i]),
                           *std::min_element(times[i].begin(), times[i].end())});
    return medians;
}

void Report(const std::string& name, double ours, const std::string& unit,
            const std::string& peerName, double peer, Better better) {
    const double ratio = better == Better::Lower ? peer / ours : ours / peer;
    std::printf("%s\t%.2f\t%s\t%s\t%.2f\t%.2f\n", name.c_str(), ours, unit.c_str(),
                peerName.c_str(), peer, ratio);
    std::fflush(stdout);
}

void ReportBest(const std::string& name, const std::vector<Figure>& figures,
                const std::string& unit, Better better) {
    std::fprintf(stderr, "%s (%s):", name.c_str(), unit.c_str());
    for (const Figure& figure : figures)
        std::fprintf(stderr, "  %s %.2f (%.2f)", figure.name.c_str(), figure.value, figure.least);
    std::fprintf(stderr, "\n");
    const auto best = std::min_element(
        figures.begin() + 1, figures.end(), [better](const Figure& left, const Figure& right) {
            return better == Better::Lower ? left.value < right.value : left.value > right.value;
        });
    Report(name, figures.front().value, unit, best->name, best->value, better);
}

void Report(const std::string& name, double ours, const std::string& unit) {
    std::printf("%s\t%.2f\t%s\t-\t-\t-\n", name.c_str(), ours, unit.c_str());
    std::fflush(stdout);
}

} // namespace bench
