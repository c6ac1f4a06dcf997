// Input: the tables of open ports, and the way from a received packet list to the host's callback.
#include <vmcore/midi/mmsystem.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <condition_variable>
#include <cstring>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "core/log.h"
#include "midi/midisystem.h"
#include "midi/packetParser.h"

namespace vm {

namespace {

constexpr std::size_t kMaxInputPorts = 256;
// A callback may be waiting for the very thread that closes its port.
constexpr std::chrono::seconds kCloseLimit{2};

/// A receive call under way: on the receive thread's stack, linked while it runs.
struct Delivery {
    MidiId port = 0;
    std::thread::id thread = std::this_thread::get_id();
    DWORD_PTR instance = 0;
    std::vector<std::uint8_t>* accumulator = nullptr;
    std::atomic<bool> closed = false; ///< the port was closed meanwhile: no more callbacks
    Delivery* next = nullptr;
};

/// Position k of the first three tables describes one port. The accumulators belong to positions,
/// not to ports: closing a port moves the later ports down, but not the accumulators. An
/// accumulator's content is the receive thread's own.
struct InputPorts {
    std::mutex lock; // guards everything below
    std::condition_variable deliveryEnded;
    std::vector<MidiId> InPortList;
    std::vector<DWORD_PTR> InPortInstance;
    std::vector<MidiId> InPortEndpointRef;
    std::array<std::vector<std::uint8_t>, kMaxInputPorts> InPortSysXMsg;
    Delivery* deliveries = nullptr;
};
using Lock = std::unique_lock<std::mutex>;

InputPorts& Inputs() {
    static InputPorts* const s_inputs =
        new InputPorts; // leaked: receive threads may outlive everything
    return *s_inputs;
}

constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

std::size_t FindPort(const InputPorts& inputs, MidiId port) {
    const auto found = std::ranges::find(inputs.InPortList, port);
    return found == inputs.InPortList.end()
               ? kNotFound
               : static_cast<std::size_t>(found - inputs.InPortList.begin());
}

thread_local int t_receiveCalls = 0; // under way on this thread

/// Takes part in the list of deliveries for its life, if the port is open.
class RunningDelivery {
public:
    explicit RunningDelivery(MidiId port) {
        ++t_receiveCalls;
        InputPorts& inputs = Inputs();
        std::lock_guard guard(inputs.lock);
        const std::size_t position = FindPort(inputs, port);
        if (position == kNotFound) return;
        m_delivery.port = port;
        m_delivery.instance = inputs.InPortInstance[position];
        m_delivery.accumulator = &inputs.InPortSysXMsg[position];
        m_delivery.next = std::exchange(inputs.deliveries, &m_delivery);
    }

    ~RunningDelivery() {
        --t_receiveCalls;
        if (!IsKnownPort()) return;
        InputPorts& inputs = Inputs();
        std::lock_guard guard(inputs.lock);
        Delivery** link = &inputs.deliveries;
        while (*link != &m_delivery) link = &(*link)->next;
        *link = m_delivery.next;
        inputs.deliveryEnded.notify_all();
    }

    RunningDelivery(const RunningDelivery&) = delete;
    RunningDelivery& operator=(const RunningDelivery&) = delete;

    bool IsKnownPort() const { return m_delivery.port != 0; }
    const Delivery& Get() const { return m_delivery; }

private:
    Delivery m_delivery;
};

bool RunsElsewhere(const InputPorts& inputs, MidiId port) {
    for (const Delivery* each = inputs.deliveries; each; each = each->next)
        if (each->port == port && each->thread != std::this_thread::get_id()) return true;
    return false;
}

void EndDeliveries(Lock& lock, InputPorts& inputs, MidiId port) {
    for (Delivery* each = inputs.deliveries; each; each = each->next)
        if (each->port == port) each->closed = true;
    inputs.deliveryEnded.wait_for(lock, kCloseLimit, [&] { return !RunsElsewhere(inputs, port); });
}

/// From what the parser finds to the host's callback.
class CallbackSink final : public MidiEventSink {
public:
    CallbackSink(MIDIINPROC callback, const Delivery& delivery)
        : m_callback(callback), m_delivery(delivery) {}

    void ShortMessage(std::uint32_t message) override { Call(MIM_DATA, message); }

