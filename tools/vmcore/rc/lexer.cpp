// Words of a line.
#include "rc/lexer.h"

#include <algorithm>
#include <array>

namespace vm::rc {
namespace {

constexpr std::array<std::string_view, 9> kLongMarks = {
    "<<", ">>", "<=", ">=", "==", "!=", "&&", "||", "##"};
constexpr std::size_t kNone = std::string_view::npos;

bool IsBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsWordChar(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || IsDigit(c) || c == '_' || c == '$' ||
           (c & 0x80) != 0;
}

class LineLexer {
public:
    LineLexer(const SourceLine& line, const LexerSettings& settings, std::vector<Token>& tokens)
        : m_line(line), m_text(line.text), m_settings(settings), m_tokens(tokens) {}
    /// The comment that goes on behind the line; `open` goes on from the one before.
    std::optional<Lexer::Comment> Run(std::optional<Lexer::Comment> open);

private:
    bool SkipComment(bool isOpen);
    bool AtComment() const {
        return m_text[m_at] == '/' && (At(m_at + 1) == '/' || At(m_at + 1) == '*');
    }
    Lexer::Comment Here();
    void TakeWord();
    void Add(TokenKind kind, std::size_t length);
    std::size_t StringLength(std::size_t quote) const;
    std::size_t WordLength() const;
    std::size_t MarkLength() const;
    bool TakeString();
    void CountTo(std::size_t offset);
    [[noreturn]] void Fail(const char* text);
    char At(std::size_t offset) const { return offset < m_text.size() ? m_text[offset] : '\0'; }

    const SourceLine& m_line;
    const std::string_view m_text;
    const LexerSettings& m_settings;
    std::vector<Token>& m_tokens;
    std::size_t m_at = 0;
    std::size_t m_counted = 0; ///< where `m_column` is
    std::size_t m_part = 0;
    int m_column = 1;
    bool m_glued = false;
};

std::optional<Lexer::Comment> LineLexer::Run(std::optional<Lexer::Comment> open) {
    while (m_at < m_text.size()) {
        if (open || AtComment()) {
            const bool isOpen = open.has_value();
            if (!isOpen) open = Here();
            if (SkipComment(isOpen)) return open;
            open.reset();
        } else if (IsBlank(m_text[m_at])) {
            ++m_at;
            m_glued = false;
        } else {
            TakeWord();
            m_glued = true;
        }
    }
    return open;
}

// Whether it goes on behind the line.
bool LineLexer::SkipComment(bool isOpen) {
    m_glued = false;
    const bool toLineEnd = !isOpen && m_text[m_at + 1] == '/';
    const std::size_t end = toLineEnd ? kNone : m_text.find("*/", isOpen ? m_at : m_at + 2);
    m_at = end == kNone ? m_text.size() : end + 2;
    return end == kNone && !toLineEnd;
}

// The column counts characters from the beginning of the file's own line.
void LineLexer::CountTo(std::size_t offset) {
    while (m_part + 1 < m_line.parts.size() && m_line.parts[m_part + 1].offset <= offset) {
        m_counted = m_line.parts[++m_part].offset;
        m_column = 1;
    }
    for (; m_counted < offset; ++m_counted)
        if ((m_text[m_counted] & 0xC0) != 0x80) ++m_column;
}

Lexer::Comment LineLexer::Here() {
    CountTo(m_at);
    return {m_line.parts[m_part].line + m_settings.lineOffset, m_column};
}

void LineLexer::Fail(const char* text) {
    const auto [line, column] = Here();
    throw Lexer::Trouble{line, column, text};
}

void LineLexer::Add(TokenKind kind, std::size_t length) {
    if (!m_settings.keep) {
        m_at += length;
        return;
    }
    if (m_tokens.size() >= m_settings.most) Fail("the line is too long");
    CountTo(m_at);
    Token& token = m_tokens.emplace_back();
    token.kind = kind;
    token.glued = m_glued;
    token.file = m_settings.file;
    token.line = m_line.parts[m_part].line + m_settings.lineOffset;
    token.column = m_column;
    token.codePage = m_settings.codePage;
    token.text = m_text.substr(m_at, length);
    m_at += length;
}

std::size_t LineLexer::WordLength() const {
    std::size_t end = m_at;
    while (end < m_text.size() && IsWordChar(m_text[end])) ++end;
    return end - m_at;
}

std::size_t LineLexer::MarkLength() const {
    const std::string_view two = m_text.substr(m_at, 2);
    return std::find(kLongMarks.begin(), kLongMarks.end(), two) != kLongMarks.end() ? 2 : 1;
}

// Up to the closing quote; `kNone` without one. Two quotes are one inside.
std::size_t LineLexer::StringLength(std::size_t quote) const {
    for (std::size_t at = quote + 1; at < m_text.size(); ++at) {
        if (m_text[at] == '\\') {
            // A folder's name may end before the closing quote: "res\".
            if (At(at + 1) == '\\' || (At(at + 1) == '"' && m_text.find('"', at + 2) != kNone))
                ++at;
        } else if (m_text[at] == '"') {
            if (At(at + 1) != '"') return at + 1 - m_at;
            ++at;
        }
    }
    return kNone;
}

bool LineLexer::TakeString() {
    const bool wide = (m_text[m_at] == 'L' || m_text[m_at] == 'l') && At(m_at + 1) == '"';
    if (m_text[m_at] != '"' && !wide) return false;
    const std::size_t length = StringLength(wide ? m_at + 1 : m_at);
    if (length != kNone) {
        Add(TokenKind::String, length);
    } else if (m_settings.tolerant) {
        m_at = m_text.size();
    } else {
        Fail("expected a closing quote on this line");
    }
    return true;
}

void LineLexer::TakeWord() {
    if (TakeString()) return;
    const char c = m_text[m_at];
    if (IsWordChar(c)) return Add(IsDigit(c) ? TokenKind::Number : TokenKind::Name, WordLength());
    const std::size_t end = c == '\'' ? m_text.find('\'', m_at + 1) : kNone;
    if (end != kNone) return Add(TokenKind::Quoted, end + 1 - m_at);
    Add(TokenKind::Mark, MarkLength());
}

} // namespace

void Lexer::Take(const SourceLine& line, const LexerSettings& settings,
                 std::vector<Token>& tokens) {
    m_comment = LineLexer(line, settings, tokens).Run(m_comment);
}

} // namespace vm::rc
