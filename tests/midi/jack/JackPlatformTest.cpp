// The back end on a server that stays.
#include "../busyPorts.h"
#include "JackTest.h"

#include <future>
#include <sstream>

namespace {

using testing::Each;
using testing::ElementsAre;

class JackPlatform : public JackTest {};

/// The bytes in a line of jack_midi_dump: "  12: 90 3c 40 note on ...".
Bytes DumpedBytes(const std::string& line) {
    std::istringstream words(line.substr(line.find(':') + 1));
    Bytes bytes;
    for (std::string word; words >> word && word.size() == 2;) {
        if (word.find_first_not_of("0123456789abcdef") != std::string::npos) break;
        bytes.push_back(static_cast<std::uint8_t>(std::stoi(word, nullptr, 16)));
    }
    return bytes;
}

/// A host whose first callback waits.
struct SlowHost {
    static void OnMidi(HMIDIIN, UINT message, DWORD_PTR instance, DWORD_PTR param1, DWORD_PTR) {
        auto& self = *reinterpret_cast<SlowHost*>(instance);
        if (!std::exchange(self.hasWaited, true)) self.mayGoOn.get_future().wait();
        if (message == MIM_DATA) {
            self.shortMessages = true;
            return;
        }
        const auto* header = reinterpret_cast<const MIDIHDR*>(param1);
        self.sysex.emplace_back(header->lpData, header->lpData + header->dwBytesRecorded);
    }

    bool hasWaited = false;
    std::promise<void> mayGoOn;
    std::vector<Bytes> sysex;
    std::atomic<bool> shortMessages = false;
};

} // namespace

TEST_F(JackPlatform, PortsAreListedAsTheyComeAndGo) {
    StartServer();
    JackPeer peer("synth", {"sink in", "property in pretty-name Main", "source out",
                            "hardware-sink card", "alias card 20:0", "alias card UM-2:midi/1"});
    StartMidi();
    EXPECT_THAT(OutNames(), ElementsAre("UM-2 midi/1", "synth Main"));
    EXPECT_THAT(InNames(), ElementsAre("synth out"));
    peer.Do("sink late");
    EXPECT_THAT(OutNames(), ElementsAre("UM-2 midi/1", "synth Main", "synth late"));
    peer.Do("remove late");
    EXPECT_THAT(OutNames(), ElementsAre("UM-2 midi/1", "synth Main"));
    peer.Do("property card connected Great Synth");
    peer.Do("property . pretty-name Studio");
    EXPECT_TRUE(WaitForNames(OutNames, {"Great Synth", "Studio Main"}));
    EXPECT_TRUE(WaitForNames(InNames, {"Studio out"}));
}

// As most programs do: ports first, then they take part.
TEST_F(JackPlatform, ProgramThatIsNotActiveYetIsWaitedFor) {
    StartBoth();
    JackPeer synth("synth", {"deactivate", "sink in", "activate-after 100"});
    EXPECT_EQ(midiOutShortMsg(OpenOut("synth in"), 0xF8), 0U);
    MidiRecorder recorder;
    JackPeer keyboard("keyboard", {"deactivate", "source out", "activate-after 100"});
    OpenIn("keyboard out", recorder);
}

TEST_F(JackPlatform, ProgramThatNeverGetsActiveIsWaitedForOnce) {
    StartBoth();
    JackPeer peer("synth", {"deactivate", "sink in", "source out"});
    const HMIDIOUT out = OpenOut("synth in");
    EXPECT_EQ(midiOutShortMsg(out, 0xF8), static_cast<MMRESULT>(vm::kMidiSendFailed));
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(midiOutShortMsg(out, 0xF8), static_cast<MMRESULT>(vm::kMidiSendFailed));
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
    HMIDIIN in = nullptr;
    EXPECT_EQ(midiInOpen(&in, 0, 0, 0, 0), 1U);
    m_log.Ignore();
}

TEST_F(JackPlatform, EveryMessageHasItsOwnLengthOnTheWire) {
    StartBoth();
    ChildProcess dump;
    dump.Start({"jack_midi_dump", "dump"});
    const HMIDIOUT out = OpenOut("dump input");
    const struct {
        DWORD message;
        Bytes bytes;
    } rows[] = {{0x00403C90, {0x90, 0x3C, 0x40}},
                {0x007F40C3, {0xC3, 0x40}},
                {0x000000F8, {0xF8}},
                {0x000025F1, {0xF1, 0x25}},
                {0x000201F2, {0xF2, 0x01, 0x02}},
                {0x000003F3, {0xF3, 0x03}},
                {0x000000F6, {0xF6}},
                {0x00003C90, {0x90, 0x3C, 0x00}},
                {0x000000FF, {0xFF}}};
    for (const auto& row : rows) {
        EXPECT_EQ(midiOutShortMsg(out, row.message), 0U);
        EXPECT_EQ(DumpedBytes(dump.ReadLine()), row.bytes) << std::hex << row.message;
    }
    dump.Terminate();
}

