// Lines of a script taken apart into words; comments fall away.
#pragma once

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
};

class Lexer {
public:
    /// Appends the line's words. A string that does not end on its line throws the place where it
    /// begins.
    struct Unended {
        int line;
        int column;
    };
    void Take(const SourceLine& line, const LexerSettings& settings, std::vector<Token>& tokens);
    bool IsInComment() const { return m_inComment; }

private:
    bool m_inComment = false; ///< from one line to the next
};

} // namespace vm::rc
