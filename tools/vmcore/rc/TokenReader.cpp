// Numbers, texts and identifiers of a script.
#include "rc/TokenReader.h"

#include <algorithm>

#include "rc/constants.h"
#include "rc/limits.h"

namespace vm::rc {
namespace {

constexpr std::string_view kOperators = "+-|&^";
constexpr std::size_t kLongestQuote = 60;

bool IsNumber(const Token& token) {
    unsigned long long number = 0;
    return token.kind == TokenKind::Number && NumberOf(token.text, false, number);
}

std::int64_t Applied(std::int64_t a, char operation, std::int64_t b) {
    const auto left = static_cast<std::uint64_t>(a);
    const auto right = static_cast<std::uint64_t>(b);
    switch (operation) {
    case '+':
        return static_cast<std::int64_t>(left + right);
    case '-':
        return static_cast<std::int64_t>(left - right);
    case '|':
        return a | b;
    case '&':
        return a & b;
    default:
        return a ^ b;
    }
}

// -1 may be written in 32 bits.
std::int64_t AsSigned(std::int64_t value) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(value));
}

} // namespace

const Token& TokenReader::Peek(std::size_t ahead) const {
    return m_list.tokens[std::min(m_at + ahead, m_list.tokens.size() - 1)];
}

const Token& TokenReader::Take() {
    const Token& token = Peek();
    if (token.kind != TokenKind::End) ++m_at;
    return token;
}

void TokenReader::Fail(const Token& at, const std::string& text) const {
    throw SyntaxError{PlaceOf(at), text};
}

// "'WS_UNHEARD' of 'MY_STYLE'"
std::string TokenReader::NextWord() const {
    const Token& token = Peek();
    const std::string word = token.text.substr(0, kLongestQuote);
    const bool ofMacro = token.call != 0 && token.symbol != token.text;
    return (AtText() ? word : "'" + word + "'") + (ofMacro ? " of '" + token.symbol + "'" : "");
}

void TokenReader::Expected(const std::string& what) const {
    if (AtEnd()) Fail(Peek(), "expected " + what + " at the end of the script");
    Fail(Peek(), "expected " + what + ", not " + NextWord());
}

bool TokenReader::IsWord(std::string_view word, std::size_t ahead) const {
    const Token& token = Peek(ahead);
    return token.kind == TokenKind::Name && SameWord(token.text, word);
}

bool TokenReader::TakeWord(std::string_view word) {
    if (!IsWord(word)) return false;
    Take();
    return true;
}

bool TokenReader::TakeMark(std::string_view mark) {
    if (!Peek().Is(mark)) return false;
    Take();
    return true;
}

bool TokenReader::AtBlock() const {
    return IsWord("BEGIN") || Peek().Is("{");
}

void TokenReader::Begin() {
    if (!AtBlock()) Expected("BEGIN");
    Take();
}

bool TokenReader::TakeEnd() {
    if (AtEnd()) Expected("END");
    return TakeWord("END") || TakeMark("}");
}

std::string TokenReader::OneText() {
    if (!AtText()) Expected("a text in quotes");
    return TextOf(Take());
}

std::string TokenReader::Text() {
    std::string text = OneText();
    while (AtText()) text += TextOf(Take());
    return text;
}

bool TokenReader::AtNumber() const {
    const Token& token = Peek();
    if (IsNumber(token)) return true;
    if (token.kind == TokenKind::Name) return ConstantValue(token.text).has_value();
    return token.Is("(") || token.Is("-") || token.Is("~") || token.Is("+");
}

std::int64_t TokenReader::Constant() {
    const Token& token = Peek();
    unsigned long long number = 0;
    if (token.kind == TokenKind::Number && NumberOf(token.text, false, number)) {
        Take();
        return static_cast<std::int64_t>(number);
    }
    if (token.kind != TokenKind::Name) Expected("a number");
    const auto value = ConstantValue(token.text);
    if (!value) Fail(token, "expected a number, and " + NextWord() + " is not defined");
    Take();
    return *value;
}

