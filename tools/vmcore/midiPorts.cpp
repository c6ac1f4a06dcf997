// Ports through the device functions.
#include "midiPorts.h"

#include <algorithm>

#include <vmcore/midi/mmsystem.h>

#include "command.h"
#include "json.h"
#include "midiText.h"

namespace vm::tool {
namespace {

constexpr const char* kNoName = "<no ascii name>"; // outputs without a name get none

const char* Noun(PortDirection direction) {
    return direction == PortDirection::Out ? "output" : "input";
}
const char* Word(PortDirection direction) {
    return direction == PortDirection::Out ? "out" : "in";
}

std::string NameOf(PortDirection direction, unsigned index) {
    if (direction == PortDirection::Out) {
        MIDIOUTCAPS caps = {};
        midiOutGetDevCaps(index, &caps, sizeof caps);
        return *caps.szPname ? Utf8FromMacRoman(caps.szPname) : kNoName;
    }
    MIDIINCAPS caps = {};
    midiInGetDevCaps(index, &caps, sizeof caps);
    return Utf8FromMacRoman(caps.szPname);
}

bool IsNumber(const std::string& text) {
    return !text.empty() && text.size() < 10 &&
           text.find_first_not_of("0123456789") == std::string::npos;
}

Port FindByIndex(PortDirection direction, const std::vector<Port>& ports, unsigned index) {
    if (index < ports.size()) return ports[index];
    throw Exit{kNo, std::string("there is no ") + Noun(direction) + " " + std::to_string(index) +
                        ", but " + FormatCount(ports.size(), Noun(direction)) +
                        " (see 'vmcore midi list')"};
}

[[noreturn]] void ThrowAmbiguous(PortDirection direction, const std::vector<Port>& ports) {
    std::string list;
    for (const Port& each : ports) list += (list.empty() ? "" : ", ") + std::to_string(each.index);
    throw Exit{kNo, "more than one " + std::string(Noun(direction)) + " is called '" +
                        ports[0].name + "': give one of the numbers " + list};
}

std::vector<Port> AllPorts() {
    std::vector<Port> ports = PortsOf(PortDirection::Out);
    const std::vector<Port> inputs = PortsOf(PortDirection::In);
    ports.insert(ports.end(), inputs.begin(), inputs.end());
    return ports;
}

} // namespace

MidiSession::MidiSession() {
    initCoreMIDI();
}
MidiSession::~MidiSession() {
    destroyCoreMIDI();
}

std::vector<Port> PortsOf(PortDirection direction) {
    const unsigned count =
        direction == PortDirection::Out ? midiOutGetNumDevs() : midiInGetNumDevs();
    std::vector<Port> ports;
    for (unsigned i = 0; i < count; ++i) ports.push_back({direction, i, NameOf(direction, i)});
    return ports;
}

Port FindPort(PortDirection direction, const std::string& argument) {
    std::vector<Port> ports = PortsOf(direction);
    if (IsNumber(argument))
        return FindByIndex(direction, ports, static_cast<unsigned>(std::stoul(argument)));
    std::erase_if(ports, [&argument](const Port& each) { return each.name != argument; });
    if (ports.size() > 1) ThrowAmbiguous(direction, ports);
    if (ports.empty())
        throw Exit{kNo, std::string("there is no ") + Noun(direction) + " called '" + argument +
                            "' (see 'vmcore midi list')"};
    return ports[0];
}

std::string ListPorts() {
    std::string list;
    for (const Port& each : AllPorts()) {
        std::string word = Word(each.direction);
        word.resize(4, ' ');
        std::string index = std::to_string(each.index);
        index.resize(std::max<std::size_t>(index.size(), 2), ' ');
        list += word + index + " " + each.name + "\n";
    }
    return list;
}

std::string ListPortsAsJson() {
    std::string json = "{\"ports\": [";
    const char* separator = "\n  ";
    for (const Port& each : AllPorts()) {
        json += separator + ("{\"direction\": " + JsonString(Word(each.direction))) +
                ", \"index\": " + std::to_string(each.index) +
                ", \"name\": " + JsonString(each.name) + "}";
        separator = ",\n  ";
    }
    return json + "]}\n";
}

} // namespace vm::tool
