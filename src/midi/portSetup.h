// What the user's set-up file says about one port: what is plugged into it, and how fast that takes
// System Exclusive messages.
#pragma once

#include "midi/naming.h"
#include "midi/setupSection.h"
#include "platform/midi/sysexPacing.h"

namespace vm {

struct PortSetup {
    std::optional<std::vector<std::string>> connected; ///< nothing: what the back end says holds
    std::optional<std::uint32_t> speed;                ///< bytes a second
    SysexGap gap = {};
    bool operator==(const PortSetup&) const = default;
};

/// The section of a port of this name, without brackets: "Port <name>". A name that does not fit in
/// a line of the file is cut, at a whole character.
std::string PortSectionName(std::string_view name);

/// From "[Port <name>|out]" (or "|in") for what stands there, else from "[Port <name>]".
PortSetup ReadPortSetup(const SetupLookUp& lookUp, std::string_view name, MidiDirection direction,
                        SetupProblems& problems);

/// The name that hosts see: of what is plugged in, by the naming rule. What the user says comes
/// before what the back end reports.
std::string NameWithSetup(const MidiObject& endpoint, const PortSetup& setup,
                          const MidiObjectFinder& find);

} // namespace vm
