// The entries of a port's section, and its name with them.
#include "midi/portSetup.h"

#include <limits>

namespace vm {

namespace {

// "[Port ", "|out" and "]" stand in the same line of 255 characters.
constexpr std::size_t kLongestName = 244;

constexpr SetupRange kSpeeds{1, std::numeric_limits<std::uint32_t>::max()};
constexpr SetupRange kChunkSizes{1, std::numeric_limits<std::int32_t>::max()};
constexpr SetupRange kChunkDelays{0, 10'000};

bool ContinuesCharacter(char c) {
    return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

// A delay without a size comes at the end of a message only, as if chunks had no limit.
SysexGap ReadGap(const SetupSection& section) {
    const std::uint32_t delay = section.Number("ChunkDelay", kChunkDelays).value_or(0);
    const std::uint32_t size = section.Number("ChunkSize", kChunkSizes).value_or(kChunkSizes.most);
    if (delay == 0) return {};
    return {size, std::chrono::milliseconds(delay)};
}

MidiId IdOfDevice(std::size_t index) {
    return static_cast<MidiId>(index + 1);
}

MidiConnections ConnectionsTo(std::size_t deviceCount) {
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < deviceCount; ++i)
        for (const int shift : {24, 16, 8, 0})
            bytes.push_back(static_cast<std::uint8_t>(IdOfDevice(i) >> shift));
    return bytes;
}

} // namespace

std::string PortSectionName(std::string_view name) {
    std::size_t length = name.size();
    if (length > kLongestName) {
        length = kLongestName;
        while (length > 0 && ContinuesCharacter(name[length])) --length;
    }
    return "Port " + std::string(name.substr(0, length));
}

PortSetup ReadPortSetup(const SetupLookUp& lookUp, std::string_view name, MidiDirection direction,
                        SetupProblems& problems) {
    const std::string general = PortSectionName(name);
    const char* const side = direction == MidiDirection::Output ? "|out" : "|in";
    const SetupSection section(lookUp, {general + side, general}, problems);
    PortSetup setup;
    setup.connected = section.List("Connected");
    if (direction == MidiDirection::Input) return setup;
    setup.speed = section.Number("Speed", kSpeeds);
    setup.gap = ReadGap(section);
    return setup;
}

std::string NameWithSetup(const MidiObject& endpoint, const PortSetup& setup,
                          const MidiObjectFinder& find) {
    if (!setup.connected) return MidiConnectedName(endpoint, find);
    const std::vector<std::string>& devices = *setup.connected;
    MidiObject described = endpoint;
    described.connections = ConnectionsTo(devices.size());
    return MidiConnectedName(described, [&devices](MidiId id) -> std::optional<MidiObject> {
        return MidiObject{id, MidiObjectKind::ExternalDevice, devices[id - 1]};
    });
}

} // namespace vm
