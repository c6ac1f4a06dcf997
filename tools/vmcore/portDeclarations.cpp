// Learning what sources declare, statement by statement.
#include "portDeclarations.h"

#include <algorithm>
#include <utility>

namespace vm::tool {
namespace {

using Step = PortScopes::Event;

bool IsWord(const PortToken& token, std::string_view word) {
    return token.IsName() && token.text == word;
}

// Back over the arguments of a template, from its '>' to the name in front of them.
int BeforeArguments(const PortStatement& statement, int at) {
    for (int depth = 0; at >= 0; --at) {
        if (statement[static_cast<std::size_t>(at)]->Is(">")) ++depth;
        if (statement[static_cast<std::size_t>(at)]->Is("<") && --depth == 0) return at - 1;
    }
    return -1;
}

bool IsKey(std::string_view word) {
    return word == "class" || word == "struct" || word == "union" || word == "enum" ||
           word == "return" || word == "delete" || word == "goto" || word == "case";
}

std::string_view TypeBefore(const PortStatement& statement, std::size_t nameAt) {
    int at = static_cast<int>(nameAt) - 1;
    while (at >= 0) {
        const PortToken& token = *statement[static_cast<std::size_t>(at)];
        if (token.Is("*") || token.Is("&") || IsWord(token, "const"))
            --at;
        else if (token.Is(">"))
            at = BeforeArguments(statement, at);
        else
            return token.IsName() && !IsKey(token.text) ? token.text : std::string_view();
    }
    return {};
}

bool EndsName(const PortToken& token) {
    return token.Is("=") || token.Is("[") || token.Is(",") || token.Is(":") || token.Is("(");
}

// One pass over one source.
class Learner {
public:
    Learner(PortDeclarations& to, PortDeclarations::Which which)
        : m_to(to), m_isPublicOnly(which == PortDeclarations::Public) {}

    void Run(const std::vector<PortToken>& tokens) {
        for (const PortToken& token : tokens) {
            if (token.kind == PortTokenKind::Defined) m_to.macros.insert(std::string(token.text));
            const Step step = m_scopes.Step(token);
            if (token.IsName() && token.text.starts_with("DECLARE_DYN")) m_scopes.MakePublic();
            if (step == Step::Opened) Open();
            if (step == Step::Ended) End();
            if (step != Step::Inside)
                m_hasLeftType = step == Step::Closed && IsType(m_scopes.Left());
            if (step == Step::Inside) Enumerator(token);
            m_before = step == Step::Inside && !token.inDirective ? &token : nullptr;
        }
    }

private:
    static bool IsType(const PortScope& scope) {
        return scope.kind == PortScope::Class || scope.kind == PortScope::Enum;
    }

    static bool IsOutside(const PortScope& scope) {
        return scope.kind == PortScope::Class || scope.kind == PortScope::Namespace;
    }

    bool IsHidden() const { return m_isPublicOnly && m_scopes.InNamedNamespace(); }

    void Enumerator(const PortToken& token) {
        const bool isFirst = m_before == nullptr || m_before->Is(",");
        if (m_scopes.Current().kind != PortScope::Enum || !token.IsName() || !isFirst || IsHidden())
            return;
        PortClass* const owner = ClassOf(m_scopes.Around());
        if (owner != nullptr) owner->values.insert(std::string(token.text));
        if (owner == nullptr || !m_isPublicOnly) m_to.constants.insert(std::string(token.text));
    }

    PortClass* ClassOf(const PortScope& scope) {
        if (scope.kind != PortScope::Class || scope.name.empty()) return nullptr;
        if (m_isPublicOnly && !scope.isPublic) return nullptr;
        return &m_to.classes[std::string(scope.name)];
    }

    void Open() {
        const PortScope& scope = m_scopes.Current();
        const PortStatement& statement = m_scopes.Statement();
        if (IsType(scope) && !scope.name.empty() && !IsHidden())
            m_to.types.insert(std::string(scope.name));
        if (scope.kind == PortScope::Class && !scope.name.empty()) {
            PortClass& made = m_to.classes[std::string(scope.name)];
            for (const std::string_view base : BasesIn(statement)) made.bases.emplace_back(base);
        } else if (scope.kind == PortScope::Function) {
            Function(statement, m_scopes.Around(), scope.name.empty());
        } else if (IsOutside(m_scopes.Around()) && !statement.empty()) {
            Variables(statement, m_scopes.Around()); // 'Type name = {' and 'Type name{'
        }
    }

