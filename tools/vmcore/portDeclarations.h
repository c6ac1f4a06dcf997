// What sources declare, for `vmcore port`: of the tree that is looked at, whose own names are none of the
// interfaces', and of the public headers, when the tool is built.
#pragma once

#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "portScopes.h"
#include "portTokens.h"

namespace vm::tool {

struct PortClass {
    std::vector<std::string> bases;
    std::set<std::string, std::less<>> members;                ///< functions and fields
    std::set<std::string, std::less<>> values;                 ///< of enumerations inside
    std::unordered_map<std::string, std::string> fieldClasses; ///< the class of m_list, of *m_view
};

/// Names are kept as texts: the sources may be gone.
struct PortDeclarations {
    enum Which {
        All,   ///< of a tree
        Public ///< of headers: no private members, nothing in namespaces but bases of classes
    };
    /// Adds what a source declares.
    void Add(const PortSource& source, Which which);

    std::unordered_set<std::string> types; ///< classes, records, enumerations, aliases
    std::unordered_set<std::string> macros;
    std::unordered_set<std::string> functions;  ///< with a body
    std::unordered_set<std::string> prototypes; ///< without one
    std::unordered_set<std::string> constants;  ///< and variables
    std::unordered_map<std::string, PortClass> classes;
    std::unordered_set<std::string> members; ///< of any class
    /// The class of a variable or field of this name; empty when two have different ones.
    std::unordered_map<std::string, std::string> variableClasses;
};

struct PortVariable {
    std::string_view type;
    std::string_view name;
};
/// Those that a statement without parameters declares: 'const CFoo *a, b[2] = x'.
std::vector<PortVariable> VariablesIn(const PortStatement& statement);

} // namespace vm::tool
