// The second pass over a file: what each name in it is.
#include "portUses.h"

#include <algorithm>
#include <array>
#include <unordered_map>

namespace vm::tool {

namespace {

// Written by the program, called by the system: defining one is the use.
constexpr auto kEntryPoints =
    std::to_array<std::string_view>({"DllMain", "WinMain", "_tWinMain", "_tmain", "wWinMain"});

// What some functions give back.
constexpr std::array<std::array<std::string_view, 2>, 8> kResults = {{{"AfxGetApp", "CWinApp"},
                                                                      {"AfxGetMainWnd", "CWnd"},
                                                                      {"FromHandle", "CWnd"},
                                                                      {"GetDC", "CDC"},
                                                                      {"GetDlgItem", "CWnd"},
                                                                      {"GetFocus", "CWnd"},
                                                                      {"GetParent", "CWnd"},
                                                                      {"GetSubMenu", "CMenu"}}};

// Of a class, for one look-up; and how far back an expression is read. Files that no compiler takes have
// classes that are their own base, and a million brackets.
constexpr int kMostBases = 100;
constexpr std::size_t kLongestExpression = 400;

bool IsUpperCase(char c) {
    return c >= 'A' && c <= 'Z';
}

// Behind these a name is used, behind other names it is declared.
bool IsStatementWord(std::string_view word) {
    constexpr auto words = std::to_array<std::string_view>(
        {"return", "else", "do", "throw", "case", "new", "delete", "sizeof", "not", "and", "or"});
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool IsCast(std::string_view word) {
    return word == "static_cast" || word == "dynamic_cast" || word == "reinterpret_cast" ||
           word == "const_cast";
}

} // namespace

class UseCounter {
public:
    UseCounter(PortScan& scan, const std::vector<PortToken>& tokens)
        : m_scan(scan), m_tree(scan.m_tree), m_known(PortKnowledge::Get()), m_tokens(tokens) {}

    void Run() {
        for (m_at = 0; m_at < m_tokens.size(); ++m_at) {
            const PortToken& token = m_tokens[m_at];
            const PortScopes::Event step = m_scopes.Step(token);
            if (token.kind == PortTokenKind::Header) Header(token);
            if (token.IsName()) Name(token);
            if (step == PortScopes::Opened || step == PortScopes::Ended) Override(step);
            if (step == PortScopes::Closed && m_scopes.Left().kind == PortScope::Function)
                m_locals.clear();
        }
    }

private:
    const PortToken& Token(std::size_t at) const {
        static const PortToken none{{}, 0, PortTokenKind::Other, false};
        return at < m_tokens.size() ? m_tokens[at] : none; // also for at = -1
    }
    const PortToken& Before(std::size_t by = 1) const { return Token(m_at - by); }
    const PortToken& Behind(std::size_t by = 1) const { return Token(m_at + by); }

    void Header(const PortToken& token) {
        if (const PortName* const known = m_known.Header(token.text))
            m_scan.Add(token.text, *known, token.line);
    }

    void Name(const PortToken& token) {
        if (Before().Is(".") || Before().Is("->")) return OfObject(token);
        if (Before().Is("::") && Before(2).IsName()) return OfClass(token);
        if (IsKnownClass(token.text)) Local(token.text);
        if (!OfThis(token)) Plain(token);
    }

    bool IsKnownClass(std::string_view name) const {
        return m_known.IsClass(name) || m_tree.classes.contains(name);
    }

    // 'CFoo* name' and 'name = new CFoo': from here on the name's class is known.
    void Local(std::string_view className) {
        if (Before().Is("new") && Before(2).Is("=") && Before(3).IsName()) {
            m_locals[Before(3).text] = className;
            return;
        }
        if (m_scopes.Current().kind == PortScope::Class && !InParameters()) return; // a field
        std::size_t at = m_at + 1;
        while (Token(at).Is("*") || Token(at).Is("&") || Token(at).Is("const")) ++at;
        const PortToken& next = Token(at + 1);
        const bool isEnd = next.kind == PortTokenKind::Punctuation &&
                           std::string_view(";=,)([{:").find(next.text) != std::string_view::npos;
        if (Token(at).IsName() && isEnd) m_locals[Token(at).text] = className;
    }

    bool InParameters() const {
        int depth = 0;
        for (const PortToken* token : m_scopes.Statement())
            depth += token->Is("(") ? 1 : token->Is(")") ? -1 : 0;
        return depth > 0;
    }

    void AddMember(const PortMember& found, std::uint32_t line) {
        if (!found.name.empty()) m_scan.Add(found.name, found.what, line);
    }

    struct Found {
        bool isOwn = false;
        PortMember member; // of a class of the interfaces
    };

