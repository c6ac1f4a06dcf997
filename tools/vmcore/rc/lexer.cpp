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
    /// Whether a comment goes on behind the line.
    bool Run(bool inComment);

private:
    bool SkipComment(bool inComment);
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

bool LineLexer::Run(bool inComment) {
    while (m_at < m_text.size()) {
        const bool isComment =
            inComment || (m_text[m_at] == '/' && (At(m_at + 1) == '/' || At(m_at + 1) == '*'));
        if (isComment) {
            if (SkipComment(inComment)) return true;
            inComment = false;
        } else if (IsBlank(m_text[m_at])) {
            ++m_at;
            m_glued = false;
        } else {
            TakeWord();
            m_glued = true;
        }
    }
    return inComment;
}

// Whether it goes on behind the line.
bool LineLexer::SkipComment(bool inComment) {
    m_glued = false;
    const bool toLineEnd = !inComment && m_text[m_at + 1] == '/';
    const std::size_t end = toLineEnd ? kNone : m_text.find("*/", inComment ? m_at : m_at + 2);
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

void LineLexer::Fail(const char* text) {
    CountTo(m_at);
    throw Lexer::Trouble{m_line.parts[m_part].line + m_settings.lineOffset, m_column, text};
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
    m_inComment = LineLexer(line, settings, tokens).Run(m_inComment);
}

} // namespace vm::rc
