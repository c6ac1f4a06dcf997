// What the programs of the benchmark share: the rows and their texts, and the clock. Time is the
// processor time of the program: a frame that waits for the display's turn costs nothing.
#pragma once

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <string>

namespace lists {

constexpr int kRows = 1000000;
constexpr int kSortedRows = 100000;
constexpr int kInsertedRows = 100000;
constexpr int kPages = 100;
constexpr int kSeparateRows = 10000; // every second one
constexpr int kColumns = 5;
constexpr int kColumnWidth = 150;
constexpr int kWidth = 800;
constexpr int kHeight = 600;

constexpr int kGroups = 1000;
constexpr int kItemsOfGroup = 100;

constexpr int kStrings = 100000;
constexpr int kSearches = 20; // for the last string
constexpr int kSelections = 1000;

inline std::uint32_t Shuffled(std::uint64_t row) {
    std::uint32_t bits = static_cast<std::uint32_t>(row) * 2654435761u;
    bits ^= bits >> 15;
    return bits * 2246822519u;
}

/// The text of a cell, as a host makes it when asked.
inline void CellText(int column, std::uint64_t row, char* text, std::size_t size) {
    static const char* const kNames[] = {"Warm Strings", "glass bell", "Pulse Lead",
                                         "brass Section"};
    switch (column) {
    case 0:
        std::snprintf(text, size, "%s %06u", kNames[row % 4], Shuffled(row) % 1000000);
        break;
    case 1:
        std::snprintf(text, size, "Bank %u", static_cast<unsigned>(row / 128));
        break;
    case 2:
        std::snprintf(text, size, "%u bytes", static_cast<unsigned>(row % 4096));
        break;
    case 3:
        std::snprintf(text, size, "%08X", Shuffled(row));
        break;
    default:
        std::snprintf(text, size, "Instrument %u", static_cast<unsigned>(row % 7));
    }
}

inline std::string ItemText(int group, int item) {
    return "Item " + std::to_string(group) + "." + std::to_string(item);
}
inline std::string GroupText(int group) {
    return "Group " + std::to_string(group);
}
inline std::string StringText(int index) {
    return "String " + std::to_string(index);
}

inline double Milliseconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

/// Runs one of `parts` equal parts of a step and prints the line of the whole.
template <class Step>
void Measure(const char* name, int parts, Step step) {
    const double start = Milliseconds();
    step();
    std::printf("%s\t%.4f\n", name, (Milliseconds() - start) * parts);
    std::fflush(stdout);
}
template <class Step>
void Measure(const char* name, Step step) {
    Measure(name, 1, step);
}

} // namespace lists
