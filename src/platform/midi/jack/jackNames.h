// What the ports of a JACK server are called for the user: pure, on plain data.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/midi/endpointTable.h"

namespace vm {

/// A port as the server knows it. Texts are empty where it has none.
struct JackPort {
    std::string name; ///< "client:port"
    MidiDirection direction = MidiDirection::Output;
    bool isPhysical = false;
    std::string secondAlias = {}; ///< of hardware, "UM-2:midi/playback_1"
    std::string prettyName = {};
    std::string clientPrettyName = {};
    std::string connectedTo = {}; ///< the device plugged in
};

/// The ports as endpoints; the address is the port's name.
std::vector<FoundEndpoint> DescribeJackPorts(std::span<const JackPort> ports);

} // namespace vm
