// The naming rules.
#include "midi/naming.h"

#include <cstddef>

#include <QtCore/QString>

#include "core/macroman.h"

namespace vm {

std::string CleanMidiName(std::string_view name) {
    const std::string_view untilNul = name.substr(0, name.find('\0'));
    QString text = QString::fromUtf8(untilNul.data(), static_cast<qsizetype>(untilNul.size()));
    text.remove(QChar(QChar::ReplacementCharacter));
    return text.toStdString();
}

std::string MidiEndpointName(const MidiObject& endpoint, MidiNameStyle style) {
    std::string name = CleanMidiName(endpoint.name);
    if (!endpoint.entity) return name;
    if (name.empty()) name = CleanMidiName(endpoint.entity->name);
    if (!endpoint.entity->device) return name;
    const MidiDevice& device = *endpoint.entity->device;
    const std::string deviceName = CleanMidiName(device.name);
    if (deviceName.empty()) return name;
    if (style == MidiNameStyle::External && device.entityCount < 2) return deviceName;
    if (name.empty() || name == deviceName) return deviceName;
    return deviceName + " " + name;
}

namespace {

std::string ConnectedObjectName(const MidiObject& object) {
    const bool external = object.kind == MidiObjectKind::ExternalSource ||
                          object.kind == MidiObjectKind::ExternalDestination;
    return external ? MidiEndpointName(object, MidiNameStyle::External)
                    : CleanMidiName(object.name);
}

} // namespace

std::string MidiConnectedName(const MidiObject& endpoint, const MidiObjectFinder& find) {
    std::string names;
    for (const MidiId id : ConnectedMidiIds(endpoint.connections)) {
        const std::optional<MidiObject> object = find(id);
        const std::string name = object ? ConnectedObjectName(*object) : std::string();
        if (name.empty()) continue;
        if (!names.empty()) names += ", ";
        names += name;
    }
    return names.empty() ? MidiEndpointName(endpoint, MidiNameStyle::Internal) : names;
}

std::vector<MidiId> ConnectedMidiIds(const MidiConnections& connections) {
    std::vector<MidiId> ids;
    const auto* bytes = std::get_if<std::vector<std::uint8_t>>(&connections);
    if (!bytes) return ids;
    for (std::size_t i = 0; i + 4 <= bytes->size(); i += 4) {
        MidiId id = 0;
        for (std::size_t k = 0; k < 4; ++k) id = id << 8 | (*bytes)[i + k];
        ids.push_back(id);
    }
    return ids;
}

std::string NameForCaps(std::string_view utf8) {
    constexpr std::size_t kLongest = 255;
    const std::string bytes =
        ToMacRomanLossy(QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size())));
    return bytes.substr(0, kLongest);
}

} // namespace vm
