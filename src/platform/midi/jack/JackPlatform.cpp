// What programs call. The manager thread is in JackPlatformManager.cpp.
#include "platform/midi/jack/JackPlatform.h"

#include <cstdlib>

#include "core/log.h"

namespace vm {

namespace {

constexpr MidiId kClient = 1;
// A server may hang, and everything that asks it for something with it.
constexpr std::chrono::seconds kStartLimit{3};
constexpr std::chrono::seconds kSendLimit{2};
constexpr std::chrono::milliseconds kLookLimit{100};
constexpr std::chrono::seconds kStopLimit{3}; // closing has a limit of two
constexpr std::size_t kDeliverAtOnce = 64 * 1024;

// PipeWire rewrites messages unless it is told otherwise before the first connection.
void KeepBytesAsTheyAre() {
    setenv("PIPEWIRE_PROPS", "{ jack.fix-midi-events = false }", 0);
}

} // namespace

JackPlatform::JackPlatform()
    : m_sender({[this](MidiId destination, std::span<const std::uint8_t> piece, SysexMark& end) {
                    return WriteSysexPiece(destination, piece, end);
                },
                [this](MidiId destination, const SysexMark& end) {
                    return HasSysexLeft(destination, end);
                }},
               JackOutput::kLargestPiece) {}

bool JackPlatform::IsAvailable() {
    const JackLibrary* const jack = JackLibrary::Get();
    return jack && JackServerAnswers(*jack);
}

MidiId JackPlatform::Start(const char* clientName) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Idle) return 0;
    KeepBytesAsTheyAre();
    m_jack = JackLibrary::Get();
    m_clientName = clientName;
    if (!m_jack) return 0;
    if (!m_receiver.Start([self = shared_from_this()] { self->Receive(); })) return 0;
    m_state = State::Starting;
    if (m_manager.Start([self = shared_from_this()] { self->Manage(); })) return kClient;
    m_state = State::Stopped;
    m_arrived->Post();
    return 0;
}

int JackPlatform::Stop() {
    m_sender.Stop();
    {
        std::lock_guard guard(m_lock);
        if (!IsUp()) return kMidiNotRunning;
        m_state = State::Stopped;
        m_ports.Clear();
        for (const auto& [id, output] : m_outputs) output->Close();
        m_managerWoken.notify_all();
        m_changed.notify_all();
    }
    m_arrived->Post();
    m_receiver.End();
    m_manager.End(kStopLimit); // if left behind, it holds this object until the server answers
    return kMidiOk;
}

MidiId JackPlatform::CreateOutputPort(const char*) {
    std::lock_guard guard(m_lock);
    return IsUp() ? m_ports.CreateOutput() : 0;
}

MidiId JackPlatform::CreateInputPort(const char*, MidiReceive receive, void* portReference) {
    std::lock_guard guard(m_lock);
    return IsUp() ? m_ports.CreateInput(receive, portReference) : 0;
}

int JackPlatform::DisposePort(MidiId port) {
    const int result = m_ports.Dispose(port);
    WakeManager();
    return result;
}

// The library's notice of a new port may still be on its way: the manager looks again.
int JackPlatform::Count(MidiDirection direction) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return 0;
    AskManager(lock, kLookLimit);
    return m_endpoints.Count(direction);
}

MidiId JackPlatform::EndpointAt(MidiDirection direction, std::uint32_t index) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return 0;
    const EndpointTable::Endpoint* endpoint = m_endpoints.At(direction, index);
    return endpoint ? endpoint->id : 0;
}

std::optional<MidiObject> JackPlatform::FindObject(MidiId id) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return std::nullopt;
    const MidiObject* object = m_endpoints.FindObject(id);
    return object ? std::optional(*object) : std::nullopt;
}

int JackPlatform::Send(MidiId outputPort, MidiId destination, std::span<const std::uint8_t> bytes) {
    Output output;
    {
        Lock lock(m_lock);
        if (!WaitForStart(lock)) return kMidiNotRunning;
        if (!m_ports.IsOutput(outputPort)) return kMidiUnknownPort;
        output = FindOutput(destination);
        const int result = output ? kMidiOk : OpenOutput(lock, destination, output);
        if (result != kMidiOk) return result;
    }
    return output->Send(MessageInPacket(bytes), kSendLimit);
}

int JackPlatform::SendSysex(const MidiSysexSend& send) {
    const int result = CheckDestination(send.destination);
    return result == kMidiOk ? m_sender.Send(send) : result;
}

int JackPlatform::SetMaxSysexSpeed(MidiId destination, std::uint32_t bytesPerSecond) {
    const int result = CheckDestination(destination);
    return result == kMidiOk ? m_sender.SetSpeed(destination, bytesPerSecond) : result;
}

std::uint32_t JackPlatform::MaxSysexSpeed(MidiId destination) {
    return m_sender.Speed(destination);
}

int JackPlatform::SetSysexGap(MidiId destination, SysexGap gap) {
    return m_sender.SetGap(destination, gap);
}

int JackPlatform::ConnectSource(MidiId inputPort, MidiId source, void* sourceReference) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    if (!m_ports.IsInput(inputPort)) return kMidiUnknownPort;
    if (!IsEndpoint(source, MidiDirection::Input)) return kMidiUnknownEndpoint;
    int result = m_ports.Connect(inputPort, source, sourceReference);
    if (result != kMidiOk) return result;
    result = OpenInput(lock, source);
    if (result != kMidiOk) m_ports.Disconnect(inputPort, source);
    return result;
}

