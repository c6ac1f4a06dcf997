// `vmcore port`: what a Windows program uses that the library lacks.
#pragma once

#include <CLI/App.hpp>

namespace vm::tool {

void AddPortCommands(CLI::App& app);

} // namespace vm::tool
