// The lines of one ini file: their text, their order and their changes.
#include "files/IniLines.h"

#include <algorithm>
#include <new>
#include <utility>

namespace vm {
namespace {

// Waste below this is not worth a new buffer.
constexpr std::size_t kLeastWaste = 64 * 1024;
constexpr std::size_t kMostText = 0xFFFFFFFF;

// A copy that a new line does not move, at first.
template <class Lines>
Lines WithSomeRoom(const Lines& lines) {
    Lines copy;
    copy.reserve(lines.size() + lines.size() / 16 + 1);
    copy.insert(copy.end(), lines.begin(), lines.end());
    return copy;
}

bool BeginsWithBracket(std::string_view line) {
    return !line.empty() && line.front() == '[';
}

} // namespace

IniLines::IniLines() {
    Clear();
}

void IniLines::Clear() {
    m_text.reset();
    m_textSize = 0;
    m_written.clear();
    m_waste = 0;
    Empty();
    BeginSection({});
    IndexHeaders();
}

void IniLines::Empty() {
    m_sections.clear();
    m_starts.clear();
    m_groupStarts.clear();
}

bool IniLines::Load(std::unique_ptr<char[]> text, std::size_t size) {
    Clear();
    Empty();
    m_text = std::move(text);
    m_textSize = size;
    std::vector<Line> lines;
    const bool cut = SplitIniLines(m_text.get(), size, [&](IniSpan span) {
        const Line line{static_cast<std::uint32_t>(span.offset),
                        static_cast<std::uint32_t>(span.length) & 0xFFFFFF, 0};
        if (EndsSection(Text(line))) {
            BeginSection(WithSomeRoom(lines));
            lines.clear();
        }
        lines.push_back(line);
    });
    BeginSection(std::move(lines));
    EndFill();
    return cut;
}

// Adds a section behind the others; the headers are indexed by the caller.
void IniLines::BeginSection(std::vector<Line> lines) {
    const auto start = m_sections.empty() ? 0 : static_cast<std::uint32_t>(Count());
    if (m_sections.size() % kGroup == 0) m_groupStarts.push_back(start);
    m_starts.push_back(start - m_groupStarts.back());
    Section section{std::move(lines), {}, false};
    for (std::size_t i = m_sections.empty() ? 0 : 1; i < section.lines.size(); ++i)
        if (BeginsWithBracket(Text(section.lines[i]))) section.hasBrackets = true;
    m_sections.push_back(std::move(section));
}

void IniLines::EndFill() {
    m_sections.shrink_to_fit();
    m_starts.shrink_to_fit();
    IndexHeaders();
}

// Divides all lines into sections anew, after a change that a header may have been part of.
void IniLines::Regroup() {
    const std::vector<Section> old = std::exchange(m_sections, {});
    Empty();
    std::vector<Line> lines;
    for (const Section& section : old)
        for (const Line line : section.lines) {
            if (EndsSection(Text(line))) BeginSection(std::exchange(lines, {}));
            lines.push_back(line);
        }
    BeginSection(std::move(lines));
    EndFill();
}

// The sections behind this one begin so many lines later.
void IniLines::Shift(std::uint32_t section, std::int64_t lines) {
    const auto by = static_cast<std::uint32_t>(lines);
    const std::size_t nextGroup = section / kGroup + 1;
    const std::size_t end = std::min(nextGroup * kGroup, m_starts.size());
    for (std::size_t i = section + std::size_t{1}; i < end; ++i) m_starts[i] += by;
    for (std::size_t i = nextGroup; i < m_groupStarts.size(); ++i) m_groupStarts[i] += by;
}

IniLines::Line IniLines::Store(std::string_view text) {
    if (m_textSize + m_written.size() + text.size() > kMostText) Compact();
    const std::size_t offset = m_textSize + m_written.size();
    if (offset + text.size() > kMostText) throw std::bad_alloc();
    m_written.append(text);
    return {static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(text.size()) & 0xFFFFFF,
            0};
}

void IniLines::CompactIfWasteful() {
    if (m_waste > kLeastWaste && m_waste > (m_textSize + m_written.size()) / 2) Compact();
}

// Copies the text that is in use into one new buffer.
void IniLines::Compact() {
    std::size_t size = 0;
    ForEach([&size](std::string_view line) { size += line.size(); });
    auto text = std::make_unique_for_overwrite<char[]>(size);
    std::size_t end = 0;
    for (Section& section : m_sections)
        for (Line& line : section.lines) {
            Text(line).copy(text.get() + end, line.length);
            line.offset = static_cast<std::uint32_t>(end);
            end += line.length;
        }
    m_text = std::move(text);
    m_textSize = size;
    m_written = {};
    m_waste = 0;
}

void IniLines::AppendSection(std::string_view section, std::string_view entry) {
    const std::string header = '[' + std::string(section) + ']';
    if (m_textSize + m_written.size() + header.size() + entry.size() > kMostText) Compact();
    m_sections.back().lines.push_back(Store({}));
    BeginSection({Store(header), Store(entry)});
    if (BeginsWithBracket(entry))
        Regroup();
    else
        AddHeader({static_cast<std::uint32_t>(m_sections.size() - 1), 0});
}

void IniLines::Replace(Place place, std::string_view text) {
    Line& line = m_sections[place.section].lines[place.line];
    const std::string_view old = Text(line);
    const bool wasBracket = BeginsWithBracket(old);
    if (text.size() <= old.size()) {
        text.copy(const_cast<char*>(old.data()), text.size());
        m_waste += old.size() - text.size();
        line.length = static_cast<std::uint32_t>(text.size()) & 0xFFFFFF;
    } else {
        m_waste += old.size();
        const std::uint32_t tag = line.tag; // that of its key, which stays
        line = Store(text);
        line.tag = tag & 0xFF;
    }
    if (wasBracket || BeginsWithBracket(text)) Regroup();
    CompactIfWasteful();
}

void IniLines::Insert(Place place, std::string_view entry) {
    const Line line = Store(entry);
    Section& section = m_sections[place.section];
    const bool sectionFollows = place.section + std::size_t{1} < m_sections.size();
    const std::size_t at =
        InsertionPoint(section.lines.size(), section.lines.back().length == 0, sectionFollows);
    section.lines.insert(section.lines.begin() + static_cast<std::ptrdiff_t>(at), line);
    Shift(place.section, 1);
    if (BeginsWithBracket(entry)) return Regroup();
    if (section.keys.IsBuilt()) IndexEntry(section, static_cast<std::uint32_t>(at));
}

void IniLines::Remove(Place place) {
    Section& section = m_sections[place.section];
    const auto line = section.lines.begin() + place.line;
    const bool wasBracket = BeginsWithBracket(Text(*line));
    m_waste += line->length;
    section.lines.erase(line);
    section.keys.Clear();
    Shift(place.section, -1);
    if (wasBracket)
        Regroup();
    else if (section.hasBrackets)
        IndexHeaders();
    CompactIfWasteful();
}

void IniLines::RemoveContents(Place header) {
    Section& section = m_sections[header.section];
    const std::size_t before = section.lines.size();
    std::vector<Line> kept(section.lines.begin(), section.lines.begin() + header.line + 1);
    for (std::size_t i = header.line + std::size_t{1}; i < before; ++i) {
        if (section.lines[i].length == 0) kept.push_back(section.lines[i]);
        m_waste += section.lines[i].length;
    }
    section.lines = std::move(kept);
    section.keys.Clear();
    Shift(header.section,
          static_cast<std::int64_t>(section.lines.size()) - static_cast<std::int64_t>(before));
    if (section.hasBrackets) Regroup();
    CompactIfWasteful();
}

bool IniLines::AnyBeginsWith(std::string_view prefix) const {
    const bool onlyBrackets = BeginsWithBracket(prefix);
    for (std::size_t i = 0; i < m_sections.size(); ++i) {
        const Section& section = m_sections[i];
        const bool onlyHeader = onlyBrackets && !section.hasBrackets;
        const std::size_t end = onlyHeader ? (i == 0 ? 0 : 1) : section.lines.size();
        for (std::size_t line = 0; line < end; ++line)
            if (Text(section.lines[line]).starts_with(prefix)) return true;
    }
    return false;
}

} // namespace vm
