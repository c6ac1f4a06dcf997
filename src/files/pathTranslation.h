// The rules of file names, on plain strings: no file system, no process state.
#pragma once

#include <string>
#include <string_view>

namespace vm {

struct TranslatedPath {
    std::string path;
    bool failed =
        false; ///< the POSIX form would be longer than 255 bytes: the path is as it was left
    bool operator==(const TranslatedPath&) const = default;
};

/// What Win2PosixPath makes of a name. `isDirectory` changes nothing: a path from a volume name
/// ends without a slash either way.
TranslatedPath TranslatePath(std::string_view path, bool isDirectory, std::string_view volumesRoot);

/// `name` beside the executable, with backslashes.
std::string ModuleFileName(std::string_view executable, std::string_view name);

/// True for a name that CreateFile resolves against the current directory.
bool IsBareName(std::string_view name);

/// What FindFirstFile looks for.
struct FindPattern {
    std::string directory;
    bool filtered = false;
    std::string extension = {}; ///< at most 7 characters, as written
    bool operator==(const FindPattern&) const = default;
};
FindPattern ParseFindPattern(std::string_view posixPattern);

/// The characters after the last dot of a name; empty when that dot is the first or last character.
std::string_view ExtensionOf(std::string_view name);

} // namespace vm
