#include "PluginTrials.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

// What both threads know.
struct PluginTrials::State {
    const std::vector<std::string> paths;
    std::atomic<bool> isStopped{false};

    std::mutex lock; // of the rest
    std::condition_variable over;
    CWnd* target;
    const UINT message;
    std::deque<PluginVerdict> verdicts;
    std::size_t taken = 0;
    bool isOver = false;

    State(CWnd* window, UINT number, const std::vector<std::string>& wanted)
        : paths(wanted), target(window), message(number) {}

    // A target that is going away takes the lock first.
    void Tell(PluginVerdict verdict) {
        const std::lock_guard<std::mutex> guard(lock);
        verdicts.push_back(std::move(verdict));
        if (target) target->PostMessage(message);
    }

    void TryAll() {
        for (const std::string& path : paths) {
            TrialResult result = TryPlugin(path, isStopped);
            if (isStopped) break;
            Tell({path, std::move(result)});
        }
        const std::lock_guard<std::mutex> guard(lock);
        isOver = true;
        over.notify_all();
    }
};

PluginTrials::~PluginTrials() {
    Stop();
}

BOOL PluginTrials::Start(CWnd* target, UINT message, const std::vector<std::string>& paths) {
    if (m_state || paths.empty()) return FALSE;
    auto state = std::make_shared<State>(target, message, paths);
    auto forThread = std::make_unique<SharedState>(state);
    if (!AfxBeginThread(Run, forThread.get())) return FALSE;
    forThread.release();
    m_state = std::move(state);
    return TRUE;
}

UINT PluginTrials::Run(LPVOID shared) {
    const std::unique_ptr<SharedState> state(static_cast<SharedState*>(shared));
    (*state)->TryAll();
    return 0;
}

BOOL PluginTrials::Take(PluginVerdict& verdict) {
    if (!m_state) return FALSE;
    bool wasLast = false;
    {
        const std::lock_guard<std::mutex> guard(m_state->lock);
        if (m_state->verdicts.empty()) return FALSE;
        verdict = std::move(m_state->verdicts.front());
        m_state->verdicts.pop_front();
        wasLast = ++m_state->taken == m_state->paths.size();
    }
    if (wasLast) m_state.reset();
    return TRUE;
}

// A trial that is stopped ends at once.
void PluginTrials::Stop() {
    if (!m_state) return;
    m_state->isStopped = true;
    std::unique_lock<std::mutex> guard(m_state->lock);
    m_state->target = nullptr;
    m_state->over.wait(guard, [this] { return m_state->isOver; });
}
