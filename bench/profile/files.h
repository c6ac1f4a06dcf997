// The files that the profile benchmark works on: where they lie, their text, and what can be asked of
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace bench {

struct Entry {
    std::uint32_t section; ///< index into IniFile::sections
    std::string key;
    std::string spelled; ///< with the blanks before '='
};

/// A file and those of its entries that every store can find: first of their name in the first
/// section of its name, with a value, on a line of at most 255 characters.
struct IniFile {
    std::string name;
    std::string text;
    std::vector<std::string> sections; ///< only those with entries
    std::vector<Entry> entries;        ///< in the order of the file
};

/// Figures of such a file are given in milliseconds and megabytes, not micro and kilo.
inline bool IsLarge(const IniFile& file) {
    return file.text.size() > (1U << 17);
}

/// `sections` times `keys` plain entries of 27 characters, the same keys in each section.
IniFile GridFile(int sections, int keys);
/// The shape of a list of browsers' abilities: long patterns as section names, many short entries.
IniFile BrowsersFile();
/// bench/data/<name>.ini.
IniFile DataFile(const std::string& name);

/// A folder in memory if there is one with room, so that no disk disturbs (the library's fsync costs
/// nothing there, as does that of the peers); removed at the end.
class Folder {
public:
    Folder();
    ~Folder();
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    /// Another name at every call: a store may remember files that it has seen.
    std::string NewName();

private:
    std::string m_path;
    int m_names = 0;
};

void WriteText(const std::string& path, const std::string& text);
std::string ReadText(const std::string& path);

} // namespace bench
