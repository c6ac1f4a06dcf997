// What a back end knows about one MIDI object, as plain records: devices hold entities, entities
// hold endpoints, and an endpoint may be described as connected to external objects.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace vm {

/// An endpoint, a port, or anything else a back end can be asked about. Never 0; stable for as long
/// as the object exists, and for the same hardware also after it was unplugged.
using MidiId = std::uint32_t;

enum class MidiDirection {
    Output, ///< destinations: what the process sends to
    Input,  ///< sources: what the process receives from
};

enum class MidiObjectKind {
    Device = 0,
    Entity = 1,
    Source = 2,
    Destination = 3,
    ExternalDevice = 16,
    ExternalEntity = 17,
    ExternalSource = 18,
    ExternalDestination = 19,
};

/// What the user has described as plugged into an endpoint: nothing, one identifier as a number, or
/// a list of them as bytes (32 bits each, big-endian).
using MidiConnections = std::variant<std::monostate, std::int32_t, std::vector<std::uint8_t>>;

/// Names are as the system reports them; an empty one is a missing one.
struct MidiDevice {
    std::string name;
    int entityCount = 1;
};

struct MidiEntity {
    std::string name;
    std::optional<MidiDevice> device = {};
};

struct MidiObject {
    MidiId id = 0;
    MidiObjectKind kind = MidiObjectKind::Device;
    std::string name = {};
    std::optional<MidiEntity> entity = {}; ///< of endpoints
    MidiConnections connections = {};      ///< of endpoints
};

} // namespace vm
