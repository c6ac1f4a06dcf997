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
};

/// The entries that one accelerator needs: two where two keys of the keyboard have one number, none
/// for a key that the library does not know.
std::vector<KeyEntry> KeyEntriesOf(const Accelerator& accelerator);

/// "Ctrl+Shift+F5"; empty for an unknown key.
std::string ShortcutOf(const Accelerator& accelerator);

/// "^C" is C with Ctrl; others have it when they say so.
bool HasControl(const Accelerator& accelerator);

} // namespace vm::rc
