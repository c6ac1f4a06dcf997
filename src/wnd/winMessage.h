// The carrier of one message to the main thread.
#pragma once

#include <atomic>

#include <vmcore/wnd/CWnd.h>

#include "wnd/messageTrace.h"

class winMessage {
public:
    winMessage(vm::Sender how, CWnd* target, HWND handle, UINT number, WPARAM first, LPARAM second)
        : cWnd(target), message(number), wParam(first), lParam(second), hWnd(handle), sender(how) {}

    void Retain() { m_references.fetch_add(1, std::memory_order_relaxed); }
    void Release() {
        if (m_references.fetch_sub(1, std::memory_order_acq_rel) == 1) delete this;
    }

    /// Delivers on the main thread, unless the window's handle has gone or was bound to another
    /// object since, and drops the creator's reference.
    void run();

    static void Perform(void* carrier) { static_cast<winMessage*>(carrier)->run(); }
    static void Drop(void* carrier) { static_cast<winMessage*>(carrier)->Release(); }

    CWnd* const cWnd;
    const UINT message;
    const WPARAM wParam;
    const LPARAM lParam;
    LRESULT lResult = 0;
    const HWND hWnd; ///< the target's handle at the time of sending
    const vm::Sender sender;
    const long thread = vm::MessagesAreTraced() ? vm::ThisThread() : 0; ///< the sending one

private:
    bool MayBeDelivered() const;
    void TraceNobody(const char* why) const;

    ~winMessage() = default;
    std::atomic<int> m_references{1};
};
