// Control statements as a table.
#include "rc/controlKinds.h"

#include <array>

#include "rc/token.h"

namespace vm::rc {
namespace {

constexpr std::uint32_t kTabStop = 0x00010000;
constexpr std::uint32_t kGroup = 0x00020000;
constexpr std::uint32_t kBorder = 0x00800000;

constexpr ControlKind kKinds[] = {
    {"LTEXT", "static", 0x0 | kGroup, true, 0},
    {"CTEXT", "static", 0x1 | kGroup, true, 0},
    {"RTEXT", "static", 0x2 | kGroup, true, 0},
    {"ICON", "static", 0x3, true, 0},
    {"PUSHBUTTON", "button", 0x0 | kTabStop, true, 0},
    {"DEFPUSHBUTTON", "button", 0x1 | kTabStop, true, 0},
    {"CHECKBOX", "button", 0x2 | kTabStop, true, 0},
    {"AUTOCHECKBOX", "button", 0x3 | kTabStop, true, 0},
    {"RADIOBUTTON", "button", 0x4 | kTabStop, true, 0},
    {"STATE3", "button", 0x5 | kTabStop, true, 0},
    {"AUTO3STATE", "button", 0x6 | kTabStop, true, 0},
    {"GROUPBOX", "button", 0x7, true, 0},
    {"USERBUTTON", "button", 0x8 | kTabStop, true, 0},
    {"AUTORADIOBUTTON", "button", 0x9 | kTabStop, true, 0},
    {"PUSHBOX", "button", 0xA | kTabStop, true, 0},
    {"EDITTEXT", "edit", kBorder | kTabStop, false, 0},
    {"BEDIT", "edit", kBorder | kTabStop, false, 0},
    {"HEDIT", "edit", kBorder | kTabStop, false, 0},
    {"IEDIT", "edit", kBorder | kTabStop, false, 0},
    {"COMBOBOX", "combobox", kTabStop, false, 0x1},
    {"LISTBOX", "listbox", 0x1 | kBorder, false, 0},
    {"SCROLLBAR", "scrollbar", 0x0, false, 0},
};

constexpr std::array<std::string_view, 6> kAtoms = {"button",  "edit",      "static",
                                                    "listbox", "scrollbar", "combobox"};

} // namespace

const ControlKind* ControlKindOf(std::string_view keyword) {
    for (const ControlKind& kind : kKinds)
        if (SameWord(kind.keyword, keyword)) return &kind;
    return nullptr;
}

std::string_view ClassOfAtom(int atom) {
    const int index = atom - 0x80;
    const bool isKnown = index >= 0 && index < static_cast<int>(kAtoms.size());
    return isKnown ? kAtoms[static_cast<std::size_t>(index)] : std::string_view();
}

} // namespace vm::rc