TEST_F(JackPlatform, ShortMessagesComeBackThroughAnotherProgram) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    MidiRecorder recorder;
    OpenIn("thru out", recorder);
    const HMIDIOUT out = OpenOut("thru in");
    for (const DWORD message : {0x00403C90U, 0x000005C0U, 0xF8U, 0xFFU, 0x00003C80U})
        EXPECT_EQ(midiOutShortMsg(out, message), 0U);
    EXPECT_EQ(midiThruShortMsg(out, 0xFA), 0U);
    EXPECT_THAT(recorder.WaitShort(6),
                ElementsAre(0x00403C90, 0x000005C0, 0xF8, 0xFF, 0x00003C80, 0xFA));
    EXPECT_NE(recorder.Wait(0)[0].thread, std::this_thread::get_id());
}

TEST_F(JackPlatform, StockProgramIsHeard) {
    StartBoth();
    ChildProcess sequencer; // one note of 100 samples in 4800, for ever
    sequencer.Start({"jack_midiseq", "sequencer", "4800", "0", "60", "100"});
    MidiRecorder recorder;
    OpenIn("sequencer out", recorder);
    EXPECT_THAT(recorder.WaitShort(4), Each(testing::AnyOf(0x00403C90U, 0x00403C80U)));
    sequencer.Terminate();
}

TEST_F(JackPlatform, SysexOfAnyLengthArrivesWhole) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    MidiRecorder recorder;
    OpenIn("thru out", recorder);
    const HMIDIOUT out = OpenOut("thru in");
    std::vector<Bytes> messages;
    for (const std::size_t length : {2U, 1024U, 4096U, 4097U, 10'240U, 65'536U, 1'048'576U})
        messages.push_back(Dump(length, static_cast<unsigned>(length)));
    std::vector<MIDIHDR> headers;
    for (Bytes& message : messages) headers.push_back(HeaderFor(message));
    for (MIDIHDR& header : headers) midiOutLongMsg(out, &header, sizeof header);
    WaitUntilDone(headers.back());
    EXPECT_TRUE(recorder.WaitSysex(messages.size()) == messages);
}

TEST_F(JackPlatform, NothingIsLostAtFullSpeed) {
    constexpr DWORD kCount = 100'000;
    StartBoth();
    JackPeer peer("thru", {"thru"});
    MidiRecorder recorder;
    OpenIn("thru out", recorder);
    const HMIDIOUT out = OpenOut("thru in");
    std::vector<DWORD> sent;
    DWORD failures = 0;
    for (DWORD i = 0; i < kCount; ++i) {
        sent.push_back(NumberedMessage(i));
        failures += midiOutShortMsg(out, sent.back()) != 0;
    }
    EXPECT_EQ(failures, 0U);
    EXPECT_TRUE(recorder.WaitShort(kCount) == sent);
}

TEST_F(JackPlatform, FourOutputsAndFourInputsAtOnce) {
    StartBoth();
    std::vector<std::unique_ptr<JackPeer>> peers;
    std::array<MidiRecorder, 4> recorders;
    std::vector<HMIDIOUT> outs;
    for (std::size_t i = 0; i < recorders.size(); ++i) {
        const std::string name = "thru" + std::to_string(i);
        peers.push_back(std::make_unique<JackPeer>(name, std::vector<std::string>{"thru"}));
        OpenIn(name + " out", recorders[i]);
        outs.push_back(OpenOut(name + " in"));
    }
    ExpectWholeTraffic(outs, recorders);
}

