// Life of the MIDI system, devices and output. Input is in MidiInput.cpp.
#include <vmcore/midi/mmsystem.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

#include <vmcore/files/profile.h>

#include "core/log.h"
#include "midi/MidiSetup.h"
#include "midi/midisystem.h"
#include "midi/naming.h"
#include "platform/midi/backends.h"
#include "platform/midi/loopback/LoopbackPlatform.h"

// The records that hosts and plug-ins share with the library.
static_assert(offsetof(tagMIDIHDR, dwFlags) == 0 && offsetof(tagMIDIHDR, dwBytesRecorded) == 4);
static_assert(offsetof(tagMIDIHDR, dwBufferLength) == 8 && offsetof(tagMIDIHDR, dwReserved) == 12);
static_assert(offsetof(tagMIDIHDR, dwUser) == 16 && sizeof(tagMIDIHDR::dwUser) == 8);
static_assert(offsetof(tagMIDIHDR, lpData) == 24 && offsetof(tagMIDIHDR, sysexRequest) == 32);
static_assert(sizeof(MIDISysexSendRequest) == 40 && sizeof(tagMIDIHDR) == 72);
static_assert(offsetof(tagMIDIOUTCAPS, szPname) == 0 && sizeof(tagMIDIOUTCAPS::szPname) == 256);
static_assert(offsetof(tagMIDIINCAPS, szPname) == 0 && sizeof(tagMIDIINCAPS::szPname) == 256);

