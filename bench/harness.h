// What every benchmark shares: rounds with the competitors taking turns, medians, and the one line
// a measure.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Nanoseconds per call of `body`, which runs `count` operations at a time.
double NanosecondsPer(int count, const std::function<void()>& body);

struct Pair {
    double ours;
    double peer;
    double peerSpread; ///< from the best to the worst round, in parts of the median
};
/// Both in turn, `rounds` times; the medians.
Pair Compare(int rounds, const std::function<double()>& ours, const std::function<double()>& peer);

struct Competitor {
    std::string name;
    std::function<double()> measure;
};
struct Figure {
    std::string name;
    double value;
    double least; ///< of all rounds: tells more than the median on a busy machine
};
/// Any number of competitors in turn, another one beginning in each of the `rounds`; the medians.
std::vector<Figure> CompareAll(int rounds, const std::vector<Competitor>& competitors);

/// Prints "name<TAB>ours<TAB>unit<TAB>peer's name<TAB>peer's value<TAB>ratio". The ratio is above 1
/// where ours is better.
enum class Better { Lower, Higher };
void Report(const std::string& name, double ours, const std::string& unit,
            const std::string& peerName, double peer, Better better = Better::Lower);
/// The first figure, ours, against the best of the others; every median, and the least round in
/// parentheses, goes to standard error.
void ReportBest(const std::string& name, const std::vector<Figure>& figures,
                const std::string& unit, Better better = Better::Lower);
/// A measure without a peer.
void Report(const std::string& name, double ours, const std::string& unit);

} // namespace bench
