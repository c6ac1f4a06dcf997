// What becomes of each bit of a style, as data: bits that are honoured or make no difference that a user sees,
// bits with a note, and all others, which the report names.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "rc/winStyles.h"
#include "rc/writeOutput.h"

namespace vm::rc {

struct StyleNote {
    win::Style bits; ///< said once when any of them is set
    const char* text;
    const char* name = nullptr; ///< where the value stands for several names
};

struct StyleTable {
    std::string_view prefix; ///< of the class's own bits: "LBS_"; empty when nobody knows them
    win::Style quiet = 0;    ///< nothing to say
    std::span<const StyleNote> notes = {};
    win::Style own = 0xFFFF; ///< the others are those of any window
};

/// The notes whose bits are set, with the names of these bits; then one with the names of all bits
/// that the table does not know.
void NoteStyle(Notes& notes, win::Style style, const StyleTable& table);

/// "LBS_USETABSTOPS, 0x8": as the headers call the bits, for the most bits at once; numbers of the rest.
std::string StyleNames(win::Style bits, std::string_view prefix);

/// The name of a value that is no set of bits, such as a kind of button; its number without one.
std::string StyleName(win::Style value, std::string_view prefix);

} // namespace vm::rc
