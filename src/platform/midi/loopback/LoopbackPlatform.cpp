// Ports and wires of the in-process back end, and its receive thread.
#include "platform/midi/loopback/LoopbackPlatform.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <utility>

namespace vm {

namespace {

constexpr MidiId kClient = 1;
constexpr std::size_t kLongestPacketList = 64;
// A receive call may be waiting for the very thread that stops the back end.
constexpr std::chrono::seconds kStopLimit{2};

constexpr MidiObjectKind EndpointKind(MidiDirection direction) {
    return direction == MidiDirection::Output ? MidiObjectKind::Destination
                                              : MidiObjectKind::Source;
}

} // namespace

LoopbackSetup LoopbackSetup::Default() {
    const MidiEntity entity{"Loopback", MidiDevice{"Loopback", 1}};
    constexpr MidiId kDestination = 1;
    constexpr MidiId kSource = 2;
    return {{{kDestination, MidiObjectKind::Destination, "Loopback", entity, {}},
             {kSource, MidiObjectKind::Source, "Loopback", entity, {}}},
            {{kDestination, kSource}},
            {}};
}

LoopbackPlatform::LoopbackPlatform(LoopbackSetup setup)
    : m_setup(std::move(setup)),
      m_sender([this](MidiId destination, std::span<const std::uint8_t> piece) {
          return WriteSysexPiece(destination, piece);
      }) {}

MidiId LoopbackPlatform::Start(const char*) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Idle) return 0;
    try {
        m_receiveThread = std::thread([self = shared_from_this()] { self->Run(); });
    } catch (const std::system_error&) {
        return 0;
    }
    m_state = State::Starting;
    return kClient;
}

int LoopbackPlatform::Stop() {
    m_sender.Stop();
    Lock lock(m_lock);
    if (m_state == State::Idle || m_state == State::Stopped) return kMidiNotRunning;
    m_state = State::Stopped;
    m_connections.clear();
    m_ports.clear();
    m_stateChanged.notify_all();
    m_arrived.notify_all();
    std::thread thread = std::move(m_receiveThread);
    const bool onReceiveThread = thread.get_id() == std::this_thread::get_id();
    if (!onReceiveThread)
        m_stateChanged.wait_for(lock, kStopLimit, [this] { return m_threadEnded; });
    const bool ended = m_threadEnded;
    lock.unlock();
    if (ended)
        thread.join();
    else
        thread.detach(); // it holds this object until its receive call returns
    return kMidiOk;
}

MidiId LoopbackPlatform::CreateOutputPort(const char* name) {
    return CreateInputPort(name, nullptr, nullptr);
}

MidiId LoopbackPlatform::CreateInputPort(const char*, MidiReceive receive, void* portReference) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Starting && m_state != State::Running) return 0;
    m_ports.push_back({++m_lastPort, receive, portReference});
    return m_lastPort;
}

int LoopbackPlatform::DisposePort(MidiId port) {
    std::lock_guard guard(m_lock);
    std::erase_if(m_connections, [port](const Connection& each) { return each.port == port; });
    const auto removed =
        std::erase_if(m_ports, [port](const Port& each) { return each.id == port; });
    return removed ? kMidiOk : kMidiUnknownPort;
}

int LoopbackPlatform::Count(MidiDirection direction) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return 0;
    return static_cast<int>(
        std::ranges::count(m_setup.objects, EndpointKind(direction), &MidiObject::kind));
}

MidiId LoopbackPlatform::EndpointAt(MidiDirection direction, std::uint32_t index) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return 0;
    for (const MidiObject& object : m_setup.objects)
        if (object.kind == EndpointKind(direction) && index-- == 0) return object.id;
    return 0;
}

std::optional<MidiObject> LoopbackPlatform::FindObject(MidiId id) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return std::nullopt;
    const auto found = std::ranges::find(m_setup.objects, id, &MidiObject::id);
    if (found == m_setup.objects.end()) return std::nullopt;
    return *found;
}

int LoopbackPlatform::Send(MidiId outputPort, MidiId destination,
                           std::span<const std::uint8_t> bytes) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    const Port* port = FindPort(outputPort);
    if (!port || port->receive) return kMidiUnknownPort;
    return Carry(destination, bytes);
}

int LoopbackPlatform::SendSysex(const MidiSysexSend& send) {
    {
        Lock lock(m_lock);
        if (!WaitForStart(lock)) return kMidiNotRunning;
        if (!Find(send.destination, MidiObjectKind::Destination)) return kMidiUnknownEndpoint;
    }
    return m_sender.Send(send);
}

int LoopbackPlatform::SetMaxSysexSpeed(MidiId destination, std::uint32_t bytesPerSecond) {
    {
        Lock lock(m_lock);
        if (!WaitForStart(lock)) return kMidiNotRunning;
        if (!Find(destination, MidiObjectKind::Destination)) return kMidiUnknownEndpoint;
    }
    return m_sender.SetSpeed(destination, bytesPerSecond);
}

