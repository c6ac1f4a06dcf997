// Ctrl-C and a request to terminate as something that a command waits for, so that it can end in its
// own way.
#pragma once

#include <chrono>
#include <optional>

#include <signal.h>

namespace vm::tool {

using Clock = std::chrono::steady_clock;
using Deadline = std::optional<Clock::time_point>; ///< nothing: no end

/// While the object lives, SIGINT and SIGTERM are taken here. To be made before threads are: they
/// take it over.
class StopSignal {
public:
    StopSignal();
    ~StopSignal();
    StopSignal(const StopSignal&) = delete;
    StopSignal& operator=(const StopSignal&) = delete;

    /// Waits until there is something to read, a request has come, or it is time. True for the
    /// first.
    bool WaitFor(int descriptor, Deadline until);
    /// The same without anything to read.
    void Wait(Deadline until) { WaitFor(-1, until); }

    int Requests() const { return m_requests; } ///< so far

private:
    sigset_t m_before;
    int m_descriptor;
    int m_requests = 0;
};

} // namespace vm::tool
