// What sources declare, for `vmcore port`: of the tree that is looked at, whose own names are none of the
// interfaces', and of the public headers, when the tool is built.
#pragma once

#include <cstddef>
#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "portScopes.h"
#include "portTokens.h"

namespace vm::tool {

/// Hashes a text however it is held, so that looking one up makes no copy.
struct PortTextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
        return std::hash<std::string_view>()(text);
    }
};
using PortTexts = std::unordered_set<std::string, PortTextHash, std::equal_to<>>;
template <class Value>
using PortTextMap = std::unordered_map<std::string, Value, PortTextHash, std::equal_to<>>;

struct PortClass {
    std::vector<std::string> bases;
    std::set<std::string, std::less<>> members; ///< functions and fields
    std::set<std::string, std::less<>> values;  ///< of enumerations inside
    PortTextMap<std::string> fieldClasses;      ///< the class of m_list, of *m_view
};

/// Names are kept as texts: the sources may be gone.
struct PortDeclarations {
    enum Which {
        All,   ///< of a tree
        Public ///< of headers: no private members, nothing in namespaces but bases of classes
    };
    /// Adds what a source declares.
    void Add(const PortSource& source, Which which);

    PortTexts types; ///< classes, records, enumerations, aliases
    PortTexts macros;
    PortTexts functions;  ///< with a body
    PortTexts prototypes; ///< without one
    PortTexts constants;  ///< and variables
    PortTextMap<PortClass> classes;
    PortTexts members; ///< of any class
    /// The class of a variable or field of this name; empty when two have different ones.
    PortTextMap<std::string> variableClasses;
};

struct PortVariable {
    std::string_view type;
    std::string_view name;
};
/// Those that a statement without parameters declares: 'const CFoo *a, b[2] = x'.
std::vector<PortVariable> VariablesIn(const PortStatement& statement);

} // namespace vm::tool
