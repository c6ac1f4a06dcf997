// The names of the message numbers, for people who read a trace.
#pragma once

#include <string>

#include <vmcore/core/types.h>

namespace vm {

/// "WM_COMMAND"; "WM_USER+3" and "WM_APP+3" for the hosts' own; the bare number for any other.
std::string MessageName(UINT message);

} // namespace vm
