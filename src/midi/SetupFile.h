// The user's MIDI set-up file on disk, read through the profile functions.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace vm {

class SetupFile {
public:
    /// The file that the environment variable VMCORE_MIDI_SETUP names (none when it is empty), else
    /// "VMCore MIDI.ini" in the user's preferences folder. Main thread: it looks for that folder.
    static SetupFile OfUser();

    /// No file, in which nothing is ever found.
    SetupFile() = default;

    const std::string& Path() const { return m_path; }
    /// Looks at the file's time. True when it is not what it was at the last call; what is looked up
    /// from then on is what the file holds now.
    bool HasChanged();
    /// Nothing when there is no such entry, or no such file.
    std::optional<std::string> LookUp(const std::string& section, const std::string& key) const;

private:
    /// What changes when a file is written or replaced. All 0 for none.
    struct Stamp {
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::int64_t size = 0;
        std::uint64_t node = 0;
        bool operator==(const Stamp&) const = default;
    };

    explicit SetupFile(std::string path) : m_path(std::move(path)) {}
    Stamp Look() const;

    std::string m_path; ///< absolute; empty for none
    std::optional<Stamp> m_stamp;
};

} // namespace vm