int JackPlatform::DisconnectSource(MidiId inputPort, MidiId source) {
    const int result = m_ports.Disconnect(inputPort, source);
    WakeManager();
    return result;
}

// A server that hangs while it is connected to counts as one that is not there.
bool JackPlatform::WaitForStart(Lock& lock) {
    if (m_state == State::Starting) {
        m_changed.wait_for(lock, kStartLimit, [this] { return m_state != State::Starting; });
        if (m_state == State::Starting) m_state = State::Running;
    }
    return m_state == State::Running;
}

bool JackPlatform::IsEndpoint(MidiId id, MidiDirection direction) const {
    const EndpointTable::Endpoint* endpoint = m_endpoints.Find(id);
    return endpoint && endpoint->direction == direction;
}

int JackPlatform::CheckDestination(MidiId id) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    return IsEndpoint(id, MidiDirection::Output) ? kMidiOk : kMidiUnknownEndpoint;
}

void JackPlatform::WakeManager() {
    Lock lock(m_lock);
    WakeManager(lock);
}

void JackPlatform::WakeManager(const Lock&) {
    m_isManagerWoken = true;
    m_managerWoken.notify_all();
}

// Waits until the manager has gone once through everything there is to do.
void JackPlatform::AskManager(Lock& lock, std::chrono::milliseconds limit) {
    const std::uint64_t asked = ++m_asked;
    WakeManager(lock);
    m_changed.wait_for(lock, limit, [&] { return m_served >= asked || !IsUp(); });
}

// Waits until the manager has opened our port for the endpoint, or has tried for long.
void JackPlatform::AwaitPort(Lock& lock, MidiId endpoint) {
    const std::uint64_t asked = ++m_asked;
    WakeManager(lock);
    m_changed.wait_for(lock, kOpenLimit, [&] {
        const auto refusal = m_refusals.find(endpoint);
        const bool mayComeYet = refusal != m_refusals.end() && refusal->second.MayEnd();
        return !IsUp() || (m_served >= asked && !mayComeYet);
    });
}

JackPlatform::Output JackPlatform::FindOutput(MidiId destination) const {
    const auto found = m_outputs.find(destination);
    return found == m_outputs.end() ? nullptr : found->second;
}

int JackPlatform::OpenOutput(Lock& lock, MidiId destination, Output& output) {
    if (!IsEndpoint(destination, MidiDirection::Output)) return kMidiUnknownEndpoint;
    m_wanted.insert(destination);
    AwaitPort(lock, destination);
    if (!IsUp()) return kMidiNotRunning;
    output = FindOutput(destination);
    if (output) return kMidiOk;
    return IsEndpoint(destination, MidiDirection::Output) ? kMidiSendFailed : kMidiUnknownEndpoint;
}

int JackPlatform::OpenInput(Lock& lock, MidiId source) {
    const auto found = m_inputs.find(source);
    if (found != m_inputs.end()) {
        found->second.unusedSince.reset();
        return kMidiOk;
    }
    AwaitPort(lock, source);
    if (!IsUp()) return kMidiNotRunning;
    if (m_inputs.contains(source)) return kMidiOk;
    return IsEndpoint(source, MidiDirection::Input) ? kMidiSendFailed : kMidiUnknownEndpoint;
}

// These two are on the sender's thread, which must not wait.
int JackPlatform::WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece,
                                  SysexMark& end) {
    Output output;
    {
        Lock guard(m_lock);
        if (m_state != State::Running) return kMidiNotRunning;
        output = FindOutput(destination);
        if (!output) {
            if (!IsEndpoint(destination, MidiDirection::Output)) return kMidiUnknownEndpoint;
            if (m_wanted.insert(destination).second) WakeManager(guard);
            return kMidiBusy;
        }
    }
    return output->WritePiece(piece, end);
}

int JackPlatform::HasSysexLeft(MidiId destination, const SysexMark& end) {
    std::lock_guard guard(m_lock);
    if (end.connection == 0) return kMidiOk; // of an empty message
    const Output output = FindOutput(destination);
    return output ? output->HasLeft(end) : kMidiUnknownEndpoint;
}

void JackPlatform::Receive() {
    std::shared_ptr<JackInbox> inbox;
    for (;;) {
        m_arrived->Wait();
        if (inbox) Drain(*inbox);
        std::lock_guard guard(m_lock);
        if (!IsUp()) return;
        if (inbox == m_inbox) continue;
        inbox = m_inbox; // of another server
        m_arrived->Post();
    }
}

void JackPlatform::Drain(JackInbox& inbox) {
    while (const auto record = inbox.ring.Front()) {
        Take(*record);
        inbox.ring.Pop();
        if (m_delivering.Bytes().size() < kDeliverAtOnce) continue;
        m_ports.Deliver(m_delivering);
        m_delivering.Clear();
    }
    m_ports.Deliver(m_delivering);
    m_delivering.Clear();
    if (!inbox.overflowed || m_isOverflowLogged) return;
    m_isOverflowLogged = true;
    Log(LogModule::Midi, "Error! MIDI input was lost: the program has not taken it in time");
}

void JackPlatform::Take(const RecordRing::Record& record) {
    if (record.bytes.empty()) return m_filter.Lost(record.tag);
    const TornSysexFilter::Verdict verdict = m_filter.Judge(record.tag, record.bytes);
    if (verdict == TornSysexFilter::Verdict::Drop) return;
    m_delivering.Append(record.tag, record.bytes,
                        verdict == TornSysexFilter::Verdict::DeliverAfterLoss
                            ? MidiTraffic::Loss::Before
                            : MidiTraffic::Loss::None);
}

} // namespace vm
