// The back end on the system's sequencer: hardware ports, and those of other programs.
#pragma once

#include <chrono>
#include <condition_variable>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "platform/midi/MidiPlatform.h"
#include "platform/midi/alsa/AlsaSequencer.h"
#include "platform/midi/alsa/alsaEndpoints.h"
#include "platform/midi/alsa/alsaInput.h"
#include "platform/midi/alsa/alsaPace.h"
#include "platform/midi/endpointTable.h"
#include "platform/midi/limitedThread.h"
#include "platform/midi/portTable.h"
#include "platform/midi/sysexSender.h"

namespace vm {

/// One client of the sequencer. Every output port has a port of its own there, made when it is first
/// used; all input ports share one, so that a source is read once however many ports listen to it.
/// The endpoints are read anew whenever hosts ask for them and when the system announces a change;
/// what is connected to an endpoint that comes back is connected again.
/// Lives in a shared_ptr: its thread holds the object while it runs.
class AlsaPlatform : public MidiPlatform, public std::enable_shared_from_this<AlsaPlatform> {
public:
    AlsaPlatform();
    ~AlsaPlatform() override;

    /// Whether the sequencer is there and its library can be opened.
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
    enum class State { Idle, Starting, Running, Failed, Stopped };
    using Lock = std::unique_lock<std::mutex>;
    using Time = std::chrono::steady_clock::time_point;
    /// An output port of ours, and a destination that it was connected to.
    using Route = std::pair<int, AlsaAddress>;

    struct Output {
        std::string name;
        int port = -1; ///< the sequencer's, once it is made
    };

    bool WaitForStart(Lock& lock);
    int CheckDestination(MidiId id);

    // With m_lock held.
    const EndpointTable::Endpoint* Find(MidiId id, MidiDirection direction) const;
    void ReadEndpoints();
    void ListenToConnected();
    int ListenTo(const EndpointTable::Endpoint& source);
    void StopListening(const std::vector<MidiId>& before);

    // AlsaPlatformOutput.cpp. All but the last with m_lock held.
    int Write(MidiId outputPort, MidiId destination, const snd_seq_event_t& event,
              std::size_t sysexBytes);
    int WriteTo(int port, AlsaAddress destination, const snd_seq_event_t& event);
    int SequencerPort(MidiId outputPort);
    int WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece);

    // AlsaPlatformReceiver.cpp: the thread.
    void Run();
    bool Open();
    void Close();
    bool IsRunning();
    void WaitForEvents() const;
    void ReadEvents();
    void OnAnnouncement(const snd_seq_event_t& event);
    void OnGone(AlsaAddress gone);
    void OnLoss();
    void OnReadFailed(int error);
    void ReadEndpointsIfDue();

    std::mutex m_lock; // guards everything down to m_isStale, and all calls but ReadEvent
    std::condition_variable m_stateChanged;
    State m_state = State::Idle;
    std::string m_clientName;
    std::unique_ptr<AlsaSequencer> m_sequencer; // made and ended by the thread
    int m_inputPort = -1;
    AlsaKeys m_keys;
    EndpointTable m_endpoints;
    std::map<MidiId, Output> m_outputs;
    std::set<Route> m_routes;
    AlsaPace m_pace;
    bool m_isStale = false; ///< something was announced that has not been read yet

    int m_wake = -1; ///< an eventfd that ends the waiting of the thread
    PortTable m_ports;
    AlsaInput m_input;
    MidiTraffic m_arrived;        // these two: the thread's own
    std::optional<Time> m_readAt; // when to read the endpoints
    LimitedThread m_thread;
    SysexSender m_sender;
};

} // namespace vm
