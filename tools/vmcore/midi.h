// `vmcore midi`: list, send, receive, watch and test. It uses nothing but the functions that every
// program has; its sources see the public headers only.
#pragma once

#include <CLI/App.hpp>

namespace vm::tool {

void AddMidiCommands(CLI::App& app);

} // namespace vm::tool
