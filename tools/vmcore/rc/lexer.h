// Lines of a script taken apart into words; comments fall away.
#pragma once

#include <optional>
#include <vector>

#include "rc/SourceLines.h"
#include "rc/token.h"

namespace vm::rc {

struct LexerSettings {
    int file = 0;
    int codePage = 0;
    int lineOffset = 0; ///< what #line says more than the file's own count
    /// Of lines that only directives matter in: a string that does not end is no mistake there.
    bool tolerant = false;
    bool keep = true;        ///< or read for its comments only
    std::size_t most = 1000; ///< words, beyond which the line is a mistake
};

class Lexer {
public:
    /// Thrown of a string that does not end on its line, and of a line with too many words.
    struct Trouble {
        int line;
        int column;
        const char* text;
    };
    /// Appends the line's words.
    void Take(const SourceLine& line, const LexerSettings& settings, std::vector<Token>& tokens);
    /// Where the comment began that goes on behind the last line.
    struct Comment {
        int line;
        int column;
    };
    const std::optional<Comment>& OpenComment() const { return m_comment; }

private:
    std::optional<Comment> m_comment;
};

} // namespace vm::rc
