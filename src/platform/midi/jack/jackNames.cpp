// Names of devices and ports.
#include "platform/midi/jack/jackNames.h"

#include <map>
#include <string_view>

namespace vm {

namespace {

struct Names {
    std::string device, port;
};

bool HasUsefulAlias(const JackPort& port) {
    return port.isPhysical && port.secondAlias.find(':') != std::string::npos;
}

Names Split(const std::string& name) {
    const std::size_t colon = name.find(':');
    if (colon == std::string::npos) return {name, name};
    return {name.substr(0, colon), name.substr(colon + 1)};
}

// "UM-2 MIDI 1" of the device "UM-2" is its port "MIDI 1".
std::string WithoutDevice(const std::string& port, const std::string& device) {
    const bool follows = port.size() > device.size() + 1 && port.starts_with(device) &&
                         std::string_view(" -:").find(port[device.size()]) != std::string::npos;
    return follows && !device.empty() ? port.substr(device.size() + 1) : port;
}

// Hardware belongs to the client "system", which says nothing about it.
Names NamesOf(const JackPort& port) {
    Names names = Split(HasUsefulAlias(port) ? port.secondAlias : port.name);
    if (!port.isPhysical && !port.clientPrettyName.empty()) names.device = port.clientPrettyName;
    if (!port.prettyName.empty()) {
        if (port.isPhysical && !HasUsefulAlias(port)) names.device = port.prettyName;
        names.port = port.prettyName;
    }
    names.port = WithoutDevice(names.port, names.device);
    return names;
}

// The server numbers the ports of hardware in the order of their appearance; the alias stays.
std::string KeyOf(const JackPort& port) {
    return "jack|" + (HasUsefulAlias(port) ? port.secondAlias : port.name);
}

} // namespace

std::vector<FoundEndpoint> DescribeJackPorts(std::span<const JackPort> ports) {
    std::vector<FoundEndpoint> endpoints;
    std::map<std::string, int> count; // of hardware ports of one name
    for (const JackPort& port : ports) {
        const Names names = NamesOf(port);
        FoundEndpoint found{KeyOf(port), port.name, port.direction, names.port};
        found.entity = MidiEntity{"", MidiDevice{names.device}};
        found.deviceKey = Split(port.name).device;
        // The second port of the same name is another device's.
        if (port.isPhysical) {
            const char* direction = port.direction == MidiDirection::Output ? "out|" : "in|";
            const int number = ++count[direction + names.device + "|" + names.port];
            found.deviceKey = names.device + "|" + std::to_string(number);
        }
        found.rank = port.isPhysical ? 0 : 1;
        found.connectedTo = port.connectedTo;
        endpoints.push_back(std::move(found));
    }
    return endpoints;
}

} // namespace vm
