#include "support/Watchdog.h"

#include <condition_variable>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <thread>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

struct Watchdog::State {
    std::mutex lock;
    std::condition_variable ended;
    bool done = false;
    std::thread thread;
};

Watchdog::Watchdog(std::chrono::seconds limit) : m_state(new State) {
    m_state->thread = std::thread([state = m_state, limit] {
        std::unique_lock guard(state->lock);
        if (state->ended.wait_for(guard, limit, [&] { return state->done; })) return;
        std::fputs("test hangs: stopped by the watchdog\n", stderr);
        std::abort();
    });
}

Watchdog::~Watchdog() {
    {
        std::lock_guard guard(m_state->lock);
        m_state->done = true;
    }
    m_state->ended.notify_all();
    m_state->thread.join();
    delete m_state;
}

bool RunUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit) {
    const QDeadlineTimer deadline(limit, Qt::PreciseTimer);
    while (!condition()) {
        if (deadline.hasExpired()) return false;
        RunFor(std::chrono::milliseconds(1));
    }
    return true;
}

void RunFor(std::chrono::milliseconds time) {
    QEventLoop loop;
    QTimer::singleShot(time, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}