std::int64_t TokenReader::Operand() {
    if (++m_depth > kDeepest) Fail(Peek(), "numbers are nested too deeply");
    std::int64_t value = 0;
    if (TakeMark("(")) {
        value = Number();
        if (!TakeMark(")")) Expected("')'");
    } else if (TakeMark("-")) {
        value = Applied(0, '-', Operand());
    } else if (TakeMark("~")) {
        value = ~Operand();
    } else {
        value = TakeMark("+") ? Operand() : Constant();
    }
    --m_depth;
    return value;
}

bool TokenReader::TakeOperator(char& operation) {
    const Token& token = Peek();
    if (token.kind != TokenKind::Mark || token.text.size() != 1) return false;
    if (kOperators.find(token.text[0]) == std::string_view::npos) return false;
    operation = Take().text[0];
    return true;
}

std::int64_t TokenReader::Number() {
    std::int64_t value = Operand();
    for (char operation; TakeOperator(operation);) value = Applied(value, operation, Operand());
    return value;
}

int TokenReader::Int() {
    return static_cast<int>(AsSigned(Number()));
}

std::uint32_t TokenReader::Style(std::uint32_t defaults) {
    std::uint32_t style = defaults;
    for (char operation = '|';;) {
        const bool taken = TakeWord("NOT");
        const auto bits = static_cast<std::uint32_t>(Operand());
        if (taken)
            style &= ~bits;
        else
            style = static_cast<std::uint32_t>(Applied(style, operation, bits));
        if (TakeOperator(operation)) continue;
        // Some scripts leave out the '|' before NOT.
        if (!IsWord("NOT")) return style;
        operation = '|';
    }
}

int TokenReader::IdNumber(std::int64_t value, const Token& at) {
    const std::int64_t number = AsSigned(value);
    if (number >= -1 && number <= 65535) return static_cast<int>(number);
    const int taken = static_cast<int>(number & 0xFFFF);
    m_report.Add({PlaceOf(at), Outcome::Approximated, "number " + at.Spelling(),
                  std::to_string(number) + " is no number of 16 bits: " + std::to_string(taken)});
    return taken;
}

Id TokenReader::NumberId() {
    const std::size_t first = m_at;
    const std::int64_t value = Number();
    const Token* const begin = m_list.tokens.data() + first;
    const Token* const end = m_list.tokens.data() + m_at;
    const bool isPart = begin->call != 0 &&
                        ((first > 0 && begin[-1].call == begin->call) || end->call == begin->call);
    return {
        IdNumber(value, *begin), {}, isPart ? PartSpellingOf(begin, end) : SpellingOf(begin, end)};
}

Id TokenReader::NameOrNumber() {
    if (AtNumber()) return NumberId();
    const Token& token = Take();
    if (token.kind == TokenKind::String) {
        const std::string text = TextOf(token);
        unsigned long long number = 0;
        const bool isNumber =
            text.starts_with('#') && NumberOf(std::string_view(text).substr(1), false, number);
        if (isNumber && number <= 65535) return {static_cast<int>(number), {}, text.substr(1)};
        return {std::nullopt, Upper(text), text};
    }
    // A name may begin with a digit.
    if (token.kind != TokenKind::Name && token.kind != TokenKind::Number) {
        --m_at;
        Expected("a name or a number");
    }
    // What follows without a blank belongs to the name: "MY.DATA".
    const Token* last = &token + 1;
    std::string name = token.text;
    while (last->glued &&
           (last->Is(".") || last->Is("-") || last->kind == TokenKind::Name ||
            last->kind == TokenKind::Number) &&
           last->line == token.line) {
        name += (last++)->text;
        Take();
    }
    return {std::nullopt, Upper(name), SpellingOf(&token, last)};
}

Language TokenReader::TakeLanguage() {
    const int primary = Int();
    TakeComma();
    const int sub = Int();
    return {primary & 0x3FF, sub & 0x3F};
}

} // namespace vm::rc
