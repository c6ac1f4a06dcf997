#include <chrono>
#include <latch>
#include <map>
#include <semaphore>
#include <thread>

#include "AlsaFixture.h"

using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

class AlsaTraffic : public AlsaFixture {
protected:
    /// Sends `count` messages of this length out of `out` and into `in`.
    void ExpectWhole(const std::string& out, const std::string& in, std::size_t length,
                     unsigned count, DWORD speed = kUnlimited) {
        MidiRecorder recorder;
        const HMIDIIN source = OpenIn(in, recorder);
        const HMIDIOUT destination = OpenOut(out);
        SetSpeed(destination, speed);
        std::vector<Bytes> messages;
        for (unsigned i = 0; i < count; ++i) messages.push_back(Dump(length, i));
        std::vector<std::future<void>> ends;
        for (const Bytes& message : messages) ends.push_back(SendSysex(destination, message));
        for (std::future<void>& end : ends) end.wait();
        EXPECT_THAT(recorder.WaitSysex(count), testing::Eq(messages)) << length << " bytes";
        EXPECT_THAT(m_log.TakeLog(), IsEmpty());
        midiInClose(source);
        m_log.Ignore();
    }
};

constexpr char kThrough[] = "Midi Through Port-0";
constexpr char kVirtual[] = "VirMIDI 0-0";
constexpr char kRawVirtual[] = "/dev/snd/midiC0D0";

} // namespace

TEST_F(AlsaTraffic, ShortMessagesLeaveAsTheyAre) {
    RawDevice raw(kRawVirtual);
    const HMIDIOUT out = OpenOut(kVirtual);
    const DWORD messages[] = {0x00403C90, 0x00003C80, 0x00207FA1, 0x000107B2, 0x007705C3,
                              0x00770AD4, 0x004000E5, 0x000025F1, 0x000201F2, 0x000007F3,
                              0x000000F6, 0x000000F8, 0x000000FA, 0x000000FB, 0x000000FC,
                              0x000000FE, 0x000000FF, 0x00F77EF0};
    for (const DWORD message : messages) EXPECT_EQ(midiOutShortMsg(out, message), 0U);
    EXPECT_EQ(midiThruShortMsg(out, 0x00413C91), 0U);
    const Bytes expected = {0x90, 0x3C, 0x40, 0x80, 0x3C, 0x00, 0xA1, 0x7F, 0x20, 0xB2,
                            0x07, 0x01, 0xC3, 0x05, 0xD4, 0x0A, 0xE5, 0x00, 0x40, 0xF1,
                            0x25, 0xF2, 0x01, 0x02, 0xF3, 0x07, 0xF6, 0xF8, 0xFA, 0xFB,
                            0xFC, 0xFE, 0xFF, 0xF0, 0x7E, 0xF7, 0x91, 0x3C, 0x41};
    EXPECT_EQ(raw.Read(expected.size()), expected);
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x00403C)), vm::kMidiBadArgument);
}

TEST_F(AlsaTraffic, ShortMessagesArriveOneByOne) {
    RawDevice raw(kRawVirtual);
    MidiRecorder recorder;
    OpenIn(kVirtual, recorder);
    raw.Write({0x90, 0x3C, 0x40, 0x3E, 0x41, 0xC3, 0x05, 0xF8, 0xF1, 0x25, 0xE5, 0x00,
               0x40, 0xFE, 0xD4, 0x0A, 0xF2, 0x01, 0x02, 0xFC, 0xB0, 0x07, 0xF8, 0x7F});
    EXPECT_THAT(recorder.WaitShort(11),
                ElementsAre(0x00403C90, 0x00413E90, 0x000005C3, 0xF8, 0x000025F1, 0x004000E5, 0xFE,
                            0x00000AD4, 0xFC, 0xF8, 0x007F07B0));
}

TEST_F(AlsaTraffic, SysexOfAnySizeArrivesWhole) {
    ExpectWhole(kThrough, kThrough, 2, 3);
    ExpectWhole(kThrough, kThrough, 256, 3);
    ExpectWhole(kThrough, kThrough, 257, 3);
    ExpectWhole(kThrough, kThrough, 1024, 20);
    ExpectWhole(kThrough, kThrough, 10 * 1024, 5);
    ExpectWhole(kThrough, kThrough, 64 * 1024, 1);
    constexpr DWORD kWithoutHaste = 100'000; // the thread sanitizer makes a slow receiver
    ExpectWhole(kThrough, kThrough, 1024 * 1024, 1, kWithoutHaste);
}

