// MIDI: the library on a JACK server against RtMidi, on ALSA also against PortMidi, and alone on its
// loopback. The lines of a MIDI system that is not there are left out, with the reason on standard
// error. Arguments limit it to the groups named: jack, alsa, loopback, pacing, parser.
#include <algorithm>
#include <cstdio>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

#include "child.h"
#include "harness.h"
#include "link.h"
#include "pacing.h"
#include "parser.h"
#include "thru.h"
#include "traffic.h"

namespace {

using bench::Better;
using bench::Figures;

constexpr unsigned kLimit = 120; // seconds for one measuring process

struct Line {
    const char* figure; ///< empty for the last: every other one
    const char* unit;
    Better better = Better::Lower;
};
struct Subject {
    const char* name;
    Figures (*measure)(const std::string& side, const std::string& system);
    std::vector<Line> lines;
};

const std::vector<Subject>& Subjects() {
    static const std::vector<Subject> subjects = {
        {"latency", bench::MeasureLatency, {{"median", "us"}, {"p99", "us"}}},
        {"burst",
         bench::MeasureBurst,
         {{"arrived", "of 100000", Better::Higher}, {"time", "us per message"}}},
        {"steady",
         bench::MeasureSteady,
         {{"arrived", "of 20000", Better::Higher}, {"time", "us per message"}}},
        {"sysex",
         bench::MeasureSysex,
         {{"1KB-whole", "%", Better::Higher},
          {"1KB-speed", "MB/s", Better::Higher},
          {"10KB-whole", "%", Better::Higher},
          {"10KB-speed", "MB/s", Better::Higher},
          {"64KB-whole", "%", Better::Higher},
          {"64KB-speed", "MB/s", Better::Higher},
          {"1MB-whole", "%", Better::Higher},
          {"1MB-speed", "MB/s", Better::Higher}}},
    };
    return subjects;
}

void LeaveOut(const std::string& what, const bench::NotMeasured& reason) {
    std::fprintf(stderr, "bench_midi: %s is left out: %s\n", what.c_str(), reason.what());
}

// The values of one side, a round each.
using Rounds = std::vector<Figures>;

bench::Figure MedianOf(const std::string& side, const Rounds& rounds, const std::string& figure) {
    std::vector<double> values;
    for (const Figures& round : rounds) values.push_back(round.at(figure));
    std::sort(values.begin(), values.end());
    return {side, values[values.size() / 2], values.front()};
}

void ReportLine(const std::string& name, const Line& line, const std::vector<std::string>& sides,
                const std::vector<Rounds>& rounds) {
    std::vector<bench::Figure> figures;
    for (std::size_t i = 0; i < sides.size(); ++i)
        figures.push_back(MedianOf(sides[i], rounds[i], line.figure));
    if (figures.size() > 1)
        bench::ReportBest(name, figures, line.unit, line.better);
    else
        bench::Report(name, figures.front().value, line.unit);
}

// The sides take turns, another one beginning in each round.
void Contest(const Subject& subject, const std::string& system) {
    constexpr std::size_t kRounds = 5;
    const std::vector<std::string> sides = bench::Sides(system);
    std::vector<Rounds> rounds(sides.size());
    for (std::size_t round = 0; round < kRounds; ++round) {
        for (std::size_t i = 0; i < sides.size(); ++i) {
            const std::size_t turn = (round + i) % sides.size();
            rounds[turn].push_back(bench::Measure({"measure", subject.name, sides[turn], system}));
        }
    }
    for (const Line& line : subject.lines)
        ReportLine(system + "-" + subject.name + "-" + line.figure, line, sides, rounds);
}

// A side that fails leaves the subject out, not the others: each has a JACK server of its own, because
// one may break down over a program that fails.
void ContestAll(const std::string& system) {
    for (const Subject& subject : Subjects()) {
        try {
            std::optional<bench::JackGraph> graph;
            if (system == "jack") graph.emplace();
            Contest(subject, system);
        } catch (const bench::NotMeasured& reason) {
            LeaveOut(system + "-" + subject.name, reason);
        }
    }
}

void ContestOnAlsa() {
    if (access("/dev/snd/seq", R_OK | W_OK) != 0) throw bench::NotMeasured("there is no ALSA here");
    ContestAll("alsa");
}

void ReportPacing() {
    const Figures figures = bench::Measure({"pacing-of-30-seconds"});
    bench::Report("pacing-deviation", figures.at("deviation"), "%", "stalls of the machine",
                  figures.at("stalled"));
    bench::Report("pacing-thread", figures.at("thread"), "% of a processor");
    bench::Report("pacing-process", figures.at("process"), "% of a processor");
}

struct Group {
    const char* name;
    std::function<void()> run;
};

// One that cannot be measured is left out.
void Run(const std::vector<std::string>& wanted) {
    const Group groups[] = {{"parser", bench::ReportParser},
                            {"loopback", [] { ContestAll("loopback"); }},
                            {"jack", [] { ContestAll("jack"); }},
                            {"alsa", ContestOnAlsa},
                            {"pacing", ReportPacing}};
    for (const Group& group : groups) {
        if (!wanted.empty() && std::ranges::find(wanted, group.name) == wanted.end()) continue;
        try {
            group.run();
        } catch (const bench::NotMeasured& reason) {
            LeaveOut(group.name, reason);
        }
    }
}

Figures MeasureSubject(const std::string& name, const std::string& side,
                       const std::string& system) {
    for (const Subject& subject : Subjects())
        if (name == subject.name) return subject.measure(side, system);
    throw bench::NotMeasured("there is no subject " + name);
}

// A measuring process: "measure SUBJECT SIDE SYSTEM" or the pacing.
int RunAsChild(const std::vector<std::string>& arguments) try {
    alarm(kLimit);
    bench::Tell(arguments.size() == 4 ? MeasureSubject(arguments[1], arguments[2], arguments[3])
                                      : bench::MeasurePacing());
    return 0;
} catch (const bench::NotMeasured& reason) {
    bench::Tell(reason);
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const std::string mode = arguments.empty() ? "" : arguments.front();
    if (mode == "thru") return bench::RunThru() ? 0 : 1;
    if (mode == "measure" || mode == "pacing-of-30-seconds") return RunAsChild(arguments);
    Run(arguments);
    return 0;
}
