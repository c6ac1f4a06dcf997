// Where in a source a token stands, for `vmcore port`: in which class, in a function of which class. A few
// rules about braces, no parser: what they cannot tell counts as a plain block.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "portTokens.h"

namespace vm::tool {

using PortStatement = std::vector<const PortToken*>;

struct PortScope {
    enum Kind { Namespace, Class, Enum, Function, Block };
    Kind kind;
    std::string_view name; ///< of a function: its class, empty for none
    bool isPublic = true;  ///< of a class: the members that follow
};

/// What a '{' begins.
PortScope ScopeOf(const PortStatement& statement, const PortScope& around);
/// The name in front of the parameters, where a statement declares or begins a function; -1 for none.
int FunctionNameIn(const PortStatement& statement);
/// The classes behind a class's ':'.
std::vector<std::string_view> BasesIn(const PortStatement& statement);

class PortScopes {
public:
    enum Event {
        Inside, ///< the token belongs to Statement()
        Ended,  ///< a ';' ended it
        Opened, ///< a '{' behind it began Current()
        Closed  ///< a '}': Left() is over
    };
    PortScopes() { m_scopes.push_back({PortScope::Namespace, {}}); }

    /// To be called with each token in its order. Statement() is as it was before this token.
    Event Step(const PortToken& token);

    const PortStatement& Statement() const { return m_statement; }
    const PortScope& Current() const { return m_scopes.back(); }
    const PortScope& Around() const {
        return m_scopes[m_scopes.size() < 2 ? 0 : m_scopes.size() - 2];
    }
    const PortScope& Left() const { return m_left; }
    bool InFunction() const;
    std::string_view CurrentClass() const; ///< also of the function it is in; empty for none
    bool InNamedNamespace() const;
    void MakePublic() { m_scopes.back().isPublic = true; } ///< for macros that hide a 'public:'

private:
    void Directive(std::string_view name);
    Event Open();
    Event Close();

    std::vector<PortScope> m_scopes;
    std::vector<std::vector<PortScope>> m_branches; // the scopes at each open #if
    PortStatement m_statement;
    PortScope m_left{PortScope::Namespace, {}};
    std::size_t m_deeper = 0;         // braces and #ifs that are nested too deeply to be followed
    std::size_t m_deeperBranches = 0; // (sources that no compiler takes)
    bool m_isOver = false;            // the next token begins a statement
};

} // namespace vm::tool
