// Tables, lines and JSON of one scan.
#include "portReport.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "finding.h"
#include "json.h"

namespace vm::tool {
namespace {

using Named = std::pair<const std::string, PortUse>;

std::size_t IndexOf(PortState state) {
    return static_cast<std::size_t>(state);
}

std::vector<const Named*> NamesOf(const PortScan& scan, PortState state) {
    std::vector<const Named*> names;
    for (const Named& named : scan.Uses())
        if (named.second.state == state) names.push_back(&named);
    std::stable_sort(names.begin(), names.end(), [](const Named* a, const Named* b) {
        return a->second.count > b->second.count;
    });
    return names;
}

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
}

std::string PlaceText(const PortScan& scan, const PortPlace& place) {
    return scan.Files()[place.file] + ":" + std::to_string(place.line);
}

std::string Padded(std::string text, std::size_t width) {
    if (text.size() < width) text.append(width - text.size(), ' ');
    return text;
}

std::string Right(std::size_t number, std::size_t width) {
    const std::string text = std::to_string(number);
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

const char* Heading(PortState state) {
    switch (state) {
    case PortState::There:
        return "there";
    case PortState::Differs:
        return "there with a difference";
    case PortState::Missing:
        return "missing";
    case PortState::Unknown:
        return "unknown, counted as missing";
    }
    return "";
}

void PrintState(const PortScan& scan, PortState state) {
    const std::vector<const Named*> names = NamesOf(scan, state);
    if (names.empty()) return;
    std::size_t uses = 0;
    std::size_t nameWidth = 0;
    std::size_t placeWidth = 0;
    for (const Named* named : names) {
        uses += named->second.count;
        nameWidth = std::max(nameWidth, named->first.size());
        placeWidth = std::max(placeWidth, PlaceText(scan, named->second.places[0]).size());
    }
    Print(std::string(Heading(state)) + ": names " + std::to_string(names.size()) + ", uses " +
          std::to_string(uses) + "\n");
    for (const Named* named : names) {
        const PortUse& use = named->second;
        const std::string place = PlaceText(scan, use.places[0]);
        Print(Right(use.count, 7) + "  " + Padded(named->first, nameWidth) + "  " +
              (use.text.empty() ? place : Padded(place, placeWidth) + "  " + use.text) + "\n");
    }
    Print("\n");
}

// In tenths, rounded down: 100.0 means all.
std::string Percent(std::size_t part, std::size_t whole) {
    const std::size_t tenths = whole == 0 ? 1000 : part * 1000 / whole;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " %";
}

std::string ShareText(const char* what, const std::size_t (&counts)[4], std::size_t all) {
    return Percent(counts[0] + counts[1], all) + " of " + std::to_string(all) + " " + what +
           " are there, " + Percent(counts[1], all) + " with a difference";
}

void PrintEnd(const PortScan& scan, const PortFiles& files) {
    const PortTotals totals = TotalsOf(scan);
    Print(ShareText("uses", totals.uses, totals.AllUses()) + ";\n" +
          ShareText("names", totals.names, totals.AllNames()) + ".\n");
    Print(std::to_string(files.sources.size()) + " files");
    if (scan.Untold() > 0)
        Print("; not counted: " + std::to_string(scan.Untold()) +
              " calls of members whose class cannot be told");
    Print(".\n");
    if (files.resourceScripts > 0)
        Print("Dialogs, menus, accelerators and bitmaps of the resource scripts (" +
              std::to_string(files.resourceScripts) + "): vmcore rc.\n");
}

struct Line {
    PortPlace place;
    const Named* named;
};

// Whether `next`, the line behind, says it again: the same name, or a member of the class.
bool IsSaidBy(const Line& line, const Line& next) {
    if (std::tie(line.place.file, line.place.line) != std::tie(next.place.file, next.place.line))
        return false;
    const std::string& name = line.named->first;
    return next.named->first == name || next.named->first.starts_with(name + "::");
}

Severity SeverityOf(PortState state) {
    if (state == PortState::There) return Severity::Note;
    return state == PortState::Differs ? Severity::Warning : Severity::Error;
}

std::string JsonList(const std::vector<std::string>& texts) {
    std::string list = "[";
    for (const std::string& text : texts) list += (list.size() > 1 ? ", " : "") + JsonString(text);
    return list + "]";
}

std::string JsonPlaces(const PortUse& use) {
    std::string list = "[";
    for (const PortPlace& place : use.places)
        list += (list.size() > 1 ? ", " : "") + ("[" + std::to_string(place.file) + ", ") +
                std::to_string(place.line) + "]";
    return list + "]";
}

std::string JsonCounts(const std::size_t (&counts)[4]) {
    std::string text = "{";
    for (const PortState state :
         {PortState::There, PortState::Differs, PortState::Missing, PortState::Unknown})
        text += (text.size() > 1 ? ", \"" : "\"") + std::string(PortStateName(state)) +
                "\": " + std::to_string(counts[IndexOf(state)]);
    return text + "}";
}

} // namespace

PortTotals TotalsOf(const PortScan& scan) {
    PortTotals totals;
    for (const Named& named : scan.Uses()) {
        totals.uses[IndexOf(named.second.state)] += named.second.count;
        ++totals.names[IndexOf(named.second.state)];
    }
    return totals;
}

void PrintPortTable(const PortScan& scan, const PortFiles& files) {
    for (const PortState state :
         {PortState::Missing, PortState::Unknown, PortState::Differs, PortState::There})
        PrintState(scan, state);
    PrintEnd(scan, files);
}

void PrintPortLines(const PortScan& scan, const PortFiles& files, bool withNotes) {
    std::vector<Line> lines;
    for (const Named& named : scan.Uses())
        if (withNotes || named.second.state != PortState::There)
            for (const PortPlace& place : named.second.places) lines.push_back({place, &named});
    std::sort(lines.begin(), lines.end(), [](const Line& a, const Line& b) {
        return std::tie(a.place.file, a.place.line, a.named->first) <
               std::tie(b.place.file, b.place.line, b.named->first);
    });
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const Line& line = lines[i];
        if (i + 1 < lines.size() && IsSaidBy(line, lines[i + 1])) continue;
        const PortUse& use = line.named->second;
        PrintLine(scan.Files()[line.place.file], line.place.line,
                  std::string(SeverityName(SeverityOf(use.state))) + ": " +
                      PortStateName(use.state) + ": " + line.named->first +
                      (use.text.empty() ? "" : ": " + use.text));
    }
    PrintEnd(scan, files);
}

void PrintPortJson(const PortScan& scan, const PortFiles& files) {
    const PortTotals totals = TotalsOf(scan);
    Print("{\n  \"files\": " + JsonList(scan.Files()) + ",\n  \"tooLarge\": " +
          JsonList(files.tooLarge) + ",\n  \"unreadable\": " + JsonList(files.trouble) +
          ",\n  \"resourceScripts\": " + std::to_string(files.resourceScripts) +
          ",\n  \"untold\": " + std::to_string(scan.Untold()) +
          ",\n  \"uses\": " + JsonCounts(totals.uses) +
          ",\n  \"distinct\": " + JsonCounts(totals.names) + ",\n  \"names\": [");
    const char* separator = "\n    ";
    for (const auto& [name, use] : scan.Uses()) {
        Print(separator + ("{\"name\": " + JsonString(name)) + ", \"state\": \"" +
              PortStateName(use.state) + "\", \"count\": " + std::to_string(use.count) +
              ", \"text\": " + JsonString(use.text) + ", \"places\": " + JsonPlaces(use) + "}");
        separator = ",\n    ";
    }
    Print("\n  ]\n}\n");
}

} // namespace vm::tool
