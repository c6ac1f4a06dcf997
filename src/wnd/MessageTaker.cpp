#include "wnd/MessageTaker.h"

#include <utility>

namespace vm {

static MessageTaker* s_innermost = nullptr;

MessageTaker::MessageTaker(HWND handle, Handler handler)
    : m_handle(handle), m_handler(std::move(handler)), m_outer(s_innermost) {
    s_innermost = this;
}

MessageTaker::~MessageTaker() {
    s_innermost = m_outer;
}

const MessageTaker* MessageTaker::Of(HWND handle) {
    const MessageTaker* taker = s_innermost;
    while (taker && taker->m_handle != handle) taker = taker->m_outer;
    return taker;
}

} // namespace vm
