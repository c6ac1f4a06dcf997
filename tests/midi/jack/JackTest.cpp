#include "JackTest.h"

#include <algorithm>
#include <cstdlib>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace {

constexpr char kServerName[] = "vmcore-test";

template <typename Caps>
std::vector<std::string> Names(UINT count, MMRESULT (*fill)(UINT, Caps*, UINT)) {
    std::vector<std::string> names;
    for (UINT i = 0; i < count; ++i) {
        Caps caps = {};
        fill(i, &caps, sizeof caps);
        names.emplace_back(caps.szPname);
    }
    return names;
}

UINT IndexOf(std::vector<std::string> (*names)(), const std::string& name) {
    std::vector<std::string> all;
    std::size_t index = 0;
    const bool found = WaitUntil([&] {
        all = names();
        index = static_cast<std::size_t>(std::ranges::find(all, name) - all.begin());
        return index < all.size();
    });
    EXPECT_TRUE(found) << name << " is not among " << testing::PrintToString(all);
    return static_cast<UINT>(index);
}

} // namespace

bool WaitUntil(const std::function<bool()>& condition) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > until) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

// Always the same name: a server that was killed keeps its place among the machine's eight until one
// of its name starts. Hence one at a time, by a lock on the folder where servers keep what they share.
JackServer::JackServer() : m_turn(open("/dev/shm", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    EXPECT_EQ(flock(m_turn, LOCK_EX), 0);
    setenv("JACK_DEFAULT_SERVER", kServerName, 1);
}

JackServer::~JackServer() {
    m_process.Terminate();
    close(m_turn);
}

// A synchronous server waits for a killed client ten times as long as its time limit (-t).
void JackServer::Start() {
    m_process.Start({"jackd", "-n", kServerName, "-r", "-S", "-t", "100", "-d", "dummy", "-r",
                     "48000", "-p", "256"});
    const bool answers =
        WaitUntil([&] { return !m_process.IsRunning() || vm::JackPlatform::IsAvailable(); });
    ASSERT_TRUE(answers && m_process.IsRunning()) << "jackd does not run here";
}

JackPeer::JackPeer(const std::string& name, const std::vector<std::string>& commands) {
    m_process.Start({JACK_PEER, name});
    EXPECT_EQ(m_process.ReadLine(), "ok") << name;
    for (const std::string& command : commands) Do(command);
}

void JackPeer::Do(const std::string& command) {
    m_process.Write(command);
    EXPECT_EQ(m_process.ReadLine(), "ok") << command;
}

void JackTest::StartMidi() {
    m_platform = std::make_shared<vm::JackPlatform>();
    vm::UseMidiPlatform(m_platform);
    initCoreMIDI();
    m_log.Ignore();
}

std::vector<std::string> JackTest::OutNames() {
    return Names(midiOutGetNumDevs(), midiOutGetDevCaps);
}

std::vector<std::string> JackTest::InNames() {
    return Names(midiInGetNumDevs(), midiInGetDevCaps);
}

HMIDIOUT JackTest::OpenOut(const std::string& name) {
    HMIDIOUT handle = nullptr;
    EXPECT_EQ(midiOutOpen(&handle, IndexOf(OutNames, name), 0, 0, 0), 0U);
    midiOutSetMaxSysExSpeed(handle, 100'000'000);
    return handle;
}

HMIDIIN JackTest::OpenIn(const std::string& name, MidiRecorder& recorder) {
    HMIDIIN handle = nullptr;
    EXPECT_EQ(
        midiInOpen(&handle, IndexOf(InNames, name), recorder.Callback(), recorder.Instance(), 0),
        0U);
    m_log.Ignore();
    return handle;
}

bool JackTest::WaitForNames(std::vector<std::string> (*names)(),
                            const std::vector<std::string>& wanted) {
    return WaitUntil([&] { return names() == wanted; });
}
