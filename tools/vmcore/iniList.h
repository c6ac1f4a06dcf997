// What `vmcore ini list` prints.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "iniText.h"

namespace vm::tool {

/// The names of the sections that the library finds, one a line.
std::string ListSections(const IniText& text);

/// The entries of all blocks of the section, "key=value" lines.
std::string ListEntries(const IniText& text, std::string_view section);

/// The numbers of those lines of the section's blocks that the library never finds: behind another
/// block of the section or another entry of the key.
std::vector<std::size_t> HiddenEntries(const IniText& text, std::string_view section);

/// Everything, or the blocks of one section, with line numbers.
std::string ListAsJson(const IniText& text, std::optional<std::string_view> section);

} // namespace vm::tool
