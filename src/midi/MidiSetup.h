// The user's MIDI set-up at work: which name a port gets, which speed and pauses a destination is
// given, which loopback there is.
#pragma once

#include <map>
#include <mutex>
#include <set>

#include "midi/SetupFile.h"
#include "midi/naming.h"
#include "midi/portSetup.h"
#include "platform/midi/loopback/LoopbackPlatform.h"

namespace vm {

/// Any thread may call. The file is read when it is first needed and again after it has changed,
/// but never in a receive call, which does not wait for others' reading either: what is known then
/// holds. An entry that is ignored is logged once: "Warning! <file>: [<section>] <key>: <reason>".
class MidiSetup {
public:
    /// Begins anew with this file: for a back end that has just been made.
    void Use(SetupFile file);

    std::string NameOf(const MidiObject& endpoint, const MidiObjectFinder& find);

    /// Gives the destination the speed and the pauses that the file says.
    void Apply(MidiPlatform& platform, MidiId destination);
    /// The same, unless that has been done since the file changed: without asking the back end, for
    /// which that may be much work.
    void ApplyOnce(MidiPlatform& platform, MidiId destination);
    /// The result is the back end's. A speed that the host has set stays.
    int SetHostSpeed(MidiPlatform& platform, MidiId destination, std::uint32_t bytesPerSecond);

    /// Nothing when the file describes none.
    std::optional<LoopbackSetup> Loopback();

private:
    /// What the file said when it had changed that often.
    struct KnownPort {
        std::uint64_t generation;
        PortSetup port;
    };
    /// What a destination has got.
    struct Applied {
        std::uint32_t speed = kMidiWireSpeed;
        SysexGap gap = {};
        bool isHostsSpeed = false;
        std::optional<std::uint64_t> generation = {}; ///< of the file; nothing until it has got any
    };

    /// Nothing for what would have to be read now, but must not be.
    std::optional<KnownPort> PortOf(const MidiObject& endpoint);
    static bool Give(MidiPlatform& platform, MidiId destination, Applied& applied,
                     const PortSetup& port);
    bool IsApplied(MidiId destination);
    std::optional<KnownPort> Known(const std::string& key);
    void Refresh();
    SetupLookUp LookUp() const;
    void LogOnce(const SetupProblems& problems, const std::string& path);

    std::mutex m_reading; // guards these two, and is held while the file is read
    SetupFile m_file;
    std::uint64_t m_generation = 0;

    std::mutex m_lock; // guards the rest, never for long; taken after m_reading
    std::map<std::string, KnownPort> m_ports; ///< by name and direction
    std::map<MidiId, Applied> m_applied;
    std::set<std::string> m_logged;
};

/// The process's one.
MidiSetup& Setup();

} // namespace vm
