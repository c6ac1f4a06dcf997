#include <future>

#include "MidiRecorder.h"

namespace {

using testing::ElementsAre;

class MidiInput : public MidiSystemTest {
protected:
    static constexpr vm::MidiId kSource = 2; // of the default loopback
};

/// A host that closes its own port from the callback.
struct SelfCloser {
    static void OnMidi(HMIDIIN handle, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        auto* self = reinterpret_cast<SelfCloser*>(instance);
        ++self->calls;
        EXPECT_EQ(midiInClose(handle), 0U);
        self->closed.set_value();
    }
    std::atomic<int> calls = 0;
    std::promise<void> closed;
};

/// A host whose callback takes as long as the test wants.
struct SlowHost {
    static void OnMidi(HMIDIIN, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        auto* self = reinterpret_cast<SlowHost*>(instance);
        self->entered.set_value();
        self->mayReturn.get_future().wait();
        self->returned = true;
    }
    std::promise<void> entered;
    std::promise<void> mayReturn;
    std::atomic<bool> returned = false;
};

/// A host that counts.
struct Counter {
    static void OnMidi(HMIDIIN, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        auto* self = reinterpret_cast<Counter*>(instance);
        ++self->calls;
        self->calls.notify_all();
    }
    std::atomic<int> calls = 0;
};

/// A host that shuts the MIDI system down from the callback.
struct Stopper {
    static void OnMidi(HMIDIIN, UINT, DWORD_PTR instance, DWORD_PTR, DWORD_PTR) {
        EXPECT_EQ(destroyCoreMIDI(), 0);
        reinterpret_cast<Stopper*>(instance)->stopped = true;
    }
    std::atomic<bool> stopped = false;
};

template <class Host>
HMIDIIN OpenFor(Host& host) {
    HMIDIIN handle = nullptr;
    EXPECT_EQ(midiInOpen(&handle, 0, reinterpret_cast<DWORD_PTR>(&Host::OnMidi),
                         reinterpret_cast<DWORD_PTR>(&host), 0),
              0U);
    return handle;
}

} // namespace

TEST_F(MidiInput, OpeningAndClosingLogTheirSteps) {
    Start();
    HMIDIIN handle = nullptr;
    EXPECT_EQ(midiInOpen(&handle, 0, MidiRecorder::Callback(), 0, 0), 0U);
    EXPECT_NE(handle, nullptr);
    EXPECT_EQ(midiInClose(handle), 0U);
    EXPECT_EQ(midiInClose(handle), 0U);
    EXPECT_EQ(midiInClose(nullptr), 0U);
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("midiInOpen - successfully opened MIDI IN port 0",
                            "calling MIDIPortDisconnectSource", "calling MIDIPortDispose",
                            "midiInClose error - request to close port which is already closed"));
}

TEST_F(MidiInput, BadIndexFailsToConnect) {
    Start();
    HMIDIIN handle = vm::MidiHandle(5);
    EXPECT_EQ(midiInOpen(&handle, 1, MidiRecorder::Callback(), 0, 0), 1U);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(midiInOpen(nullptr, 0, 0, 0, 0), 1U);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("midiInOpen error - MIDIPortConnectSource failed"));
}

TEST_F(MidiInput, At256PortsTheNextIsRefused) {
    Start();
    MidiRecorder recorder;
    for (int i = 0; i < 256; ++i) OpenIn(recorder);
    HMIDIIN handle = nullptr;
    EXPECT_EQ(midiInOpen(&handle, 0, recorder.Callback(), recorder.Instance(), 0), 1U);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("midiInOpen error - MIDIInputPortCreate failed"));
    midiOutShortMsg(OpenOut(), 0x00403C90);
    EXPECT_EQ(recorder.Wait(256).size(), 256U);
}

TEST_F(MidiInput, CallbackGetsHandleAndInstanceOnTheReceiveThread) {
    Start();
    MidiRecorder first, second;
    const HMIDIIN firstHandle = OpenIn(first), secondHandle = OpenIn(second);
    m_platform->Receive(kSource, {{0x90, 0x3C, 0x40}, {0xC0, 0x05}, {0xF0, 0x01}, {0x02, 0xF7}});
    const auto calls = first.Wait(3);
    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].message, 1U);
    EXPECT_EQ(calls[0].handle, firstHandle);
    EXPECT_EQ(calls[2].message, 2U);
    EXPECT_EQ(calls[2].sysex, (Bytes{0xF0, 0x01, 0x02, 0xF7}));
    EXPECT_NE(calls[0].thread, std::this_thread::get_id());
    EXPECT_EQ(second.Wait(3).back().handle, secondHandle);
}

TEST_F(MidiInput, EventLinesComeOnlyWhenAskedFor) {
    Start();
    MidiRecorder recorder;
    OpenIn(recorder);
    const std::vector<Bytes> packets = {
        {0x90, 0x3C, 0x40, 0x3E}, {0xF8, 0xF0}, {0xF0, 0x01, 0xF0, 0x02, 0xF7}};
    m_platform->Receive(kSource, packets);
    recorder.Wait(4);
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("Error! F0 received before F7! SysX Message likely invalid"));
    vm::SetMidiEventLog(true);
    m_platform->Receive(kSource, packets);
    recorder.Wait(8);
    EXPECT_THAT(
        m_log.TakeLog(),
        ElementsAre(
            "MyMIDICallbackProc - received packet", "MyMIDICallbackProc - received 3 packets",
            "MyMIDICallbackProc - processing standard MIDI event",
            "MyMIDICallbackProc - processing MIDI real time event",
            "MyMIDICallbackProc - out of context MIDI byte: 3e",
            "MyMIDICallbackProc - processing MIDI real time event",
            "MyMIDICallbackProc - processing MIDI real time event",
            "MyMIDICallbackProc - received unexpected embedded SysEx - not processing",
            "Receiving SysEx packet", "Error! F0 received before F7! SysX Message likely invalid"));
}

