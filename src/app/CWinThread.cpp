// The worker objects: their message queue, their start and their body.
#include <vmcore/app/threads.h>

#include <deque>
#include <mutex>

#include "app/NSWinThread.h"
#include "app/threadstate.h"

namespace vm {

class ThreadMessages {
public:
    void Append(const MSG& message) {
        std::lock_guard guard(m_lock);
        m_messages.push_back(message);
    }
    bool Take(MSG& message) {
        std::lock_guard guard(m_lock);
        if (m_messages.empty()) return false;
        message = m_messages.front();
        m_messages.pop_front();
        return true;
    }
    void Clear() {
        std::lock_guard guard(m_lock);
        m_messages.clear();
    }

    // The destructor takes the lock too, so that what was read before is ordered before the
    // deletion.
    NSWinThread* ReadLocked(const std::atomic<NSWinThread*>& thread) {
        std::lock_guard guard(m_lock);
        return thread;
    }

private:
    std::mutex m_lock;
    std::deque<MSG> m_messages; // guarded by m_lock, oldest first
};

namespace {

constexpr DWORD kQueuePoll = 10;
constexpr DWORD kExitPoll = 5;
// Those who poll m_hThread every 5 ms must see that it is null before the object goes.
constexpr DWORD kGraceOfPollers = 500;

static_assert(sizeof(CWinThread) == 3 * sizeof(void*));
static_assert(std::atomic<NSWinThread*>::is_always_lock_free &&
              sizeof(std::atomic<NSWinThread*>) == sizeof(NSWinThread*));

} // namespace
} // namespace vm

CWinThread::CWinThread() : m_hThread(nullptr), m_messages(new vm::ThreadMessages) {}

CWinThread::~CWinThread() {
    m_messages->Clear();
    delete m_messages;
}

bool CWinThread::CreateThread() {
    return false;
}

BOOL CWinThread::PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    MSG record{};
    record.message = message;
    record.wParam = wParam;
    record.lParam = lParam;
    m_messages->Append(record);
    return TRUE;
}

BOOL CWinThread::SetThreadPriority(int priority) {
    if (NSWinThread* thread = m_hThread) thread->SetPriority((priority + 16) * 0.03125);
    return TRUE;
}

BOOL GetMessage(LPMSG message, HWND, UINT, UINT) {
    CWinThread* const self = GetThreadFromList(GetCurrentThread());
    if (!self) return FALSE;
    while (!self->m_messages->Take(*message)) Sleep(vm::kQueuePoll);
    return TRUE;
}

void WaitForThreadExit(CWinThread* thread) {
    NSWinThread* const started =
        thread ? thread->m_messages->ReadLocked(thread->m_hThread) : nullptr;
    if (!started) return;
    started->Retain();
    do {
        if (started->IsFinished()) break; // the worker is deleted by now
        Sleep(vm::kExitPoll);
    } while (thread->m_messages->ReadLocked(thread->m_hThread));
    started->Release();
}

CSimpleWinThread::CSimpleWinThread(AFX_THREADPROC proc, LPVOID param)
    : m_proc(proc), m_param(param) {}

bool CSimpleWinThread::CreateThread() {
    vm::ThreadState& state = vm::Threads();
    // Held from before the start until the object is listed: the new thread finds itself in the
    // list.
    state.listLock.lock();
    NSWinThread* const thread = NSWinThread::Make();
    if (!thread) return false;
    m_hThread = thread;
    thread->winThread = this;
    if (!thread->Start()) {
        m_hThread = nullptr;
        thread->Release();
        return false;
    }
    state.list.push_back(this);
    state.listLock.unlock();
    return true;
}

UINT CSimpleWinThread::Run(LPVOID param) {
    const UINT exitCode = m_proc(param);
    RemoveCWinThreadFromList(this);
    NSWinThread* const thread = m_hThread.exchange(nullptr);
    Sleep(vm::kGraceOfPollers);
    if (thread) thread->Release();
    delete this;
    return exitCode;
}
