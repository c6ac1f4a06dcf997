#include "rc/styleTable.h"

#include <bit>

#include "rc/constants.h"

namespace vm::rc {
namespace {

using win::Style;

constexpr std::string_view kAnyWindow = "WS_";
constexpr std::string_view kExtended = "WS_EX_";

bool IsOf(std::string_view name, std::string_view prefix) {
    return !prefix.empty() && name.starts_with(prefix) && !name.ends_with("MASK") &&
           (prefix != kAnyWindow || !name.starts_with(kExtended));
}

template <class Visit>
void ForEachStyle(std::string_view prefix, Visit visit) {
    for (const auto constants : {WindowConstants(), ControlConstants(), CommonControlConstants()})
        for (const Constant& constant : constants)
            if (IsOf(constant.name, prefix)) visit(constant);
}

// The constant that covers the most of the bits; none with the value 0 when there is none.
Constant Largest(Style bits, std::string_view prefix) {
    Constant largest = {{}, 0};
    ForEachStyle(prefix, [&](const Constant& constant) {
        const bool fits = (constant.value & ~bits) == 0;
        if (fits && std::popcount(constant.value) > std::popcount(largest.value))
            largest = constant;
    });
    return largest;
}

void Append(std::string& list, std::string_view name) {
    if (!list.empty()) list += ", ";
    list += name;
}

std::string NamesOf(Style bits, const StyleTable& table) {
    std::string names = StyleNames(bits & table.own, table.prefix);
    const std::string others = StyleNames(bits & ~table.own, kAnyWindow);
    if (!others.empty()) Append(names, others);
    return names;
}

} // namespace

void NoteStyle(Notes& notes, Style style, const StyleTable& table) {
    Style unknown = style & ~table.quiet;
    for (const StyleNote& note : table.notes) {
        const Style bits = style & note.bits & ~table.quiet;
        if (!bits) continue;
        notes.push_back(std::string(note.text) + " (" +
                        (note.name ? note.name : NamesOf(bits, table)) + ")");
        unknown &= ~note.bits;
    }
    if (unknown) notes.push_back("without " + NamesOf(unknown, table));
}

std::string StyleNames(Style bits, std::string_view prefix) {
    std::string names;
    while (bits) {
        const Constant constant = Largest(bits, prefix);
        if (!constant.value) break;
        Append(names, constant.name);
        bits &= ~constant.value;
    }
    if (bits) Append(names, Hexadecimal(bits));
    return names;
}

std::string StyleName(Style value, std::string_view prefix) {
    std::string found;
    ForEachStyle(prefix, [&](const Constant& constant) {
        if (constant.value == value && found.empty()) found = constant.name;
    });
    return found.empty() ? Hexadecimal(value) : found;
}

} // namespace vm::rc
