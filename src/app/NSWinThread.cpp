// The platform thread on the standard library's threads. Workers are detached: at the end of the
// process they may still run, and touch nothing that is destructed.
#include "app/NSWinThread.h"

#include <cmath>
#include <new>
#include <system_error>
#include <thread>

#include <sys/resource.h>
#include <unistd.h>

#include <vmcore/app/threads.h>

namespace {

thread_local NSWinThread* s_current = nullptr;
thread_local bool s_ending = false;

// Gives the thread's own reference back when it ends. The initial thread keeps its object: static
// destructors still ask for it.
struct ReferenceOfThread {
    NSWinThread* thread = nullptr;
    ~ReferenceOfThread() {
        s_ending = true;
        if (!thread || getpid() == gettid()) return;
        s_current = nullptr;
        thread->Release();
    }
};
thread_local ReferenceOfThread s_reference;

void SetCurrent(NSWinThread* thread) {
    s_current = thread;
    if (!s_ending) s_reference.thread = thread;
}

} // namespace

namespace vm {

int NiceForPriority(double priority) {
    return static_cast<int>(std::lround((0.5 - priority) * 40));
}

} // namespace vm

NSWinThread* NSWinThread::Make() {
    return new (std::nothrow) NSWinThread;
}

NSWinThread* NSWinThread::Current() {
    if (!s_current) SetCurrent(new NSWinThread);
    return s_current;
}

void NSWinThread::Release() {
    if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
}

bool NSWinThread::Start() {
    Retain();
    try {
        std::thread([this] { Enter(); }).detach();
        return true;
    } catch (const std::system_error&) {
        Release();
        return false;
    }
}

void NSWinThread::Enter() {
    SetCurrent(this);
    {
        std::lock_guard guard(m_lock);
        m_threadId = gettid();
        if (m_priority != 0.5) ApplyPriority();
    }
    Main();
    {
        std::lock_guard guard(m_lock);
        m_threadId = 0;
    }
    m_finished = true;
}

void NSWinThread::Main() {
    if (!winThread) return;
    auto* worker = static_cast<CSimpleWinThread*>(winThread);
    worker->Run(worker->Param());
}

void NSWinThread::SetPriority(double priority) {
    m_priority = priority;
    std::lock_guard guard(m_lock);
    if (m_threadId) ApplyPriority();
}

// With m_lock held, while the thread runs: its number cannot have gone to another thread.
void NSWinThread::ApplyPriority() {
    const int ofProcess = getpriority(PRIO_PROCESS, static_cast<id_t>(getpid()));
    setpriority(PRIO_PROCESS, static_cast<id_t>(m_threadId),
                ofProcess + vm::NiceForPriority(m_priority));
}
