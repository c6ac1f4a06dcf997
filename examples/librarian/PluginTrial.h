// A plug-in that crashes or never returns would take the program with it. So each is tried first in
// a process of its own: the program started with an option that loads this one module and ends.
#pragma once

#include <optional>
#include <string>

/// The exit code of the program, when its arguments ask for a trial: call it first in main.
std::optional<int> TrialAskedFor(int argc, char** argv);

struct TrialResult {
    std::string problem; ///< "" when the plug-in survived, and nothing speaks against loading it
    bool wasTried;       ///< false: no process could be started
};

/// Tries the plug-in with a copy of `program`, which must call TrialAskedFor; blocks until that has
/// ended, at most `seconds`. What a plug-in does after its entry function is not tried.
TrialResult TryPlugin(const std::string& path, const std::string& program, int seconds);

/// Why the plug-in must not be loaded, "" when it may be: tried with this program, for 5 seconds at
/// most, or as it was the last time when the file has not changed since.
std::string CheckPlugin(const std::string& path);
