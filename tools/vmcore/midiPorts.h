// The MIDI system for the life of a command, and its ports by index or name.
#pragma once

#include <string>
#include <vector>

namespace vm::tool {

/// The library's MIDI system is up while the object lives.
class MidiSession {
public:
    MidiSession();
    ~MidiSession();
    MidiSession(const MidiSession&) = delete;
    MidiSession& operator=(const MidiSession&) = delete;
};

enum class PortDirection { Out, In };

struct Port {
    PortDirection direction;
    unsigned index;
    std::string name; ///< UTF-8
};

std::vector<Port> PortsOf(PortDirection direction);

/// By index, or by a name that only one port has. Throws Exit (kNo) for anything else.
Port FindPort(PortDirection direction, const std::string& argument);

std::string ListPorts(); ///< "out 0  UM-2 MIDI 1" lines
std::string ListPortsAsJson();

} // namespace vm::tool
