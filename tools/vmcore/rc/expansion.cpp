// Calls of macros: replaced until nothing is left to replace, each macro never inside of itself.
#include <algorithm>
#include <optional>

#include "rc/macros.h"

namespace vm::rc {

using Words = std::vector<Token>;

class Expansion {
public:
    Expansion(Macros& macros, int depth, std::vector<const Macro*> active)
        : m_macros(macros), m_depth(depth), m_active(std::move(active)) {}
    Words Run(const Words& words);

private:
    /// Words that wait: those of the script, or of a macro that is busy as long as they last.
    struct Source {
        Words words;
        std::size_t at = 0;
        const Macro* macro = nullptr;
    };
    struct Call {
        const Macro* macro;
        Token name;
        std::vector<Words> arguments;
        std::string spelling;
    };

    const Token* Peek();
    Token Take();
    void Drop();
    bool IsBusy(const Macro* macro) const;
    const Macro* MacroAt(Token& word) const;
    bool TakeArguments(Call& call);
    void CheckArguments(Call& call) const;
    Words Substitute(const Call& call);
    void AddParameter(const Call& call, const Token& word, std::size_t index, bool raw, Words& out);
    void AddBody(const Call& call, std::size_t& at, Words& out);
    Token Stringized(const Words& argument, const Token& at) const;
    void Paste(Words& out, Words right, const Token& at) const;
    void Finish(const Call& call, Words& body);
    void Charge(const Call& call, const Words& words);
    [[noreturn]] void Fail(const Token& at, const std::string& text) const {
        throw MacroError{at, text};
    }

    Macros& m_macros;
    const int m_depth;
    std::vector<const Macro*> m_active; ///< of the calls around this one
    std::vector<Source> m_sources;
};

namespace {

constexpr std::size_t kLongestSymbol = 120; // that of a long call names nothing

std::optional<std::size_t> ParameterOf(const Macro& macro, const Token& word) {
    if (word.kind != TokenKind::Name) return std::nullopt;
    const auto found = std::find(macro.parameters.begin(), macro.parameters.end(), word.text);
    if (found == macro.parameters.end()) return std::nullopt;
    return static_cast<std::size_t>(found - macro.parameters.begin());
}

TokenKind KindOf(const std::string& text) {
    const char c = text.empty() ? ' ' : text[0];
    if (c >= '0' && c <= '9') return TokenKind::Number;
    const bool isName =
        c == '_' || c == '$' || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c & 0x80) != 0;
    return isName ? TokenKind::Name : TokenKind::Mark;
}

std::string Joined(const Words& words) {
    std::string text;
    for (const Token& word : words) {
        if (!text.empty() && !word.glued) text += ' ';
        text += word.text;
    }
    return text;
}

// What a call is in the body or the argument that it stands in. One that makes several things, such as a
// whole statement, is no part: each of its words is.
std::string PartOfCall(const Token& name, const std::string& spelling, const Words& body) {
    const bool makesSeveral =
        std::any_of(body.begin(), body.end(), [](const Token& word) { return word.Is(","); });
    if (name.call == 0 || (name.part == name.text && makesSeveral)) return {};
    return name.part == name.text ? spelling.substr(0, kLongestSymbol) : name.part;
}

} // namespace

void Expansion::Drop() {
    while (!m_sources.empty() && m_sources.back().at >= m_sources.back().words.size())
        m_sources.pop_back();
}

const Token* Expansion::Peek() {
    Drop();
    return m_sources.empty() ? nullptr : &m_sources.back().words[m_sources.back().at];
}

Token Expansion::Take() {
    Source& source = m_sources.back();
    return std::move(source.words[source.at++]);
}

bool Expansion::IsBusy(const Macro* macro) const {
    return std::find(m_active.begin(), m_active.end(), macro) != m_active.end() ||
           std::any_of(m_sources.begin(), m_sources.end(),
                       [macro](const Source& source) { return source.macro == macro; });
}

// A macro that is busy marks the word for good.
const Macro* Expansion::MacroAt(Token& word) const {
    if (word.kind != TokenKind::Name || word.plain) return nullptr;
    const Macro* const macro = m_macros.Find(word.text);
    if (!macro || !IsBusy(macro)) return macro;
    word.plain = true;
    return nullptr;
}

Words Expansion::Run(const Words& words) {
    Words result;
    m_sources.push_back({words});
    while (Peek()) {
        Token word = Take();
        const Macro* const macro = MacroAt(word);
        Call call{macro, word, {}, word.text};
        if (!macro || (macro->isFunction && !TakeArguments(call))) {
            result.push_back(std::move(word));
            continue;
        }
        Words body = Substitute(call);
        Finish(call, body);
        Drop();
        if (m_sources.size() > 1000) Fail(word, "macros are nested too deeply");
        m_sources.push_back({std::move(body), 0, macro});
    }
    return result;
}

// False, and nothing taken, when no parenthesis follows the name.
bool Expansion::TakeArguments(Call& call) {
    const Token* next = Peek();
    if (!next || !next->Is("(")) return false;
    call.spelling += Take().text;
    call.arguments.emplace_back();
    for (int depth = 1;;) {
        if (!Peek()) Fail(call.name, "the arguments of " + call.name.text + " have no ')'");
        Token word = Take();
        call.spelling += (word.glued ? "" : " ") + word.text;
        depth += word.Is("(") ? 1 : word.Is(")") ? -1 : 0;
        if (depth == 0) break;
        const bool rest =
            call.macro->variadic && call.arguments.size() >= call.macro->parameters.size();
        if (word.Is(",") && depth == 1 && !rest)
            call.arguments.emplace_back();
        else
            call.arguments.back().push_back(std::move(word));
    }
    CheckArguments(call);
    return true;
}