TEST_F(AlsaTraffic, SysexPassesThroughACardWhole) {
    RawDevice raw(kRawVirtual);
    MidiRecorder recorder;
    OpenIn(kVirtual, recorder);
    const HMIDIOUT out = OpenOut(kVirtual);
    for (const std::size_t length : {1024, 10 * 1024, 64 * 1024}) {
        const Bytes message = Dump(length, 5);
        std::future<void> end = SendSysex(out, message);
        EXPECT_EQ(raw.Read(length), message);
        end.wait();
        raw.Write(message);
    }
    EXPECT_THAT(recorder.WaitSysex(3),
                ElementsAre(Dump(1024, 5), Dump(10 * 1024, 5), Dump(64 * 1024, 5)));
}

TEST_F(AlsaTraffic, EveryListenerGetsItOnce) {
    MidiRecorder first, second;
    const HMIDIIN one = OpenIn(kThrough, first);
    OpenIn(kThrough, second);
    const HMIDIOUT out = OpenOut(kThrough);
    midiOutShortMsg(out, 0x00403C90);
    EXPECT_THAT(first.WaitShort(1), ElementsAre(0x00403C90));
    midiInClose(one);
    m_log.Ignore();
    midiOutShortMsg(out, 0x00003C80);
    EXPECT_THAT(second.WaitShort(2), ElementsAre(0x00403C90, 0x00003C80));
    EXPECT_THAT(first.WaitShort(1), ElementsAre(0x00403C90));
}

TEST_F(AlsaTraffic, BurstOfShortMessagesIsNotLost) {
    MidiRecorder recorder;
    OpenIn(kThrough, recorder);
    const HMIDIOUT out = OpenOut(kThrough);
    std::vector<DWORD> messages;
    for (DWORD i = 0; i < 5000; ++i)
        messages.push_back(0x90 | (i & 0x7F) << 8 | (i >> 7 & 0x7F) << 16);
    for (const DWORD message : messages) EXPECT_EQ(midiOutShortMsg(out, message), 0U);
    EXPECT_THAT(recorder.WaitShort(messages.size()), ElementsAreArray(messages));
}

TEST_F(AlsaTraffic, SlowProgramGetsAllInItsOwnTime) {
    AlsaPeer peer("Slow");
    peer.AddPort("in");
    const Bytes message = Dump(20'000, 0);
    std::future<void> end = SendSysex(OpenOut("Slow in"), message);
    Bytes received;
    while (received.size() < message.size()) {
        const Bytes piece = peer.Read();
        ASSERT_FALSE(piece.empty());
        received.insert(received.end(), piece.begin(), piece.end());
        std::this_thread::sleep_for(std::chrono::milliseconds(5)); // this is how slow it is
    }
    EXPECT_EQ(received, message);
    end.wait();
}

TEST_F(AlsaTraffic, ProgramThatDoesNotReadHoldsNobodyUpForEver) {
    AlsaPeer peer("Deaf");
    peer.AddPort("in");
    const HMIDIOUT out = OpenOut("Deaf in");
    int taken = 0;
    while (midiOutShortMsg(out, 0x00403C90) == 0 && taken < 1000) ++taken;
    EXPECT_GT(taken, 100);
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x00403C90)), vm::kMidiSendFailed);
    const auto begin = std::chrono::steady_clock::now();
    SendSysex(out, Dump(1000, 0)).wait();
    ExpectNotSentWhole(m_log, 1);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(11));
    for (int i = 0; i < taken; ++i) EXPECT_EQ(peer.Read(), (Bytes{0x90, 0x3C, 0x40})) << i;
    EXPECT_EQ(midiOutShortMsg(out, 0x00003C80), 0U);
    EXPECT_EQ(peer.Read(), (Bytes{0x80, 0x3C, 0x00}));
}

namespace {

/// A host whose callback does not return before it may.
struct BusyHost {
    static void OnMidi(HMIDIIN handle, UINT message, DWORD_PTR instance, DWORD_PTR param1,
                       DWORD_PTR param2) {
        auto* self = reinterpret_cast<BusyHost*>(instance);
        self->called.count_down();
        self->mayReturn.wait();
        reinterpret_cast<MIDIINPROC>(MidiRecorder::Callback())(
            handle, message, self->recorder.Instance(), param1, param2);
    }
    MidiRecorder recorder;
    std::latch called{1};
    std::latch mayReturn{1};
};

} // namespace

