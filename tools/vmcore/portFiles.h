// The C++ files of a folder tree, for `vmcore port`.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace vm::tool {

/// More than a source is ever long.
constexpr std::size_t kLargestPortFile = 16 * 1024 * 1024;

struct PortFiles {
    std::vector<std::string> sources;  ///< in alphabetical order
    std::vector<std::string> tooLarge; ///< left out
    std::vector<std::string> trouble;  ///< 'PATH: reason' of what could not be read
    std::size_t resourceScripts = 0;
};

/// `path` is a folder or a file. Folders of version control and of builds are left out, and links to folders.
PortFiles FindPortFiles(const std::string& path);

} // namespace vm::tool
