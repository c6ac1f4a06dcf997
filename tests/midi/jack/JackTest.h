// A test with a JACK server of its own, and the MIDI system up on it.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "../MidiRecorder.h"
#include "platform/midi/jack/JackPlatform.h"
#include "support/ChildProcess.h"

/// For what nothing reports; false after ten seconds.
bool WaitUntil(const std::function<bool()>& condition);

/// A synchronous server without hardware: the asynchronous kind loses MIDI events by itself.
class JackServer {
public:
    JackServer(); ///< waits until no other test on this machine has one
    ~JackServer();
    JackServer(const JackServer&) = delete;
    JackServer& operator=(const JackServer&) = delete;
    void Start(); ///< fails the test when there is none
    void Kill() { m_process.Kill(); }
    void Terminate() { m_process.Terminate(); }
    void Pause() { m_process.Stop(); }
    void Continue() const { m_process.Signal(SIGCONT); }

private:
    const int m_turn;
    ChildProcess m_process;
};

/// Another program at the server; see jackPeer.cpp.
class JackPeer {
public:
    explicit JackPeer(const std::string& name, const std::vector<std::string>& commands = {});
    ~JackPeer() { m_process.EndInput(); }
    void Do(const std::string& command); ///< fails the test when it fails
    void Kill() { m_process.Kill(); }

private:
    ChildProcess m_process;
};

class JackTest : public testing::Test {
protected:
    void StartServer() { m_server.Start(); }
    void StartMidi();
    void StartBoth() {
        StartServer();
        StartMidi();
    }
    void TearDown() override { destroyCoreMIDI(); }

    static std::vector<std::string> OutNames();
    static std::vector<std::string> InNames();
    /// The device of that name, waited for ten seconds at most; fails the test.
    HMIDIOUT OpenOut(const std::string& name);
    HMIDIIN OpenIn(const std::string& name, MidiRecorder& recorder);
    /// Whether the names become so.
    static bool WaitForNames(std::vector<std::string> (*names)(),
                             const std::vector<std::string>& wanted);

    Watchdog m_watchdog{std::chrono::seconds(90)};
    LogCapture m_log;
    JackServer m_server;
    std::shared_ptr<vm::JackPlatform> m_platform;
};
