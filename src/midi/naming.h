// How the name that a host shows for a MIDI device is made from what the system knows: pure
// functions on plain records.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/midi/midiRecords.h"

namespace vm {

/// The object with this identifier; nothing when it is not (or no longer) there.
using MidiObjectFinder = std::function<std::optional<MidiObject>(MidiId)>;

/// `name` without what is not valid UTF-8, up to a NUL. Empty means that there is no name.
std::string CleanMidiName(std::string_view name);

enum class MidiNameStyle { Internal, External };

/// Device and port in one: "Interface Port 1". External means that the endpoint is the user's own
/// device rather than an interface's port: with at most one entity it is called by the device
/// alone.
std::string MidiEndpointName(const MidiObject& endpoint, MidiNameStyle style);

/// The names of what is plugged into the endpoint, separated by ", "; without any, the endpoint's
/// own name. Empty when nothing has a name.
std::string MidiConnectedName(const MidiObject& endpoint, const MidiObjectFinder& find);

/// The identifiers in a list of connections. One stored as a number rather than a list is not read.
std::vector<MidiId> ConnectedMidiIds(const MidiConnections& connections);

/// The bytes of `utf8` for the name field of the device capabilities, at most 255.
std::string NameForCaps(std::string_view utf8);

} // namespace vm
