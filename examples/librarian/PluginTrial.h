// A plug-in that crashes or never returns would take the program with it. So each is tried first in
// a process of its own: the program started with an option that loads this one module and ends.
#pragma once

#include <atomic>
#include <optional>
#include <string>

/// The exit code of the program, when its arguments ask for a trial: call it first in main.
std::optional<int> TrialAskedFor(int argc, char** argv);

struct TrialResult {
    std::string problem; ///< "" when the plug-in survived, and nothing speaks against loading it
    bool wasTried;       ///< false: no process could be started, or it was stopped
};

/// Tries the plug-in with a copy of `program`, which must call TrialAskedFor; blocks until that has
/// ended, at most `seconds`, and soon once `isStopped` is set. What a plug-in does after its entry
/// function is not tried. Any thread.
TrialResult TryPlugin(const std::string& path, const std::string& program, int seconds,
                      const std::atomic<bool>& isStopped);
/// The same with this program, for 5 seconds at most.
TrialResult TryPlugin(const std::string& path, const std::atomic<bool>& isStopped);
