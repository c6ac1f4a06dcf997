// Rules about statements in front of braces.
#include "portScopes.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace vm::tool {
namespace {

constexpr std::size_t kDeepest = 200;

bool IsAny(const PortToken& token, std::initializer_list<std::string_view> words) {
    return std::any_of(words.begin(), words.end(),
                       [&token](std::string_view word) { return token.Is(word); });
}

bool IsClassKey(const PortToken& token) {
    return IsAny(token, {"class", "struct", "union"});
}

// The place of the bracket that closes the one at `open`, or the statement's size.
std::size_t Closing(const PortStatement& statement, std::size_t open, std::string_view opening,
                    std::string_view closing) {
    int depth = 0;
    for (std::size_t i = open; i < statement.size(); ++i) {
        if (statement[i]->Is(opening)) ++depth;
        if (statement[i]->Is(closing) && --depth == 0) return i;
    }
    return statement.size();
}

// Behind templates, specifiers and macros that stand by themselves.
std::size_t HeadOf(const PortStatement& statement) {
    std::size_t i = 0;
    while (i < statement.size()) {
        const PortToken& token = *statement[i];
        const bool hasNext = i + 1 < statement.size();
        if (token.Is("template") && hasNext && statement[i + 1]->Is("<")) {
            i = Closing(statement, i + 1, "<", ">") + 1;
        } else if (IsAny(token, {"typedef", "static", "inline", "extern", "friend", "const"})) {
            ++i;
        } else if (token.IsName() && hasNext && statement[i + 1]->Is("(")) {
            const std::size_t end = Closing(statement, i + 1, "(", ")");
            if (end + 1 >= statement.size() || !statement[end + 1]->IsName()) return i;
            i = end + 1;
        } else {
            return i;
        }
    }
    return i;
}

// The ':' in front of the bases, or the statement's size.
std::size_t BasesAt(const PortStatement& statement) {
    const auto at = std::find_if(statement.begin(), statement.end(),
                                 [](const PortToken* token) { return token->Is(":"); });
    return static_cast<std::size_t>(at - statement.begin());
}

std::string_view ClassNameIn(const PortStatement& statement, std::size_t head) {
    std::string_view name;
    const std::size_t end = BasesAt(statement);
    for (std::size_t i = head + 1; i < end; ++i) {
        if (statement[i]->Is("<")) break;
        if (statement[i]->IsName() && !IsAny(*statement[i], {"final", "sealed", "abstract"}))
            name = statement[i]->text;
    }
    return name;
}

// The class in 'CFoo::Bar(' and 'CFoo::~CFoo(', empty for none.
std::string_view ClassOfFunction(const PortStatement& statement, int nameAt) {
    int at = nameAt - 1;
    if (at >= 0 && statement[static_cast<std::size_t>(at)]->Is("~")) --at;
    if (at < 1 || !statement[static_cast<std::size_t>(at)]->Is("::")) return {};
    --at;
    if (statement[static_cast<std::size_t>(at)]->Is(">"))
        while (at > 0 && !statement[static_cast<std::size_t>(at)]->Is("<")) --at;
    if (at > 0 && statement[static_cast<std::size_t>(at)]->Is("<")) --at;
    const PortToken& token = *statement[static_cast<std::size_t>(at)];
    return token.IsName() ? token.text : std::string_view();
}

bool EndsParameters(const PortStatement& statement, std::size_t next) {
    return next >= statement.size() ||
           IsAny(*statement[next], {"const", "noexcept", "override", "final", "throw", "->", ":",
                                    "volatile", "try", "=", "&", "mutable"});
}

PortScope FunctionScope(const PortStatement& statement, const PortScope& around) {
    if (around.kind == PortScope::Class) return {PortScope::Function, around.name};
    int nameAt = FunctionNameIn(statement);
    for (std::size_t i = 0; nameAt < 0 && i < statement.size(); ++i)
        if (statement[i]->Is("operator")) nameAt = static_cast<int>(i);
    if (nameAt < 0) return {PortScope::Block, {}};
    return {PortScope::Function, ClassOfFunction(statement, nameAt)};
}

} // namespace

int FunctionNameIn(const PortStatement& statement) {
    for (std::size_t i = 0; i + 1 < statement.size(); ++i) {
        if (statement[i]->Is("=")) return -1;
        if (!statement[i]->IsName() || !statement[i + 1]->Is("(")) continue;
        if (statement[i]->Is("static_assert")) return -1;
        if (IsAny(*statement[i], {"alignas", "decltype", "__declspec", "__attribute__", "operator",
                                  "noexcept", "sizeof"}))
            continue;
        const std::size_t end = Closing(statement, i + 1, "(", ")");
        if (end < statement.size() && EndsParameters(statement, end + 1))
            return static_cast<int>(i);
        i = end;
    }
    return -1;
}

