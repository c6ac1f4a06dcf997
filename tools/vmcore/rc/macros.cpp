// Definitions of macros.
#include "rc/macros.h"

#include <algorithm>

namespace vm::rc {
namespace {

// The parameters, behind the parenthesis at words[1]; returns the index behind the closing one.
std::size_t TakeParameters(const std::vector<Token>& words, Macro& macro) {
    macro.isFunction = true;
    std::size_t at = 2;
    for (; at < words.size() && !words[at].Is(")"); ++at) {
        const Token& word = words[at];
        if (word.Is(",")) continue;
        if (word.kind == TokenKind::Name && !macro.variadic) {
            macro.parameters.push_back(word.text);
        } else if (word.Is(".")) {
            if (!macro.variadic) macro.parameters.push_back("__VA_ARGS__");
            macro.variadic = true;
        } else {
            throw MacroError{word, "expected a macro's parameter, not '" + word.text + "'"};
        }
    }
    if (at == words.size())
        throw MacroError{words[0], "the parameters of " + macro.name + " have no ')'"};
    return at + 1;
}

} // namespace

void Macros::Define(const std::vector<Token>& words) {
    Macro macro;
    macro.name = words[0].text;
    const bool isFunction = words.size() > 1 && words[1].Is("(") && words[1].glued;
    const std::size_t body = isFunction ? TakeParameters(words, macro) : 1;
    macro.body.assign(words.begin() + static_cast<std::ptrdiff_t>(body), words.end());
    m_macros.insert_or_assign(macro.name, std::move(macro));
}

const Macro* Macros::Find(const std::string& name) const {
    const auto found = m_macros.find(name);
    return found == m_macros.end() ? nullptr : &found->second;
}

bool Macros::IsUnfinished(const std::vector<Token>& words) const {
    int depth = 0;
    bool inCall = false;
    const Macro* macro = nullptr; // the word before
    for (const Token& word : words) {
        if (word.Is("(")) {
            inCall = inCall || (macro && macro->isFunction);
            if (inCall) ++depth;
        } else if (word.Is(")") && inCall) {
            inCall = --depth > 0;
        }
        macro = word.kind == TokenKind::Name ? Find(word.text) : nullptr;
    }
    return inCall;
}

} // namespace vm::rc
