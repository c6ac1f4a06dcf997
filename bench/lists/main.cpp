// Large lists and trees: the library's controls, the toolkit's views used directly, GTK's and
// wxWidgets'. Each is a program of its own that prints a line a step; they take turns.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "harness.h"

namespace {

struct Program {
    const char* name; // the program is lists_<name>
    const char* label;
};
constexpr Program kPrograms[] = {
    {"ours", "ours"}, {"qt", "Qt views"}, {"gtk", "GTK 4"}, {"wx", "wxWidgets"}};

using Results = std::map<std::string, std::vector<double>>; // by step

struct Competitor {
    Program program;
    Results results;
    std::vector<std::string> steps; // in the order of the program
};

void RunOnce(const std::string& folder, Competitor& competitor) {
    const std::string command = folder + "/lists_" + competitor.program.name + " 2>/dev/null";
    FILE* output = popen(command.c_str(), "r");
    if (!output) return;
    char step[64];
    double milliseconds = 0;
    while (std::fscanf(output, "%63s %lf", step, &milliseconds) == 2) {
        std::vector<double>& values = competitor.results[step];
        if (values.empty()) competitor.steps.emplace_back(step);
        values.push_back(milliseconds);
    }
    if (pclose(output) != 0)
        std::fprintf(stderr, "lists_%s did not end well\n", competitor.program.name);
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

void ReportStep(const std::string& step, const std::vector<Competitor>& competitors) {
    const double ours = Median(competitors.front().results.at(step));
    for (const Competitor& competitor : competitors) {
        const auto found = competitor.results.find(step);
        if (&competitor == &competitors.front() || found == competitor.results.end()) continue;
        bench::Report(step, ours, "ms", competitor.program.label, Median(found->second));
    }
}

} // namespace

// bench_lists [rounds]
int main(int argc, char** argv) {
    const std::string folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
    std::vector<Competitor> competitors;
    for (const Program& program : kPrograms)
        if (std::filesystem::exists(folder + "/lists_" + program.name))
            competitors.push_back({program, {}, {}});
    for (std::size_t round = 0; round < static_cast<std::size_t>(rounds); ++round)
        for (std::size_t i = 0; i < competitors.size(); ++i)
            RunOnce(folder, competitors[(round + i) % competitors.size()]);
    for (const std::string& step : competitors.front().steps) ReportStep(step, competitors);
    return competitors.front().steps.empty() ? 1 : 0;
}