    void SysEx(std::span<const std::uint8_t> message) override {
        const auto copy = std::make_unique_for_overwrite<BYTE[]>(message.size());
        std::memcpy(copy.get(), message.data(), message.size());
        MIDIHDR header = {};
        header.dwBytesRecorded = header.dwBufferLength = static_cast<DWORD>(message.size());
        header.lpData = copy.get();
        Call(MIM_LONGDATA, reinterpret_cast<DWORD_PTR>(&header));
    }

    void Remark(MidiRemark remark, std::uint8_t byte) override {
        if (remark == MidiRemark::SysExNotEnded)
            Log(LogModule::Midi, "Error! F0 received before F7! SysX Message likely invalid");
        else if (MidiEventLogEnabled())
            LogEvent(remark, byte);
    }

private:
    void Call(UINT message, DWORD_PTR param1) {
        if (!m_delivery.closed)
            m_callback(MidiHandle(m_delivery.port), message, m_delivery.instance, param1, 0);
    }

    static void LogEvent(MidiRemark remark, std::uint8_t byte) {
        switch (remark) {
        case MidiRemark::StandardEvent:
            return Log(LogModule::Midi, "MyMIDICallbackProc - processing standard MIDI event");
        case MidiRemark::RealTimeEvent:
            return Log(LogModule::Midi, "MyMIDICallbackProc - processing MIDI real time event");
        case MidiRemark::EmbeddedSysEx:
            return Log(LogModule::Midi,
                       "MyMIDICallbackProc - received unexpected embedded SysEx - not processing");
        case MidiRemark::OutOfContextByte:
            return Log(LogModule::Midi, "MyMIDICallbackProc - out of context MIDI byte: %.2x",
                       byte);
        case MidiRemark::SysExPacket:
            return Log(LogModule::Midi, "Receiving SysEx packet");
        case MidiRemark::SysExNotEnded:
            return; // an error, logged in any case
        }
    }

    const MIDIINPROC m_callback;
    const Delivery& m_delivery;
};

// The receive procedure of every input port: `refCon` is the host's callback, `connRefCon` the
// port.
void MyMIDICallbackProc(std::span<const MidiPacket> packets, void* refCon, void* connRefCon) {
    if (MidiEventLogEnabled()) Log(LogModule::Midi, "MyMIDICallbackProc - received packet");
    const RunningDelivery running(MidiReference(connRefCon));
    if (!running.IsKnownPort()) {
        Log(LogModule::Midi,
            "Error! connRefCon doesn't match any stored inPort - no assigned SysXMsg buffer");
        Log(LogModule::Midi, "Error! can't reliably process incoming MIDI data for the port");
        return;
    }
    if (!refCon) {
        if (MidiEventLogEnabled())
            Log(LogModule::Midi, "MyMIDICallbackProc - refCon == 0 - Cancelling Operation!");
        return;
    }
    if (MidiEventLogEnabled())
        Log(LogModule::Midi, "MyMIDICallbackProc - received %d packets",
            static_cast<int>(packets.size()));
    CallbackSink sink(reinterpret_cast<MIDIINPROC>(refCon), running.Get());
    for (const MidiPacket& packet : packets) {
        if (running.Get().closed) return;
        if (packet.afterLoss) running.Get().accumulator->clear();
        ParseMidiPacket(packet.bytes, *running.Get().accumulator, sink);
    }
}

bool IsRoomForPort() {
    std::lock_guard guard(Inputs().lock);
    return Inputs().InPortList.size() < kMaxInputPorts;
}

void AppendPort(MidiId port, DWORD_PTR instance, MidiId source) {
    InputPorts& inputs = Inputs();
    std::lock_guard guard(inputs.lock);
    inputs.InPortList.push_back(port);
    inputs.InPortInstance.push_back(instance);
    inputs.InPortEndpointRef.push_back(source);
}

// Afterwards no callback of the port runs, unless this is called from it.
void RemovePort(MidiId port) {
    InputPorts& inputs = Inputs();
    Lock lock(inputs.lock);
    const std::size_t position = FindPort(inputs, port);
    if (position != kNotFound) {
        const auto offset = static_cast<std::ptrdiff_t>(position);
        inputs.InPortList.erase(inputs.InPortList.begin() + offset);
        inputs.InPortInstance.erase(inputs.InPortInstance.begin() + offset);
        inputs.InPortEndpointRef.erase(inputs.InPortEndpointRef.begin() + offset);
    }
    EndDeliveries(lock, inputs, port);
}

/// The source that the port is connected to; 0 when the port is not open.
MidiId SourceOfPort(MidiId port) {
    std::lock_guard guard(Inputs().lock);
    const std::size_t position = FindPort(Inputs(), port);
    return position == kNotFound ? 0 : Inputs().InPortEndpointRef[position];
}

MMRESULT OpenFailed(const char* line) {
    LogText(LogModule::Midi, line);
    return MMSYSERR_ERROR;
}

/// The port enters the tables before traffic can reach it.
bool ConnectPort(MidiPlatform& platform, MidiId port, UINT index, DWORD_PTR instance) {
    const MidiId source = platform.EndpointAt(MidiDirection::Input, index);
    if (!source) return false;
    AppendPort(port, instance, source);
    if (platform.ConnectSource(port, source, MidiHandle(port)) == kMidiOk) return true;
    RemovePort(port);
    return false;
}

} // namespace

bool IsMidiReceiveThread() {
    return t_receiveCalls > 0;
}

void ForgetInputPorts() {
    InputPorts& inputs = Inputs();
    std::lock_guard guard(inputs.lock);
    inputs.InPortList.clear();
    inputs.InPortInstance.clear();
    inputs.InPortEndpointRef.clear();
    bool inUse = false;
    for (Delivery* each = inputs.deliveries; each; each = each->next) {
        each->closed = true;
        inUse = inUse || each->thread != std::this_thread::get_id();
    }
    if (inUse) return; // a callback that would not end still owns its accumulator
    for (std::vector<std::uint8_t>& accumulator : inputs.InPortSysXMsg) accumulator.clear();
}

} // namespace vm

