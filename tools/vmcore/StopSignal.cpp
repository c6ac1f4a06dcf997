// Signals through a descriptor.
#include "StopSignal.h"

#include <algorithm>

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

namespace vm::tool {
namespace {

timespec TimeUntil(Clock::time_point until) {
    const auto left = std::max(until - Clock::now(), Clock::duration::zero());
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
    return {static_cast<time_t>(seconds.count()), static_cast<long>((left - seconds).count())};
}

} // namespace

StopSignal::StopSignal() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, &m_before);
    m_descriptor = signalfd(-1, &signals, SFD_NONBLOCK | SFD_CLOEXEC);
}

StopSignal::~StopSignal() {
    close(m_descriptor);
    pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
}

bool StopSignal::WaitFor(int descriptor, Deadline until) {
    pollfd waiting[] = {{m_descriptor, POLLIN, 0}, {descriptor, POLLIN, 0}};
    const timespec time = until ? TimeUntil(*until) : timespec{};
    if (ppoll(waiting, 2, until ? &time : nullptr, nullptr) <= 0) return false;
    signalfd_siginfo info;
    if (waiting[0].revents && read(m_descriptor, &info, sizeof info) == sizeof info) ++m_requests;
    return waiting[1].revents != 0;
}

} // namespace vm::tool
