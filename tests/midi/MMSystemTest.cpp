#include <cstring>
#include <functional>
#include <future>
#include <thread>

#include "MidiRecorder.h"

namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using vm::LoopbackSetup;
using vm::MidiDevice;
using vm::MidiEntity;
using vm::MidiObjectKind;

class MMSystem : public MidiSystemTest {
protected:
    static std::string OutName(UINT index) {
        MIDIOUTCAPS caps;
        std::memset(&caps, '#', sizeof caps);
        EXPECT_EQ(midiOutGetDevCaps(index, &caps, 0), 0U);
        return caps.szPname;
    }
};

class RefusingPlatform : public vm::LoopbackPlatform {
public:
    vm::MidiId Start(const char*) override { return 0; }
};

class TwoDisposalsFail : public vm::LoopbackPlatform {
public:
    int DisposePort(vm::MidiId) override { return vm::kMidiUnknownPort; }
};

} // namespace

TEST_F(MMSystem, StartUpLogsItsSteps) {
    vm::UseMidiPlatform(std::make_shared<vm::LoopbackPlatform>());
    initCoreMIDI();
    EXPECT_THAT(m_log.TakeLog(),
                ElementsAre("InitCoreMIDI - enter", "Failed to create MIDINetworkSession",
                            "InitCoreMIDI - finished"));
    EXPECT_EQ(destroyCoreMIDI(), 0);
}

// Counts how often it is started, and takes its time.
class SlowPlatform : public vm::LoopbackPlatform {
public:
    vm::MidiId Start(const char* name) override {
        ++starts;
        std::this_thread::yield();
        return LoopbackPlatform::Start(name);
    }
    std::atomic<int> starts = 0;
};

TEST_F(MMSystem, FirstFunctionThatIsCalledStartsIt) {
    HMIDIIN in = nullptr;
    HMIDIOUT out = nullptr;
    MIDIHDR header{};
    MIDIOUTCAPS caps;
    const std::function<void()> functions[] = {
        [] { midiOutGetNumDevs(); },
        [] { midiInGetNumDevs(); },
        [&] { midiOutGetDevCaps(0, &caps, 0); },
        [&] { midiOutOpen(&out, 0, 0, 0, 0); },
        [&] { midiInOpen(&in, 99, 0, 0, 0); },
        [] { midiOutShortMsg(nullptr, 0x00403C90); },
        [] { midiThruShortMsg(nullptr, 0x00403C90); },
        [&] { midiOutLongMsg(nullptr, &header, 0); },
        [] { initCoreMIDI(); },
    };
    for (const auto& function : functions) {
        const auto platform = std::make_shared<SlowPlatform>();
        vm::UseMidiPlatform(platform);
        vm::StartMidiWhenUsed();
        EXPECT_EQ(platform->starts, 0);
        function();
        function();
        EXPECT_EQ(platform->starts, 1) << &function - functions;
        m_log.Ignore();
        EXPECT_EQ(destroyCoreMIDI(), 0);
        EXPECT_EQ(midiOutGetNumDevs(), 0U);
        EXPECT_EQ(platform->starts, 1) << "it has ended";
    }
    m_log.Ignore();
}

TEST_F(MMSystem, UnusedItIsNeverStarted) {
    const auto platform = std::make_shared<SlowPlatform>();
    vm::UseMidiPlatform(platform);
    vm::StartMidiWhenUsed();
    EXPECT_EQ(destroyCoreMIDI(), 0);
    midiOutGetNumDevs();
    EXPECT_EQ(platform->starts, 0);
    vm::UseMidiPlatform(nullptr);
}

TEST_F(MMSystem, ThreadsThatUseItFirstTogetherStartItOnce) {
    const auto platform = std::make_shared<SlowPlatform>();
    vm::UseMidiPlatform(platform);
    vm::StartMidiWhenUsed();
    std::vector<std::future<UINT>> counts;
    for (int i = 0; i < 8; ++i) counts.push_back(std::async(std::launch::async, midiOutGetNumDevs));
    const UINT expected = counts[0].get();
    EXPECT_GT(expected, 0U);
    for (std::size_t i = 1; i < counts.size(); ++i) EXPECT_EQ(counts[i].get(), expected);
    EXPECT_EQ(platform->starts, 1);
    EXPECT_THAT(m_log.TakeLog(), SizeIs(3));
    destroyCoreMIDI();
}

