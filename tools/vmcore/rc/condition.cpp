// C's integer expressions: 64 bits, unsigned where one of two operands is.
#include "rc/condition.h"

#include <array>
#include <cstdint>

#include "rc/limits.h"

namespace vm::rc {
namespace {

struct Value {
    std::uint64_t bits = 0;
    bool isUnsigned = false;
    std::int64_t Signed() const { return static_cast<std::int64_t>(bits); }
};

Value Truth(bool holds) {
    return {holds ? 1U : 0U, false};
}

constexpr std::array<std::array<std::string_view, 4>, 10> kLevels = {{
    {"||"},
    {"&&"},
    {"|"},
    {"^"},
    {"&"},
    {"==", "!="},
    {"<", ">", "<=", ">="},
    {"<<", ">>"},
    {"+", "-"},
    {"*", "/", "%"},
}};

bool IsLess(Value a, Value b) {
    return a.isUnsigned || b.isUnsigned ? a.bits < b.bits : a.Signed() < b.Signed();
}

std::uint64_t Shifted(Value value, std::string_view operation, std::uint64_t by) {
    if (by > 63) return 0;
    if (operation == "<<") return value.bits << by;
    return value.isUnsigned ? value.bits >> by : static_cast<std::uint64_t>(value.Signed() >> by);
}

std::uint64_t Divided(Value a, Value b, bool remainder) {
    if (a.isUnsigned || b.isUnsigned) return remainder ? a.bits % b.bits : a.bits / b.bits;
    if (b.Signed() == -1) return remainder ? 0 : 0 - a.bits; // the smallest number has no negative
    return static_cast<std::uint64_t>(remainder ? a.Signed() % b.Signed()
                                                : a.Signed() / b.Signed());
}

std::uint64_t Arithmetic(Value a, char operation, Value b) {
    switch (operation) {
    case '|':
        return a.bits | b.bits;
    case '^':
        return a.bits ^ b.bits;
    case '&':
        return a.bits & b.bits;
    case '+':
        return a.bits + b.bits;
    case '-':
        return a.bits - b.bits;
    case '*':
        return a.bits * b.bits;
    default:
        return Divided(a, b, operation == '%');
    }
}

Value Combined(Value a, std::string_view operation, Value b) {
    if (operation == "||") return Truth(a.bits != 0 || b.bits != 0);
    if (operation == "&&") return Truth(a.bits != 0 && b.bits != 0);
    if (operation == "==") return Truth(a.bits == b.bits);
    if (operation == "!=") return Truth(a.bits != b.bits);
    if (operation == "<") return Truth(IsLess(a, b));
    if (operation == ">") return Truth(IsLess(b, a));
    if (operation == "<=") return Truth(!IsLess(b, a));
    if (operation == ">=") return Truth(!IsLess(a, b));
    if (operation.size() == 2) return {Shifted(a, operation, b.bits), a.isUnsigned};
    return {Arithmetic(a, operation[0], b), a.isUnsigned || b.isUnsigned};
}

class Condition {
public:
    Condition(const std::vector<Token>& words, const NameValue& valueOf)
        : m_words(words), m_valueOf(valueOf) {}
    bool Evaluate();

private:
    Value Choice(bool counts);
    Value Level(std::size_t level, bool counts);
    Value Unary(bool counts);
    Value Primary(bool counts);
    Value Constant(const Token& word) const;
    bool TakeMark(std::string_view mark);
    std::string_view TakeOperator(std::size_t level);
    const Token* Peek() const { return m_at < m_words.size() ? &m_words[m_at] : nullptr; }
    [[noreturn]] void Fail(const std::string& text) const { throw ConditionError{Peek(), text}; }

    const std::vector<Token>& m_words;
    const NameValue& m_valueOf;
    std::size_t m_at = 0;
    int m_depth = 0;
};

bool Condition::Evaluate() {
    const Value value = Choice(true);
    if (const Token* rest = Peek())
        Fail("expected the end of the condition, not '" + rest->text + "'");
    return value.bits != 0;
}

bool Condition::TakeMark(std::string_view mark) {
    const Token* const word = Peek();
    if (!word || !word->Is(mark)) return false;
    ++m_at;
    return true;
}

std::string_view Condition::TakeOperator(std::size_t level) {
    for (const std::string_view mark : kLevels[level])
        if (!mark.empty() && TakeMark(mark)) return mark;
    return {};
}

// `counts` is false for what is only read over, as behind "0 &&": there a division may be by zero.
Value Condition::Choice(bool counts) {
    const Value condition = Level(0, counts);
    if (!TakeMark("?")) return condition;
    if (++m_depth > kDeepest) Fail("the condition is nested too deeply");
    const bool first = condition.bits != 0;
    const Value yes = Choice(counts && first);
    if (!TakeMark(":")) Fail("expected ':'");
    const Value no = Choice(counts && !first);
    --m_depth;
    return {first ? yes.bits : no.bits, yes.isUnsigned || no.isUnsigned};
}

Value Condition::Level(std::size_t level, bool counts) {
    if (level == kLevels.size()) return Unary(counts);
    Value left = Level(level + 1, counts);
    for (;;) {
        const Token* const at = Peek();
        const std::string_view operation = TakeOperator(level);
        if (operation.empty()) return left;
        const bool decided =
            (operation == "||" && left.bits != 0) || (operation == "&&" && left.bits == 0);
        const Value right = Level(level + 1, counts && !decided);
        const bool divides = operation == "/" || operation == "%";
        if (divides && right.bits == 0 && counts)
            throw ConditionError{at, "the condition divides by zero"};
        left = divides && right.bits == 0 ? Value{} : Combined(left, operation, right);
    }
}

Value Condition::Unary(bool counts) {
    if (++m_depth > 4 * kDeepest) Fail("the condition is nested too deeply");
    Value value;
    if (TakeMark("!")) {
        value = Truth(Unary(counts).bits == 0);
    } else if (TakeMark("-")) {
        value = Unary(counts);
        value.bits = 0 - value.bits;
    } else if (TakeMark("~")) {
        value = Unary(counts);
        value.bits = ~value.bits;
    } else {
        value = TakeMark("+") ? Unary(counts) : Primary(counts);
    }
    --m_depth;
    return value;
}

Value Condition::Primary(bool counts) {
    if (TakeMark("(")) {
        const Value value = Choice(counts);
        if (!TakeMark(")")) Fail("expected ')'");
        return value;
    }
    if (const Token* word = Peek()) {
        const Value value = Constant(*word);
        ++m_at;
        return value;
    }
    Fail("expected a number at the end of the condition");
}

Value Condition::Constant(const Token& word) const {
    if (word.kind == TokenKind::Name)
        return {static_cast<std::uint64_t>(m_valueOf(word.text)), false};
    if (word.kind == TokenKind::Quoted && word.text.size() == 3)
        return {static_cast<unsigned char>(word.text[1]), false};
    unsigned long long number = 0;
    if (word.kind != TokenKind::Number || !NumberOf(word.text, true, number))
        Fail("expected a number, not '" + word.text + "'");
    const bool isUnsigned = word.text.find_first_of("uU") != std::string::npos;
    return {number, isUnsigned || number >> 63 != 0};
}

} // namespace

bool IsTrue(const std::vector<Token>& words, const NameValue& valueOf) {
    return Condition(words, valueOf).Evaluate();
}

} // namespace vm::rc