TEST_F(AlsaTraffic, LossIsReportedAndNothingTornIsDelivered) {
    AlsaPeer peer("Keys");
    const int port = peer.AddPort("out");
    BusyHost host;
    OpenIn("Keys out", reinterpret_cast<DWORD_PTR>(BusyHost::OnMidi),
           reinterpret_cast<DWORD_PTR>(&host));
    const Bytes message = Dump(100'000, 0);
    const auto sendPiece = [&](std::ptrdiff_t at) {
        return peer.Send(port, Bytes(message.begin() + at, message.begin() + at + 250));
    };
    sendPiece(0);
    peer.SendEvent(port, *vm::EventFromShortMessage(Bytes{0x90, 0x3C, 0x40}));
    host.called.wait();
    bool wasFull = false;
    for (std::ptrdiff_t at = 250; at < 90'000; at += 250)
        wasFull = sendPiece(at) == -EAGAIN || wasFull;
    EXPECT_TRUE(wasFull);
    host.mayReturn.count_down();
    std::vector<std::string> lines;
    EXPECT_TRUE(Eventually([&] { return !(lines = m_log.TakeLog()).empty(); }));
    EXPECT_THAT(lines, ElementsAre(HasSubstr("messages have been lost")));
    sendPiece(99'750); // the end of the torn message
    const Bytes next = Dump(200, 3);
    peer.Send(port, next);
    const auto calls = host.recorder.Wait(2);
    ASSERT_EQ(calls.size(), 2U);
    EXPECT_EQ(calls[0].shortMessage, 0x00403C90U);
    EXPECT_EQ(calls[1].sysex, next);
    EXPECT_EQ(host.recorder.WaitSysex(2).size(), 2U);
}

TEST_F(AlsaTraffic, MessageWithoutEndIsDeliveredByTheNextOne) {
    AlsaPeer peer("Keys");
    const int port = peer.AddPort("out");
    MidiRecorder recorder;
    OpenIn("Keys out", recorder);
    peer.Send(port, {0xF0, 0x01, 0x02});
    peer.Send(port, {0xF0, 0x03, 0xF7});
    EXPECT_THAT(recorder.WaitSysex(2),
                ElementsAre(Bytes{0xF0, 0x01, 0x02}, Bytes{0xF0, 0x03, 0xF7}));
    EXPECT_THAT(m_log.TakeLog(), ElementsAre(HasSubstr("F0 received before F7")));
}

TEST_F(AlsaTraffic, SerialCardPutsTheBytesOnItsWire) {
    const HMIDIOUT out = OpenOut("Serial MIDI (UART16550A) Serial MIDI 1");
    SetSpeed(out, 0);
    const Bytes message = Dump(10'240, 1); // compared outside: see test_alsa.py
    SendSysex(out, message).wait();
}

namespace {

using Clock = std::chrono::steady_clock;

/// When how much arrived, counted from the first.
std::vector<std::pair<Clock::time_point, std::size_t>> ReadArrivals(AlsaPeer& peer,
                                                                    std::size_t length) {
    std::vector<std::pair<Clock::time_point, std::size_t>> arrivals;
    for (std::size_t count = 0; count < length;) {
        const Bytes piece = peer.Read();
        if (piece.empty()) break;
        count += piece.size();
        arrivals.emplace_back(Clock::now(), piece.size());
    }
    return arrivals;
}

} // namespace

TEST_F(AlsaTraffic, SysexKeepsTheSpeedOfTheWire) {
    AlsaPeer peer("Synth");
    peer.AddPort("in");
    const HMIDIOUT out = OpenOut("Synth in");
    SetSpeed(out, 0);
    const Bytes message = Dump(31'250, 0);
    const Clock::time_point begin = Clock::now();
    std::future<void> end = SendSysex(out, message);
    const auto arrivals = ReadArrivals(peer, message.size());
    end.wait();
    const std::chrono::duration<double> taken = Clock::now() - begin;
    RecordProperty("seconds", std::to_string(taken.count()));
    EXPECT_GE(taken.count(), 10.0);
    EXPECT_LE(taken.count(), 10.01);
    for (auto first = arrivals.begin(); first != arrivals.end(); ++first) {
        std::size_t bytes = 0;
        for (auto i = first;
             i != arrivals.end() && i->first - first->first < std::chrono::seconds(1); ++i)
            bytes += i->second;
        ASSERT_LE(bytes, 3125U + 2 * 32U);
    }
}

namespace {

/// Notes when its callback was called.
struct Stopwatch {
    static void OnMidi(HMIDIIN, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        auto* self = reinterpret_cast<Stopwatch*>(instance);
        self->calledAt = Clock::now();
        self->called.release();
    }
    Clock::time_point calledAt;
    std::binary_semaphore called{0};
};

} // namespace

TEST_F(AlsaTraffic, RoundTripIsQuick) {
    Stopwatch watch;
    OpenIn(kThrough, reinterpret_cast<DWORD_PTR>(Stopwatch::OnMidi),
           reinterpret_cast<DWORD_PTR>(&watch));
    const HMIDIOUT out = OpenOut(kThrough);
    std::vector<double> times;
    for (int i = 0; i < 200; ++i) {
        const Clock::time_point begin = Clock::now();
        midiOutShortMsg(out, 0x00403C90);
        watch.called.acquire();
        times.push_back(std::chrono::duration<double, std::micro>(watch.calledAt - begin).count());
    }
    std::ranges::sort(times);
    std::printf("round trip: median %.0f us, worst %.0f us\n", times[100], times.back());
    EXPECT_LT(times[100], 500);
}
