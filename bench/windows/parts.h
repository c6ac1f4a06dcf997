// The parts of the benchmark: windows, dialogs and menus of the library against the same made with
// the toolkit directly, and the start of a program.
#pragma once

namespace bench {

void BenchWindowWithControls();
void BenchManyChildren();
void BenchDialog();
void BenchMenu();
/// A program with one window: time to its first paint, and memory. `folder` holds the programs
/// windows_host and windows_bare.
void BenchStart(const char* folder);

/// Handles what is pending, the freeing of what was destroyed included.
void Settle();

} // namespace bench
