// The tokeniser. It works on the text after lines that end with a backslash were joined.
#include "portTokens.h"

#include <algorithm>
#include <array>

namespace vm::tool {
namespace {

constexpr std::array<bool, 256> NameCharacters() {
    std::array<bool, 256> is{};
    for (unsigned c = 0; c < 256; ++c)
        is[c] = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                c == '_' || c == '$' || c >= 0x80;
    return is;
}
constexpr std::array<bool, 256> kNameCharacter = NameCharacters();

bool IsNameCharacter(char c) {
    return kNameCharacter[static_cast<unsigned char>(c)];
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v';
}

void AppendUtf8(std::string& text, unsigned unit) {
    if (unit < 0x80) {
        text += static_cast<char>(unit);
        return;
    }
    // A half of a surrogate pair becomes three bytes too: they only have to stay one word.
    if (unit < 0x800) {
        text += static_cast<char>(0xC0 | unit >> 6);
    } else {
        text += static_cast<char>(0xE0 | unit >> 12);
        text += static_cast<char>(0x80 | (unit >> 6 & 0x3F));
    }
    text += static_cast<char>(0x80 | (unit & 0x3F));
}

std::string FromUtf16(std::string_view bytes, bool isBigEndian) {
    std::string text;
    text.reserve(bytes.size() / 2);
    for (std::size_t i = 2; i + 1 < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        AppendUtf8(text, isBigEndian ? first << 8 | second : second << 8 | first);
    }
    return text;
}

std::string Decode(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) return FromUtf16(bytes, false);
    if (bytes.starts_with("\xFE\xFF")) return FromUtf16(bytes, true);
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    return std::string(bytes);
}

// The length of a backslash and the line's end behind it, blanks between them allowed; 0 for none.
std::size_t JoinLength(std::string_view text, std::size_t at) {
    std::size_t end = at + 1;
    while (end < text.size() && IsBlank(text[end])) ++end;
    return end < text.size() && text[end] == '\n' ? end + 1 - at : 0;
}

std::string JoinLines(std::string text, std::vector<std::size_t>& joins) {
    std::size_t at = text.find('\\');
    if (at == std::string::npos) return text;
    std::string joined;
    joined.reserve(text.size());
    std::size_t copied = 0;
    for (; at != std::string::npos; at = text.find('\\', at + 1)) {
        const std::size_t length = JoinLength(text, at);
        if (length == 0) continue;
        joined.append(text, copied, at - copied);
        joins.push_back(joined.size());
        copied = at + length;
        at = copied - 1;
    }
    return joined.append(text, copied, std::string::npos);
}

class Tokeniser {
public:
    Tokeniser(std::string_view text, const std::vector<std::size_t>& joins,
              std::vector<PortToken>& tokens)
        : m_text(text), m_joins(joins), m_tokens(tokens) {
        m_tokens.reserve(text.size() / 5);
    }

    void Run() {
        while (m_at < m_text.size()) Next();
    }

private:
    char Peek(std::size_t ahead = 0) const {
        return m_at + ahead < m_text.size() ? m_text[m_at + ahead] : '\0';
    }

    void NewLine() {
        ++m_line;
        m_atLineStart = true;
        m_inDirective = false;
        m_parameters.clear();
    }

    std::uint32_t Line() {
        while (m_join < m_joins.size() && m_joins[m_join] <= m_at) ++m_join;
        return m_line + static_cast<std::uint32_t>(m_join);
    }

    void Add(PortTokenKind kind, std::string_view text, std::uint32_t line) {
        m_tokens.push_back({text, line, kind, m_inDirective});
    }

    void Next() {
        const char c = m_text[m_at];
        if (c == '\n') {
            ++m_at;
            NewLine();
        } else if (IsBlank(c) || c == '\0') {
            ++m_at;
        } else if (c == '/' && (Peek(1) == '/' || Peek(1) == '*')) {
            Comment();
        } else if (c == '#' && m_atLineStart) {
            Directive();
        } else {
            m_atLineStart = false;
            Word(c);
        }
    }

    void Word(char c) {
        if (IsDigit(c) || (c == '.' && IsDigit(Peek(1))))
            Number();
        else if (IsNameCharacter(c))
            Name();
        else if (c == '"' || c == '\'')
            Quoted(c);
        else
            Punctuation();
    }

    void Comment() {
        if (Peek(1) == '/') return SkipLine();
        const std::size_t end = m_text.find("*/", m_at + 2);
        const std::size_t next = end == std::string_view::npos ? m_text.size() : end + 2;
        m_line += static_cast<std::uint32_t>(
            std::count(m_text.begin() + static_cast<std::ptrdiff_t>(m_at),
                       m_text.begin() + static_cast<std::ptrdiff_t>(next), '\n'));
        m_at = next;
    }

    void SkipLine() { m_at = std::min(m_text.find('\n', m_at), m_text.size()); }

    void Punctuation() {
        const bool isPair = (Peek() == ':' && Peek(1) == ':') || (Peek() == '-' && Peek(1) == '>');
        const std::size_t length = isPair ? 2 : 1;
        Add(PortTokenKind::Punctuation, m_text.substr(m_at, length), Line());
        m_at += length;
    }

    // Also separators of digits (1'000) and exponents: 1.5e-3.
    void Number() {
        const std::size_t start = m_at;
        for (; m_at < m_text.size(); ++m_at) {
            const char c = m_text[m_at];
            const char before = m_text[m_at - (m_at > start ? 1 : 0)];
            const bool isExponent = (c == '+' || c == '-') && (before == 'e' || before == 'E');
            const bool isSeparator = c == '\'' && IsNameCharacter(Peek(1));
            if (!IsNameCharacter(c) && c != '.' && !isExponent && !isSeparator) break;
        }
        Add(PortTokenKind::Other, m_text.substr(start, m_at - start), Line());
    }

