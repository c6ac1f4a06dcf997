// The platform thread: started once, reference counted, with a cancelled mark, a finished query and
// a priority. Threads that the library did not start have one as well, without a CWinThread.
#pragma once

#include <atomic>
#include <mutex>

class CWinThread;

class NSWinThread {
public:
    /// A thread that is not started, with one reference; null when there is no memory.
    static NSWinThread* Make();
    /// The calling thread's object.
    static NSWinThread* Current();

    void Retain() { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release();

    /// Runs the body of winThread on a new thread, which keeps a reference until it ends; false
    /// when the system gives no thread.
    bool Start();
    /// Only marks the thread.
    void Cancel() { m_cancelled = true; }
    bool IsCancelled() const { return m_cancelled; }
    bool IsFinished() const { return m_finished; }

    /// From 0 (idle) over 0.5 (normal) to 1. The system's answer is not looked at.
    void SetPriority(double priority);
    double Priority() const { return m_priority; }

    CWinThread* winThread = nullptr; ///< set before Start

private:
    NSWinThread() = default;
    ~NSWinThread() = default;

    void Enter();
    void Main();
    void ApplyPriority();

    std::atomic<int> m_references = 1;
    std::atomic<bool> m_cancelled = false;
    std::atomic<bool> m_finished = false;
    std::atomic<double> m_priority = 0.5;
    std::mutex m_lock;
    int m_threadId = 0; // guarded by m_lock: the system's number while the thread runs
};

namespace vm {

/// The nice value of a priority, relative to the process's own: 0.5 is 0, lower is nicer.
int NiceForPriority(double priority);

} // namespace vm
