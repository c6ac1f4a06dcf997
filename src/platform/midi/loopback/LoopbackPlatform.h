// The back end inside the process: what is sent to a destination arrives at the sources wired to
// it. It is the default where there is no MIDI system, and what tests describe their MIDI set-ups
// with.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include "platform/midi/MidiPlatform.h"
#include "platform/midi/limitedThread.h"
#include "platform/midi/portTable.h"
#include "platform/midi/sysexSender.h"

namespace vm {

struct LoopbackWire {
    MidiId destination;
    MidiId source;
};

/// Everything the back end knows. Sources and destinations are counted in the order given here.
struct LoopbackSetup {
    std::vector<MidiObject> objects;
    std::vector<LoopbackWire> wires;
    std::function<void()> beforeStart = {}; ///< runs on the back end's thread before it is started

    /// One destination and one source, both "Loopback" of the device "Loopback", wired together.
    static LoopbackSetup Default();
};

/// Lives in a shared_ptr: its thread holds the object while it runs.
class LoopbackPlatform : public MidiPlatform,
                         public std::enable_shared_from_this<LoopbackPlatform> {
public:
    explicit LoopbackPlatform(LoopbackSetup setup = LoopbackSetup::Default());

    /// Before Start: called on the back end's thread, before it is started. What it returns replaces
    /// the set-up, unless that is nothing.
    void DescribeBy(std::function<std::optional<LoopbackSetup>()> describe);

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

    /// Lets `packets` arrive at `source` as one packet list.
    int Receive(MidiId source, const std::vector<std::vector<std::uint8_t>>& packets);
    /// Unplugs an endpoint, with its wires and connections.
    void RemoveEndpoint(MidiId id);

private:
    enum class State { Idle, Starting, Running, Stopped };
    using Lock = std::unique_lock<std::mutex>;

    bool IsUp() const;
    bool WaitForStart(Lock& lock);
    const MidiObject* Find(MidiId id, MidiObjectKind kind) const;
    int Carry(MidiId destination, std::span<const std::uint8_t> bytes);
    int WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece);
    void Append(MidiId source, std::span<const std::uint8_t> bytes);
    void Describe();
    void Run();

    std::mutex m_lock; // guards everything down to m_arriving
    std::condition_variable m_stateChanged;
    std::condition_variable m_arrived;
    State m_state = State::Idle;
    LoopbackSetup m_setup;
    std::function<std::optional<LoopbackSetup>()> m_describe;
    MidiTraffic m_arriving;

    PortTable m_ports;
    MidiTraffic m_delivering; // the receive thread's; changes places with m_arriving
    LimitedThread m_receiveThread;
    SysexSender m_sender;
};

} // namespace vm
