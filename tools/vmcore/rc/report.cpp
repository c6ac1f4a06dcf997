// Lines and sums of a report.
#include "rc/report.h"

#include <algorithm>
#include <array>
#include <map>
#include <tuple>

namespace vm::rc {
namespace {

const char* NameOf(Outcome outcome) {
    switch (outcome) {
    case Outcome::Converted:
        return "converted";
    case Outcome::Approximated:
        return "approximated";
    default:
        return "left out";
    }
}

std::string LineOf(const Finding& finding) {
    std::string line = finding.place.file + ":" + std::to_string(finding.place.line) + ":" +
                       std::to_string(finding.place.column) + ": " + NameOf(finding.outcome) +
                       ": " + finding.what;
    if (!finding.how.empty()) line += ": " + finding.how;
    return OneLine(std::move(line)) + "\n";
}

} // namespace

std::string OneLine(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
    return text;
}

void Report::Add(Finding finding) {
    m_findings.push_back(std::move(finding));
}

bool Report::IsFileMissing() const {
    return std::any_of(m_findings.begin(), m_findings.end(),
                       [](const Finding& finding) { return finding.isMissing; });
}

std::string Report::Text() const {
    std::map<std::string, int> files; // by their first finding
    std::vector<const Finding*> sorted;
    for (const Finding& finding : m_findings) {
        files.try_emplace(finding.place.file, static_cast<int>(files.size()));
        sorted.push_back(&finding);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [&](const Finding* a, const Finding* b) {
        const int fileA = files[a->place.file];
        const int fileB = files[b->place.file];
        return std::tie(fileA, a->place.line, a->place.column) <
               std::tie(fileB, b->place.line, b->place.column);
    });
    std::string text;
    for (const Finding* finding : sorted) text += LineOf(*finding);
    return text;
}

std::string Report::Summary() const {
    std::array<std::size_t, 3> counts = {};
    for (const Finding& finding : m_findings) ++counts[static_cast<std::size_t>(finding.outcome)];
    return std::to_string(counts[0]) + " converted, " + std::to_string(counts[1]) +
           " approximated, " + std::to_string(counts[2]) + " left out";
}

} // namespace vm::rc
