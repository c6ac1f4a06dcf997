// Ends the process with a message when a test hangs, and runs the event loop until something is so.
#pragma once

#include <chrono>
#include <functional>

class Watchdog {
public:
    /// Aborts the process when the object still lives after `limit`.
    explicit Watchdog(std::chrono::seconds limit = std::chrono::seconds(30));
    ~Watchdog();
    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

private:
    struct State;
    State* m_state;
};

/// Runs the event loop until `condition` holds; false when it does not within `limit`.
bool RunUntil(const std::function<bool()>& condition,
              std::chrono::milliseconds limit = std::chrono::seconds(10));
/// Runs the event loop for this long.
void RunFor(std::chrono::milliseconds time);