TEST_F(MMSystem, StartUpCarriesOnAfterEveryFailure) {
    vm::UseMidiPlatform(std::make_shared<RefusingPlatform>());
    initCoreMIDI();
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("InitCoreMIDI - enter", "MIDIClientCreate failed",
                                             "Failed to create MIDINetworkSession",
                                             "MIDIOutputPortCreate for MIDI OUT failed",
                                             "MIDIOutputPortCreate for MIDI THRU failed",
                                             "InitCoreMIDI - finished"));
    EXPECT_EQ(midiOutGetNumDevs(), 0U);
    EXPECT_EQ(midiOutShortMsg(nullptr, 0x00403C90), 0xFFFFFFFF);
    EXPECT_EQ(midiThruShortMsg(nullptr, 0x00403C90), 0U);
    HMIDIIN in = nullptr;
    EXPECT_EQ(midiInOpen(&in, 0, 0, 0, 0), 1U);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("midiInOpen failure - MIDIClient not assigned"));
}

TEST_F(MMSystem, ShutdownReportsPortsThatCannotBeDisposed) {
    Start(std::make_shared<TwoDisposalsFail>());
    EXPECT_EQ(destroyCoreMIDI(), 0);
    EXPECT_THAT(m_log.TakeLog(), ElementsAre("MIDIPortDispose - error closing MIDIOutputPort",
                                             "MIDIPortDispose - error closing MIDIThruPort"));
}

TEST_F(MMSystem, EnvironmentChoosesTheBackEnd) {
    initCoreMIDI(); // the tests run with VMCORE_MIDI=loopback
    m_log.Ignore();
    EXPECT_EQ(midiOutGetNumDevs(), 1U);
    EXPECT_EQ(midiInGetNumDevs(), 1U);
    EXPECT_EQ(OutName(0), "Loopback");
}

TEST_F(MMSystem, NothingWorksAndNothingBreaksWhileItIsNotUp) {
    EXPECT_EQ(destroyCoreMIDI(), 0);
    EXPECT_EQ(midiInGetNumDevs(), 0U);
    EXPECT_EQ(midiOutShortMsg(vm::MidiHandle(1), 0x90), 0xFFFFFFFF);
    HMIDIOUT out = vm::MidiHandle(9);
    EXPECT_EQ(midiOutOpen(&out, 0, 0, 0, 0), 1U);
    EXPECT_EQ(out, nullptr);
    Bytes bytes = Dump(8, 0);
    MIDIHDR header = HeaderFor(bytes);
    EXPECT_EQ(midiOutLongMsg(vm::MidiHandle(1), &header, sizeof header), 0U);
    EXPECT_TRUE(IsDone(header)); // nobody waits for ever
    Start();
    EXPECT_EQ(destroyCoreMIDI(), 0);
    EXPECT_EQ(destroyCoreMIDI(), 0);
}

