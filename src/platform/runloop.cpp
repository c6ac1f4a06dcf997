#include "platform/runloop.h"

#include <chrono>
#include <thread>

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

Running::Running(bool timed) : endsByItself(timed), outer(s_innermost) {
    s_innermost = this;
}
Running::~Running() {
    s_innermost = outer;
}

Running* FirstToBeEnded(Running* running) {
    while (running && running->endsByItself) running = running->outer;
    return running;
}

} // namespace

void RunLoop(const std::function<bool()>& ended) {
    if (!QCoreApplication::instance() || (ended && ended())) return;
    {
        Running running(false);
        running.loop.exec();
    }
    RethrowKept();
}

void EndInnermostLoop() {
    if (Running* running = FirstToBeEnded(s_innermost)) running->loop.exit();
}

void EndLoopForException() {
    if (s_innermost) s_innermost->loop.exit();
}

void EndAllLoops() {
    for (Running* running = FirstToBeEnded(s_innermost); running;
         running = FirstToBeEnded(running->outer))
        running->loop.exit();
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