    // In a class of the tree, then in its bases.
    Found Look(std::string_view className, std::string_view member) const {
        int budget = kMostBases;
        return Look(className, member, budget);
    }

    Found Look(std::string_view className, std::string_view member, int& budget) const {
        const auto at = m_tree.classes.find(className);
        if (at == m_tree.classes.end()) return {false, m_known.Member(className, member)};
        const PortClass& own = at->second;
        if (own.members.contains(member) || own.values.contains(member)) return {true, {}};
        Found best;
        for (const std::string& base : own.bases) {
            if (--budget < 0) break;
            Found found = Look(base, member, budget);
            if (found.isOwn) return found;
            if (best.member.name.empty() || best.member.what.state == PortState::Unknown)
                best = std::move(found);
        }
        return best;
    }

    void OfClass(const PortToken& token) {
        if (IsKnownClass(Before(2).text)) {
            const Found found = Look(Before(2).text, token.text);
            if (token.text != Before(2).text) AddMember(found.member, token.line);
        }
    }

    void OfObject(const PortToken& token) {
        const std::string_view className = ClassOf(m_at - 2);
        if (className.empty()) return ByName(token);
        const Found found = Look(className, token.text);
        const bool isOwnClass = !m_known.IsClass(className);
        if (found.isOwn || (isOwnClass && found.member.what.state == PortState::Unknown)) return;
        const bool counts = IsUpperCase(token.text[0]) || token.text.starts_with("m_");
        if (counts) AddMember(found.member, token.line);
    }

    void ByName(const PortToken& token) {
        if (!Behind().Is("(") || m_tree.members.contains(token.text)) return;
        if (!IsUpperCase(token.text[0])) return;
        const PortMember found = m_known.AnyMember(token.text);
        if (found.name.empty())
            ++m_scan.m_untold;
        else
            AddMember(found, token.line);
    }

    // The class of the object whose last token is at `at`; empty when it cannot be told.
    std::string_view ClassOf(std::size_t at) const {
        const PortToken& token = Token(at);
        if (token.Is("this")) return m_scopes.CurrentClass();
        if (token.Is("]")) return ClassOfElement(Opening(at, "[", "]") - 1);
        if (token.Is(")")) return ClassOfResult(Opening(at, "(", ")"));
        return token.IsName() ? ClassOfVariable(token.text) : std::string_view();
    }

    std::string_view ClassOfElement(std::size_t at) const {
        const PortToken& array = Token(at);
        return array.IsName() ? ClassOfVariable(array.text) : std::string_view();
    }

    // 0 when there is none near.
    std::size_t Opening(std::size_t at, std::string_view open, std::string_view close) const {
        const std::size_t last = at - std::min(at, kLongestExpression);
        for (int depth = 0; at < m_tokens.size() && at > last; --at) {
            if (m_tokens[at].Is(close)) ++depth;
            if (m_tokens[at].Is(open) && --depth == 0) return at;
        }
        return 0;
    }

    // Of a call or cast whose '(' is at `open`.
    std::string_view ClassOfResult(std::size_t open) const {
        const PortToken& before = Token(open - 1);
        if (before.Is(">")) {
            const std::size_t angle = Opening(open - 1, "<", ">");
            if (IsCast(Token(angle - 1).text)) return KnownClass(Token(angle + 1).text);
        }
        if (before.IsName()) {
            for (const auto& [function, result] : kResults)
                if (before.text == function) return result;
            return {};
        }
        const bool isCast = Token(open + 1).Is("(") && Token(open + 3).Is("*");
        return isCast ? KnownClass(Token(open + 2).text) : std::string_view();
    }

    std::string_view KnownClass(std::string_view name) const {
        return IsKnownClass(name) ? name : std::string_view();
    }

    std::string_view ClassOfVariable(std::string_view name) const {
        const auto local = m_locals.find(name);
        if (local != m_locals.end()) return local->second;
        int budget = kMostBases;
        std::string_view className = FieldClass(m_scopes.CurrentClass(), name, budget);
        if (className.empty()) {
            const auto variable = m_tree.variableClasses.find(name);
            if (variable != m_tree.variableClasses.end()) className = variable->second;
        }
        return KnownClass(className);
    }

    std::string_view FieldClass(std::string_view owner, std::string_view field, int& budget) const {
        const auto at = m_tree.classes.find(owner);
        if (at == m_tree.classes.end()) return {};
        const auto known = at->second.fieldClasses.find(field);
        if (known != at->second.fieldClasses.end()) return known->second;
        for (const std::string& base : at->second.bases) {
            if (--budget < 0) return {};
            const std::string_view found = FieldClass(base, field, budget);
            if (!found.empty()) return found;
        }
        return {};
    }

