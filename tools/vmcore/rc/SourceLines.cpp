// Lines of a file of a script.
#include "rc/SourceLines.h"

#include <algorithm>

namespace vm::rc {
namespace {

constexpr char kEndOfText = 0x1A; // what editors of DOS put at the end

std::string_view WithoutLineEnd(std::string_view line) {
    while (!line.empty() && (line.back() == '\r' || line.back() == kEndOfText))
        line.remove_suffix(1);
    return line;
}

} // namespace

SourceLines::SourceLines(std::string bytes, int codePage, Lacking lacking)
    : m_bytes(std::move(bytes)), m_codePage(codePage), m_lacking(std::move(lacking)) {
    const auto mark = MarkOf(m_bytes);
    if (!mark) return;
    m_marked = true;
    m_at = mark->length;
    m_codePage = kUtf8;
    if (mark->codePage == kUtf8) return;
    // A line end may be a half of another character here: the whole is decoded at once.
    Decoded all = ToUtf8(std::string_view(m_bytes).substr(m_at), mark->codePage);
    if (!all.lacking.empty()) m_lacking(1, all.lacking);
    m_bytes = std::move(all.text);
    m_at = 0;
}

bool SourceLines::Next(SourceLine& line) {
    line.text.clear();
    line.parts.clear();
    if (!Append(line)) return false;
    while (line.text.ends_with('\\')) {
        line.text.pop_back();
        if (!Append(line)) break;
    }
    return true;
}

bool SourceLines::Append(SourceLine& line) {
    if (m_at >= m_bytes.size()) return false;
    const std::size_t end = std::min(m_bytes.find('\n', m_at), m_bytes.size());
    const Decoded decoded =
        ToUtf8(WithoutLineEnd(std::string_view(m_bytes).substr(m_at, end - m_at)), m_codePage);
    m_at = end + 1;
    ++m_line;
    if (!decoded.lacking.empty()) m_lacking(m_line, decoded.lacking);
    line.parts.push_back({line.text.size(), m_line});
    line.text += decoded.text;
    return true;
}

bool SourceLines::UseCodePage(int codePage) {
    if (m_marked) return codePage == m_codePage;
    m_codePage = codePage;
    return true;
}

} // namespace vm::rc
