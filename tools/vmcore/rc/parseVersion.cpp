// VERSIONINFO.
#include <algorithm>
#include <array>

#include "rc/limits.h"
#include "rc/parser.h"

namespace vm::rc {
namespace {

constexpr std::array<std::string_view, 5> kNotes = {"FILEFLAGSMASK", "FILEFLAGS", "FILEOS",
                                                    "FILETYPE", "FILESUBTYPE"};

// Sources end their texts with "\0".
std::string WithoutZeros(std::string text) {
    while (!text.empty() && text.back() == '\0') text.pop_back();
    return text;
}

} // namespace

void Parser::ParseVersion(Head head) {
    VersionInfo info;
    info.head = std::move(head);
    while (FixedVersionStatement(info)) {
    }
    m_reader.Begin();
    while (!m_reader.TakeEnd()) VersionEntry(info, {});
    m_script.resources.emplace_back(std::move(info));
}

bool Parser::FixedVersionStatement(VersionInfo& info) {
    if (TakeCommonStatement(info.head)) return true;
    const bool isFile = m_reader.TakeWord("FILEVERSION");
    if (isFile || m_reader.TakeWord("PRODUCTVERSION")) {
        std::vector<int>& numbers = isFile ? info.fileVersion : info.productVersion;
        numbers.clear();
        do {
            if (numbers.size() == 4) m_reader.Expected("four numbers at most");
            numbers.push_back(m_reader.Int());
        } while (m_reader.TakeComma());
        return true;
    }
    for (const std::string_view note : kNotes) {
        const Place place = m_reader.Here();
        if (!m_reader.TakeWord(note)) continue;
        m_reader.Number();
        LeftOut(place, std::string(note), "it speaks of Windows programs");
        return true;
    }
    return false;
}

// `path`: the keys of the blocks around.
void Parser::VersionEntry(VersionInfo& info, const std::string& path) {
    const Place place = m_reader.Here();
    if (m_reader.TakeWord("BLOCK")) {
        const std::string key = m_reader.OneText();
        m_reader.TakeComma();
        const int depth = static_cast<int>(std::count(path.begin(), path.end(), '\n')) + 1;
        return VersionBlock(info, path + key + '\n', depth);
    }
    if (!m_reader.TakeWord("VALUE")) m_reader.Expected("BLOCK, VALUE or END");
    VersionValue value{place, m_reader.OneText(), {}};
    bool isNumber = false;
    while (m_reader.TakeComma() || m_reader.AtText() || m_reader.AtNumber()) {
        if (m_reader.AtText()) {
            value.text += WithoutZeros(m_reader.Text());
        } else if (m_reader.AtNumber()) {
            m_reader.Number();
            isNumber = true;
        }
    }
    const bool isText = path.starts_with("StringFileInfo\n") && !info.strings.empty();
    if (isText && !isNumber) return info.strings.back().values.push_back(std::move(value));
    LeftOut(place, "VALUE " + value.key, "a number for those who look for the texts' languages");
}

void Parser::VersionBlock(VersionInfo& info, const std::string& path, int depth) {
    if (depth > kDeepest) m_reader.Fail(m_reader.Peek(), "blocks are nested too deeply");
    const std::size_t parent = path.find('\n') + 1;
    if (depth == 2 && path.starts_with("StringFileInfo\n"))
        info.strings.push_back({path.substr(parent, path.size() - parent - 1), {}});
    m_reader.Begin();
    while (!m_reader.TakeEnd()) VersionEntry(info, path);
}

} // namespace vm::rc
