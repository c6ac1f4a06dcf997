// Reads the words of a script one by one: what is expected is taken or named in an error.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "rc/report.h"
#include "rc/script.h"
#include "rc/token.h"

namespace vm::rc {

class TokenReader {
public:
    TokenReader(const TokenList& list, Report& report) : m_list(list), m_report(report) {}

    const Token& Peek(std::size_t ahead = 0) const;
    const Token& Take();
    bool AtEnd() const { return Peek().kind == TokenKind::End; }
    Place Here() const { return m_list.PlaceOf(Peek()); }
    Place PlaceOf(const Token& token) const { return m_list.PlaceOf(token); }
    const std::string& PathOf(const Token& token) const {
        return m_list.paths[static_cast<std::size_t>(token.file)];
    }
    /// "expected <what>, not '<word>'", where the next word is.
    [[noreturn]] void Expected(const std::string& what) const;
    [[noreturn]] void Fail(const Token& at, const std::string& text) const;
    std::string NextWord() const; ///< in quotes, with the macro that it comes from

    bool IsWord(std::string_view word, std::size_t ahead = 0) const; ///< whatever its case
    bool TakeWord(std::string_view word);
    bool TakeMark(std::string_view mark);
    /// Commas that real scripts leave out are optional everywhere.
    bool TakeComma() { return TakeMark(","); }

    bool AtBlock() const;
    void Begin();
    bool TakeEnd(); ///< END or '}'; the end of the script is an error
    /// Reads over a block from its beginning. `word` is called for each word in it.
    template <class Visitor>
    void SkipBlock(Visitor word);
    /// The same from within the block.
    template <class Visitor>
    void SkipToEnd(Visitor word);

    bool AtText() const { return Peek().kind == TokenKind::String; }
    /// A string, or several in a row.
    std::string Text();
    /// One string: where another may follow that is not its continuation.
    std::string OneText();

    bool AtNumber() const;
    /// A sum of numbers and constants; '+', '-', '|', '&' and '^' are applied from left to right.
    std::int64_t Number();
    std::uint32_t Bits() { return static_cast<std::uint32_t>(Number()); }
    int Int(); ///< 32 bits
    /// Style bits: `defaults` without those behind NOT, and with the others.
    std::uint32_t Style(std::uint32_t defaults);

    /// The number of a control or command, with its spelling.
    Id NumberId();
    /// A number, a name, or a name in quotes.
    Id NameOrNumber();
    Language TakeLanguage();

private:
    std::int64_t Operand();
    std::int64_t Constant();
    bool TakeOperator(char& operation);
    int IdNumber(std::int64_t value, const Token& at);

    const TokenList& m_list;
    Report& m_report;
    std::size_t m_at = 0;
    int m_depth = 0;
};

template <class Visitor>
void TokenReader::SkipBlock(Visitor word) {
    Begin();
    SkipToEnd(word);
}

template <class Visitor>
void TokenReader::SkipToEnd(Visitor word) {
    for (int depth = 1; depth > 0;) {
        if (AtBlock()) {
            ++depth;
            Take();
        } else if (TakeEnd()) {
            --depth;
        } else {
            word(Take());
        }
    }
}

} // namespace vm::rc
