// Sending. Every destination is addressed directly, so that its errors come back; a hardware port is
// open only while somebody is connected to it, so that we connect to each destination once.
#include <cerrno>
#include <thread>

#include "platform/midi/alsa/AlsaPlatform.h"

namespace vm {

namespace {

// How long a short message waits for a program that does not read, in milliseconds.
constexpr int kShortPatience = 20;

constexpr int ResultOf(int sequencerResult) {
    switch (sequencerResult) {
    case -EAGAIN:
        return kMidiBusy;
    case -ENOENT:
    case -ENODEV:
        return kMidiUnknownEndpoint;
    default:
        return sequencerResult < 0 ? kMidiSendFailed : kMidiOk;
    }
}

} // namespace

int AlsaPlatform::Send(MidiId outputPort, MidiId destination, std::span<const std::uint8_t> bytes) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    if (!m_ports.IsOutput(outputPort)) return kMidiUnknownPort;
    const std::optional<snd_seq_event_t> event = EventFromShortMessage(bytes);
    if (!event) return kMidiBadArgument;
    for (int waited = 0; waited < kShortPatience; ++waited) {
        if (m_state != State::Running) return kMidiNotRunning;
        const int result = Write(outputPort, destination, *event, 0);
        if (result != kMidiBusy) return result;
        lock.unlock();
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
        lock.lock();
    }
    return kMidiSendFailed;
}

int AlsaPlatform::SendSysex(const MidiSysexSend& send) {
    const int result = CheckDestination(send.destination);
    return result == kMidiOk ? m_sender.Send(send) : result;
}

int AlsaPlatform::SetMaxSysexSpeed(MidiId destination, std::uint32_t bytesPerSecond) {
    const int result = CheckDestination(destination);
    return result == kMidiOk ? m_sender.SetSpeed(destination, bytesPerSecond) : result;
}

std::uint32_t AlsaPlatform::MaxSysexSpeed(MidiId destination) {
    return m_sender.Speed(destination);
}

int AlsaPlatform::SetSysexGap(MidiId destination, SysexGap gap) {
    return m_sender.SetGap(destination, gap);
}

int AlsaPlatform::CheckDestination(MidiId id) {
    Lock lock(m_lock);
    if (!WaitForStart(lock)) return kMidiNotRunning;
    return Find(id, MidiDirection::Output) ? kMidiOk : kMidiUnknownEndpoint;
}

// The messages of the sender have no port of their own: they leave through the first.
int AlsaPlatform::WriteSysexPiece(MidiId destination, std::span<const std::uint8_t> piece) {
    std::lock_guard guard(m_lock);
    if (m_state != State::Running) return kMidiNotRunning;
    if (m_outputs.empty()) return kMidiUnknownPort;
    const auto now = std::chrono::steady_clock::now();
    if (!m_pace.IsFree(destination, now)) return kMidiBusy;
    const MidiId port = m_outputs.begin()->first;
    const int result = Write(port, destination, EventFromSysex(piece), piece.size());
    if (result == kMidiOk) m_pace.Count(destination, piece.size(), now);
    return result;
}

int AlsaPlatform::Write(MidiId outputPort, MidiId destination, const snd_seq_event_t& event,
                        std::size_t sysexBytes) {
    const EndpointTable::Endpoint* endpoint = Find(destination, MidiDirection::Output);
    if (!endpoint) return kMidiUnknownEndpoint;
    const int port = SequencerPort(outputPort);
    if (port < 0) return kMidiSendFailed;
    const AlsaAddress address = AddressFromText(endpoint->address);
    const std::optional<AlsaInputPool> pool = m_sequencer->InputPoolOf(address.client);
    if (!pool) return kMidiUnknownEndpoint;
    if (!HasRoom(*pool, sysexBytes)) return kMidiBusy;
    const int result = WriteTo(port, address, event);
    // Of many that listen to a port without a queue, one has lost it. The others have it.
    if (result == -EAGAIN && pool->size == 0) return kMidiOk;
    return ResultOf(result);
}

int AlsaPlatform::WriteTo(int port, AlsaAddress destination, const snd_seq_event_t& event) {
    const bool isNew = m_routes.insert({port, destination}).second;
    if (isNew) m_sequencer->ConnectTo(port, destination);
    const int result = m_sequencer->Send(port, destination, event);
    if (result != -ENODEV || isNew) return result;
    m_sequencer->ConnectTo(port, destination); // somebody has taken us apart
    return m_sequencer->Send(port, destination, event);
}

int AlsaPlatform::SequencerPort(MidiId outputPort) {
    const auto output = m_outputs.find(outputPort);
    if (output == m_outputs.end()) return -ENOENT;
    int& port = output->second.port;
    if (port < 0) port = m_sequencer->CreateOutputPort(output->second.name.c_str());
    return port;
}

} // namespace vm
