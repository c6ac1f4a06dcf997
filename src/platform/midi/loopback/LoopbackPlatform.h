// The back end inside the process: what is sent to a destination arrives at the sources wired to
// it. It is the default where there is no MIDI system, and what tests describe their MIDI set-ups
// with.
#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/midi/MidiPlatform.h"
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
    struct Port {
        MidiId id;
        MidiReceive receive; // null for output
        void* reference;
    };
    struct Connection {
        MidiId port;
        MidiId source;
        void* reference;
    };
    /// Packets on their way. The two of them change places, so that traffic allocates nothing once
    /// they have grown.
    struct Traffic {
        struct Packet {
            MidiId source;
            std::size_t length;
        };
        std::vector<std::uint8_t> bytes;
        std::vector<Packet> packets;
    };
    struct Receiver {
        MidiReceive receive;
        void* portReference;
        void* sourceReference;
    };
    using Lock = std::unique_lock<std::mutex>;

    bool WaitForStart(Lock& lock);
    const MidiObject* Find(MidiId id, MidiObjectKind kind) const;
    const Port* FindPort(MidiId id) const;
    int Carry(MidiId destination, std::span<const std::uint8_t> bytes);
    int WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece);
    void Append(MidiId source, std::span<const std::uint8_t> bytes);
    void Run();
    void Deliver();
    void DeliverFrom(MidiId source);

    std::mutex m_lock; // guards everything down to m_receiveThread
    std::condition_variable m_stateChanged;
    std::condition_variable m_arrived;
    State m_state = State::Idle;
    bool m_threadEnded = false;
    LoopbackSetup m_setup;
    MidiId m_lastPort = 0;
    std::vector<Port> m_ports;
    std::vector<Connection> m_connections;
    Traffic m_arriving;
    std::thread m_receiveThread;

    Traffic m_delivering; // these three: the receive thread only
    std::vector<MidiPacket> m_packets;
    std::vector<Receiver> m_receivers;

    SysexSender m_sender;
};

} // namespace vm
