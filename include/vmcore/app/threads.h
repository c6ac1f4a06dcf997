// Worker threads with a message queue each, the list of them, and who is the main thread.
//
//     UINT Transfer(LPVOID job) {
//         MSG message;
//         while (GetMessage(&message, NULL, 0, 0)) {
//             if (message.message == WM_STOP_TRANSFER) break;
//             static_cast<Job*>(job)->Step(message.wParam);
//         }
//         return 0;
//     }
//     CWinThread* worker = AfxBeginThread(Transfer, &job);
//     worker->PostThreadMessage(WM_STOP_TRANSFER, 0, 0);
//     WaitForThreadExit(worker);
//
// No message number ends GetMessage's loop: the thread function decides which one means stop. A
// CWinThread deletes itself half a second after its function has returned; nobody else may.
#pragma once

#include <atomic>

#include <vmcore/app/msg.h>
#include <vmcore/app/sync.h>
#include <vmcore/core/export.h>
#include <vmcore/core/native.h>
#include <vmcore/core/types.h>

namespace vm {
class ThreadMessages;
}

using AFX_THREADPROC = UINT (*)(LPVOID);

constexpr int THREAD_PRIORITY_IDLE = -15;
constexpr int THREAD_PRIORITY_LOWEST = -2;
constexpr int THREAD_PRIORITY_BELOW_NORMAL = -1;
constexpr int THREAD_PRIORITY_NORMAL = 0;
constexpr int THREAD_PRIORITY_ABOVE_NORMAL = 1;
constexpr int THREAD_PRIORITY_HIGHEST = 2;
constexpr int THREAD_PRIORITY_TIME_CRITICAL = 15;

/// A worker thread as hosts see it. The order of the virtual operations and of the fields is part
/// of the binary interface.
class VM_API CWinThread {
public:
    CWinThread();
    /// Frees the messages that are still queued.
    virtual ~CWinThread();
    CWinThread(const CWinThread&) = delete;
    CWinThread& operator=(const CWinThread&) = delete;

    /// Starts the thread; false when it could not be. The base class has nothing to run: false.
    virtual bool CreateThread();

    /// Any thread. Appends a message (its hwnd, time and pt are 0) that GetMessage on this thread
    /// returns. TRUE always.
    BOOL PostThreadMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// Sets the platform priority to (priority + 16) / 32: normal, 0, is 0.5. TRUE always, also
    /// before the start, when nothing is set. The system is asked for a matching nice value;
    /// without the privilege it can be lowered and not raised again.
    BOOL SetThreadPriority(int priority);

    /// The platform thread: null before the start, and again once the thread function has returned.
    std::atomic<NSWinThread*> m_hThread;

private:
    friend VM_API BOOL GetMessage(LPMSG message, HWND hwnd, UINT first, UINT last);
    friend VM_API void WaitForThreadExit(CWinThread* thread);

    vm::ThreadMessages* m_messages; ///< the queue and its lock
};

/// A worker that runs one function. Made by AfxBeginThread.
class VM_API CSimpleWinThread : public CWinThread {
public:
    CSimpleWinThread(AFX_THREADPROC proc, LPVOID param);

    /// Starts the thread and lists it. When the platform thread cannot be made the answer is false
    /// and the lock of the thread list stays with the calling thread, which can go on, while other
    /// threads that touch the list wait.
    bool CreateThread() override;

    /// The body, on the new thread: calls the function, takes this object off the list, clears
    /// m_hThread, deletes this object half a second later, and returns the function's exit code.
    UINT Run(LPVOID param);

    LPVOID Param() const { return m_param; }

private:
    AFX_THREADPROC m_proc;
    LPVOID m_param;
};

/// Starts a thread that runs `proc(param)`: the thread's object, or null when it could not be
/// started. Any thread may call it. The object belongs to the library and is deleted half a second
/// after `proc` has returned. `priority`, `stackSize`, `flags` (a suspended start included) and
/// `security` are not used.
VM_API CWinThread* AfxBeginThread(AFX_THREADPROC proc, LPVOID param,
                                  int priority = THREAD_PRIORITY_NORMAL, UINT stackSize = 0,
                                  DWORD flags = 0, LPSECURITY_ATTRIBUTES security = nullptr);

/// Waits for the calling worker's next message, copies it into `message` and returns 1. Returns 0
/// at once when the calling thread is not listed: the main thread, a foreign one, a terminated one.
/// The handle and the range are not used. Never returns 0 because of a message.
VM_API BOOL GetMessage(LPMSG message, HWND hwnd, UINT first, UINT last);

/// The listed worker of this platform thread, else null. The scan stops at the first null entry.
VM_API CWinThread* GetThreadFromList(NSWinThread* platformThread);
/// Takes the worker off the list; nothing when it is not there.
VM_API void RemoveCWinThreadFromList(CWinThread* thread);
/// The same by its platform thread. The scan stops at the first null entry.
VM_API void RemoveThreadFromList(NSWinThread* platformThread);

/// Takes the worker with this m_hThread off the list and marks it as cancelled: its function goes
/// on until it returns. TRUE always. `handle` may be null, else the thread must still be running.
VM_API BOOL TerminateThread(HANDLE handle, DWORD exitCode);

/// Waits until the worker's function has returned, looking every 5 ms. Returns at once for null or
/// a worker without m_hThread. Runs no event loop. The pointer must be good when the wait begins.
VM_API void WaitForThreadExit(CWinThread* thread);

/// The platform thread object of the calling thread; foreign threads have one too, which lives as
/// long as they do. Both return the same pointer, not a number.
VM_API NSWinThread* GetCurrentThread();
VM_API NSWinThread* GetCurrentThreadId();

/// Records the calling thread's object in MainThread; the first call counts.
VM_API void SetMainThread();
extern VM_API std::atomic<NSWinThread*> MainThread;

/// The identifier of the thread that made the application object, 0 before. It is what makes a
/// thread the main thread.
extern VM_API std::atomic<std::uintptr_t> MainThreadID;
VM_API std::uintptr_t MPCurrentTaskID();

/// Sleeps without running an event loop. 0 returns at once.
VM_API void Sleep(DWORD milliseconds);

/// A command with its parameters, for hosts that carry one between threads. The library does not
/// use it.
class NSWinMsgData {
public:
    UINT cmd() const { return m_cmd; }
    void setCmd(UINT cmd) { m_cmd = cmd; }
    WPARAM wParam() const { return m_wParam; }
    void setWParam(WPARAM wParam) { m_wParam = wParam; }
    LPARAM lParam() const { return m_lParam; }
    void setLParam(LPARAM lParam) { m_lParam = lParam; }

private:
    UINT m_cmd = 0;
    WPARAM m_wParam = 0;
    LPARAM m_lParam = 0;
};