TEST_F(MidiInput, LaterPortInheritsTheAccumulatorOfTheClosedOne) {
    Start();
    MidiRecorder first, second;
    const HMIDIIN firstHandle = OpenIn(first);
    OpenIn(second);
    m_platform->Receive(kSource, {{0xF0, 0x01}, {0x90, 0x3C, 0x40}});
    second.Wait(1); // both have half a message now
    midiInClose(firstHandle);
    m_log.Ignore();
    m_platform->Receive(kSource, {{0x02, 0xF7}});
    EXPECT_EQ(second.Wait(2).back().sysex, (Bytes{0xF0, 0x01, 0x02, 0xF7}));
    MidiRecorder third; // at the second position, whose accumulator still holds its half
    OpenIn(third);
    m_platform->Receive(kSource, {{0x03, 0xF7}});
    EXPECT_EQ(third.Wait(1).back().sysex, (Bytes{0xF0, 0x01, 0x03, 0xF7}));
}

TEST_F(MidiInput, ShutdownDropsHalfMessages) {
    for (int i = 0; i < 2; ++i) {
        Start();
        MidiRecorder recorder;
        OpenIn(recorder);
        m_platform->Receive(kSource,
                            {{0xF7}, {0x90, 0x3C, 0x40}, {0xF0, 0x01}, {0x90, 0x3C, 0x40}});
        EXPECT_THAT(recorder.WaitShort(2), ElementsAre(0x00403C90, 0x00403C90));
        EXPECT_EQ(destroyCoreMIDI(), 0);
    }
}

TEST_F(MidiInput, NullCallbackDropsWhatArrives) {
    Start();
    HMIDIIN silent = nullptr;
    EXPECT_EQ(midiInOpen(&silent, 0, 0, 0, 0), 0U);
    MidiRecorder recorder;
    OpenIn(recorder); // served after the other
    vm::SetMidiEventLog(true);
    m_platform->Receive(kSource, {{0xF8}});
    recorder.Wait(1);
    EXPECT_EQ(m_log.TakeLog().at(1), "MyMIDICallbackProc - refCon == 0 - Cancelling Operation!");
}

TEST_F(MidiInput, ClosingFromTheCallbackMakesItTheLastCall) {
    Start();
    SelfCloser host;
    MidiRecorder recorder;
    OpenFor(host);
    OpenIn(recorder);
    m_platform->Receive(kSource, {{0xF8, 0xFA, 0xFC}, {0x90, 0x3C, 0x40}, {0xF0, 0xF7}});
    host.closed.get_future().wait();
    EXPECT_EQ(recorder.Wait(5).size(), 5U);
    EXPECT_EQ(host.calls, 1);
    m_log.Ignore();
}

TEST_F(MidiInput, ClosingWaitsForTheCallbackUnderWay) {
    Start();
    SlowHost host;
    const HMIDIIN handle = OpenFor(host);
    m_platform->Receive(kSource, {{0xF8}});
    host.entered.get_future().wait();
    auto close = std::async(std::launch::async, [&] {
        midiInClose(handle);
        return host.returned.load();
    });
    EXPECT_EQ(close.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    host.mayReturn.set_value();
    EXPECT_TRUE(close.get());
    m_log.Ignore();
}

TEST_F(MidiInput, PortsOpenAndCloseWhileTrafficFlows) {
    Start();
    Counter steady;
    OpenFor(steady);
    std::atomic<bool> stop = false;
    std::thread sender([&] {
        const HMIDIOUT out = OpenOut();
        for (int sent = 1; !stop; ++sent) {
            midiOutShortMsg(out, 0x00403C90);
            while (steady.calls < sent - 100) steady.calls.wait(sent - 101);
        }
    });
    for (int i = 0; i < 200; ++i) {
        Counter brief; // gone right after its port
        const HMIDIIN handle = OpenFor(brief);
        if (i % 4 == 0) brief.calls.wait(0);
        midiInClose(handle);
    }
    stop = true;
    sender.join();
    destroyCoreMIDI(); // before the host goes: there is traffic on its way
    m_log.Ignore();    // lists on their way to a closed port are reported
}

TEST_F(MidiInput, SystemMayBeShutDownFromACallback) {
    Start();
    Stopper host;
    OpenFor(host);
    m_log.Ignore();
    m_platform->Receive(kSource, {{0xF8}, {0xF8}});
    while (!host.stopped) std::this_thread::yield(); // the watchdog ends it
    EXPECT_EQ(midiInGetNumDevs(), 0U);
}

TEST_F(MidiInput, HeadersOfTheHostAreNeverUsed) {
    Start();
    MIDIHDR header = {};
    EXPECT_EQ(midiInPrepareHeader(nullptr, &header, sizeof header), 0U);
    EXPECT_EQ(header.dwFlags, MHDR_DONE);
    EXPECT_EQ(midiInPrepareHeader(nullptr, nullptr, 0), 0U);
    EXPECT_EQ(midiInAddBuffer(nullptr, nullptr, 0), 0U);
}