namespace vm {

namespace {

constexpr MMRESULT kNoOutputPort = 0xFFFFFFFF;
constexpr char kNoName[] = "<no ascii name>";

// As VMCORE_MIDI says. A loopback is what the user's set-up describes.
std::shared_ptr<MidiPlatform> CreateUsersPlatform() {
    std::shared_ptr<MidiPlatform> platform = CreateMidiPlatform();
    if (auto* loopback = dynamic_cast<LoopbackPlatform*>(platform.get()))
        loopback->DescribeBy([] { return Setup().Loopback(); });
    return platform;
}

std::shared_ptr<MidiPlatform> TakeNextPlatform() {
    {
        std::lock_guard guard(Midi().lock);
        if (Midi().next) return std::exchange(Midi().next, nullptr);
    }
    return CreateUsersPlatform();
}

MidiId CreateOutputPort(MidiPlatform* platform, const char* name) {
    return platform ? platform->CreateOutputPort(name) : 0;
}

void StartSystem(MidiPlatform* platform) {
    MidiSystem& midi = Midi();
    midi.MIDIClient = platform ? platform->Start("Velmora.Dravik.MidiPort") : 0;
    if (!midi.MIDIClient) Log(LogModule::Midi, "MIDIClientCreate failed");
    if (!platform || !platform->OpenNetworkSession())
        Log(LogModule::Midi, "Failed to create MIDINetworkSession");
    midi.MIDIOutPort = CreateOutputPort(platform, "MIDI OUT Port");
    if (!midi.MIDIOutPort) Log(LogModule::Midi, "MIDIOutputPortCreate for MIDI OUT failed");
    midi.MIDIThruPort = CreateOutputPort(platform, "MIDI Thru Port");
    if (!midi.MIDIThruPort) Log(LogModule::Midi, "MIDIOutputPortCreate for MIDI THRU failed");
}

bool IsUp() {
    std::lock_guard guard(Midi().lock);
    return Midi().platform != nullptr;
}

void Start() {
    Log(LogModule::Midi, "InitCoreMIDI - enter");
    InitProfileManager(); // the set-up is read through it, once somebody needs it
    Setup().Use(SetupFile::OfUser());
    std::shared_ptr<MidiPlatform> platform = TakeNextPlatform();
    StartSystem(platform.get());
    {
        std::lock_guard guard(Midi().lock);
        Midi().platform = std::move(platform);
    }
    Log(LogModule::Midi, "InitCoreMIDI - finished");
}

void DisposeOutputPort(MidiPlatform& platform, MidiId port, const char* failure) {
    if (port && platform.DisposePort(port) != kMidiOk) LogText(LogModule::Midi, failure);
}

int StopSystem(MidiPlatform& platform) {
    MidiSystem& midi = Midi();
    DisposeOutputPort(platform, midi.MIDIOutPort.exchange(0),
                      "MIDIPortDispose - error closing MIDIOutputPort");
    DisposeOutputPort(platform, midi.MIDIThruPort.exchange(0),
                      "MIDIPortDispose - error closing MIDIThruPort");
    midi.MIDIClient = 0;
    const int result = platform.Stop();
    ForgetInputPorts();
    return result;
}

UINT DeviceCount(MidiDirection direction) {
    return static_cast<UINT>(std::max(0, CurrentMidiPlatform()->Count(direction)));
}

void SetCapsName(char (&field)[MAXPNAMELEN], std::string_view name) {
    const std::size_t length = std::min<std::size_t>(name.size(), MAXPNAMELEN - 1);
    std::memcpy(field, name.data(), length);
    field[length] = '\0';
}

/// The name for the capabilities, empty when there is none; nothing for a bad index.
std::optional<std::string> DeviceName(MidiDirection direction, UINT index) {
    const std::shared_ptr<MidiPlatform> platform = CurrentMidiPlatform();
    const MidiId id = platform->EndpointAt(direction, index);
    const std::optional<MidiObject> endpoint = id ? platform->FindObject(id) : std::nullopt;
    if (!endpoint) return std::nullopt;
    return NameForCaps(
        Setup().NameOf(*endpoint, [&](MidiId other) { return platform->FindObject(other); }));
}

struct ShortPacket {
    std::array<std::uint8_t, 3> bytes;
    std::size_t length;
};

// One-byte real-time messages too are sent as three bytes: the packet has no other lengths.
ShortPacket BuildShortPacket(DWORD message) {
    const auto status = static_cast<std::uint8_t>(message);
    return {
        {status, static_cast<std::uint8_t>(message >> 8), static_cast<std::uint8_t>(message >> 16)},
        (status >> 5) == 6 ? 2U : 3U};
}

MMRESULT SendShort(MidiId port, HMIDIOUT handle, DWORD message) {
    const ShortPacket packet = BuildShortPacket(message);
    return static_cast<MMRESULT>(CurrentMidiPlatform()->Send(
        port, MidiReference(handle), std::span(packet.bytes).first(packet.length)));
}

// Hosts poll the flags from their own thread: the bit is the last thing written, and everything
// written before it is visible to whoever sees it.
void SetDone(MIDIHDR& header) {
    std::atomic_ref<DWORD>(header.dwFlags).fetch_or(MHDR_DONE, std::memory_order_release);
}

void SysexCompleted(MIDISysexSendRequest* request) {
    SetDone(*static_cast<MIDIHDR*>(request->reference));
}

// On the back end's thread.
void SendEnded(void* reference) {
    auto* request = static_cast<MIDISysexSendRequest*>(reference);
    request->complete = TRUE;
    request->completionProc(request); // the host may free the request in here
}

int SendRequest(MIDISysexSendRequest& request) {
    const std::shared_ptr<MidiPlatform> platform = CurrentMidiPlatform();
    Setup().ApplyOnce(*platform, request.destination);
    return platform->SendSysex(
        {request.destination, request.data, request.byteCount, SendEnded, &request});
}

void CopyText(char* target, const char* text) {
    if (target) std::memcpy(target, text, std::strlen(text) + 1);
}

} // namespace

void StartMidiWhenUsed() {
    Midi().startsWhenUsed = true;
}

void UseMidi() {
    if (Midi().startsWhenUsed.load(std::memory_order_acquire)) [[unlikely]]
        initCoreMIDI();
}

MidiSystem& Midi() {
    static MidiSystem* const s_midi = new MidiSystem; // leaked: MIDI threads may outlive everything
    return *s_midi;
}

std::shared_ptr<MidiPlatform> CurrentMidiPlatform() {
    UseMidi();
    static const auto* const s_none = // never started
        new std::shared_ptr<MidiPlatform>(std::make_shared<LoopbackPlatform>(LoopbackSetup{}));
    std::lock_guard guard(Midi().lock);
    return Midi().platform ? Midi().platform : *s_none;
}

void UseMidiPlatform(std::shared_ptr<MidiPlatform> platform) {
    std::lock_guard guard(Midi().lock);
    Midi().next = std::move(platform);
}

} // namespace vm

using namespace vm;

void initCoreMIDI() {
    const std::lock_guard starting(Midi().starting);
    if (!IsUp()) Start();
    Midi().startsWhenUsed.store(false, std::memory_order_release);
}

int destroyCoreMIDI() {
    Midi().startsWhenUsed = false;
    std::shared_ptr<MidiPlatform> platform;
    {
        std::lock_guard guard(Midi().lock);
        platform = std::exchange(Midi().platform, nullptr);
    }
    return platform ? StopSystem(*platform) : 0;
}

