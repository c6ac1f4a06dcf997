#include "busyPorts.h"

#include <cstddef>

namespace {

constexpr DWORD kMessages = 2000;
constexpr std::size_t kDumpLength = 50'000;
constexpr std::size_t kPorts = 255; // and the steady one
constexpr int kMostOnTheirWay = 100;

/// A host of one port.
struct Host {
    static void OnMidi(HMIDIIN handle, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        auto& self = *reinterpret_cast<Host*>(instance);
        self.callsTooLate += self.isClosed;
        if (self.closesItself && !self.isClosed) {
            midiInClose(handle);
            self.isClosed = true;
        }
        ++self.calls;
        self.calls.notify_all();
    }
    void Open(UINT index) {
        EXPECT_EQ(midiInOpen(&handle, index, reinterpret_cast<DWORD_PTR>(&Host::OnMidi),
                             reinterpret_cast<DWORD_PTR>(this), 0),
                  0U);
    }
    void Close() {
        if (closesItself) return calls.wait(0);
        midiInClose(handle);
        isClosed = true;
    }

    bool closesItself = false;
    HMIDIIN handle = nullptr;
    std::atomic<bool> isClosed = false;
    std::atomic<int> callsTooLate = 0;
    std::atomic<int> calls = 0;
};

/// Sends for its life, no faster than `steady` is called.
class Sender {
public:
    Sender(HMIDIOUT out, Host& steady) : m_thread([=, this, &steady] { Run(out, steady); }) {}
    ~Sender() {
        m_stop = true;
        m_thread.join();
    }
    Sender(const Sender&) = delete;
    Sender& operator=(const Sender&) = delete;

private:
    void Run(HMIDIOUT out, const Host& steady) const {
        for (int sent = 1; !m_stop; ++sent) {
            midiOutShortMsg(out, 0x00403C90);
            for (int calls = steady.calls; calls < sent - kMostOnTheirWay; calls = steady.calls)
                steady.calls.wait(calls);
        }
    }

    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

void SendAll(HMIDIOUT out) {
    Bytes sysex = Dump(kDumpLength, 1);
    MIDIHDR header = HeaderFor(sysex);
    midiOutSetMaxSysExSpeed(out, 100'000'000);
    midiOutLongMsg(out, &header, sizeof header);
    for (DWORD i = 0; i < kMessages; ++i) midiOutShortMsg(out, NumberedMessage(i));
    WaitUntilDone(header);
}

void ExpectAll(const std::vector<MidiRecorder::Call>& calls) {
    DWORD wrong = 0, next = 0;
    for (const MidiRecorder::Call& call : calls)
        wrong += call.message == MIM_LONGDATA ? call.sysex != Dump(kDumpLength, 1)
                                              : call.shortMessage != NumberedMessage(next++);
    EXPECT_EQ(next, kMessages);
    EXPECT_EQ(calls.size(), kMessages + 1);
    EXPECT_EQ(wrong, 0U);
}

} // namespace

DWORD NumberedMessage(DWORD number) {
    return (0x90 | (number >> 14 & 0x0F)) | (number & 0x7F) << 8 | (number >> 7 & 0x7F) << 16;
}

void ExpectWholeTraffic(std::span<const HMIDIOUT> outs, std::span<MidiRecorder> recorders) {
    std::vector<std::thread> threads;
    for (const HMIDIOUT out : outs) threads.emplace_back(SendAll, out);
    for (std::thread& thread : threads) thread.join();
    for (MidiRecorder& recorder : recorders) ExpectAll(recorder.Wait(kMessages + 1));
}

void OpenAndCloseInTraffic(HMIDIOUT out, UINT index, int count) {
    Host steady;
    steady.Open(index);
    std::vector<Host> hosts(kPorts + static_cast<std::size_t>(count));
    {
        const Sender sender(out, steady);
        for (std::size_t i = 0; i < hosts.size(); ++i) {
            if (i >= kPorts) hosts[i - kPorts].Close();
            hosts[i].closesItself = i % 2 != 0;
            hosts[i].Open(index);
        }
        for (Host& host : std::span(hosts).last(kPorts)) {
            host.calls.wait(0);
            host.Close();
        }
    }
    midiInClose(steady.handle);
    int callsTooLate = 0;
    for (const Host& host : hosts) callsTooLate += host.callsTooLate;
    EXPECT_EQ(callsTooLate, 0);
}
