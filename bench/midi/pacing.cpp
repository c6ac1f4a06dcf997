#include "pacing.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <thread>

#include <time.h>
#include <vmcore/midi/mmsystem.h>

#include "link.h"

namespace bench {
namespace {

constexpr DWORD kWireSpeed = 3125; // bytes a second
constexpr DWORD kSeconds = 30;

std::set<pid_t> Threads() {
    std::set<pid_t> threads;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task"))
        threads.insert(std::stoi(entry.path().filename()));
    return threads;
}

// The clock of a thread whose handle nobody has: the kernel's way to write it.
Nanoseconds ThreadTime(pid_t thread) {
    timespec time = {};
    if (clock_gettime((~static_cast<clockid_t>(thread) << 3) | 6, &time) != 0)
        throw NotMeasured("no processor time of a thread");
    return Nanoseconds{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

/// The thread that has come since `before`, which paces: the first long message starts it.
pid_t NewThread(const std::set<pid_t>& before) {
    for (const pid_t thread : Threads())
        if (!before.contains(thread)) return thread;
    throw NotMeasured("there is no pacing thread");
}

bool IsDone(MIDIHDR& header) {
    return (std::atomic_ref<DWORD>(header.dwFlags).load(std::memory_order_acquire) & MHDR_DONE) !=
           0;
}

/// Returns how long this thread was woken too late, the first 10 ms each time not counted: a pacing
/// thread to which that happens must not make up for it.
Nanoseconds AwaitDone(MIDIHDR& header) {
    constexpr std::chrono::milliseconds kNap{5};
    constexpr Nanoseconds kTolerated = 15'000'000;
    Nanoseconds stalled = 0;
    while (!IsDone(header)) {
        const Nanoseconds before = Now();
        std::this_thread::sleep_for(kNap);
        stalled += std::max<Nanoseconds>(0, Now() - before - kTolerated);
    }
    return stalled;
}

MIDIHDR HeaderFor(Bytes& message) {
    MIDIHDR header = {};
    header.lpData = message.data();
    header.dwBufferLength = static_cast<DWORD>(message.size());
    return header;
}

void CALLBACK Ignore(HMIDIIN, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR) {}

HMIDIOUT OpenLoopback() {
    setenv("VMCORE_MIDI", "loopback", 1);
    setenv("VMCORE_MIDI_SETUP", "", 1);
    initCoreMIDI();
    HMIDIOUT out = nullptr;
    HMIDIIN in = nullptr;
    midiOutOpen(&out, 0, 0, 0, 0);
    midiInOpen(&in, 0, reinterpret_cast<DWORD_PTR>(&Ignore), 0, CALLBACK_FUNCTION);
    if (!out || !in) throw NotMeasured("there is no loopback");
    return out;
}

double Percent(Nanoseconds part, Nanoseconds whole) {
    return 100 * static_cast<double>(part) / static_cast<double>(whole);
}

} // namespace

Figures MeasurePacing() {
    const HMIDIOUT out = OpenLoopback();
    midiOutSetMaxSysExSpeed(out, kWireSpeed);
    Bytes message = NumberedSysex(std::size_t{kWireSpeed} * kSeconds, 0);
    MIDIHDR header = HeaderFor(message);
    const std::set<pid_t> before = Threads();
    const Nanoseconds start = Now();
    const Nanoseconds processStart = ProcessTime();
    midiOutLongMsg(out, &header, sizeof header);
    const pid_t pacer = NewThread(before);
    const Nanoseconds stalled = AwaitDone(header);
    const Nanoseconds time = Now() - start;
    const Nanoseconds wanted = Nanoseconds{kSeconds} * 1'000'000'000;
    const Figures figures = {{"deviation", Percent(std::abs(time - wanted), wanted)},
                             {"stalled", Percent(stalled, wanted)},
                             {"thread", Percent(ThreadTime(pacer), time)},
                             {"process", Percent(ProcessTime() - processStart, time)}};
    destroyCoreMIDI();
    return figures;
}

} // namespace bench
