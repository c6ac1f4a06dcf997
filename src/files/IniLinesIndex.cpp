// The lines of one ini file: finding headers and entries without a scan.
#include "files/IniLines.h"

namespace vm {
namespace {

// Shorter sections are scanned.
constexpr std::size_t kLeastIndexed = 8;

// A header's name as it is hashed: names with a ']' inside share the place of their first part, and
// are told apart when they are compared.
std::string_view HashedName(std::string_view name) {
    return name.substr(0, name.find(']'));
}

} // namespace

std::optional<IniLines::Place> IniLines::FindHeader(std::string_view section,
                                                    std::size_t from) const {
    const std::string_view name = HashedName(section);
    std::uint32_t at = m_headerSlots[HeaderSlot(name, HashIgnoringCase(name))];
    if (at != 0 && from == 0 && name.size() == section.size()) return m_headers[at - 1].place;
    for (; at != 0; at = m_headers[at - 1].next) {
        const Place place = m_headers[at - 1].place;
        if (IndexOf(place) >= from && OpensSection(At(place), section)) return place;
    }
    return std::nullopt;
}

void IniLines::IndexHeaders() {
    m_headers.clear();
    m_headerNames.clear();
    m_headerSlots.assign(16, 0);
    for (std::uint32_t i = 0; i < m_sections.size(); ++i) IndexHeadersOf(i);
    m_headers.shrink_to_fit();
    m_headerNames.shrink_to_fit();
}

void IniLines::IndexHeadersOf(std::uint32_t number) {
    const Section& section = m_sections[number];
    const std::size_t end = section.hasBrackets ? section.lines.size() : number == 0 ? 0 : 1;
    for (std::uint32_t line = 0; line < end; ++line) {
        const std::string_view text = Text(section.lines[line]);
        if (!text.empty() && text[0] == '[' && text.find(']') != std::string_view::npos)
            AddHeader({number, line});
    }
}

void IniLines::AddHeader(Place place) {
    if ((m_headers.size() + 1) * 2 > m_headerSlots.size()) GrowHeaderSlots();
    const std::string_view name = HashedName(At(place).substr(1));
    const std::uint64_t hash = HashIgnoringCase(name);
    m_headers.push_back({place, static_cast<std::uint32_t>(hash),
                         static_cast<std::uint32_t>(m_headerNames.size()),
                         static_cast<std::uint32_t>(name.size()), 0, 0});
    const auto added = static_cast<std::uint32_t>(m_headers.size());
    std::uint32_t& first = m_headerSlots[HeaderSlot(name, hash)];
    if (first == 0) {
        m_headerNames.append(name);
        first = added;
    } else {
        m_headers[m_headers[first - 1].last - 1].next = added;
    }
    m_headers[first - 1].last = added;
}

// Where the first header of this name is, or belongs. The name has no ']'.
std::size_t IniLines::HeaderSlot(std::string_view name, std::uint64_t hash) const {
    const std::size_t mask = m_headerSlots.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        if (m_headerSlots[at] == 0) return at;
        const Header& header = m_headers[m_headerSlots[at] - 1];
        if (header.hash != static_cast<std::uint32_t>(hash)) continue;
        const std::string_view names = m_headerNames;
        if (EqualIgnoringCase(names.substr(header.name, header.nameLength), name)) return at;
    }
}

void IniLines::GrowHeaderSlots() {
    std::vector<std::uint32_t> old(m_headerSlots.size() * 2, 0);
    old.swap(m_headerSlots);
    const std::size_t mask = m_headerSlots.size() - 1;
    for (const std::uint32_t first : old) {
        if (first == 0) continue;
        std::size_t at = m_headers[first - 1].hash & mask;
        while (m_headerSlots[at] != 0) at = (at + 1) & mask;
        m_headerSlots[at] = first;
    }
}

std::optional<IniLines::Place> IniLines::FindEntry(Place header, std::string_view key,
                                                   std::size_t length) {
    Section& section = m_sections[header.section];
    std::uint32_t line = header.line + 1;
    if (header.line == 0 && header.section != 0 && section.lines.size() >= kLeastIndexed) {
        const std::uint32_t first = FirstEntry(section, key);
        if (first != SectionKeys::kNone) {
            if (section.lines[first].length >= length) return Place{header.section, first};
            line = first + 1;
        } else if (key.find('=') == std::string_view::npos) {
            return std::nullopt; // keys are hashed up to their first '='; others need the scan
        }
    }
    for (; line < section.lines.size(); ++line)
        if (section.lines[line].length >= length && IsEntry(Text(section.lines[line]), key))
            return Place{header.section, line};
    return std::nullopt;
}

// What it finds is the first entry of the key, also for a key with a '=' in it.
std::uint32_t IniLines::FirstEntry(Section& section, std::string_view key) {
    if (!section.keys.IsBuilt()) IndexEntries(section);
    const std::uint64_t hash = HashIgnoringCase(key);
    return section.keys.Find(hash, [&](std::uint32_t number) {
        const Line line = section.lines[number];
        return line.tag == (hash & 0xFF) && IsEntry(Text(line), key);
    });
}

void IniLines::IndexEntries(Section& section) {
    const auto end = static_cast<std::uint32_t>(section.lines.size());
    section.keys.Build(end);
    for (std::uint32_t line = 1; line < end; ++line) IndexEntry(section, line);
}

void IniLines::IndexEntry(Section& section, std::uint32_t number) {
    const std::string_view text = Text(section.lines[number]);
    const std::size_t keyLength = text.find('=');
    if (keyLength == std::string_view::npos) return;
    if (!section.keys.HasRoomFor(number)) return section.keys.Clear();
    const std::string_view key = text.substr(0, keyLength);
    const std::uint64_t hash = HashIgnoringCase(key);
    section.lines[number].tag = hash & 0xFF;
    std::uint32_t slot = 0;
    const std::uint32_t first = section.keys.Find(
        hash,
        [&](std::uint32_t other) {
            const Line line = section.lines[other];
            return line.tag == (hash & 0xFF) && IsEntry(Text(line), key);
        },
        &slot);
    if (first == SectionKeys::kNone) section.keys.Put(slot, number);
}

} // namespace vm
