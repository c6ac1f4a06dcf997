// The list of workers, the functions that read it, and the identity of threads.
#include <vmcore/app/threads.h>

#include <algorithm>
#include <cerrno>
#include <ctime>

#include <pthread.h>

#include "app/NSWinThread.h"
#include "app/threadstate.h"
#include "platform/mainqueue.h"

std::atomic<NSWinThread*> MainThread = nullptr;
std::atomic<std::uintptr_t> MainThreadID = 0;

namespace vm {

ThreadState& Threads() {
    static ThreadState* const s_state = new ThreadState;
    return *s_state;
}

void CreateThreadExitQueue() {
    Threads().exitQueue = std::make_unique<std::deque<void*>>();
}
void DeleteThreadExitQueue() {
    Threads().exitQueue.reset();
}

void RecordMainThreadID() {
    RecordMainThread();
    MainThreadID = MPCurrentTaskID();
}

namespace {

// With the list's lock held: the entry that fits, looked for up to the first null entry; else the
// list's end.
template <class Fits>
std::vector<CWinThread*>::iterator FindUpToNull(std::vector<CWinThread*>& list, Fits&& fits) {
    const auto found = std::find_if(list.begin(), list.end(),
                                    [&](CWinThread* thread) { return !thread || fits(thread); });
    return found != list.end() && !*found ? list.end() : found;
}

} // namespace
} // namespace vm

CWinThread* AfxBeginThread(AFX_THREADPROC proc, LPVOID param, int, UINT, DWORD,
                           LPSECURITY_ATTRIBUTES) {
    auto* thread = new CSimpleWinThread(proc, param);
    if (thread->CreateThread()) return thread;
    delete thread;
    return nullptr;
}

CWinThread* GetThreadFromList(NSWinThread* platformThread) {
    vm::ThreadState& state = vm::Threads();
    std::lock_guard guard(state.listLock);
    const auto found = vm::FindUpToNull(
        state.list, [&](const CWinThread* thread) { return thread->m_hThread == platformThread; });
    return found == state.list.end() ? nullptr : *found;
}

void RemoveCWinThreadFromList(CWinThread* thread) {
    vm::ThreadState& state = vm::Threads();
    std::lock_guard guard(state.listLock);
    const auto found = std::find(state.list.begin(), state.list.end(), thread);
    if (found != state.list.end()) state.list.erase(found);
}

void RemoveThreadFromList(NSWinThread* platformThread) {
    vm::ThreadState& state = vm::Threads();
    std::lock_guard guard(state.listLock);
    const auto found = vm::FindUpToNull(
        state.list, [&](const CWinThread* thread) { return thread->m_hThread == platformThread; });
    if (found != state.list.end()) state.list.erase(found);
}

BOOL TerminateThread(HANDLE handle, DWORD) {
    if (!handle) return TRUE;
    auto* platformThread = static_cast<NSWinThread*>(handle);
    RemoveThreadFromList(platformThread);
    platformThread->Cancel();
    return TRUE;
}

NSWinThread* GetCurrentThread() {
    return NSWinThread::Current();
}
NSWinThread* GetCurrentThreadId() {
    return NSWinThread::Current();
}

void SetMainThread() {
    NSWinThread* const current = NSWinThread::Current();
    NSWinThread* none = nullptr;
    // Kept for the process's life, like the value itself.
    if (MainThread.compare_exchange_strong(none, current)) current->Retain();
}

std::uintptr_t MPCurrentTaskID() {
    return static_cast<std::uintptr_t>(pthread_self());
}

void Sleep(DWORD milliseconds) {
    if (milliseconds == 0) return;
    timespec left{static_cast<time_t>(milliseconds / 1000),
                  static_cast<long>(milliseconds % 1000) * 1'000'000};
    while (nanosleep(&left, &left) != 0 && errno == EINTR) {
    }
}
