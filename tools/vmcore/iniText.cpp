// Lines, blocks and entries of an ini file, by the rules in files/iniFormat.h.
#include "iniText.h"

#include <algorithm>
#include <unordered_set>

#include "core/ascii.h"
#include "core/log.h"

namespace vm::tool {
namespace {

constexpr std::size_t kLongestQuote = 40;

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

} // namespace

LineKind KindOf(std::string_view line) {
    if (line.empty()) return LineKind::Empty;
    if (line.front() == '[')
        return line.find(']') == std::string_view::npos ? LineKind::OpenHeader : LineKind::Header;
    const std::size_t text = line.find_first_not_of(" \t");
    if (text != std::string_view::npos && line[text] == ';') return LineKind::Comment;
    return line.find('=') == std::string_view::npos ? LineKind::Other : LineKind::Entry;
}

std::string_view SectionName(std::string_view header) {
    if (EndsSection(header)) return header.substr(1, header.size() - 2);
    return header.substr(1, header.find(']') - 1);
}

std::string_view KeyOf(std::string_view entry) {
    return entry.substr(0, entry.find('='));
}

std::string_view ValueOfEntry(std::string_view entry) {
    return ValueOf(entry, entry.find('='), entry.size());
}

std::string FoldCase(std::string_view name) {
    return AsciiLowered(std::string(name));
}

std::string Quoted(std::string_view text) {
    std::string quoted = "'";
    for (const char c : text.substr(0, kLongestQuote)) {
        if (IsControl(c))
            quoted += Format("\\x%02X", static_cast<unsigned>(c));
        else
            quoted += c;
    }
    return quoted + (text.size() > kLongestQuote ? "...'" : "'");
}

std::size_t OpenedSections::Add(std::string_view header, std::size_t line) {
    const std::string folded = FoldCase(header);
    std::size_t first = line;
    const std::string own = '[' + FoldCase(SectionName(header)) + ']';
    if (const auto found = m_lines.find(own); found != m_lines.end()) first = found->second;
    for (std::size_t end = folded.find(']'); end != std::string::npos;
         end = folded.find(']', end + 1))
        m_lines.try_emplace(folded.substr(0, end + 1), line);
    return first;
}

IniText::IniText(std::string bytes) : m_bytes(std::move(bytes)) {
    OpenedSections sections;
    std::size_t number = 1;
    std::size_t counted = 0;
    SplitIniLines(m_bytes.data(), m_bytes.size(), [&](IniSpan span) {
        const auto begin = m_bytes.begin() + static_cast<std::ptrdiff_t>(counted);
        const auto end = m_bytes.begin() + static_cast<std::ptrdiff_t>(span.offset);
        number += static_cast<std::size_t>(std::count(begin, end, '\n'));
        counted = span.offset;
        AddLine({std::string_view(m_bytes).substr(span.offset, span.length), number}, sections);
    });
    EndBlocks();
}

void IniText::AddLine(IniLine line, OpenedSections& sections) {
    if (EndsSection(line.text)) EndBlocks();
    m_lines.push_back(line);
    if (KindOf(line.text) != LineKind::Header) return;
    const bool found = sections.Add(line.text, line.number) == line.number;
    m_blocks.push_back({line.text, line.number, found, m_lines.size(), 0});
}

void IniText::EndBlocks() {
    for (; m_ended < m_blocks.size(); ++m_ended) m_blocks[m_ended].end = m_lines.size();
}

const IniBlock* IniText::Find(std::string_view section) const {
    for (const IniBlock& block : m_blocks)
        if (OpensSection(block.header, section)) return &block;
    return nullptr;
}

std::span<const IniLine> IniText::LinesOf(const IniBlock& block) const {
    return std::span(m_lines).subspan(block.begin, block.end - block.begin);
}

std::vector<IniEntry> IniText::EntriesOf(const IniBlock& block) const {
    std::vector<IniEntry> entries;
    std::unordered_set<std::string> keys;
    for (const auto& [text, number] : LinesOf(block)) {
        if (KindOf(text) != LineKind::Entry) continue;
        const std::string_view key = KeyOf(text);
        entries.push_back({key, ValueOfEntry(text), number, keys.insert(FoldCase(key)).second});
    }
    return entries;
}

} // namespace vm::tool
