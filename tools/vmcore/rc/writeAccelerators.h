// ACCELERATORS: tables in C++ for CWnd::accelTable, and the shortcuts of the main menu.
#pragma once

#include <string>
#include <vector>

#include "rc/script.h"
#include "rc/writeMenu.h"
#include "rc/writeOutput.h"

namespace vm::rc {

/// All tables, in <script>Accelerators.h and .cpp; no file without a table.
void WriteAccelerators(const std::vector<const AcceleratorTable*>& tables,
                       const std::string& scriptName, Output& output);

/// The first key of every command. They are those of the table that has the main menu's ID; without
/// such a table those of all.
Shortcuts ShortcutsOf(const std::vector<const AcceleratorTable*>& tables, int mainMenu);

} // namespace vm::rc
