// A window of the toolkit's that answers messages to its bare handle, although it has no object.
#pragma once

#include <functional>

#include <vmcore/core/types.h>

namespace vm {

/// While it lives, SendMessage(handle, ...) comes here. Main thread.
class MessageTaker {
public:
    using Handler = std::function<LRESULT(UINT message, WPARAM wParam, LPARAM lParam)>;
    MessageTaker(HWND handle, Handler handler);
    ~MessageTaker();
    MessageTaker(const MessageTaker&) = delete;
    MessageTaker& operator=(const MessageTaker&) = delete;

    LRESULT Take(UINT message, WPARAM wParam, LPARAM lParam) const {
        return m_handler(message, wParam, lParam);
    }
    /// The one of a handle, whatever that points to; null for most.
    static const MessageTaker* Of(HWND handle);

private:
    const HWND m_handle;
    const Handler m_handler;
    MessageTaker* const m_outer;
};

} // namespace vm
