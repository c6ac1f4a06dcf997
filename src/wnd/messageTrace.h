// The message trace: one line of JSON for every message that a window object was given, written when
// it has answered. VMCORE_TRACE=messages turns it on; docs/debugging.md describes the lines.
#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <vmcore/core/types.h>

#include "platform/messageSender.h"

class CWnd;

namespace vm {

/// Traces until StopMessageTrace, appending to `file`, or writing to standard error without one.
/// When the file cannot be opened, that is logged and standard error is used.
void StartMessageTrace(const std::string& file);
void StopMessageTrace();

/// One message on its way through a window object, from its construction to its destruction. The
/// object may be gone by then. An override that calls up makes a second one for the same message,
/// which writes nothing. Use Traced() instead: it costs one branch while nothing is traced.
class TracedMessage {
public:
    TracedMessage(const CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam);
    ~TracedMessage();
    TracedMessage(const TracedMessage&) = delete;
    TracedMessage& operator=(const TracedMessage&) = delete;

    LRESULT Answered(LRESULT result) {
        m_result = result;
        return result;
    }

private:
    bool IsUpCallOf(const TracedMessage* outer) const;
    std::string Line() const;

    const CWnd* const m_object;
    const UINT m_message;
    const WPARAM m_wParam;
    const LPARAM m_lParam;
    TracedMessage* m_outer = nullptr; // the message being handled around this one
    bool m_isUpCall = false;
    HWND m_window = nullptr;
    const char* m_class = nullptr;
    MessageOrigin m_origin;
    std::optional<LRESULT> m_result; // nothing when the handler threw
    std::chrono::steady_clock::time_point m_begin;
};

/// `answer()`, traced as the delivery of this message to `wnd`. For WindowProc and for overrides of
/// it that answer some messages without calling up.
template <class Answer>
LRESULT Traced(const CWnd& wnd, UINT message, WPARAM wParam, LPARAM lParam, Answer&& answer) {
    if (!MessagesAreTraced()) [[likely]]
        return answer();
    TracedMessage traced(wnd, message, wParam, lParam);
    return traced.Answered(answer());
}

/// The calling thread, as a trace names it.
long ThisThread();

/// A message that reached nobody. Writes nothing while nothing is traced.
void TraceUndelivered(HWND window, UINT message, WPARAM wParam, LPARAM lParam, const char* why);

} // namespace vm
