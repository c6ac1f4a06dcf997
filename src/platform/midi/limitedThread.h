// A thread whose end is waited for, but not for ever: host code that runs on it, or a system's
// library, may be waiting for the very thread that waits.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace vm {

class LimitedThread {
public:
    LimitedThread() = default;
    /// As End() without any patience.
    ~LimitedThread();
    LimitedThread(const LimitedThread&) = delete;
    LimitedThread& operator=(const LimitedThread&) = delete;

    /// Once per object. False when the system has no thread for it. What `run` uses must outlive
    /// the thread, which may outlive this object: let it hold a shared_ptr.
    bool Start(std::function<void()> run);
    /// Waits for the end of `run`, at most this long (or not at all, on the thread itself). False
    /// when it goes on, left to itself. Called again, or never started: true.
    bool End(std::chrono::milliseconds limit = std::chrono::seconds(2));

private:
    struct State;
    std::shared_ptr<State> m_state;
    std::thread m_thread;
};

} // namespace vm
