// Programs and servers that go, hang and come back.
#include "JackTest.h"

#include <csignal>
#include <filesystem>
#include <fstream>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

constexpr auto kUnknownEndpoint = static_cast<MMRESULT>(vm::kMidiUnknownEndpoint);
constexpr auto kSendFailed = static_cast<MMRESULT>(vm::kMidiSendFailed);

class JackServerLoss : public JackTest {
protected:
    /// Opens both ways through the peer and sees that they are open.
    void OpenThru() {
        m_in = OpenIn("thru out", m_recorder);
        m_out = OpenOut("thru in");
        ASSERT_EQ(midiOutShortMsg(m_out, 0xF8), 0U);
        ASSERT_EQ(m_recorder.Wait(1).size(), 1U);
    }
    /// Sends a message that takes seconds at least, and returns when it is on its way.
    void BeginLongMessage(DWORD speed = 100'000) {
        midiOutSetMaxSysExSpeed(m_out, speed);
        midiOutLongMsg(m_out, &m_longHeader, sizeof m_longHeader);
        for (int i = 0; i < 20; ++i) {
            midiOutShortMsg(m_out, 0xF8);
            m_recorder.Wait(static_cast<std::size_t>(i) + 2);
        }
        ASSERT_FALSE(IsDone(m_longHeader));
    }
    /// Both ways are open again, and what arrives is whole.
    void ExpectTrafficFlows() {
        ASSERT_TRUE(WaitForNames(OutNames, {"thru in"}));
        const std::size_t before = m_recorder.Wait(0).size();
        ASSERT_TRUE(WaitUntil([&] {
            midiOutShortMsg(m_out, 0xFA);
            return m_recorder.Wait(0).size() > before;
        }));
        Bytes message = Dump(50'000, 3);
        MIDIHDR header = HeaderFor(message);
        midiOutSetMaxSysExSpeed(m_out, 100'000'000);
        midiOutLongMsg(m_out, &header, sizeof header);
        WaitUntilDone(header);
        EXPECT_TRUE(WaitUntil([&] { return !ReceivedSysex().empty(); }));
        EXPECT_TRUE(ReceivedSysex() == std::vector<Bytes>(1, message));
    }
    std::vector<Bytes> ReceivedSysex() {
        std::vector<Bytes> received;
        for (const MidiRecorder::Call& call : m_recorder.Wait(0))
            if (call.message == MIM_LONGDATA) received.push_back(call.sysex);
        return received;
    }

    MidiRecorder m_recorder;
    HMIDIIN m_in = nullptr;
    HMIDIOUT m_out = nullptr;
    Bytes m_long = Dump(16'000'000, 9);
    MIDIHDR m_longHeader = HeaderFor(m_long);
};

/// A program that uses the server by itself, on a thread of its own.
class OwnClient {
public:
    OwnClient() {
        std::thread([this] {
            m_client = m_jack.client_open("own client", JackNoStartServer, nullptr);
        }).join();
        EXPECT_NE(m_client, nullptr);
    }
    ~OwnClient() {
        std::thread([this] { m_jack.client_close(m_client); }).join();
    }
    OwnClient(const OwnClient&) = delete;
    OwnClient& operator=(const OwnClient&) = delete;

private:
    const vm::JackLibrary& m_jack = *vm::JackLibrary::Get();
    jack_client_t* m_client = nullptr;
};

/// How many threads of the process get the signal of a broken connection.
int ThreadsWithPipeSignal() {
    int count = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream status(thread.path() / "status");
        std::string word;
        while (status >> word && word != "SigBlk:") {
        }
        std::uint64_t blocked = 0;
        status >> std::hex >> blocked;
        count += status && (blocked >> (SIGPIPE - 1) & 1) == 0;
    }
    return count;
}

} // namespace

// The library does not see to that when somebody has opened a client before.
TEST_F(JackServerLoss, BrokenConnectionSendsNoSignalToThreadsThatTalkToServers) {
    StartServer();
    const OwnClient program;
    const int before = ThreadsWithPipeSignal();
    StartMidi();
    JackPeer peer("thru", {"thru"});
    OpenThru();
    EXPECT_EQ(ThreadsWithPipeSignal(), before + 1) << "only the one that calls the program";
}

TEST_F(JackServerLoss, NoServerIsNoDevicesUntilThereIsOne) {
    EXPECT_FALSE(vm::JackPlatform::IsAvailable());
    StartMidi();
    EXPECT_THAT(OutNames(), IsEmpty());
    EXPECT_EQ(midiOutShortMsg(vm::MidiHandle(5), 0xF8), kUnknownEndpoint);
    StartServer();
    EXPECT_TRUE(vm::JackPlatform::IsAvailable());
    JackPeer peer("thru", {"thru"});
    ASSERT_TRUE(WaitForNames(OutNames, {"thru in"}));
    OpenThru();
}

TEST_F(JackServerLoss, ProgramThatGoesEndsItsSendsAndComesBackByName) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    OpenThru();
    BeginLongMessage();
    peer.Kill();
    WaitUntilDone(m_longHeader);
    ExpectNotSentWhole(m_log, 1);
    EXPECT_EQ(midiOutShortMsg(m_out, 0xF8), kUnknownEndpoint);
    EXPECT_THAT(OutNames(), IsEmpty());
    JackPeer again("thru", {"thru"});
    ExpectTrafficFlows();
}

