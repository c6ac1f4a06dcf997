// Names of files in scripts.
#include "rc/SourceFiles.h"

#include <algorithm>

namespace vm::rc {

std::string PortablePath(std::string_view name) {
    std::string path(name);
    std::replace(path.begin(), path.end(), '\\', '/');
    const auto isDouble = [](char a, char b) { return a == '/' && b == '/'; };
    path.erase(std::unique(path.begin(), path.end(), isDouble), path.end());
    return path;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + (slash == 0));
}

} // namespace vm::rc
