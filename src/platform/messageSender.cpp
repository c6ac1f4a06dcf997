#include "platform/messageSender.h"

namespace vm {

MessageThread& ThisMessageThread() {
    thread_local constinit MessageThread s_thread;
    return s_thread;
}

void SenderScope::Begin(Sender sender, long thread) {
    MessageThread& here = ThisMessageThread();
    m_before = here.origin;
    // The library sends, too, on behalf of an event or a menu: that is what the message comes from.
    const bool isOnBehalf = here.origin.depth == here.depth && here.origin.sender != Sender::Direct;
    if (sender == Sender::Send && !thread && isOnBehalf) return;
    here.origin = {sender, here.depth, thread};
}

} // namespace vm
