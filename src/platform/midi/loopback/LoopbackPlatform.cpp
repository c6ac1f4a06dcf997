// Ports and wires of the in-process back end, and its receive thread.
#include "platform/midi/loopback/LoopbackPlatform.h"

#include <algorithm>
#include <utility>

namespace vm {

namespace {

constexpr MidiId kClient = 1;

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
      m_sender({[this](MidiId destination, std::span<const std::uint8_t> piece, SysexMark&) {
          return WriteSysexPiece(destination, piece);
      }}) {}

void LoopbackPlatform::DescribeBy(std::function<std::optional<LoopbackSetup>()> describe) {
    std::lock_guard guard(m_lock);
    m_describe = std::move(describe);
}

MidiId LoopbackPlatform::Start(const char*) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Idle) return 0;
    if (!m_receiveThread.Start([self = shared_from_this()] { self->Run(); })) return 0;
    m_state = State::Starting;
    return kClient;
}

int LoopbackPlatform::Stop() {
    m_sender.Stop();
    {
        std::lock_guard guard(m_lock);
        if (m_state == State::Idle || m_state == State::Stopped) return kMidiNotRunning;
        m_state = State::Stopped;
        m_ports.Clear();
    }
    m_stateChanged.notify_all();
    m_arrived.notify_all();
    m_receiveThread.End(); // if left behind, it holds this object until its receive call returns
    return kMidiOk;
}

MidiId LoopbackPlatform::CreateOutputPort(const char*) {
    std::lock_guard guard(m_lock);
    return IsUp() ? m_ports.CreateOutput() : 0;
}

MidiId LoopbackPlatform::CreateInputPort(const char*, MidiReceive receive, void* portReference) {
    std::lock_guard guard(m_lock);
    return IsUp() ? m_ports.CreateInput(receive, portReference) : 0;
}

int LoopbackPlatform::DisposePort(MidiId port) {
    return m_ports.Dispose(port);
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
    if (!m_ports.IsOutput(outputPort)) return kMidiUnknownPort;
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
    if (!m_ports.IsInput(inputPort)) return kMidiUnknownPort;
    if (!Find(source, MidiObjectKind::Source)) return kMidiUnknownEndpoint;
    return m_ports.Connect(inputPort, source, sourceReference);
}

int LoopbackPlatform::DisconnectSource(MidiId inputPort, MidiId source) {
    return m_ports.Disconnect(inputPort, source);
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
    m_ports.DisconnectAll(id);
}

bool LoopbackPlatform::IsUp() const {
    return m_state == State::Starting || m_state == State::Running;
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

int LoopbackPlatform::Carry(MidiId destination, std::span<const std::uint8_t> bytes) {
    if (!Find(destination, MidiObjectKind::Destination)) return kMidiUnknownEndpoint;
    for (const LoopbackWire& wire : m_setup.wires)
        if (wire.destination == destination) Append(wire.source, bytes);
    return kMidiOk;
}

int LoopbackPlatform::WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Running) return kMidiNotRunning;
    return Carry(destination, piece);
}

void LoopbackPlatform::Append(MidiId source, std::span<const std::uint8_t> bytes) {
    m_arriving.Append(source, bytes);
    m_arrived.notify_all();
}

// With no lock held: it may read a file.
void LoopbackPlatform::Describe() {
    if (!m_describe) return;
    std::optional<LoopbackSetup> described = m_describe();
    std::lock_guard guard(m_lock);
    if (described) m_setup = std::move(*described);
}

void LoopbackPlatform::Run() {
    Describe();
    if (m_setup.beforeStart) m_setup.beforeStart();
    Lock lock(m_lock);
    if (m_state == State::Starting) m_state = State::Running;
    m_stateChanged.notify_all();
    while (m_state == State::Running) {
        if (m_arriving.IsEmpty()) {
            m_arrived.wait(lock);
            continue;
        }
        std::swap(m_arriving, m_delivering);
        lock.unlock();
        m_ports.Deliver(m_delivering);
        m_delivering.Clear();
        lock.lock();
    }
}

} // namespace vm
