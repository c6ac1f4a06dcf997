// The process-wide state of the threads: the list of live workers, its lock, the exit queue.
#pragma once

#include <deque>
#include <memory>
#include <mutex>
#include <vector>

class CWinThread;

namespace vm {

struct ThreadState {
    std::recursive_mutex listLock;
    std::vector<CWinThread*> list; // guarded by listLock: in the order of creation, not owned
    std::unique_ptr<std::deque<void*>> exitQueue;
};

/// Made on first use and leaked: workers may outlive the main function.
ThreadState& Threads();

/// The library's start makes the thread-exit queue and its end deletes it. Nothing else uses it.
void CreateThreadExitQueue();
void DeleteThreadExitQueue();

/// Records the calling thread as the main thread, with its MainThreadID. For the constructor of the
/// application object.
void RecordMainThreadID();

} // namespace vm
