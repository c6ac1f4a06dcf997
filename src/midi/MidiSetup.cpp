// What was read is kept until the file changes; what was applied, as long as the back end lives.
#include "midi/MidiSetup.h"

#include <utility>

#include "core/log.h"
#include "midi/loopbackSetup.h"
#include "midi/midisystem.h"

namespace vm {

MidiSetup& Setup() {
    static MidiSetup* const s_setup = new MidiSetup; // leaked: MIDI threads may outlive everything
    return *s_setup;
}

void MidiSetup::Use(SetupFile file) {
    std::scoped_lock guard(m_reading, m_lock);
    m_file = std::move(file);
    m_ports.clear();
    m_applied.clear();
}

void MidiSetup::Refresh() {
    if (m_file.HasChanged()) ++m_generation;
}

SetupLookUp MidiSetup::LookUp() const {
    return [this](const std::string& section, const std::string& key) {
        return m_file.LookUp(section, key);
    };
}

std::optional<MidiSetup::KnownPort> MidiSetup::Known(const std::string& key) {
    std::lock_guard guard(m_lock);
    const auto known = m_ports.find(key);
    return known == m_ports.end() ? std::nullopt : std::optional(known->second);
}

std::optional<MidiSetup::KnownPort> MidiSetup::PortOf(const MidiObject& endpoint) {
    const bool isOutput = endpoint.kind == MidiObjectKind::Destination;
    const std::string name = MidiEndpointName(endpoint, MidiNameStyle::Internal);
    const std::string key = name + (isOutput ? "|out" : "|in");
    if (IsMidiReceiveThread()) return Known(key);
    std::unique_lock reading(m_reading);
    Refresh();
    const auto known = Known(key);
    if (known && known->generation == m_generation) return known;
    SetupProblems problems;
    const MidiDirection direction = isOutput ? MidiDirection::Output : MidiDirection::Input;
    const KnownPort port{m_generation, ReadPortSetup(LookUp(), name, direction, problems)};
    {
        std::lock_guard guard(m_lock);
        m_ports[key] = port;
    }
    const std::string path = m_file.Path();
    reading.unlock();
    LogOnce(problems, path);
    return port;
}

std::string MidiSetup::NameOf(const MidiObject& endpoint, const MidiObjectFinder& find) {
    const std::optional<KnownPort> known = PortOf(endpoint);
    return NameWithSetup(endpoint, known ? known->port : PortSetup(), find);
}

void MidiSetup::Apply(MidiPlatform& platform, MidiId destination) {
    const std::optional<MidiObject> endpoint = platform.FindObject(destination);
    if (!endpoint || endpoint->kind != MidiObjectKind::Destination) return;
    const std::optional<KnownPort> known = PortOf(*endpoint);
    if (!known) return;
    std::lock_guard guard(m_lock); // to the end: a host's own speed must not be overwritten
    Applied& applied = m_applied[destination];
    if (Give(platform, destination, applied, known->port)) applied.generation = known->generation;
}

bool MidiSetup::Give(MidiPlatform& platform, MidiId destination, Applied& applied,
                     const PortSetup& port) {
    const std::uint32_t speed = port.speed.value_or(kMidiWireSpeed);
    if (!applied.isHostsSpeed && speed != applied.speed) {
        if (platform.SetMaxSysexSpeed(destination, speed) != kMidiOk) return false;
        applied.speed = speed;
    }
    if (port.gap != applied.gap) {
        if (platform.SetSysexGap(destination, port.gap) != kMidiOk) return false;
        applied.gap = port.gap;
    }
    return true;
}

void MidiSetup::ApplyOnce(MidiPlatform& platform, MidiId destination) {
    if (!IsApplied(destination)) Apply(platform, destination);
}

bool MidiSetup::IsApplied(MidiId destination) {
    const auto generation = [&]() -> std::optional<std::uint64_t> {
        std::lock_guard guard(m_lock);
        const auto applied = m_applied.find(destination);
        return applied == m_applied.end() ? std::nullopt : applied->second.generation;
    };
    if (IsMidiReceiveThread()) return generation().has_value();
    std::lock_guard reading(m_reading);
    Refresh();
    return generation() == m_generation;
}

int MidiSetup::SetHostSpeed(MidiPlatform& platform, MidiId destination,
                            std::uint32_t bytesPerSecond) {
    platform.FindObject(destination); // waits for the start, without the lock
    std::lock_guard guard(m_lock);
    const int result = platform.SetMaxSysexSpeed(destination, bytesPerSecond);
    if (result == kMidiOk) m_applied[destination].isHostsSpeed = true;
    return result;
}

std::optional<LoopbackSetup> MidiSetup::Loopback() {
    std::unique_lock reading(m_reading);
    Refresh();
    SetupProblems problems;
    std::optional<LoopbackSetup> loopback = ReadLoopbackSetup(LookUp(), problems);
    const std::string path = m_file.Path();
    reading.unlock();
    LogOnce(problems, path);
    return loopback;
}

// With no lock held: the log may lead into the host.
void MidiSetup::LogOnce(const SetupProblems& problems, const std::string& path) {
    for (const SetupProblem& each : problems) {
        const std::string line =
            "Warning! " + path + ": [" + each.section + "] " + each.key + ": " + each.text;
        std::unique_lock lock(m_lock);
        if (!m_logged.insert(line).second) continue;
        lock.unlock();
        LogText(LogModule::Midi, line);
    }
}

} // namespace vm