    void Function(const PortStatement& statement, const PortScope& around, bool isFree) {
        const int at = FunctionNameIn(statement);
        if (at < 0) return;
        std::string name(statement[static_cast<std::size_t>(at)]->text);
        if (around.kind == PortScope::Class)
            Member(around, std::move(name));
        else if (isFree && !IsHidden())
            m_to.functions.insert(std::move(name));
    }

    void Member(const PortScope& scope, std::string name) {
        PortClass* const owner = ClassOf(scope);
        if (owner == nullptr) return;
        m_to.members.insert(name);
        owner->members.insert(std::move(name));
    }

    void End() {
        const PortStatement& statement = m_scopes.Statement();
        if (statement.empty()) return;
        if (IsWord(*statement[0], "typedef") || m_hasLeftType) return Typedef(statement);
        if (IsWord(*statement[0], "using")) return Using(statement);
        const PortScope& scope = m_scopes.Current();
        if (!IsOutside(scope)) {
            if (scope.kind != PortScope::Enum) Locals(statement);
            return;
        }
        const int at = FunctionNameIn(statement);
        if (at < 0) return Variables(statement, scope);
        std::string name(statement[static_cast<std::size_t>(at)]->text);
        if (scope.kind == PortScope::Class)
            Member(scope, std::move(name));
        else if (!IsHidden())
            m_to.prototypes.insert(std::move(name));
    }

    // Each name that ends a part; of 'void (CALLBACK *NAME)(int)' the one behind the '*'.
    void Typedef(const PortStatement& statement) {
        if (IsHidden()) return;
        int depth = 0;
        for (std::size_t i = 0; i < statement.size(); ++i) {
            const PortToken& token = *statement[i];
            if (token.Is("(")) ++depth;
            const bool isPointer =
                depth == 1 && token.IsName() && i > 0 && statement[i - 1]->Is("*");
            if (token.Is(")")) --depth;
            const bool isLast =
                i + 1 == statement.size() || statement[i + 1]->Is(",") || statement[i + 1]->Is("[");
            if (token.IsName() && (isPointer || (depth == 0 && isLast)))
                m_to.types.insert(std::string(token.text));
        }
    }

    void Using(const PortStatement& statement) {
        if (statement.size() > 2 && statement[2]->Is("=") && !IsHidden())
            m_to.types.insert(std::string(statement[1]->text));
    }

    void Variables(const PortStatement& statement, const PortScope& scope) {
        if (IsWord(*statement[0], "friend")) return;
        PortClass* const owner = ClassOf(scope);
        for (const PortVariable& variable : VariablesIn(statement)) {
            Note(variable);
            if (owner != nullptr) {
                owner->members.insert(std::string(variable.name));
                owner->fieldClasses.emplace(variable.name, variable.type);
            } else if (scope.kind == PortScope::Namespace && !IsHidden()) {
                m_to.constants.insert(std::string(variable.name));
            }
        }
    }

    // 'const UINT WM_MINE = WM_USER + 1;' inside of a function.
    void Locals(const PortStatement& statement) {
        if (m_isPublicOnly || statement.size() < 4 || !IsWord(*statement[0], "const")) return;
        for (const PortVariable& variable : VariablesIn(statement))
            m_to.constants.insert(std::string(variable.name));
    }

    void Note(const PortVariable& variable) {
        const auto [at, isNew] =
            m_to.variableClasses.emplace(std::string(variable.name), std::string(variable.type));
        if (!isNew && at->second != variable.type) at->second.clear();
    }

    PortDeclarations& m_to;
    const bool m_isPublicOnly;
    PortScopes m_scopes;
    const PortToken* m_before = nullptr; // of the same enumeration
    bool m_hasLeftType = false;          // what follows names the type that was just defined
};

} // namespace

std::vector<PortVariable> VariablesIn(const PortStatement& statement) {
    std::vector<PortVariable> variables;
    std::string_view type;
    int depth = 0;
    bool isValue = false;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        const PortToken& token = *statement[i];
        if (token.Is("<") || token.Is("(") || token.Is("[")) ++depth;
        if (token.Is(">") || token.Is(")") || token.Is("]")) --depth;
        if (depth > 0) continue;
        const bool isLast = i + 1 == statement.size() || EndsName(*statement[i + 1]);
        if (token.IsName() && isLast && !isValue && i > 0) {
            if (type.empty()) type = TypeBefore(statement, i);
            if (!type.empty()) variables.push_back({type, token.text});
        }
        if (token.Is("=") || token.Is(":")) isValue = true;
        if (token.Is(",")) isValue = false;
    }
    return variables;
}

void PortDeclarations::Add(const PortSource& source, Which which) {
    Learner(*this, which).Run(source.Tokens());
}

} // namespace vm::tool