    // A call without an object in a function of a class. False when it is no member.
    bool OfThis(const PortToken& token) {
        const bool isField = token.text.starts_with("m_");
        if (!isField && (!Behind().Is("(") || !IsUpperCase(token.text[0]))) return false;
        const std::string_view className = m_scopes.CurrentClass();
        if (className.empty() || !m_scopes.InFunction() || Before().Is("::")) return false;
        if (isField && m_locals.contains(token.text)) return true;
        const Found found = Look(className, token.text);
        if (found.isOwn) return true;
        const PortState state = found.member.what.state;
        const bool isTold = !found.member.name.empty() && state != PortState::Unknown &&
                            !IsOfMissingClassOnly(found.member);
        if (isTold) AddMember(found.member, token.line);
        return isTold;
    }

    // A missing class says of every name that it is a missing member: that is a guess.
    bool IsOfMissingClassOnly(const PortMember& found) const {
        const std::string_view whole = found.name;
        const PortName* const ofClass = m_known.Plain(whole.substr(0, whole.find("::")));
        return ofClass != nullptr && ofClass->state == PortState::Missing &&
               ofClass->text == found.what.text;
    }

    void Plain(const PortToken& token) {
        const PortName* const known = m_known.Plain(token.text);
        if (known == nullptr) return;
        const bool isEntry =
            std::binary_search(kEntryPoints.begin(), kEntryPoints.end(), token.text);
        if (!isEntry && ((known->isFunction && !IsFunctionUse()) || IsOwn(token.text))) return;
        m_scan.Add(token.text, *known, token.line);
    }

    // Not a declaration.
    bool IsFunctionUse() const {
        if (Behind().Is("(")) return !Before().IsName() || IsStatementWord(Before().text);
        const bool isHandedOn = Behind().Is(",") || Behind().Is(")") || Behind().Is(";");
        return isHandedOn &&
               (Before().Is("=") || Before().Is("&") || Before().Is(",") || Before().Is("("));
    }

    bool IsOwn(std::string_view name) const {
        return m_tree.types.contains(name) || m_tree.macros.contains(name) ||
               m_tree.functions.contains(name) || m_tree.constants.contains(name);
    }

    // A handler that the library does not call is the tree's own function, and reached by its message map.
    bool IsOverride(const PortMember& found, std::string_view name) const {
        if (found.what.state == PortState::Unknown || IsOfMissingClassOnly(found)) return false;
        return found.what.state != PortState::Missing || !name.starts_with("On");
    }

    // A class of the tree declares a member that its base among the interfaces has.
    void Override(PortScopes::Event step) {
        const bool isOpened = step == PortScopes::Opened;
        if (isOpened && m_scopes.Current().kind != PortScope::Function) return;
        const PortScope& scope = isOpened ? m_scopes.Around() : m_scopes.Current();
        if (scope.kind != PortScope::Class) return;
        const PortStatement& statement = m_scopes.Statement();
        const int at = FunctionNameIn(statement);
        if (at < 0) return;
        const PortToken& name = *statement[static_cast<std::size_t>(at)];
        const auto own = m_tree.classes.find(scope.name);
        if (name.text == scope.name || own == m_tree.classes.end()) return;
        for (const std::string& base : own->second.bases) {
            const Found found = Look(base, name.text);
            if (found.isOwn || found.member.name.empty()) continue;
            if (IsOverride(found.member, name.text)) return AddMember(found.member, name.line);
        }
    }

    PortScan& m_scan;
    const PortDeclarations& m_tree;
    const PortKnowledge& m_known;
    const std::vector<PortToken>& m_tokens;
    std::size_t m_at = 0;
    PortScopes m_scopes;
    std::unordered_map<std::string_view, std::string_view> m_locals; // the classes of variables
};

void PortScan::Learn(std::string_view text) {
    m_tree.Add(PortSource(text), PortDeclarations::All);
}

void PortScan::Count(const std::string& file, std::string_view text) {
    m_files.push_back(file);
    const PortSource source(text);
    UseCounter(*this, source.Tokens()).Run();
}

void PortScan::Add(std::string_view name, const PortName& what, std::uint32_t line) {
    auto at = m_uses.find(name);
    if (at == m_uses.end())
        at = m_uses.emplace(std::string(name), PortUse{what.state, std::string(what.text), 0, {}})
                 .first;
    PortUse& use = at->second;
    ++use.count;
    if (use.places.empty() || m_withAllPlaces)
        use.places.push_back({static_cast<std::uint32_t>(m_files.size() - 1), line});
}

} // namespace vm::tool
