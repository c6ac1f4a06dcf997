// The macros of a script, and what their calls become. The words that come out say where the call
// stands and how it is spelled.
#pragma once

#include <string>
#include <unordered_map>
#include <vector>

#include "rc/limits.h"
#include "rc/token.h"

namespace vm::rc {

struct Macro {
    std::string name;
    bool isFunction = false;
    bool variadic = false; ///< the last parameter, "__VA_ARGS__" or named, takes the rest
    std::vector<std::string> parameters;
    std::vector<Token> body;
};

/// What cannot be expanded; `at` is in the words that were given.
struct MacroError {
    Token at;
    std::string text;
};

class Macros {
public:
    explicit Macros(const Limits& limits) : m_limits(limits) {}
    /// The words behind "#define". Throws MacroError. A macro that is there is replaced.
    void Define(const std::vector<Token>& words);
    void Remove(const std::string& name) { m_macros.erase(name); }
    bool Has(const std::string& name) const { return m_macros.contains(name); }
    /// Throws MacroError.
    std::vector<Token> Expand(const std::vector<Token>& words);
    /// Whether the arguments of a call at the end of these words go on behind them.
    bool IsUnfinished(const std::vector<Token>& words) const;

private:
    friend class Expansion;
    const Macro* Find(const std::string& name) const;

    const Limits& m_limits;
    std::unordered_map<std::string, Macro> m_macros;
    std::size_t m_expanded = 0; ///< words so far
    unsigned m_calls = 0;
};

} // namespace vm::rc
