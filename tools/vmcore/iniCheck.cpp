// The checks, line by line. What a line is to the library is asked of files/iniFormat.h.
#include "iniCheck.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "files/iniFormat.h"
#include "iniText.h"

namespace vm::tool {
namespace {

constexpr std::size_t kPiecesNamed = 3; // of a line that is cut
constexpr std::string_view kMark = "\xEF\xBB\xBF";
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kBlanksAndReturns = " \t\r";

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsBlankText(std::string_view text, std::string_view blanks = kBlanks) {
    return text.find_first_not_of(blanks) == std::string_view::npos;
}

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

bool IsUtf16(std::string_view bytes) {
    return bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
}

// Not one line feed, but carriage returns between texts.
bool HasReturnsAsLineEnds(std::string_view bytes) {
    const std::size_t last = bytes.find_last_not_of('\r');
    return last != std::string_view::npos && bytes.find('\n') == std::string_view::npos &&
           bytes.substr(0, last).find('\r') != std::string_view::npos;
}

// What follows the last line end.
std::string_view UnendedLine(std::string_view bytes) {
    return bytes.substr(bytes.rfind('\n') + 1); // all of it without a line end
}

std::string Described(std::string_view line) {
    switch (KindOf(line)) {
    case LineKind::Empty:
        return "empty";
    case LineKind::Comment:
        return "a comment";
    case LineKind::Header:
        return "the header of section " + Quoted(SectionName(line));
    case LineKind::Entry:
        return "the entry " + Quoted(KeyOf(line));
    default:
        return "the text " + Quoted(line);
    }
}

// The line of a second header for the section that a mark hides; 0 without one.
std::size_t SecondHeader(std::string_view bytes) {
    const IniText text{std::string(bytes)};
    if (text.Blocks().empty() || text.Blocks()[0].line != 1) return 0;
    const std::string_view name = SectionName(text.Blocks()[0].header);
    for (std::size_t i = 1; i < text.Blocks().size(); ++i)
        if (OpensSection(text.Blocks()[i].header, name)) return text.Blocks()[i].line;
    return 0;
}

// What is missing behind the last line, in the style of the file; empty when nothing is, or when the
// file is none that a line end would make readable.
std::string_view MissingLineEnd(std::string_view bytes) {
    const std::string_view rest = UnendedLine(bytes);
    if (IsUtf16(bytes) || HasReturnsAsLineEnds(bytes) || IsBlankText(rest, kBlanksAndReturns))
        return {};
    if (rest.ends_with('\r')) return "\n";
    const std::string_view before = bytes.substr(0, bytes.size() - rest.size());
    return before.empty() || before.ends_with("\r\n") ? "\r\n" : "\n";
}

class Checker {
public:
    std::vector<Finding> Check(std::string_view bytes);

private:
    void CheckMark(std::string_view& bytes);
    void CheckPhysicalLine(std::string_view raw);
    void CheckCut(const std::vector<std::string>& pieces);
    void CheckLine(std::string_view line);
    void CheckHeader(std::string_view line);
    void CheckHeaderEnd(std::string_view line);
    void CheckEntry(std::string_view line);
    void CheckKey(std::string_view key);
    void CheckValue(std::string_view text, std::string_view value);
    void CheckOther(std::string_view line);
    void CheckLastLine(std::string_view rest);

    void Add(Severity severity, const char* kind, std::string text) {
        m_findings.push_back({m_line, severity, kind, std::move(text)});
    }