void AfxInitializeMIDISystem(bool) {}

UINT midiOutGetNumDevs() {
    return DeviceCount(MidiDirection::Output);
}
UINT midiInGetNumDevs() {
    return DeviceCount(MidiDirection::Input);
}

MMRESULT midiOutGetDevCaps(UINT index, tagMIDIOUTCAPS* caps, UINT) {
    if (!caps) return MMSYSERR_ERROR;
    const std::optional<std::string> name = DeviceName(MidiDirection::Output, index);
    if (!name || !name->empty()) SetCapsName(caps->szPname, name ? *name : kNoName);
    return name ? MMSYSERR_NOERROR : MMSYSERR_ERROR;
}

MMRESULT midiInGetDevCaps(UINT index, tagMIDIINCAPS* caps, UINT) {
    if (!caps) return MMSYSERR_ERROR;
    const std::optional<std::string> name = DeviceName(MidiDirection::Input, index);
    SetCapsName(caps->szPname, name && !name->empty() ? *name : kNoName);
    return name ? MMSYSERR_NOERROR : MMSYSERR_ERROR;
}

MMRESULT midiOutOpen(HMIDIOUT* handle, UINT index, DWORD_PTR, DWORD_PTR, DWORD) {
    if (!handle) return MMSYSERR_ERROR;
    const std::shared_ptr<MidiPlatform> platform = CurrentMidiPlatform();
    const MidiId destination = platform->EndpointAt(MidiDirection::Output, index);
    if (destination) Setup().Apply(*platform, destination);
    *handle = MidiHandle(destination);
    return destination ? MMSYSERR_NOERROR : MMSYSERR_ERROR;
}

MMRESULT midiOutClose(HMIDIOUT) {
    return MMSYSERR_NOERROR;
}

MMRESULT midiOutShortMsg(HMIDIOUT handle, DWORD message) {
    UseMidi();
    const MidiId port = Midi().MIDIOutPort;
    return port ? SendShort(port, handle, message) : kNoOutputPort;
}

MMRESULT midiThruShortMsg(HMIDIOUT handle, DWORD message) {
    UseMidi();
    SendShort(Midi().MIDIThruPort, handle, message);
    return MMSYSERR_NOERROR;
}

MMRESULT midiOutLongMsg(HMIDIOUT handle, LPMIDIHDR header, UINT) {
    if (!header) return MMSYSERR_NOERROR;
    std::atomic_ref<DWORD>(header->dwFlags).fetch_and(~MHDR_DONE, std::memory_order_relaxed);
    MIDISysexSendRequest& request = header->sysexRequest;
    request = {};
    request.destination = MidiReference(handle);
    request.data = header->lpData;
    request.byteCount = header->dwBufferLength;
    request.completionProc = SysexCompleted;
    request.reference = header;
    // A send that cannot begin is over: its host polls for the flag and must not do so for ever.
    if (const int result = SendRequest(request); result != kMidiOk) {
        Log(LogModule::Midi,
            "Error! A System Exclusive message of %u bytes could not be sent: result %d",
            header->dwBufferLength, result);
        SendEnded(&request);
    }
    return MMSYSERR_NOERROR;
}

MMRESULT midiOutSetMaxSysExSpeed(HMIDIOUT handle, DWORD bytesPerSecond) {
    return static_cast<MMRESULT>(
        Setup().SetHostSpeed(*CurrentMidiPlatform(), MidiReference(handle),
                             bytesPerSecond ? bytesPerSecond : kMidiWireSpeed));
}

MMRESULT midiOutReset(HMIDIOUT) {
    return MMSYSERR_NOERROR;
}
MMRESULT midiOutPrepareHeader(HMIDIOUT, LPMIDIHDR, UINT) {
    return MMSYSERR_NOERROR;
}
MMRESULT midiOutUnprepareHeader(HMIDIOUT, LPMIDIHDR, UINT) {
    return MMSYSERR_NOERROR;
}

MMRESULT midiOutGetErrorText(MMRESULT, char* text, UINT) {
    CopyText(text, "no MIDI OUT Error text available");
    return MMSYSERR_NOERROR;
}

MMRESULT midiInGetErrorText(MMRESULT, char* text, UINT) {
    CopyText(text, "no MIDI IN Error text available");
    return MMSYSERR_NOERROR;
}
