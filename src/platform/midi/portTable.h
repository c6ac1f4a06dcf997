// What every back end keeps alike: the ports a process has made, which sources they are connected
// to, and how what has arrived gets to their receivers.
#pragma once

#include <mutex>
#include <span>
#include <vector>

#include "platform/midi/MidiPlatform.h"

namespace vm {

/// Packets in the order of their arrival. Cleared and filled again it allocates nothing, once it
/// has grown.
class MidiTraffic {
public:
    enum class Loss { None, Before }; ///< see MidiPacket::afterLoss
    struct Packet {
        MidiId source;
        std::size_t length;
        Loss loss;
    };

    void Append(MidiId source, std::span<const std::uint8_t> bytes, Loss loss = Loss::None);
    void Clear();
    bool IsEmpty() const { return m_packets.empty(); }
    std::span<const Packet> Packets() const { return m_packets; }
    std::span<const std::uint8_t> Bytes() const { return m_bytes; } ///< of all packets

private:
    std::vector<std::uint8_t> m_bytes;
    std::vector<Packet> m_packets;
};

/// Any thread may call, except where another is named.
class PortTable {
public:
    MidiId CreateOutput();
    MidiId CreateInput(MidiReceive receive, void* portReference); ///< `receive` is not null
    /// The result is that of MidiPlatform::DisposePort. Its connections go with it.
    int Dispose(MidiId port);
    bool IsOutput(MidiId port) const;
    bool IsInput(MidiId port) const;

    /// Says nothing about whether there is such a source: kMidiOk or kMidiUnknownPort.
    int Connect(MidiId inputPort, MidiId source, void* sourceReference);
    int Disconnect(MidiId inputPort, MidiId source);
    void DisconnectAll(MidiId source);            ///< it has gone for good
    std::vector<MidiId> ConnectedSources() const; ///< each once

    void Clear(); ///< no ports, no connections

    /// Calls the receivers with what has arrived; neighbouring packets of one source make one
    /// packet list, up to its limit. On one thread only, the receive thread. Holds no lock during
    /// the calls and allocates nothing once it has done the like.
    void Deliver(const MidiTraffic& traffic);

private:
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
    struct Receiver {
        MidiReceive receive;
        void* portReference;
        void* sourceReference;
    };

    const Port* Find(MidiId port) const;
    void DeliverFrom(MidiId source);

    mutable std::mutex m_lock; // guards everything down to m_connections
    MidiId m_lastPort = 0;
    std::vector<Port> m_ports;
    std::vector<Connection> m_connections;

    std::vector<MidiPacket> m_packets; // these two: the receive thread only
    std::vector<Receiver> m_receivers;
};

} // namespace vm