    std::string_view TakeName() {
        const std::size_t start = m_at;
        while (m_at < m_text.size() && IsNameCharacter(m_text[m_at])) ++m_at;
        return m_text.substr(start, m_at - start);
    }

    void Name() {
        const std::uint32_t line = Line();
        const std::string_view name = TakeName();
        const bool isPrefix = name.size() <= 3 && (Peek() == '"' || Peek() == '\'');
        if (isPrefix && name.ends_with('R') && Peek() == '"') return RawText();
        if (isPrefix && (name == "L" || name == "u" || name == "U" || name == "u8"))
            return Quoted(Peek());
        const bool isParameter =
            std::find(m_parameters.begin(), m_parameters.end(), name) != m_parameters.end();
        Add(isParameter ? PortTokenKind::Other : PortTokenKind::Name, name, line);
    }

    // A text that is not closed ends with its line.
    void Quoted(char quote) {
        const std::uint32_t line = Line();
        const std::size_t start = m_at++;
        while (m_at < m_text.size() && m_text[m_at] != quote && m_text[m_at] != '\n')
            m_at += m_text[m_at] == '\\' && Peek(1) != '\n' ? 2 : 1;
        if (m_at < m_text.size() && m_text[m_at] == quote) ++m_at;
        m_at = std::min(m_at, m_text.size());
        Add(PortTokenKind::Other, m_text.substr(start, m_at - start), line);
    }

    // R"x( ... )x"
    void RawText() {
        const std::size_t open = m_text.find('(', m_at);
        if (open == std::string_view::npos || open - m_at > 17) return Quoted('"');
        const std::string close =
            ")" + std::string(m_text.substr(m_at + 1, open - m_at - 1)) + "\"";
        const std::size_t end = m_text.find(close, open);
        const std::size_t next = end == std::string_view::npos ? m_text.size() : end + close.size();
        Add(PortTokenKind::Other, m_text.substr(m_at, next - m_at), Line());
        m_line += static_cast<std::uint32_t>(
            std::count(m_text.begin() + static_cast<std::ptrdiff_t>(m_at),
                       m_text.begin() + static_cast<std::ptrdiff_t>(next), '\n'));
        m_at = next;
    }

    void SkipBlanks() {
        while (IsBlank(Peek()) && m_at < m_text.size()) ++m_at;
    }

    void Directive() {
        ++m_at;
        m_atLineStart = false;
        SkipBlanks();
        const std::string_view name = TakeName();
        if (name == "include") return Include();
        if (name == "define") return Define();
        if (name.starts_with("if")) return If(name);
        if (name.starts_with("el")) Add(PortTokenKind::Directive, "else", Line());
        if (name == "endif") Add(PortTokenKind::Directive, "endif", Line());
        SkipDirective();
    }

    // What stands behind a directive holds no uses, but a comment that begins there may go on.
    void SkipDirective() {
        while (m_at < m_text.size() && Peek() != '\n') {
            if (Peek() == '/' && Peek(1) == '*')
                Comment();
            else
                ++m_at;
        }
    }

    void Include() {
        SkipBlanks();
        const char close = Peek() == '<' ? '>' : '"';
        const std::size_t end = m_text.find_first_of(std::string{close, '\n'}, m_at + 1);
        if ((Peek() == '<' || Peek() == '"') && end != std::string_view::npos &&
            m_text[end] == close)
            Add(PortTokenKind::Header, m_text.substr(m_at, end + 1 - m_at), Line());
        SkipDirective();
    }

    void Define() {
        SkipBlanks();
        const std::uint32_t line = Line();
        const std::string_view name = TakeName();
        m_inDirective = true;
        Add(PortTokenKind::Defined, name, line);
        if (Peek() != '(') return;
        while (m_at < m_text.size() && Peek() != ')' && Peek() != '\n') {
            if (IsNameCharacter(Peek()))
                m_parameters.push_back(TakeName());
            else
                ++m_at;
        }
    }

    void If(std::string_view name) {
        Add(PortTokenKind::Directive, "if", Line());
        SkipBlanks();
        const bool isNever = name == "if" && Peek() == '0' && !IsNameCharacter(Peek(1));
        SkipDirective();
        if (isNever) SkipBranch();
    }

    // To the #else, #elif or #endif of an #if 0, which are then read as they stand.
    void SkipBranch() {
        for (int depth = 0; m_at < m_text.size();) {
            ++m_at; // the line's end
            ++m_line;
            const std::size_t start = m_at;
            SkipBlanks();
            const bool isDirective = Peek() == '#';
            if (isDirective) ++m_at;
            SkipBlanks();
            const std::string_view name = isDirective ? TakeName() : std::string_view();
            if (depth == 0 && (name == "endif" || name.starts_with("el"))) {
                m_at = start;
                m_atLineStart = true;
                return;
            }
            if (name.starts_with("if")) ++depth;
            if (name == "endif") --depth;
            SkipLine();
        }
    }

    const std::string_view m_text;
    const std::vector<std::size_t>& m_joins;
    std::vector<PortToken>& m_tokens;
    std::size_t m_at = 0;
    std::size_t m_join = 0;
    std::uint32_t m_line = 1;
    bool m_atLineStart = true;
    bool m_inDirective = false;
    std::vector<std::string_view> m_parameters; // of the macro that is being defined
};

} // namespace

PortSource::PortSource(std::string_view bytes) : m_text(JoinLines(Decode(bytes), m_joins)) {
    Tokeniser(m_text, m_joins, m_tokens).Run();
}

} // namespace vm::tool
