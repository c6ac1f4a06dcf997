// The words of a script. A word that comes out of a macro remembers how it is spelled in the script,
// because identifiers are named by that in what the script becomes.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rc/report.h"

namespace vm::rc {

enum class TokenKind {
    Name,
    Number,
    String, ///< with its quotes and its L
    Quoted, ///< 'in single quotes'
    Mark,   ///< punctuation, "<<" and the like as one
    End
};

struct Token {
    TokenKind kind = TokenKind::End;
    bool glued = false; ///< nothing between it and the one before
    bool plain = false; ///< names a macro that may not be expanded again
    int file = 0;       ///< of TokenList::files
    int line = 0;
    int column = 0;
    int codePage = 0;  ///< that of escapes in a string
    unsigned call = 0; ///< number of the outermost macro call it comes from; 0: none
    std::string text;
    std::string symbol; ///< that call as it is spelled; empty without one
    std::string part;   ///< the call's argument, or the word of its body, that it comes from
    bool Is(std::string_view mark) const { return kind == TokenKind::Mark && text == mark; }
    const std::string& Spelling() const { return symbol.empty() ? text : symbol; }
};

struct TokenList {
    std::vector<std::string> files; ///< as they were named
    std::vector<std::string> paths; ///< of each where it was read, whatever #line calls it
    std::vector<Token> tokens;      ///< the last is an End
    Place PlaceOf(const Token& token) const {
        return {files[static_cast<std::size_t>(token.file)], token.line, token.column};
    }
};

/// The words as they may stand in a script: those of one call only once.
std::string SpellingOf(const Token* first, const Token* last);
/// Words inside of a call as its arguments and its body spell them: of "BUTTON(IDC_A)" the "IDC_A".
std::string PartSpellingOf(const Token* first, const Token* last);

/// A number with its suffix, such as "0x10L", "0o17", "12u"; false when it is none, or larger than
/// 32 bits, or 64 with `wide`. A leading zero alone makes no octal number, except with `wide`, the
/// numbers of the preprocessor.
bool NumberOf(std::string_view text, bool wide, unsigned long long& value);

/// What a string stands for, its escapes and doubled quotes taken out. An escape beyond ASCII is a
/// byte of the code page, or a UTF-16 unit in a string with L.
std::string TextOf(const Token& string);
/// What stands between the quotes: names of files have no escapes.
std::string_view Inside(const Token& string);

/// A name or word in ASCII, whatever its case.
bool SameWord(std::string_view a, std::string_view b);
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);

} // namespace vm::rc
