// A counting semaphore that a real-time thread may post.
#pragma once

#include <cerrno>
#include <chrono>

#include <semaphore.h>
#include <time.h>

namespace vm {

class Semaphore {
public:
    Semaphore() { sem_init(&m_semaphore, 0, 0); }
    ~Semaphore() { sem_destroy(&m_semaphore); }
    Semaphore(const Semaphore&) = delete;
    Semaphore& operator=(const Semaphore&) = delete;

    void Post() { sem_post(&m_semaphore); }

    void Wait() {
        while (sem_wait(&m_semaphore) != 0 && errno == EINTR) {
        }
    }

    /// False when the time is over, or before that when a signal comes.
    bool WaitFor(std::chrono::nanoseconds time) {
        timespec until = {};
        clock_gettime(CLOCK_MONOTONIC, &until);
        constexpr long long kSecond = 1'000'000'000;
        const long long nanoseconds = until.tv_nsec + time.count();
        until.tv_sec += nanoseconds / kSecond;
        until.tv_nsec = nanoseconds % kSecond;
        return sem_clockwait(&m_semaphore, CLOCK_MONOTONIC, &until) == 0;
    }

private:
    sem_t m_semaphore;
};

} // namespace vm
