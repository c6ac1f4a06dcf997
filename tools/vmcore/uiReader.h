// An interface file as a list of what the library reads of it: widgets and actions with their
// properties, and the lines that they stand on.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace vm::tool {

struct UiProperty {
    std::size_t line; ///< from 1
    std::string value;
};

struct UiElement {
    enum class Kind { Widget, Action };
    Kind kind;
    std::string className; ///< of a widget
    std::string name;
    std::size_t line; ///< from 1
    int depth;        ///< 0 for the root, and how many widgets are around any other
    std::map<std::string, UiProperty> properties;
};

struct UiFile {
    std::vector<UiElement> elements; ///< in the order of the file: the root widget is the first
    std::string trouble;             ///< why this is no interface file; empty when it is one
    std::size_t troubleLine = 0;
};

UiFile ReadUi(std::string_view bytes);

} // namespace vm::tool
