// The lines of one ini file: an ordered list that answers as a scan from its start would, in time
// that does not depend on the size of the file. It knows nothing of files, caches or locks.
//
// The lines are kept by section: section 0 holds what stands before the first header, every other
// begins with a line that ends the section before it ("[...]"). Headers with text behind the bracket
// ("[x] note") open a section but end none; they lie inside one. The text is the file's own bytes,
// with a second buffer for what was written later.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/iniFormat.h"
#include "files/sectionKeys.h"

namespace vm {

class IniLines {
public:
    /// The longest line that can be written; when the file is read again it is cut.
    static constexpr std::size_t kLongestLine = (std::size_t{1} << 24) - 1;

    /// A line. Valid until the next change.
    struct Place {
        std::uint32_t section;
        std::uint32_t line;
    };

    IniLines();

    void Clear();
    /// Replaces everything by the lines of a file (of less than 2 GiB). True when one was cut.
    bool Load(std::unique_ptr<char[]> text, std::size_t size);

    std::size_t Count() const {
        return StartOf(m_sections.size() - 1) + m_sections.back().lines.size();
    }
    bool IsEmpty() const { return Count() == 0; }
    std::size_t IndexOf(Place place) const { return StartOf(place.section) + place.line; }
    std::string_view At(Place place) const {
        return Text(m_sections[place.section].lines[place.line]);
    }

    /// The first header of `section` from line `from` on.
    std::optional<Place> FindHeader(std::string_view section, std::size_t from) const;
    /// The first entry of the key below `header`, in its section, of at least `length` characters.
    std::optional<Place> FindEntry(Place header, std::string_view key, std::size_t length);

    /// Appends an empty line, the header and the entry.
    void AppendSection(std::string_view section, std::string_view entry);
    void Replace(Place place, std::string_view text);
    /// Adds an entry to the section that `place` lies in (see InsertionPoint).
    void Insert(Place place, std::string_view entry);
    void Remove(Place place);
    /// Removes every line below the header, in its section, that is not empty.
    void RemoveContents(Place header);

    bool AnyBeginsWith(std::string_view prefix) const;
    /// Calls `take(name)` for each direct child of a section, in order, until it returns false.
    template <class Take>
    void ForEachChild(std::string_view parent, Take&& take) const {
        for (std::size_t i = 1; i < m_sections.size(); ++i)
            if (const auto child = ChildSection(Text(m_sections[i].lines[0]), parent))
                if (!take(*child)) return;
    }
    template <class Take>
    void ForEach(Take&& take) const {
        for (const Section& section : m_sections)
            for (const Line line : section.lines) take(Text(line));
    }

private:
    static constexpr std::size_t kGroup = 128;

    struct Line {
        std::uint32_t offset; ///< into m_text, or behind its end into m_written
        std::uint32_t length : 24;
        std::uint32_t tag : 8; ///< of an entry that is in `keys`: eight bits of its key's hash
    };
    struct Section {
        std::vector<Line> lines;
        SectionKeys keys; ///< made when a key is first looked for
        bool hasBrackets; ///< a line other than its own header begins with '['
    };
    /// A line that opens a section, in a chain of those of one name, in order.
    struct Header {
        Place place;
        std::uint32_t hash; ///< of its name
        std::uint32_t name; ///< where that begins in m_headerNames
        std::uint32_t nameLength;
        std::uint32_t next;
        std::uint32_t last; ///< of the first in a chain: its end
    };

    std::string_view Text(Line line) const {
        const char* text = line.offset < m_textSize ? m_text.get() + line.offset
                                                    : m_written.data() + (line.offset - m_textSize);
        return {text, line.length};
    }
    std::size_t StartOf(std::size_t section) const {
        return m_groupStarts[section / kGroup] + m_starts[section];
    }
    Line Store(std::string_view text);
    void CompactIfWasteful();
    void Compact();

    void Empty();
    void BeginSection(std::vector<Line> lines);
    void EndFill();
    void Regroup();
    void Shift(std::uint32_t section, std::int64_t lines);

    void IndexHeaders();
    void IndexHeadersOf(std::uint32_t section);
    void AddHeader(Place place);
    std::size_t HeaderSlot(std::string_view name, std::uint64_t hash) const;
    void GrowHeaderSlots();

    std::uint32_t FirstEntry(Section& section, std::string_view key);
    void IndexEntries(Section& section);
    void IndexEntry(Section& section, std::uint32_t line);

    std::unique_ptr<char[]> m_text;
    std::size_t m_textSize = 0;
    std::string m_written;
    std::size_t m_waste = 0; ///< bytes of both that no line uses any more
    std::vector<Section> m_sections;
    // The number of a section's first line is the sum of these two, so that a new line moves a
    // few hundred numbers, not those of all sections behind it.
    std::vector<std::uint32_t> m_starts;      ///< one a section
    std::vector<std::uint32_t> m_groupStarts; ///< one for every kGroup sections
    std::vector<Header> m_headers;
    std::vector<std::uint32_t> m_headerSlots; ///< index into m_headers + 1, by hashed name
    std::string
        m_headerNames; ///< close together, or every look-up would wait for the text's memory
};

} // namespace vm
