// An ini file as the library sees it: its lines, the blocks below its headers, the entries in them.
// Plain data; nothing here opens a file.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "files/iniFormat.h"

namespace vm::tool {

enum class LineKind {
    Empty,
    Comment,    ///< ';' first, after blanks and tabs
    Header,     ///< "[...]", with or without text behind the ']'
    OpenHeader, ///< '[' without ']'
    Entry,      ///< with a '='
    Other
};
LineKind KindOf(std::string_view line);

/// The name in a header: all between the brackets, or, with text behind, up to the first ']'.
std::string_view SectionName(std::string_view header);
/// Up to the first '='.
std::string_view KeyOf(std::string_view entry);
/// As the library reads it: see docs/settings.md.
std::string_view ValueOfEntry(std::string_view entry);
/// ASCII letters in lower case; two names that are one to the library give one result.
std::string FoldCase(std::string_view name);

/// Text from a file for a message: in quotes, cut when it is long, control characters as \xNN.
std::string Quoted(std::string_view text);

/// Which section names the headers of a file open, met one after the other.
class OpenedSections {
public:
    /// The line of the first header that opens the name of this one; `line` when it is this one.
    std::size_t Add(std::string_view header, std::size_t line);

private:
    std::unordered_map<std::string, std::size_t> m_lines; ///< by "[name]", folded
};

struct IniLine {
    std::string_view text;
    std::size_t number; ///< in the file, from 1
};

struct IniEntry {
    std::string_view key;
    std::string_view value;
    std::size_t line;
    bool found; ///< false behind another entry of its key
};

/// What one header opens. Blocks overlap where a header has text behind its ']': such a header does
/// not end the block before it.
struct IniBlock {
    std::string_view header;
    std::size_t line;
    bool found;             ///< false behind another header that opens the same section
    std::size_t begin, end; ///< below the header; indices of lines
};

class IniText {
public:
    explicit IniText(std::string bytes);
    IniText(const IniText&) = delete;
    IniText& operator=(const IniText&) = delete;

    const std::vector<IniBlock>& Blocks() const { return m_blocks; }
    /// The block that the library finds for `section`; null without one.
    const IniBlock* Find(std::string_view section) const;
    std::span<const IniLine> LinesOf(const IniBlock& block) const;
    std::vector<IniEntry> EntriesOf(const IniBlock& block) const;

private:
    void AddLine(IniLine line, OpenedSections& sections);
    void EndBlocks();

    std::string m_bytes;
    std::vector<IniLine> m_lines;
    std::vector<IniBlock> m_blocks;
    std::size_t m_ended = 0; ///< blocks whose end is known, while the lines are added
};

} // namespace vm::tool