TEST_F(JackPlatform, InputThatIsNotTakenInTimeIsNeverTorn) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    SlowHost host;
    HMIDIIN in = nullptr;
    ASSERT_TRUE(WaitForNames(InNames, {"thru out"}));
    midiInOpen(&in, 0, reinterpret_cast<DWORD_PTR>(&SlowHost::OnMidi),
               reinterpret_cast<DWORD_PTR>(&host), 0);
    const HMIDIOUT out = OpenOut("thru in");
    Bytes message = Dump(1'000'000, 0);
    std::array<MIDIHDR, 7> headers;
    headers.fill(HeaderFor(message));
    for (MIDIHDR& header : headers) midiOutLongMsg(out, &header, sizeof header);
    WaitUntilDone(headers.back()); // more than is kept for a host that does not take it
    host.mayGoOn.set_value();
    EXPECT_TRUE(WaitUntil([&] {
        midiOutShortMsg(out, 0x00403C90);
        return host.shortMessages.load();
    }));
    MIDIHDR last = HeaderFor(message);
    midiOutLongMsg(out, &last, sizeof last);
    WaitUntilDone(last);
    midiInClose(in);
    EXPECT_THAT(m_log.TakeLog(), testing::Contains(testing::HasSubstr("input was lost")));
    EXPECT_GE(host.sysex.size(), 3U);
    EXPECT_LT(host.sysex.size(), headers.size());
    for (const Bytes& each : host.sysex) EXPECT_TRUE(each == message) << each.size() << " bytes";
}

TEST_F(JackPlatform, InputsOpenAndCloseWhileTrafficFlows) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    const HMIDIOUT out = OpenOut("thru in");
    ASSERT_TRUE(WaitForNames(InNames, {"thru out"}));
    OpenAndCloseInTraffic(out, 0, 10'000);
    m_log.Ignore(); // lists on their way to a closed port are reported
}

TEST_F(JackPlatform, StopsWhileTrafficFlows) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    MidiRecorder recorder;
    OpenIn("thru out", recorder);
    const HMIDIOUT out = OpenOut("thru in");
    Bytes message = Dump(1'000'000, 0);
    MIDIHDR header = HeaderFor(message);
    midiOutLongMsg(out, &header, sizeof header);
    std::vector<std::thread> senders;
    for (int i = 0; i < 3; ++i)
        senders.emplace_back([out] {
            while (midiOutShortMsg(out, 0x00403C90) == 0) {
            }
        });
    recorder.Wait(1000);
    EXPECT_EQ(destroyCoreMIDI(), 0);
    EXPECT_TRUE(IsDone(header));
    for (std::thread& sender : senders) sender.join();
    EXPECT_EQ(midiOutGetNumDevs(), 0U);
    const std::weak_ptr<vm::JackPlatform> left = m_platform;
    m_platform.reset();
    EXPECT_TRUE(WaitUntil([&] { return left.expired(); })) << "a thread is left";
    m_log.Ignore();
}

TEST_F(JackPlatform, BadArgumentsHaveTheirResults) {
    StartBoth();
    JackPeer peer("synth", {"sink in", "source out"});
    OpenOut("synth in");
    vm::MidiPlatform& midi = *m_platform;
    const vm::MidiId sink = midi.EndpointAt(vm::MidiDirection::Output, 0);
    const vm::MidiId source = midi.EndpointAt(vm::MidiDirection::Input, 0);
    const vm::MidiId output = midi.CreateOutputPort("");
    const vm::MidiId input = midi.CreateInputPort(
        "", [](auto, void*, void*) {}, nullptr);
    const Bytes note = {0x90, 0x3C, 0x40};
    EXPECT_EQ(midi.Start("again"), 0U);
    EXPECT_EQ(midi.EndpointAt(vm::MidiDirection::Output, 1), 0U);
    EXPECT_EQ(midi.Send(output, sink, note), vm::kMidiOk);
    EXPECT_EQ(midi.Send(output, source, note), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midi.Send(output, 0, note), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midi.Send(input, sink, note), vm::kMidiUnknownPort);
    EXPECT_EQ(midi.SendSysex({source}), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midi.SetMaxSysexSpeed(sink, 0), vm::kMidiBadArgument);
    EXPECT_EQ(midi.ConnectSource(output, source, nullptr), vm::kMidiUnknownPort);
    EXPECT_EQ(midi.ConnectSource(input, sink, nullptr), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midi.ConnectSource(input, source, nullptr), vm::kMidiOk);
    EXPECT_EQ(midi.DisconnectSource(input, source), vm::kMidiOk);
    EXPECT_EQ(midi.DisconnectSource(input, source), vm::kMidiUnknownEndpoint);
    EXPECT_EQ(midi.Stop(), vm::kMidiOk);
    EXPECT_EQ(midi.Stop(), vm::kMidiNotRunning);
    EXPECT_EQ(midi.Send(output, sink, note), vm::kMidiNotRunning);
    EXPECT_EQ(midi.CreateOutputPort(""), 0U);
    destroyCoreMIDI();
    m_log.Ignore(); // its ports are gone already
}
