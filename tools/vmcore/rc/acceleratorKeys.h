// Keys of accelerator tables: from the Windows interfaces' numbers to the library's, and to Qt's names.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "rc/script.h"

namespace vm::rc {

struct KeyEntry {
    std::int32_t key = 0; ///< as AccelEntry has it
    bool shift = false;
    bool control = false;
    std::string name; ///< "Ctrl+Shift+F5"
};

/// The entries that one accelerator needs: several where several keys have one number or character
/// ("^M" is Ctrl+M and Return), none for a key that the library does not know.
std::vector<KeyEntry> KeyEntriesOf(const Accelerator& accelerator);

/// The name of the first of them; empty for an unknown key.
std::string ShortcutOf(const Accelerator& accelerator);

} // namespace vm::rc