void Expansion::CheckArguments(Call& call) const {
    const std::size_t wanted = call.macro->parameters.size();
    if (call.macro->variadic && call.arguments.size() + 1 == wanted) call.arguments.emplace_back();
    if (wanted == 0 && call.arguments.size() == 1 && call.arguments[0].empty())
        call.arguments.clear();
    if (call.arguments.size() != wanted)
        Fail(call.name, call.name.text + " takes " + std::to_string(wanted) + " arguments, not " +
                            std::to_string(call.arguments.size()));
}

Words Expansion::Substitute(const Call& call) {
    Words out;
    for (std::size_t at = 0; at < call.macro->body.size(); ++at) AddBody(call, at, out);
    return out;
}

// One word of the body, with what an operator takes behind it.
void Expansion::AddBody(const Call& call, std::size_t& at, Words& out) {
    const Words& body = call.macro->body;
    const Token& word = body[at];
    const Token* const next = at + 1 < body.size() ? &body[at + 1] : nullptr;
    if (call.macro->isFunction && word.Is("#") && next) {
        const auto index = ParameterOf(*call.macro, *next);
        if (!index) Fail(word, "expected a parameter behind '#' in " + call.macro->name);
        out.push_back(Stringized(call.arguments[*index], word));
        ++at;
        return;
    }
    if (word.Is("##") && next && !out.empty()) {
        Words right;
        const auto index = ParameterOf(*call.macro, *next);
        if (index)
            right = call.arguments[*index];
        else
            right.push_back(*next);
        ++at;
        return Paste(out, std::move(right), word);
    }
    const auto index = ParameterOf(*call.macro, word);
    if (!index) return out.push_back(word);
    AddParameter(call, word, *index, next && next->Is("##"), out);
}

void Expansion::AddParameter(const Call& call, const Token& word, std::size_t index, bool raw,
                             Words& out) {
    Words argument = call.arguments[index];
    if (!raw) {
        if (m_depth >= m_macros.m_limits.macroDepth) Fail(word, "macros are nested too deeply");
        std::vector<const Macro*> active = m_active;
        for (const Source& source : m_sources)
            if (source.macro) active.push_back(source.macro);
        argument = Expansion(m_macros, m_depth + 1, std::move(active)).Run(argument);
    }
    if (!argument.empty()) argument.front().glued = word.glued;
    Charge(call, argument);
    const Words& written = call.arguments[index];
    const std::string part = PartSpellingOf(written.data(), written.data() + written.size());
    for (Token& expanded : argument) expanded.part = part.substr(0, kLongestSymbol);
    out.insert(out.end(), std::make_move_iterator(argument.begin()),
               std::make_move_iterator(argument.end()));
}

// Long words count as several.
void Expansion::Charge(const Call& call, const Words& words) {
    ++m_macros.m_expanded;
    for (const Token& word : words) m_macros.m_expanded += 1 + word.text.size() / 64;
    if (m_macros.m_expanded > m_macros.m_limits.expandedTokens)
        Fail(call.name, "macros expand to too much");
}

Token Expansion::Stringized(const Words& argument, const Token& at) const {
    Token string = at;
    string.kind = TokenKind::String;
    string.text = "\"";
    for (const char c : Joined(argument)) {
        if (c == '"' || c == '\\') string.text += '\\';
        string.text += c;
    }
    string.text += '"';
    if (string.text.size() > m_macros.m_limits.tokenBytes)
        Fail(at, "a macro makes too long a word");
    return string;
}

void Expansion::Paste(Words& out, Words right, const Token& at) const {
    if (right.empty()) return;
    Token& left = out.back();
    left.text += right.front().text;
    if (left.text.size() > m_macros.m_limits.tokenBytes) Fail(at, "a macro makes too long a word");
    const bool isString = right.front().kind == TokenKind::String;
    left.kind = isString ? TokenKind::String : KindOf(left.text);
    if (isString && left.text != "L" + right.front().text)
        Fail(at, "'##' cannot put a string behind that");
    left.plain = false;
    left.part.clear();
    out.insert(out.end(), right.begin() + 1, right.end());
}

// The words stand where the outermost call does.
void Expansion::Finish(const Call& call, Words& body) {
    Charge(call, body);
    const bool outermost = call.name.call == 0;
    const std::string symbol =
        outermost ? call.spelling.substr(0, kLongestSymbol) : call.name.symbol;
    const unsigned number = outermost ? ++m_macros.m_calls : call.name.call;
    const std::string part = PartOfCall(call.name, call.spelling, body);
    for (Token& word : body) {
        word.file = call.name.file;
        word.line = call.name.line;
        word.column = call.name.column;
        word.call = number;
        word.symbol = symbol;
        if (!part.empty()) word.part = part;
        if (word.part.empty()) word.part = word.text;
    }
    if (!body.empty()) body.front().glued = call.name.glued;
}

Words Macros::Expand(const Words& words) {
    const bool needed = std::any_of(words.begin(), words.end(), [this](const Token& word) {
        return word.kind == TokenKind::Name && Has(word.text);
    });
    return needed ? Expansion(*this, 0, {}).Run(words) : words;
}

} // namespace vm::rc
