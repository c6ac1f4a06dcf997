// Critical sections and events. An event follows a protocol of its own, which is not that of the
// documented Win32 event:
//
//     ResetEvent(done);                    // the thread that will wait: blocked, and now ours
//     worker->PostThreadMessage(WM_WORK, 0, 0);
//     if (WaitForSingleObject(done, 2000) == WAIT_TIMEOUT) ...
//
//     SetEvent(done);                      // the worker
//
// Between ResetEvent and the wait a SetEvent of another thread blocks until the wait has begun, so
// no signal is lost and none comes early. The wait always gives the event free again.
// Hosts rely on these differences from Win32: bInitialState TRUE means blocked; an event stays
// signalled until ResetEvent, whatever the manual-reset flag says; the name is only stored.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/security.h>
#include <vmcore/core/types.h>

namespace vm {
class RecursiveLock;
}

/// A lock that its owner may take again. Initialise before use, delete after.
struct tagCRITICAL_SECTION {
    vm::RecursiveLock* lock; ///< null before InitializeCriticalSection and after the deletion
};
using CRITICAL_SECTION = tagCRITICAL_SECTION;
using LPCRITICAL_SECTION = tagCRITICAL_SECTION*;

/// Stores a new lock; a null one when there is no memory.
VM_API void InitializeCriticalSection(LPCRITICAL_SECTION section);
/// Both do nothing while the section's lock is null.
VM_API void EnterCriticalSection(LPCRITICAL_SECTION section);
VM_API void LeaveCriticalSection(LPCRITICAL_SECTION section);
/// Frees the lock and stores null. The section must not be held.
VM_API void DeleteCriticalSection(LPCRITICAL_SECTION section);

constexpr DWORD INFINITE = 0xFFFFFFFF;
constexpr DWORD WAIT_OBJECT_0 = 0;
constexpr DWORD WAIT_TIMEOUT = 258;

/// A new event, to be freed with DeleteEvent; CloseHandle does not free it. Null when there is no
/// memory, with the log line "Warning! CreateEvent failed to allocate an NSCondition!" when it was
/// the condition that could not be made.
/// `initialState` TRUE makes it blocked, FALSE signalled: the reverse of Win32. `manualReset` is
/// stored and never looked at. Of `name` the first 255 characters are kept; it may be null, and two
/// events of one name are two events.
VM_API HANDLE CreateEvent(LPSECURITY_ATTRIBUTES security, BOOL manualReset, BOOL initialState,
                          LPCSTR name);

/// Signals the event and wakes all that wait. TRUE; FALSE for a null handle. Blocks while another
/// thread is between ResetEvent and its wait. By the thread that called ResetEvent it signals and
/// gives the event free.
VM_API BOOL SetEvent(HANDLE event);

/// Blocks the event and keeps it for the calling thread until that thread waits. TRUE; FALSE for a
/// null handle. A thread that resets must wait (or set) afterwards, or every SetEvent blocks.
VM_API BOOL ResetEvent(HANDLE event);

/// Waits until the event is signalled: 0 (WAIT_OBJECT_0), or 258 (WAIT_TIMEOUT) when it was not
/// within `milliseconds` (INFINITE: no limit). Returns 0 at once for a null handle. Any thread may
/// wait, also without ResetEvent; the event is free afterwards in every case. Runs no event loop:
/// the main thread must not wait for a worker that is sending to a window. Waits for events only;
/// for a thread see WaitForThreadExit.
VM_API DWORD WaitForSingleObject(HANDLE event, DWORD milliseconds);

/// Frees the event, for which nobody may be waiting. TRUE; FALSE for a null handle.
VM_API BOOL DeleteEvent(HANDLE event);
