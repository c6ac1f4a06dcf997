// Values of the MIDI set-up file: read through a look-up function, so that every rule can be tested
// without a file. docs/midi.md describes the file for people.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vm {

/// The value of a key in a section of the file; nothing when there is no such entry.
using SetupLookUp =
    std::function<std::optional<std::string>(const std::string& section, const std::string& key)>;

/// An entry that is ignored, and why.
struct SetupProblem {
    std::string section;
    std::string key;
    std::string text;
    bool operator==(const SetupProblem&) const = default;
};
using SetupProblems = std::vector<SetupProblem>;

struct SetupRange {
    std::uint32_t least;
    std::uint32_t most;
};

/// One section, or several of which the first that has a key counts. Blanks around values, and
/// around the parts of a list, are no part of them.
class SetupSection {
public:
    /// Both references must outlive the object.
    SetupSection(const SetupLookUp& lookUp, std::vector<std::string> names, SetupProblems& problems)
        : m_lookUp(lookUp), m_names(std::move(names)), m_problems(problems) {}

    std::optional<std::string> Text(const std::string& key) const;
    /// Nothing, and a problem, for anything else than a decimal number of that range.
    std::optional<std::uint32_t> Number(const std::string& key, SetupRange range) const;
    /// The parts between commas that are not empty.
    std::optional<std::vector<std::string>> List(const std::string& key) const;

    /// The entry that holds `key` is ignored.
    void Refuse(const std::string& key, std::string text) const;

private:
    struct Entry {
        std::string section;
        std::string value;
    };
    std::optional<Entry> Find(const std::string& key) const;

    const SetupLookUp& m_lookUp;
    const std::vector<std::string> m_names;
    SetupProblems& m_problems;
};

/// Nothing for anything else than a decimal number of that range.
std::optional<std::uint32_t> SetupNumber(std::string_view text, SetupRange range);

std::string_view TrimBlanks(std::string_view text);

} // namespace vm
