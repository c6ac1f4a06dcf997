#include "platform/runloop.h"

#include <chrono>
#include <thread>
#include <utility>

#include <QtCore/QCoreApplication>
#include <QtCore/QEventLoop>
#include <QtCore/QTimer>

#include "platform/eventboundary.h"

namespace vm {
namespace {

// A loop that runs on this thread, above the one that it interrupts.
struct Running {
    explicit Running(bool timed);
    ~Running();
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;

    QEventLoop loop;
    const bool endsByItself;
    Running* const outer;
};

thread_local Running* s_innermost = nullptr;
thread_local ClosedWithLoops* s_innermostClosed = nullptr;
thread_local bool s_ending = false;

Running* FirstToBeEnded(Running* running) {
    while (running && running->endsByItself) running = running->outer;
    return running;
}

Running::Running(bool timed) : endsByItself(timed), outer(s_innermost) {
    s_innermost = this;
}
Running::~Running() {
    s_innermost = outer;
    if (!FirstToBeEnded(outer)) s_ending = false;
}

} // namespace

void RunLoop(const std::function<bool()>& ended) {
    if (!QCoreApplication::instance() || s_ending || (ended && ended())) return;
    {
        Running running(false);
        running.loop.exec();
    }
    RethrowKept();
}

void EndInnermostLoop() {
    if (Running* running = FirstToBeEnded(s_innermost)) running->loop.exit();
}

bool EndLoopForException() {
    if (!s_innermost) return false;
    s_innermost->loop.exit();
    return true;
}

void EndAllLoops() {
    s_ending = FirstToBeEnded(s_innermost) != nullptr;
    for (ClosedWithLoops* closed = s_innermostClosed; closed; closed = closed->m_outer)
        closed->m_close();
    for (Running* running = FirstToBeEnded(s_innermost); running;
         running = FirstToBeEnded(running->outer))
        running->loop.exit();
}

bool LoopsAreEnding() {
    return s_ending;
}

void ModalLoop::Run() {
    if (!QCoreApplication::instance() || s_ending || m_ended) return;
    {
        Running running(false);
        m_running = &running.loop;
        running.loop.exec();
        m_running = nullptr;
    }
    RethrowKept();
}

void ModalLoop::End() {
    m_ended = true;
    if (m_running) m_running->exit();
}

ClosedWithLoops::ClosedWithLoops(std::function<void()> close)
    : m_close(std::move(close)), m_outer(s_innermostClosed) {
    s_innermostClosed = this;
}
ClosedWithLoops::~ClosedWithLoops() {
    s_innermostClosed = m_outer;
}

int RunningLoops() {
    int count = 0;
    for (Running* running = FirstToBeEnded(s_innermost); running;
         running = FirstToBeEnded(running->outer))
        ++count;
    return count;
}

void RunLoopFor(int milliseconds) {
    if (!QCoreApplication::instance()) { // nothing can be pending, and no loop would end
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
        return;
    }
    {
        Running running(true);
        QTimer::singleShot(milliseconds, Qt::PreciseTimer, &running.loop, &QEventLoop::quit);
        running.loop.exec();
    }
    RethrowKept();
}

} // namespace vm
