// Life, ports, endpoints and connections. Output and the thread have their own sources.
#include "platform/midi/alsa/AlsaPlatform.h"

#include <algorithm>
#include <cerrno>

#include <sys/eventfd.h>
#include <unistd.h>

#include "core/log.h"

namespace vm {

namespace {
constexpr MidiId kClient = 1;
}

AlsaPlatform::AlsaPlatform()
    : m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      m_sender({[this](MidiId destination, std::span<const std::uint8_t> piece, SysexMark&) {
                   return WriteSysexPiece(destination, piece);
               }},
               kAlsaLargestPiece) {}

AlsaPlatform::~AlsaPlatform() {
    if (m_wake >= 0) close(m_wake);
}

bool AlsaPlatform::IsAvailable() {
    return IsAlsaSequencerOpenable() && AlsaLibrary::Load();
}

MidiId AlsaPlatform::Start(const char* clientName) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Idle || m_wake < 0) return 0;
    m_clientName = clientName;
    if (!m_thread.Start([self = shared_from_this()] { self->Run(); })) return 0;
    m_state = State::Starting;
    return kClient;
}

int AlsaPlatform::Stop() {
    m_sender.Stop();
    {
        std::lock_guard guard(m_lock);
        if (m_state == State::Idle || m_state == State::Stopped) return kMidiNotRunning;
        m_state = State::Stopped;
        m_ports.Clear();
    }
    m_stateChanged.notify_all();
    eventfd_write(m_wake, 1);
    m_thread.End(); // if left behind, it holds this object until its receive call returns
    return kMidiOk;
}

bool AlsaPlatform::WaitForStart(Lock& lock) {
    m_stateChanged.wait(lock, [this] { return m_state != State::Starting; });
    return m_state == State::Running;
}

MidiId AlsaPlatform::CreateOutputPort(const char* name) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Starting && m_state != State::Running) return 0;
    const MidiId port = m_ports.CreateOutput();
    m_outputs[port].name = name;
    return port;
}

MidiId AlsaPlatform::CreateInputPort(const char*, MidiReceive receive, void* portReference) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Starting && m_state != State::Running) return 0;
    return m_ports.CreateInput(receive, portReference);
}

int AlsaPlatform::DisposePort(MidiId port) {
    std::lock_guard guard(m_lock);
    const std::vector<MidiId> before = m_ports.ConnectedSources();
    const int result = m_ports.Dispose(port);
    if (m_state != State::Running) return result;
    StopListening(before);
    const auto output = m_outputs.find(port);
    if (output == m_outputs.end()) return result;
    const int number = output->second.port;
    m_outputs.erase(output);
    if (number < 0) return result;
    m_sequencer->DeletePort(number);
    std::erase_if(m_routes, [number](const Route& route) { return route.first == number; });
    return result;
}

int AlsaPlatform::Count(MidiDirection direction) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return 0;
    ReadEndpoints();
    return m_endpoints.Count(direction);
}

MidiId AlsaPlatform::EndpointAt(MidiDirection direction, std::uint32_t index) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return 0;
    if (m_isStale) ReadEndpoints();
    const EndpointTable::Endpoint* endpoint = m_endpoints.At(direction, index);
    return endpoint ? endpoint->id : 0;
}

// Nobody announces a new name, so that it is read whenever somebody asks.
std::optional<MidiObject> AlsaPlatform::FindObject(MidiId id) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return std::nullopt;
    ReadEndpoints();
    const MidiObject* object = m_endpoints.FindObject(id);
    if (!object) return std::nullopt;
    return *object;
}

const EndpointTable::Endpoint* AlsaPlatform::Find(MidiId id, MidiDirection direction) const {
    const EndpointTable::Endpoint* endpoint = m_endpoints.Find(id);
    return endpoint && endpoint->direction == direction ? endpoint : nullptr;
}

int AlsaPlatform::ConnectSource(MidiId inputPort, MidiId source, void* sourceReference) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    if (!m_ports.IsInput(inputPort)) return kMidiUnknownPort;
    const EndpointTable::Endpoint* endpoint = Find(source, MidiDirection::Input);
    if (!endpoint) return kMidiUnknownEndpoint;
    m_ports.Connect(inputPort, source, sourceReference);
    if (ListenTo(*endpoint) >= 0) return kMidiOk;
    m_ports.Disconnect(inputPort, source);
    return kMidiSendFailed;
}

int AlsaPlatform::DisconnectSource(MidiId inputPort, MidiId source) {
    std::lock_guard guard(m_lock);
    const std::vector<MidiId> before = m_ports.ConnectedSources();
    const int result = m_ports.Disconnect(inputPort, source);
    if (m_state == State::Running) StopListening(before);
    return result;
}

void AlsaPlatform::ReadEndpoints() {
    const auto findCard = [](int card) -> std::optional<AlsaCard> {
        const std::optional<AlsaCardInfo> info = QueryAlsaCard(card);
        if (!info) return std::nullopt;
        return IdentifyAlsaCard(card, *info);
    };
    m_isStale = false;
    const std::vector<EndpointTable::Endpoint> before = m_endpoints.All();
    const std::vector<AlsaPort> ports = m_sequencer->Ports();
    if (!m_endpoints.Update(DescribeAlsaPorts(ports, m_sequencer->Client(), findCard, m_keys)))
        return ListenToConnected();
    for (const EndpointTable::Endpoint& each : before)
        if (!m_endpoints.Find(each.id)) m_sender.End(each.id);
    ListenToConnected();
}

void AlsaPlatform::ListenToConnected() {
    for (const MidiId source : m_ports.ConnectedSources())
        if (const auto* endpoint = Find(source, MidiDirection::Input)) ListenTo(*endpoint);
}

// Listening again to what is listened to already does no harm.
int AlsaPlatform::ListenTo(const EndpointTable::Endpoint& source) {
    const AlsaAddress address = AddressFromText(source.address);
    const std::optional<AlsaAddress> before = m_input.AddressOf(source.id);
    if (before && before != address) m_input.Disconnect(*before);
    if (before != address) m_input.Connect(address, source.id);
    const int result = m_sequencer->ConnectFrom(m_inputPort, address);
    if (result >= 0 || result == -EBUSY) return 0;
    m_input.Disconnect(address);
    return result;
}

// Leaves those of the sources `before` that nothing is connected to any more.
void AlsaPlatform::StopListening(const std::vector<MidiId>& before) {
    const std::vector<MidiId> connected = m_ports.ConnectedSources();
    for (const MidiId source : before) {
        const std::optional<AlsaAddress> address = m_input.AddressOf(source);
        if (!address || std::ranges::binary_search(connected, source)) continue;
        m_input.Disconnect(*address);
        m_sequencer->DisconnectFrom(m_inputPort, *address);
    }
}

} // namespace vm