std::vector<std::string_view> BasesIn(const PortStatement& statement) {
    std::vector<std::string_view> bases;
    std::string_view last;
    int depth = 0;
    for (std::size_t i = BasesAt(statement) + 1; i < statement.size(); ++i) {
        const PortToken& token = *statement[i];
        if (token.Is("<")) ++depth;
        if (token.Is(">")) --depth;
        if (depth > 0) continue;
        if (token.Is(",") && !last.empty()) bases.push_back(last);
        if (token.IsName() && !IsAny(token, {"public", "private", "protected", "virtual"}))
            last = token.text;
    }
    if (!last.empty()) bases.push_back(last);
    return bases;
}

PortScope ScopeOf(const PortStatement& statement, const PortScope& around) {
    const std::size_t head = HeadOf(statement);
    if (head >= statement.size()) {
        const bool isLinkage = !statement.empty() && statement[0]->Is("extern");
        return {isLinkage ? PortScope::Namespace : PortScope::Block, {}};
    }
    const PortToken& first = *statement[head];
    if (first.Is("namespace"))
        return {PortScope::Namespace,
                head + 1 < statement.size() ? statement[head + 1]->text : std::string_view()};
    if (first.Is("enum")) return {PortScope::Enum, ClassNameIn(statement, head)};
    if (first.kind == PortTokenKind::Other && statement[0]->Is("extern"))
        return {PortScope::Namespace, {}};
    if (IsClassKey(first) && FunctionNameIn(statement) < 0)
        return {PortScope::Class, ClassNameIn(statement, head), !first.Is("class")};
    if (around.kind == PortScope::Function || around.kind == PortScope::Block)
        return {PortScope::Block, {}};
    return FunctionScope(statement, around);
}

bool PortScopes::InFunction() const {
    return std::any_of(m_scopes.begin(), m_scopes.end(),
                       [](const PortScope& scope) { return scope.kind == PortScope::Function; });
}

std::string_view PortScopes::CurrentClass() const {
    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope)
        if (scope->kind == PortScope::Class || scope->kind == PortScope::Function)
            return scope->name;
    return {};
}

bool PortScopes::InNamedNamespace() const {
    return std::any_of(m_scopes.begin(), m_scopes.end(), [](const PortScope& scope) {
        return scope.kind == PortScope::Namespace && !scope.name.empty();
    });
}

// Each branch begins where the first one began; behind the #endif it goes on from the last.
void PortScopes::Directive(std::string_view name) {
    if (name == "if" && m_branches.size() >= kDeepest) {
        ++m_deeperBranches;
    } else if (name == "if") {
        m_branches.push_back(m_scopes);
    } else if (m_deeperBranches > 0) {
        if (name == "endif") --m_deeperBranches;
    } else if (!m_branches.empty() && name == "else") {
        m_scopes = m_branches.back();
    } else if (!m_branches.empty()) {
        m_branches.pop_back();
    }
}

PortScopes::Event PortScopes::Open() {
    m_isOver = true;
    if (m_scopes.size() >= kDeepest) {
        ++m_deeper;
        return Inside;
    }
    m_scopes.push_back(ScopeOf(m_statement, Current()));
    return Opened;
}

PortScopes::Event PortScopes::Close() {
    m_isOver = true;
    if (m_deeper > 0) {
        --m_deeper;
        return Inside;
    }
    m_left = Current();
    if (m_scopes.size() > 1) m_scopes.pop_back();
    return Closed;
}

PortScopes::Event PortScopes::Step(const PortToken& token) {
    if (m_isOver) m_statement.clear();
    m_isOver = false;
    if (token.kind == PortTokenKind::Directive) Directive(token.text);
    if (token.inDirective || token.kind >= PortTokenKind::Header) return Inside;
    if (token.Is("{")) return Open();
    if (token.Is("}")) return Close();
    if (token.Is(";")) {
        m_isOver = true;
        return Ended;
    }
    const bool isLabel = token.Is(":") && Current().kind == PortScope::Class &&
                         !m_statement.empty() &&
                         IsAny(*m_statement.back(), {"public", "protected", "private"});
    if (isLabel) {
        m_scopes.back().isPublic = m_statement.back()->Is("public");
        m_isOver = true;
        return Inside;
    }
    m_statement.push_back(&token);
    return Inside;
}

} // namespace vm::tool
