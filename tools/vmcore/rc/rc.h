// `vmcore rc`: compiles resource scripts.
#pragma once

#include <CLI/App.hpp>

namespace vm::tool {

void AddRcCommand(CLI::App& app);

} // namespace vm::tool
