// Two windows with the same twenty handlers, ten of messages and ten of commands: one with a message
// map, one with a switch written by hand. Each is in a source of its own.
#pragma once

#include <memory>

#include <vmcore/wnd/CWnd.h>

namespace bench {

constexpr int kFirstCommand = 100;
constexpr int kLastCommand = 109;

std::unique_ptr<CWnd> MakeMapped();
std::unique_ptr<CWnd> MakeSwitched();

} // namespace bench