TEST_F(JackServerLoss, ProgramThatComesBackSlowlyIsConnectedAgain) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    OpenThru();
    for (const char* command : {"remove in", "remove out"}) peer.Do(command);
    ASSERT_TRUE(WaitForNames(OutNames, {}));
    for (const char* command : {"deactivate", "thru"}) peer.Do(command);
    ASSERT_TRUE(WaitForNames(OutNames, {"thru in"})); // seen, and refused
    for (const char* command : {"activate-after 0", "await-connection in", "await-connection out"})
        peer.Do(command);
    ExpectTrafficFlows();
}

class JackServerKill : public JackServerLoss, public testing::WithParamInterface<DWORD> {};
INSTANTIATE_TEST_SUITE_P(SlowAndFast, JackServerKill, testing::Values(100'000, 100'000'000));

TEST_P(JackServerKill, EndsSendsAndPortsComeBackByName) {
    StartBoth();
    {
        JackPeer peer("thru", {"thru"});
        OpenThru();
        BeginLongMessage(GetParam());
        m_server.Kill();
        WaitUntilDone(m_longHeader);
    }
    EXPECT_EQ(midiOutShortMsg(m_out, 0xF8), kUnknownEndpoint);
    EXPECT_THAT(OutNames(), IsEmpty());
    MIDIHDR late = HeaderFor(m_long);
    midiOutLongMsg(m_out, &late, sizeof late);
    EXPECT_TRUE(IsDone(late));
    StartServer();
    JackPeer again("thru", {"thru"});
    ExpectTrafficFlows();
    EXPECT_THAT(m_log.TakeLog(),
                UnorderedElementsAre("The JACK server has stopped",
                                     HasSubstr("message of 16000000 bytes was not sent whole"),
                                     HasSubstr("message of 16000000 bytes could not be sent"),
                                     "The JACK server is back"));
}

TEST_F(JackServerLoss, ServerMayEndAndStartAgainAnyNumberOfTimes) {
    StartBoth();
    auto peer = std::make_unique<JackPeer>("thru", std::vector<std::string>{"thru"});
    OpenThru();
    for (int i = 0; i < 3; ++i) {
        m_server.Terminate();
        peer->Kill();
        EXPECT_TRUE(WaitForNames(OutNames, {}));
        StartServer();
        peer = std::make_unique<JackPeer>("thru", std::vector<std::string>{"thru"});
        EXPECT_TRUE(WaitForNames(OutNames, {"thru in"}));
    }
    ExpectTrafficFlows();
    m_log.Ignore();
}

TEST_F(JackServerLoss, PauseOfTheServerLosesNothing) {
    StartBoth();
    JackPeer peer("thru", {"thru"});
    OpenThru();
    m_server.Pause();
    Bytes message = Dump(100'000, 1);
    MIDIHDR header = HeaderFor(message);
    midiOutLongMsg(m_out, &header, sizeof header);
    for (int i = 0; i < 100; ++i) EXPECT_EQ(midiOutShortMsg(m_out, 0xFA), 0U);
    std::this_thread::sleep_for(std::chrono::seconds(1)); // the length of the pause
    EXPECT_FALSE(IsDone(header));
    m_server.Continue();
    WaitUntilDone(header);
    std::size_t shorts = 0;
    for (const MidiRecorder::Call& call : m_recorder.Wait(102)) {
        shorts += call.message == MIM_DATA;
        EXPECT_TRUE(call.message == MIM_DATA || call.sysex == message);
    }
    EXPECT_EQ(shorts, 101U);
}

TEST_F(JackServerLoss, HungServerHoldsNobodyForLong) {
    StartBoth();
    JackPeer peer("thru", {"thru", "sink other"});
    OpenThru();
    const HMIDIOUT other = OpenOut("thru other");
    m_server.Pause();
    while (midiOutShortMsg(m_out, 0x00403C90) == 0) {
    } // two seconds at most
    const auto begin = std::chrono::steady_clock::now();
    for (int i = 0; i < 10; ++i) EXPECT_EQ(midiOutShortMsg(m_out, 0x00403C90), kSendFailed);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1)) << "at once";
    EXPECT_EQ(midiOutShortMsg(other, 0xF8), kSendFailed);
    EXPECT_EQ(midiOutGetNumDevs(), 2U);
    midiOutLongMsg(m_out, &m_longHeader, sizeof m_longHeader);
    EXPECT_EQ(destroyCoreMIDI(), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(10));
    EXPECT_TRUE(IsDone(m_longHeader));
    ExpectNotSentWhole(m_log, 1);
    m_server.Continue();
    const std::weak_ptr<vm::JackPlatform> left = m_platform;
    m_platform.reset();
    EXPECT_TRUE(WaitUntil([&] { return left.expired(); })) << "a thread is lost";
}

TEST_F(JackServerLoss, HungServerAtTheStartIsNone) {
    StartServer();
    m_server.Pause();
    EXPECT_TRUE(vm::JackPlatform::IsAvailable());
    StartMidi();
    EXPECT_EQ(midiOutGetNumDevs(), 0U); // three seconds
    m_server.Continue();
    JackPeer peer("thru", {"thru"});
    OpenThru();
}