    std::vector<Finding> m_findings;
    std::size_t m_line = 1;
    bool m_inSection = false;
    OpenedSections m_sections;
    std::unordered_map<std::string, std::size_t> m_keys; // of the section so far, and their lines
};

std::vector<Finding> Checker::Check(std::string_view bytes) {
    if (IsUtf16(bytes)) {
        Add(Severity::Error, "byte-order mark", "the file is UTF-16, of which nothing is found");
        return m_findings;
    }
    if (HasReturnsAsLineEnds(bytes)) {
        Add(Severity::Error, "carriage return", "lines end with it alone: nothing is read");
        return m_findings;
    }
    CheckMark(bytes);
    for (std::size_t end; (end = bytes.find('\n')) != std::string_view::npos; ++m_line) {
        CheckPhysicalLine(bytes.substr(0, end));
        bytes.remove_prefix(end + 1);
    }
    CheckLastLine(bytes);
    return std::move(m_findings);
}

void Checker::CheckMark(std::string_view& bytes) {
    if (!bytes.starts_with(kMark)) return;
    bytes.remove_prefix(kMark.size()); // the rest is judged as if it were not there
    std::string_view line = bytes.substr(0, bytes.find_first_of("\r\n"));
    if (KindOf(line) != LineKind::Header)
        return Add(Severity::Warning, "byte-order mark", "is taken for a part of the first line");
    std::string text = "hides section " + Quoted(SectionName(line));
    if (const std::size_t second = SecondHeader(bytes))
        text += ", found on line " + std::to_string(second) + " instead";
    Add(Severity::Error, "byte-order mark", std::move(text));
}

void Checker::CheckPhysicalLine(std::string_view raw) {
    if (raw.find('\0') != std::string_view::npos)
        Add(Severity::Error, "NUL byte", "ends a value; this may be no text file");
    std::string text = std::string(raw) + '\n';
    std::vector<std::string> pieces;
    const bool cut = SplitIniLines(text.data(), text.size(), [&](IniSpan span) {
        pieces.push_back(text.substr(span.offset, span.length));
    });
    const std::string_view body = raw.substr(0, raw.find_last_not_of('\r') + 1);
    if (body.find('\r') != std::string_view::npos)
        Add(Severity::Warning, "carriage return",
            "is dropped inside a line: reads as " + Quoted(pieces[0]));
    if (cut) CheckCut(pieces);
    CheckLine(pieces[0]);
    for (std::size_t i = 1; i < pieces.size(); ++i)
        if (KindOf(pieces[i]) != LineKind::Other) CheckLine(pieces[i]); // that has been said
}

void Checker::CheckCut(const std::vector<std::string>& pieces) {
    std::string text = "more than " + std::to_string(kIniLineLimit) + " characters: cut into " +
                       Described(pieces[0]);
    for (std::size_t i = 1; i < pieces.size() && i <= kPiecesNamed; ++i)
        text += (i == 1 ? " and, one character later, " : ", ") + Described(pieces[i]);
    if (pieces.size() > kPiecesNamed + 1)
        text += " and " + std::to_string(pieces.size() - kPiecesNamed - 1) + " more";
    Add(Severity::Error, "long line", std::move(text));
}

void Checker::CheckLine(std::string_view line) {
    switch (KindOf(line)) {
    case LineKind::Empty:
    case LineKind::Comment:
        return;
    case LineKind::Header:
        return CheckHeader(line);
    case LineKind::OpenHeader:
        return Add(Severity::Error, "header without ']'", Quoted(line) + " opens no section");
    case LineKind::Entry:
        return CheckEntry(line);
    case LineKind::Other:
        return CheckOther(line);
    }
}

void Checker::CheckHeader(std::string_view line) {
    CheckHeaderEnd(line);
    const std::string_view name = SectionName(line);
    if (const std::size_t first = m_sections.Add(line, m_line); first != m_line)
        Add(Severity::Warning, "duplicate section",
            Quoted(name) + " is found on line " + std::to_string(first) + " only");
    m_keys.clear();
    m_inSection = true;
}

void Checker::CheckHeaderEnd(std::string_view line) {
    const std::size_t bracket = line.find(']');
    const std::string_view after = line.substr(bracket + 1);
    if (after.empty()) return;
    const std::string opened = Quoted(line.substr(1, bracket - 1));
    if (EndsSection(line))
        Add(Severity::Note, "text after ']'", "the header opens section " + opened + " too");
    else
        Add(Severity::Warning, IsBlankText(after) ? "trailing tab" : "text after ']'",
            "the header opens section " + opened + ", but does not end the section before it");
}

void Checker::CheckEntry(std::string_view line) {
    const std::string_view key = KeyOf(line);
    CheckKey(key);
    CheckValue(line.substr(key.size() + 1), ValueOfEntry(line));
    if (!m_inSection)
        return Add(Severity::Warning, "entry without section",
                   Quoted(key) + " stands before the first header and is never found");
    if (const auto [first, added] = m_keys.try_emplace(FoldCase(key), m_line); !added)
        Add(Severity::Warning, "duplicate key",
            Quoted(key) + " is found on line " + std::to_string(first->second) + " only");
}

void Checker::CheckKey(std::string_view key) {
    const std::string_view name = Trimmed(key);
    if (name.size() == key.size()) return;
    const char* where = key.starts_with(name) ? "blank before '='" : "blank before key";
    Add(Severity::Warning, where, Quoted(name) + " is not found: the key is " + Quoted(key));
}

void Checker::CheckValue(std::string_view text, std::string_view value) {
    if (text.empty()) return Add(Severity::Note, "empty value", "such an entry cannot be deleted");
    if (IsBlank(text.front()) && !value.empty())
        Add(Severity::Note, "blank after '='", "the value begins with it: " + Quoted(value));
    if (text.find(';') != std::string_view::npos)
        Add(Severity::Note, "cut value", "ends at the first ';': " + Quoted(value));
    else if (text.back() == '\t')
        Add(Severity::Note, "trailing tab", "is no part of the value");
}

void Checker::CheckOther(std::string_view line) {
    if (IsBlankText(line))
        return Add(Severity::Warning, "line of tabs",
                   "is not empty: new entries go behind it, deleting the section removes it");
    const char first = Trimmed(line).front();
    const char* hint = first == '#'   ? "; comments begin with ';'"
                       : first == '[' ? "; a header begins at the start of its line"
                                      : "";
    Add(Severity::Warning, "unknown line",
        Quoted(line) + " is neither header, entry nor comment" + hint);
}

void Checker::CheckLastLine(std::string_view rest) {
    if (!IsBlankText(rest, kBlanksAndReturns))
        Add(Severity::Error, "no line end", "the last line is not read: " + Quoted(rest));
}

} // namespace

std::vector<Finding> CheckIni(std::string_view bytes) {
    return Checker().Check(bytes);
}

IniRepair RepairIni(std::string_view bytes) {
    IniRepair repair;
    if (bytes.starts_with(kMark) && SecondHeader(bytes.substr(kMark.size())) == 0) {
        bytes.remove_prefix(kMark.size());
        repair.done.push_back({1, "dropped the byte-order mark"});
    }
    repair.bytes = bytes;
    if (const std::string_view end = MissingLineEnd(bytes); !end.empty()) {
        const auto ends = static_cast<std::size_t>(std::count(bytes.begin(), bytes.end(), '\n'));
        repair.bytes += end;
        repair.done.push_back({ends + 1, "ended the last line"});
    }
    return repair;
}

} // namespace vm::tool
