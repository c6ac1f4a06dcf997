// What `vmcore port` knows of the Win32 and MFC names: which are there, which are there with a difference,
// and what to use in place of those that are missing.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vm::tool {

enum class PortState { There, Differs, Missing, Unknown };
const char* PortStateName(PortState state); ///< "there", "difference", "missing", "unknown"

struct PortName {
    PortState state;
    std::string_view text;   ///< what differs and what to do, what to use instead; or empty
    bool isFunction = false; ///< a plain name that counts where it is called or handed on
};

struct PortMember {
    std::string name; ///< "CWnd::Create": of the class that has it
    PortName what;
};

class PortKnowledge {
public:
    /// The tables that the tool was built with.
    static const PortKnowledge& Get();

    /// A plain name; also one that only looks like one of the interfaces (Unknown), and one that ends in W
    /// or A behind the name of a function. Null for every other.
    const PortName* Plain(std::string_view name) const;
    static bool LooksLikeOne(std::string_view name);

    /// "<afxwin.h>" or "\"afxwin.h\"", whatever the case; null for a header of others.
    const PortName* Header(std::string_view quoted) const;

    bool IsClass(std::string_view name) const { return m_classes.contains(name); }
    /// Looked for in the class and its bases. Of a missing class every member is missing, unless a base has
    /// it; Unknown in a class that is there. For no class an empty name.
    PortMember Member(std::string_view className, std::string_view member) const;
    /// The class that has a member of this name, if what is known of it does not depend on the class. Of
    /// several classes that have it only the member's name is in the answer; empty when it is ambiguous.
    PortMember AnyMember(std::string_view member) const;

private:
    struct ClassFacts {
        std::vector<std::string_view> bases;
        bool isMissing = false;
        std::string_view text; // of a missing class
        std::unordered_map<std::string_view, PortName> members;
    };
    PortKnowledge();
    void ReadThere(std::string_view line);
    void ReadDifference(std::string_view line);
    void ReadMissing(std::string_view line);
    void AddMissing(std::string_view name, std::string_view text);
    void FillAnyMember();
    bool Find(std::string_view className, std::string_view member, PortMember& found) const;
    const PortName* Wide(std::string_view name) const;

    std::unordered_map<std::string_view, PortName> m_names;
    std::unordered_map<std::string_view, PortName> m_headers;
    std::unordered_map<std::string_view, ClassFacts> m_classes;
    std::unordered_map<std::string_view, PortMember> m_anyMembers;
};

} // namespace vm::tool