std::uint32_t LoopbackPlatform::MaxSysexSpeed(MidiId destination) {
    return m_sender.Speed(destination);
}

int LoopbackPlatform::SetSysexGap(MidiId destination, SysexGap gap) {
    return m_sender.SetGap(destination, gap);
}

int LoopbackPlatform::ConnectSource(MidiId inputPort, MidiId source, void* sourceReference) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    const Port* port = FindPort(inputPort);
    if (!port || !port->receive) return kMidiUnknownPort;
    if (!Find(source, MidiObjectKind::Source)) return kMidiUnknownEndpoint;
    m_connections.push_back({inputPort, source, sourceReference});
    return kMidiOk;
}

int LoopbackPlatform::DisconnectSource(MidiId inputPort, MidiId source) {
    std::lock_guard guard(m_lock);
    const auto removed = std::erase_if(m_connections, [=](const Connection& each) {
        return each.port == inputPort && each.source == source;
    });
    return removed ? kMidiOk : kMidiUnknownEndpoint;
}

int LoopbackPlatform::Receive(MidiId source,
                              const std::vector<std::vector<std::uint8_t>>& packets) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    if (!Find(source, MidiObjectKind::Source)) return kMidiUnknownEndpoint;
    for (const std::vector<std::uint8_t>& packet : packets) Append(source, packet);
    return kMidiOk;
}

void LoopbackPlatform::RemoveEndpoint(MidiId id) {
    std::lock_guard guard(m_lock);
    std::erase_if(m_setup.objects, [id](const MidiObject& each) { return each.id == id; });
    std::erase_if(m_setup.wires, [id](const LoopbackWire& each) {
        return each.destination == id || each.source == id;
    });
    std::erase_if(m_connections, [id](const Connection& each) { return each.source == id; });
}

bool LoopbackPlatform::WaitForStart(Lock& lock) {
    m_stateChanged.wait(lock, [this] { return m_state != State::Starting; });
    return m_state == State::Running;
}

const MidiObject* LoopbackPlatform::Find(MidiId id, MidiObjectKind kind) const {
    for (const MidiObject& object : m_setup.objects)
        if (object.id == id && object.kind == kind) return &object;
    return nullptr;
}

const LoopbackPlatform::Port* LoopbackPlatform::FindPort(MidiId id) const {
    const auto found = std::ranges::find(m_ports, id, &Port::id);
    return found == m_ports.end() ? nullptr : &*found;
}

int LoopbackPlatform::Carry(MidiId destination, std::span<const std::uint8_t> bytes) {
    if (!Find(destination, MidiObjectKind::Destination)) return kMidiUnknownEndpoint;
    for (const LoopbackWire& wire : m_setup.wires)
        if (wire.destination == destination) Append(wire.source, bytes);
    return kMidiOk;
}

int LoopbackPlatform::WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Running) return kMidiNotRunning;
    return piece.empty() ? kMidiOk : Carry(destination, piece);
}

void LoopbackPlatform::Append(MidiId source, std::span<const std::uint8_t> bytes) {
    m_arriving.bytes.insert(m_arriving.bytes.end(), bytes.begin(), bytes.end());
    m_arriving.packets.push_back({source, bytes.size()});
    m_arrived.notify_all();
}

void LoopbackPlatform::Run() {
    if (m_setup.beforeStart) m_setup.beforeStart();
    Lock lock(m_lock);
    if (m_state == State::Starting) m_state = State::Running;
    m_stateChanged.notify_all();
    while (m_state == State::Running) {
        if (m_arriving.packets.empty()) {
            m_arrived.wait(lock);
            continue;
        }
        std::swap(m_arriving, m_delivering);
        lock.unlock();
        Deliver();
        lock.lock();
    }
    m_threadEnded = true;
    m_stateChanged.notify_all();
}

// Neighbouring packets of one source make one packet list, up to its limit.
void LoopbackPlatform::Deliver() {
    std::span<const std::uint8_t> bytes = m_delivering.bytes;
    const auto& packets = m_delivering.packets;
    for (std::size_t i = 0; i < packets.size(); ++i) {
        m_packets.push_back({0, bytes.first(packets[i].length)});
        bytes = bytes.subspan(packets[i].length);
        const bool goesOn = i + 1 < packets.size() && packets[i + 1].source == packets[i].source;
        if (goesOn && m_packets.size() < kLongestPacketList) continue;
        DeliverFrom(packets[i].source);
        m_packets.clear();
    }
    m_delivering.bytes.clear();
    m_delivering.packets.clear();
}

void LoopbackPlatform::DeliverFrom(MidiId source) {
    m_receivers.clear();
    {
        std::lock_guard guard(m_lock);
        for (const Connection& each : m_connections) {
            const Port* port = each.source == source ? FindPort(each.port) : nullptr;
            if (port) m_receivers.push_back({port->receive, port->reference, each.reference});
        }
    }
    for (const Receiver& each : m_receivers)
        each.receive(m_packets, each.portReference, each.sourceReference);
}

} // namespace vm