TEST_F(MMSystem, StartUpDoesNotWaitForTheBackEnd) {
    std::promise<void> mayStart;
    LoopbackSetup setup = LoopbackSetup::Default();
    setup.beforeStart = [started = mayStart.get_future().share()] { started.wait(); };
    Start(std::move(setup)); // would hang
    auto count = std::async(std::launch::async, [] { return midiOutGetNumDevs(); });
    EXPECT_EQ(count.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    mayStart.set_value();
    EXPECT_EQ(count.get(), 1U);
}

TEST_F(MMSystem, DevicesAreCalledByWhatIsPluggedIn) {
    const MidiEntity port{"", MidiDevice{"Interface", 2}};
    Start({{{1, MidiObjectKind::Destination, "Port 1", port, {}},
            {2, MidiObjectKind::Destination, "Port 2", port, Bytes{0, 0, 0, 7, 0, 0, 0, 8}},
            {3, MidiObjectKind::Destination, "", {}, {}},
            {4, MidiObjectKind::Source, "", {}, {}},
            {7,
             MidiObjectKind::ExternalDestination,
             "",
             MidiEntity{"", MidiDevice{"Synth A", 1}},
             {}},
            {8, MidiObjectKind::ExternalSource, "", MidiEntity{"", MidiDevice{"Synth B", 1}}, {}}},
           {}});
    ASSERT_EQ(midiOutGetNumDevs(), 3U);
    EXPECT_EQ(OutName(0), "Interface Port 1");
    EXPECT_EQ(OutName(1), "Synth A, Synth B");
    MIDIOUTCAPS out = {};
    std::strcpy(out.szPname, "before");
    EXPECT_EQ(midiOutGetDevCaps(2, &out, sizeof out), 0U);
    EXPECT_STREQ(out.szPname, "before"); // without a name the field stays
    MIDIINCAPS in = {};
    EXPECT_EQ(midiInGetDevCaps(0, &in, sizeof in), 0U);
    EXPECT_STREQ(in.szPname, "<no ascii name>");
}

TEST_F(MMSystem, CapabilitiesOfABadIndexHaveNoName) {
    Start();
    MIDIOUTCAPS out;
    std::memset(&out, '#', sizeof out);
    EXPECT_EQ(midiOutGetDevCaps(1, &out, sizeof out), 1U);
    EXPECT_STREQ(out.szPname, "<no ascii name>");
    EXPECT_EQ(out.wMid, 0x2323); // nothing else is written
    MIDIINCAPS in = {};
    EXPECT_EQ(midiInGetDevCaps(0xFFFFFFFF, &in, sizeof in), 1U);
    EXPECT_STREQ(in.szPname, "<no ascii name>");
}

TEST_F(MMSystem, ShortMessagesKeepTheLengthOfTheirStatus) {
    Start();
    MidiRecorder recorder;
    OpenIn(recorder);
    const HMIDIOUT out = OpenOut();
    EXPECT_EQ(midiOutShortMsg(out, 0x007F40C3), 0U); // two bytes: C3 40
    EXPECT_EQ(midiOutShortMsg(out, 0x00403C90), 0U);
    EXPECT_EQ(midiThruShortMsg(out, 0x00000580), 0U);
    EXPECT_EQ(midiOutShortMsg(out, 0x99), 0U);
    EXPECT_THAT(recorder.WaitShort(4), ElementsAre(0x000040C3, 0x00403C90, 0x00000580, 0x00000099));
}

TEST_F(MMSystem, RealTimeByteLeavesAsThreeBytes) {
    Start();
    vm::SetMidiEventLog(true);
    MidiRecorder recorder;
    OpenIn(recorder);
    EXPECT_EQ(midiOutShortMsg(OpenOut(), 0xF8), 0U);
    EXPECT_EQ(midiOutShortMsg(OpenOut(), 0x00403C90), 0U);
    EXPECT_THAT(recorder.WaitShort(2), ElementsAre(0xF8, 0x00403C90));
    EXPECT_THAT(m_log.TakeLog(),
                testing::Contains("MyMIDICallbackProc - out of context MIDI byte: 00").Times(2));
}

TEST_F(MMSystem, ShortMessageReturnsThePlatformsError) {
    Start();
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(nullptr, 0x90)), vm::kMidiUnknownEndpoint);
    const HMIDIOUT out = OpenOut();
    m_platform->RemoveEndpoint(vm::MidiReference(out));
    EXPECT_EQ(static_cast<int>(midiOutShortMsg(out, 0x90)), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midiThruShortMsg(out, 0x90), 0U);
}

