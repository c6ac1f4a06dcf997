// A thread that may be left behind.
#include "platform/midi/limitedThread.h"

#include <condition_variable>
#include <mutex>
#include <system_error>
#include <utility>

namespace vm {

struct LimitedThread::State {
    std::mutex lock; // guards hasEnded
    std::condition_variable changed;
    bool hasEnded = false;
};

LimitedThread::~LimitedThread() {
    End(std::chrono::milliseconds::zero());
}

bool LimitedThread::Start(std::function<void()> run) {
    m_state = std::make_shared<State>();
    try {
        m_thread = std::thread([run = std::move(run), state = m_state]() mutable {
            std::exchange(run, nullptr)();
            std::lock_guard guard(state->lock);
            state->hasEnded = true;
            state->changed.notify_all();
        });
    } catch (const std::system_error&) {
        return false;
    }
    return true;
}

bool LimitedThread::End(std::chrono::milliseconds limit) {
    if (!m_thread.joinable()) return true;
    bool hasEnded = false;
    {
        std::unique_lock lock(m_state->lock);
        if (m_thread.get_id() != std::this_thread::get_id())
            m_state->changed.wait_for(lock, limit, [this] { return m_state->hasEnded; });
        hasEnded = m_state->hasEnded;
    }
    if (hasEnded)
        m_thread.join();
    else
        m_thread.detach();
    return hasEnded;
}

} // namespace vm
