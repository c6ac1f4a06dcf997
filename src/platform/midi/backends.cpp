// The list of back ends and the choice among them.
#include "platform/midi/backends.h"

#include <cstdlib>

#include "core/log.h"
#include "platform/midi/alsa/AlsaPlatform.h"
#include "platform/midi/jack/JackPlatform.h"
#include "platform/midi/loopback/LoopbackPlatform.h"

namespace vm {

namespace {

constexpr MidiBackend kBackends[] = {
    {"alsa", AlsaPlatform::IsAvailable,
     []() -> std::shared_ptr<MidiPlatform> { return std::make_shared<AlsaPlatform>(); }},
    {"jack", &JackPlatform::IsAvailable,
     []() -> std::shared_ptr<MidiPlatform> { return std::make_shared<JackPlatform>(); }},
    {"loopback", [] { return true; },
     []() -> std::shared_ptr<MidiPlatform> { return std::make_shared<LoopbackPlatform>(); }},
};

const MidiBackend* FirstAvailable(std::span<const MidiBackend> backends) {
    for (const MidiBackend& backend : backends)
        if (backend.available()) return &backend;
    return nullptr;
}

} // namespace

std::span<const MidiBackend> MidiBackends() {
    return kBackends;
}

const MidiBackend* ChooseMidiBackend(std::span<const MidiBackend> backends,
                                     std::string_view wanted) {
    for (const MidiBackend& backend : backends)
        if (backend.name == wanted) return &backend;
    const MidiBackend* chosen = FirstAvailable(backends);
    if (!wanted.empty())
        Log(LogModule::Midi, "Warning! VMCORE_MIDI names no MIDI back end: \"%.*s\" - using %s",
            static_cast<int>(wanted.size()), wanted.data(), chosen ? chosen->name : "none");
    return chosen;
}

std::shared_ptr<MidiPlatform> CreateMidiPlatform() {
    const char* wanted = std::getenv("VMCORE_MIDI");
    const MidiBackend* backend = ChooseMidiBackend(MidiBackends(), wanted ? wanted : "");
    return backend ? backend->create() : nullptr;
}

} // namespace vm