TEST_F(MMSystem, LongMessagesArriveByteForByteAndInOrder) {
    Start();
    MidiRecorder recorder;
    OpenIn(recorder);
    const HMIDIOUT out = OpenOut();
    Bytes first = Dump(4104, 1), second = Dump(300, 2), none;
    MIDIHDR headers[] = {HeaderFor(first), HeaderFor(second), HeaderFor(none)};
    headers[0].dwFlags = MHDR_DONE | 0x10;
    headers[0].dwReserved = 7;
    headers[0].dwUser = 8;
    for (MIDIHDR& header : headers) EXPECT_EQ(midiOutLongMsg(out, &header, sizeof header), 0U);
    EXPECT_FALSE(IsDone(headers[1])); // at 3125 bytes a second it is far from being sent
    EXPECT_EQ(midiOutSetMaxSysExSpeed(out, 400'000), 0U);
    WaitUntilDone(headers[1]);
    EXPECT_TRUE(IsDone(headers[0]));
    WaitUntilDone(headers[2]);
    EXPECT_EQ(headers[0].dwFlags, MHDR_DONE | 0x10);
    EXPECT_EQ(headers[0].dwReserved, 7U);
    EXPECT_EQ(headers[0].dwUser, 8U);
    EXPECT_THAT(recorder.WaitSysex(2), ElementsAre(first, second));
}

TEST_F(MMSystem, LongMessageTakesItsTimeOnTheWire) {
    Start();
    const HMIDIOUT out = OpenOut();
    EXPECT_EQ(midiOutSetMaxSysExSpeed(out, 10), 0U);
    EXPECT_EQ(midiOutSetMaxSysExSpeed(out, 0), 0U);
    EXPECT_EQ(m_platform->MaxSysexSpeed(vm::MidiReference(out)), 3125U);
    Bytes bytes = Dump(96, 0);
    MIDIHDR header = HeaderFor(bytes);
    const auto begin = std::chrono::steady_clock::now();
    midiOutLongMsg(out, &header, sizeof header);
    WaitUntilDone(header);
    EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::microseconds(30'720));
}

TEST_F(MMSystem, EndpointsDoNotWaitForEachOther) {
    Start({{{1, MidiObjectKind::Destination, "Slow", {}, {}},
            {2, MidiObjectKind::Destination, "Fast", {}, {}}},
           {}});
    EXPECT_EQ(midiOutSetMaxSysExSpeed(OpenOut(0), 1), 0U);
    EXPECT_EQ(midiOutSetMaxSysExSpeed(OpenOut(1), 100'000), 0U);
    Bytes bytes = Dump(1000, 0);
    MIDIHDR slow = HeaderFor(bytes), fast = HeaderFor(bytes);
    midiOutLongMsg(OpenOut(0), &slow, sizeof slow);
    midiOutLongMsg(OpenOut(1), &fast, sizeof fast);
    WaitUntilDone(fast);
    EXPECT_FALSE(IsDone(slow));
    EXPECT_EQ(destroyCoreMIDI(), 0); // ends it: its buffers may go
    EXPECT_TRUE(IsDone(slow));
    EXPECT_THAT(m_log.TakeLog(), ElementsAre(HasSubstr("the MIDI system was stopped")));
}

TEST_F(MMSystem, DisappearedEndpointEndsItsSends) {
    Start();
    const HMIDIOUT out = OpenOut();
    Bytes bytes = Dump(100'000, 0);
    MIDIHDR headers[] = {HeaderFor(bytes), HeaderFor(bytes), HeaderFor(bytes)};
    midiOutLongMsg(out, &headers[0], 0);
    midiOutLongMsg(out, &headers[1], 0);
    m_platform->RemoveEndpoint(vm::MidiReference(out));
    midiOutLongMsg(out, &headers[2], 0);
    for (MIDIHDR& header : headers) WaitUntilDone(header);
    const auto ofMessage = HasSubstr("Error! A System Exclusive message of 100000 bytes ");
    EXPECT_THAT(m_log.TakeLog(), AllOf(SizeIs(3), Each(ofMessage)));
}

TEST_F(MMSystem, BadArgumentsGiveNeutralResults) {
    Start();
    EXPECT_EQ(midiOutGetDevCaps(0, nullptr, 0), 1U);
    EXPECT_EQ(midiInGetDevCaps(0, nullptr, 0), 1U);
    EXPECT_EQ(midiOutOpen(nullptr, 0, 0, 0, 0), 1U);
    EXPECT_EQ(midiOutLongMsg(OpenOut(), nullptr, 0), 0U);
    EXPECT_EQ(midiOutGetErrorText(1, nullptr, 0), 0U);
    EXPECT_EQ(static_cast<int>(midiOutSetMaxSysExSpeed(nullptr, 5)), vm::kMidiUnknownEndpoint);
    MIDIHDR header = {};
    header.dwBufferLength = 10; // without data
    EXPECT_EQ(midiOutLongMsg(OpenOut(), &header, sizeof header), 0U);
    EXPECT_TRUE(IsDone(header));
    EXPECT_THAT(m_log.TakeLog(), ElementsAre(HasSubstr("of 10 bytes could not be sent")));
}

TEST_F(MMSystem, ErrorTextsIgnoreCodeAndSize) {
    char text[40];
    std::memset(text, '#', sizeof text);
    EXPECT_EQ(midiOutGetErrorText(5, text, 1), 0U);
    EXPECT_STREQ(text, "no MIDI OUT Error text available");
    EXPECT_EQ(text[33], '#');
    EXPECT_EQ(midiInGetErrorText(0, text, 0), 0U);
    EXPECT_STREQ(text, "no MIDI IN Error text available");
}
