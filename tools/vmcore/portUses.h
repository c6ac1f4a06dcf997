// Counting what a tree uses of the Win32 and MFC names. Pure functions on the texts of its files.
//
//     PortScan scan;
//     for (file : files) scan.Learn(text of file);              // all of them first:
//     for (file : files) scan.Count(name of file, text of file); // what the tree declares is its own
//
// A member of a class counts where the object's class can be told: from a declaration in the file, from the
// class whose function it is in, from a cast; else where its name alone says enough. What cannot be told is
// not counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "portDeclarations.h"
#include "portKnowledge.h"

namespace vm::tool {

struct PortPlace {
    std::uint32_t file; ///< index of PortScan::Files
    std::uint32_t line;
};

struct PortUse {
    PortState state;
    std::string text; ///< see PortName
    std::size_t count = 0;
    std::vector<PortPlace> places; ///< all of them, or only the first
};

class PortScan {
public:
    explicit PortScan(bool withAllPlaces = false) : m_withAllPlaces(withAllPlaces) {}

    void Learn(std::string_view text);
    void Count(const std::string& file, std::string_view text);

    const std::map<std::string, PortUse, std::less<>>& Uses() const { return m_uses; }
    const std::vector<std::string>& Files() const { return m_files; }
    /// Members of objects whose class could not be told, with a name that some class of MFC has.
    std::size_t Untold() const { return m_untold; }

private:
    friend class UseCounter;
    void Add(std::string_view name, const PortName& what, std::uint32_t line);

    const bool m_withAllPlaces;
    PortDeclarations m_tree;
    std::map<std::string, PortUse, std::less<>> m_uses;
    std::vector<std::string> m_files;
    std::size_t m_untold = 0;
};

} // namespace vm::tool
