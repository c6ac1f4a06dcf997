// The back end on a JACK server, or on what offers itself as one (PipeWire). A manager thread looks
// after the server: it connects, lists ports, opens ours, and starts again when the server does.
// Programs call from their threads, a receive thread calls them.
#pragma once

#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "platform/midi/MidiPlatform.h"
#include "platform/midi/endpointTable.h"
#include "platform/midi/jack/JackSession.h"
#include "platform/midi/limitedThread.h"
#include "platform/midi/packets.h"
#include "platform/midi/portTable.h"
#include "platform/midi/sysexSender.h"

namespace vm {

/// Lives in a shared_ptr: its threads hold the object while they run.
class JackPlatform : public MidiPlatform, public std::enable_shared_from_this<JackPlatform> {
public:
    JackPlatform();

    /// The library loads, and there is a server.
    static bool IsAvailable();

    MidiId Start(const char* clientName) override;
    int Stop() override;
    MidiId CreateOutputPort(const char* name) override;
    MidiId CreateInputPort(const char* name, MidiReceive receive, void* portReference) override;
    int DisposePort(MidiId port) override;
    int Count(MidiDirection direction) override;
    MidiId EndpointAt(MidiDirection direction, std::uint32_t index) override;
    std::optional<MidiObject> FindObject(MidiId id) override;
    int Send(MidiId outputPort, MidiId destination, std::span<const std::uint8_t> bytes) override;
    int SendSysex(const MidiSysexSend& send) override;
    int SetMaxSysexSpeed(MidiId destination, std::uint32_t bytesPerSecond) override;
    std::uint32_t MaxSysexSpeed(MidiId destination) override;
    int SetSysexGap(MidiId destination, SysexGap gap) override;
    int ConnectSource(MidiId inputPort, MidiId source, void* sourceReference) override;
    int DisconnectSource(MidiId inputPort, MidiId source) override;

private:
    enum class State { Idle, Starting, Running, Stopped };
    using Lock = std::unique_lock<std::mutex>;
    using Clock = std::chrono::steady_clock;
    using Output = std::shared_ptr<JackOutput>;
    /// An input port of ours. One that is not used any more stays for a while, so that opening and
    /// closing in a row costs the server nothing.
    struct Input {
        std::shared_ptr<JackInput> input;
        std::optional<Clock::time_point> unusedSince = {};
    };
    struct Missing {
        MidiId id;
        std::string address;
    };
    /// An endpoint that could not be connected to: programs show their ports before they take
    /// connections, and nothing tells when they do.
    struct Refusal {
        Clock::time_point since, retryAt;
        bool MayEnd() const { return Clock::now() < since + kOpenLimit; }
    };
    static constexpr std::chrono::seconds kOpenLimit{2};

    bool IsUp() const { return m_state == State::Starting || m_state == State::Running; }
    bool WaitForStart(Lock& lock);
    bool IsEndpoint(MidiId id, MidiDirection direction) const;
    int CheckDestination(MidiId id);
    void WakeManager();
    void WakeManager(const Lock& lock);
    void AskManager(Lock& lock, std::chrono::milliseconds limit);
    void AwaitPort(Lock& lock, MidiId endpoint);
    Output FindOutput(MidiId destination) const;
    int OpenOutput(Lock& lock, MidiId destination, Output& output);
    int OpenInput(Lock& lock, MidiId source);
    int WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece, SysexMark& end);
    int HasSysexLeft(MidiId destination, const SysexMark& end);

    // The manager thread.
    void Manage();
    Clock::duration Round();
    void OpenSession();
    void CloseSession();
    void UpdateEndpoints();
    void CloseGone();
    void AddMissing(MidiId endpoint, std::vector<Missing>& missing);
    void NoteRefusal(MidiId endpoint);
    void OpenMissingOutputs();
    void OpenMissingInputs();
    bool CloseUnusedInputs();
    void NoteUnusedInputs();

    // The receive thread.
    void Receive();
    void Drain(JackInbox& inbox);
    void Take(const RecordRing::Record& record);

    const JackLibrary* m_jack = nullptr; // set by Start
    std::string m_clientName;

    mutable std::mutex m_lock; // guards everything down to m_torn
    std::condition_variable m_changed;
    std::condition_variable m_managerWoken;
    State m_state = State::Idle;
    bool m_isManagerWoken = false;
    std::uint64_t m_asked = 0, m_served = 0; // rounds of the manager
    EndpointTable m_endpoints;
    std::set<MidiId> m_wanted; // destinations that were sent to; they stay so for ever
    std::map<MidiId, Output> m_outputs;
    std::map<MidiId, Input> m_inputs;
    std::map<MidiId, Refusal> m_refusals; // by endpoints that are there
    std::shared_ptr<JackInbox> m_inbox;
    std::set<MidiId> m_torn; // sources that have gone while they were in use

    std::shared_ptr<JackSession> m_session; // these four: the manager thread's
    Clock::time_point m_nextAttempt = {};
    Clock::time_point m_retryAt = {}; // of what has been refused
    bool m_hasLostServer = false;

    MidiTraffic m_delivering; // these three: the receive thread's
    TornSysexFilter m_filter;
    bool m_isOverflowLogged = false;

    const std::shared_ptr<Semaphore> m_arrived = std::make_shared<Semaphore>();
    PortTable m_ports;
    LimitedThread m_manager, m_receiver;
    SysexSender m_sender;
};

} // namespace vm