using namespace vm;

MMRESULT midiInOpen(HMIDIIN* handle, UINT index, DWORD_PTR callback, DWORD_PTR instance, DWORD) {
    if (!handle) return MMSYSERR_ERROR;
    *handle = nullptr;
    UseMidi();
    if (!Midi().MIDIClient) return OpenFailed("midiInOpen failure - MIDIClient not assigned");
    const std::shared_ptr<MidiPlatform> platform = CurrentMidiPlatform();
    void* const reference = reinterpret_cast<void*>(callback);
    const MidiId port =
        IsRoomForPort() ? platform->CreateInputPort("MIDI IN Port", MyMIDICallbackProc, reference)
                        : 0;
    if (!port) return OpenFailed("midiInOpen error - MIDIInputPortCreate failed");
    *handle = MidiHandle(port);
    if (!ConnectPort(*platform, port, index, instance)) {
        *handle = nullptr;
        Log(LogModule::Midi, "midiInOpen error - MIDIPortConnectSource failed");
        platform->DisposePort(port);
        return MMSYSERR_ERROR;
    }
    Log(LogModule::Midi, "midiInOpen - successfully opened MIDI IN port %d",
        static_cast<int>(index));
    return MMSYSERR_NOERROR;
}

MMRESULT midiInClose(HMIDIIN handle) {
    const MidiId port = MidiReference(handle);
    const MidiId source = SourceOfPort(port);
    if (!source) {
        if (handle)
            Log(LogModule::Midi,
                "midiInClose error - request to close port which is already closed");
        return MMSYSERR_NOERROR;
    }
    const std::shared_ptr<MidiPlatform> platform = CurrentMidiPlatform();
    Log(LogModule::Midi, "calling MIDIPortDisconnectSource");
    platform->DisconnectSource(port, source);
    Log(LogModule::Midi, "calling MIDIPortDispose");
    platform->DisposePort(port);
    RemovePort(port);
    return MMSYSERR_NOERROR;
}

MMRESULT midiInStart(HMIDIIN) {
    return MMSYSERR_NOERROR;
}
MMRESULT midiInStop(HMIDIIN) {
    return MMSYSERR_NOERROR;
}
MMRESULT midiInReset(HMIDIIN) {
    return MMSYSERR_NOERROR;
}

MMRESULT midiInPrepareHeader(HMIDIIN, LPMIDIHDR header, UINT) {
    if (header) std::atomic_ref<DWORD>(header->dwFlags).fetch_or(MHDR_DONE);
    return MMSYSERR_NOERROR;
}

MMRESULT midiInUnprepareHeader(HMIDIIN, LPMIDIHDR, UINT) {
    return MMSYSERR_NOERROR;
}
MMRESULT midiInAddBuffer(HMIDIIN, LPMIDIHDR, UINT) {
    return MMSYSERR_NOERROR;
}
