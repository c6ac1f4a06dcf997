// `vmcore ui`: checks the interface files of menus and dialogs.
#pragma once

#include <CLI/App.hpp>

namespace vm::tool {

void AddUiCommands(CLI::App& app);

} // namespace vm::tool
