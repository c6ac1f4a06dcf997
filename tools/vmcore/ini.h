// `vmcore ini`: read, edit, list and check the library's ini files.
#pragma once

#include <CLI/App.hpp>

namespace vm::tool {

void AddIniCommands(CLI::App& app);

} // namespace vm::tool
