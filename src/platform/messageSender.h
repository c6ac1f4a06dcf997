// Who is about to call a window: a toolkit event, a timer, a menu, a send or a post. Noted for the
// message trace and only while that runs; without it a scope is one test of a flag.
#pragma once

#include <atomic>

namespace vm {

enum class Sender : unsigned char { Direct, Event, Timer, Menu, Send, Post };

/// Where the messages of the calling thread come from.
struct MessageOrigin {
    Sender sender = Sender::Direct;
    int depth = 0;   ///< of the messages that it sends; those nested in them come from elsewhere
    long thread = 0; ///< the sending one, when that is another than this; else 0
};

struct MessageThread {
    MessageOrigin origin;
    int depth = 0; ///< how many messages are being handled
};

MessageThread& ThisMessageThread();

inline constinit std::atomic<bool> traceIsOn{false};
inline bool MessagesAreTraced() {
    return traceIsOn.load(std::memory_order_relaxed);
}

/// Messages that are delivered directly inside this scope come from `sender`.
class SenderScope {
public:
    explicit SenderScope(Sender sender, long thread = 0) : m_isOn(MessagesAreTraced()) {
        if (m_isOn) [[unlikely]]
            Begin(sender, thread);
    }
    ~SenderScope() {
        if (m_isOn) [[unlikely]]
            ThisMessageThread().origin = m_before;
    }
    SenderScope(const SenderScope&) = delete;
    SenderScope& operator=(const SenderScope&) = delete;

private:
    void Begin(Sender sender, long thread);

    MessageOrigin m_before;
    const bool m_isOn;
};

} // namespace vm
