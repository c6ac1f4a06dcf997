// Ports, their connections, and delivery.
#include "platform/midi/portTable.h"

#include <algorithm>

namespace vm {

namespace {
constexpr std::size_t kLongestPacketList = 64;
}

void MidiTraffic::Append(MidiId source, std::span<const std::uint8_t> bytes, Loss loss) {
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
    m_packets.push_back({source, bytes.size(), loss});
}

void MidiTraffic::Clear() {
    m_bytes.clear();
    m_packets.clear();
}

MidiId PortTable::CreateOutput() {
    return CreateInput(nullptr, nullptr);
}

MidiId PortTable::CreateInput(MidiReceive receive, void* portReference) {
    std::lock_guard guard(m_lock);
    m_ports.push_back({++m_lastPort, receive, portReference});
    return m_lastPort;
}

int PortTable::Dispose(MidiId port) {
    std::lock_guard guard(m_lock);
    std::erase_if(m_connections, [port](const Connection& each) { return each.port == port; });
    const auto removed =
        std::erase_if(m_ports, [port](const Port& each) { return each.id == port; });
    return removed ? kMidiOk : kMidiUnknownPort;
}

bool PortTable::IsOutput(MidiId port) const {
    std::lock_guard guard(m_lock);
    const Port* found = Find(port);
    return found && !found->receive;
}

bool PortTable::IsInput(MidiId port) const {
    std::lock_guard guard(m_lock);
    const Port* found = Find(port);
    return found && found->receive;
}

int PortTable::Connect(MidiId inputPort, MidiId source, void* sourceReference) {
    std::lock_guard guard(m_lock);
    const Port* port = Find(inputPort);
    if (!port || !port->receive) return kMidiUnknownPort;
    m_connections.push_back({inputPort, source, sourceReference});
    return kMidiOk;
}

int PortTable::Disconnect(MidiId inputPort, MidiId source) {
    std::lock_guard guard(m_lock);
    const auto removed = std::erase_if(m_connections, [=](const Connection& each) {
        return each.port == inputPort && each.source == source;
    });
    return removed ? kMidiOk : kMidiUnknownEndpoint;
}

void PortTable::DisconnectAll(MidiId source) {
    std::lock_guard guard(m_lock);
    std::erase_if(m_connections,
                  [source](const Connection& each) { return each.source == source; });
}

std::vector<MidiId> PortTable::ConnectedSources() const {
    std::vector<MidiId> sources;
    {
        std::lock_guard guard(m_lock);
        for (const Connection& each : m_connections) sources.push_back(each.source);
    }
    std::ranges::sort(sources);
    sources.erase(std::unique(sources.begin(), sources.end()), sources.end());
    return sources;
}

void PortTable::Clear() {
    std::lock_guard guard(m_lock);
    m_connections.clear();
    m_ports.clear();
}

void PortTable::Deliver(const MidiTraffic& traffic) {
    std::span<const std::uint8_t> bytes = traffic.Bytes();
    const std::span<const MidiTraffic::Packet> packets = traffic.Packets();
    for (std::size_t i = 0; i < packets.size(); ++i) {
        m_packets.push_back(
            {0, bytes.first(packets[i].length), packets[i].loss == MidiTraffic::Loss::Before});
        bytes = bytes.subspan(packets[i].length);
        const bool goesOn = i + 1 < packets.size() && packets[i + 1].source == packets[i].source;
        if (goesOn && m_packets.size() < kLongestPacketList) continue;
        DeliverFrom(packets[i].source);
        m_packets.clear();
    }
}

const PortTable::Port* PortTable::Find(MidiId port) const {
    const auto found = std::ranges::find(m_ports, port, &Port::id);
    return found == m_ports.end() ? nullptr : &*found;
}

void PortTable::DeliverFrom(MidiId source) {
    m_receivers.clear();
    {
        std::lock_guard guard(m_lock);
        for (const Connection& each : m_connections) {
            const Port* port = each.source == source ? Find(each.port) : nullptr;
            if (port) m_receivers.push_back({port->receive, port->reference, each.reference});
        }
    }
    for (const Receiver& each : m_receivers)
        each.receive(m_packets, each.portReference, each.sourceReference);
}

} // namespace vm
