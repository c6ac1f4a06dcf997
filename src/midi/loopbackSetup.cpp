// From the sections [Loopback], [Loopback Device 1], [Loopback Port 1] ... to objects and wires.
#include "midi/loopbackSetup.h"

#include <algorithm>
#include <map>

#include "files/iniFormat.h"

namespace vm {

namespace {

constexpr SetupRange kNumbers{1, 99};
constexpr SetupRange kEntityCounts{0, 999};
constexpr const char* kPortKeys[] = {"Name", "Entity", "Device", "Connected", "ConnectedNumber"};

struct Kind {
    const char* name;
    MidiObjectKind kind;
};
constexpr Kind kKinds[] = {
    {"out", MidiObjectKind::Destination},
    {"in", MidiObjectKind::Source},
    {"external out", MidiObjectKind::ExternalDestination},
    {"external in", MidiObjectKind::ExternalSource},
    {"external device", MidiObjectKind::ExternalDevice},
};

std::string Quoted(const std::string& text) {
    return '"' + text + '"';
}

class LoopbackReader {
public:
    LoopbackReader(const SetupLookUp& lookUp, SetupProblems& problems)
        : m_lookUp(lookUp), m_problems(problems) {}

    std::optional<LoopbackSetup> Read();

private:
    SetupSection Section(const std::string& name) const { return {m_lookUp, {name}, m_problems}; }
    void ReadDevice(std::uint32_t number);
    void ReadPort(std::uint32_t number);
    std::optional<MidiObjectKind> ReadKind(const SetupSection& port) const;
    std::optional<MidiEntity> ReadEntity(const SetupSection& port) const;
    MidiConnections ReadConnections(const SetupSection& port) const;
    void ReadWire(const SetupSection& section, const std::string& text);
    bool Has(MidiId id, MidiObjectKind kind) const;

    const SetupLookUp& m_lookUp;
    SetupProblems& m_problems;
    std::map<std::uint32_t, MidiDevice> m_devices;
    LoopbackSetup m_setup;
};

std::optional<LoopbackSetup> LoopbackReader::Read() {
    for (std::uint32_t i = kNumbers.least; i <= kNumbers.most; ++i) ReadDevice(i);
    for (std::uint32_t i = kNumbers.least; i <= kNumbers.most; ++i) ReadPort(i);
    const SetupSection section = Section("Loopback");
    const auto wires = section.List("Wires");
    if (!wires && m_setup.objects.empty()) return std::nullopt;
    if (wires)
        for (const std::string& wire : *wires) ReadWire(section, wire);
    return std::move(m_setup);
}

void LoopbackReader::ReadDevice(std::uint32_t number) {
    const SetupSection section = Section("Loopback Device " + std::to_string(number));
    const auto name = section.Text("Name");
    const auto entities = section.Number("Entities", kEntityCounts);
    if (name || entities)
        m_devices[number] = {name.value_or(""), static_cast<int>(entities.value_or(1))};
}

void LoopbackReader::ReadPort(std::uint32_t number) {
    const SetupSection section = Section("Loopback Port " + std::to_string(number));
    if (const auto kind = ReadKind(section))
        m_setup.objects.push_back({number, *kind, section.Text("Name").value_or(""),
                                   ReadEntity(section), ReadConnections(section)});
}

std::optional<MidiObjectKind> LoopbackReader::ReadKind(const SetupSection& port) const {
    const auto text = port.Text("Kind");
    for (const Kind& each : kKinds)
        if (text && EqualIgnoringCase(*text, each.name)) return each.kind;
    if (text)
        port.Refuse("Kind", Quoted(*text) + " is neither out, in, external out, external in nor "
                                            "external device");
    else if (std::ranges::any_of(kPortKeys,
                                 [&](const char* key) { return port.Text(key).has_value(); }))
        port.Refuse("Kind", "is missing");
    return std::nullopt;
}

std::optional<MidiEntity> LoopbackReader::ReadEntity(const SetupSection& port) const {
    const auto name = port.Text("Entity");
    const auto number = port.Number("Device", kNumbers);
    const auto device = number ? m_devices.find(*number) : m_devices.end();
    if (number && device == m_devices.end())
        port.Refuse("Device", "there is no [Loopback Device " + std::to_string(*number) + "]");
    if (device != m_devices.end()) return MidiEntity{name.value_or(""), device->second};
    return name ? std::optional(MidiEntity{*name}) : std::nullopt;
}

// A connection to a port that is not described is one to an object that has gone.
MidiConnections LoopbackReader::ReadConnections(const SetupSection& port) const {
    if (const auto number = port.Number("ConnectedNumber", kNumbers))
        return static_cast<std::int32_t>(*number);
    const auto list = port.List("Connected");
    if (!list) return {};
    std::vector<std::uint8_t> bytes;
    for (const std::string& text : *list) {
        if (const auto number = SetupNumber(text, kNumbers))
            bytes.insert(bytes.end(), {0, 0, 0, static_cast<std::uint8_t>(*number)});
        else
            port.Refuse("Connected", Quoted(text) + " is no number of a port");
    }
    return bytes;
}

void LoopbackReader::ReadWire(const SetupSection& section, const std::string& text) {
    const std::size_t arrow = std::min(text.find('>'), text.size());
    const auto end = [](std::string_view part) {
        return SetupNumber(TrimBlanks(part), kNumbers).value_or(0);
    };
    const std::string_view whole = text;
    const MidiId from = end(whole.substr(0, arrow));
    const MidiId to = end(whole.substr(std::min(arrow + 1, whole.size())));
    if (Has(from, MidiObjectKind::Destination) && Has(to, MidiObjectKind::Source))
        m_setup.wires.push_back({from, to});
    else
        section.Refuse("Wires", Quoted(text) + " does not lead from a port of kind out to one of "
                                               "kind in, like \"1>2\"");
}

bool LoopbackReader::Has(MidiId id, MidiObjectKind kind) const {
    return std::ranges::any_of(m_setup.objects, [=](const MidiObject& each) {
        return each.id == id && each.kind == kind;
    });
}

} // namespace

std::optional<LoopbackSetup> ReadLoopbackSetup(const SetupLookUp& lookUp, SetupProblems& problems) {
    return LoopbackReader(lookUp, problems).Read();
}

} // namespace vm
