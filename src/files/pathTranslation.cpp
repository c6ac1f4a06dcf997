// The rules of file names.
#include "files/pathTranslation.h"

#include <algorithm>
#include <optional>

#include <strings.h>

namespace vm {
namespace {

constexpr std::size_t kLongestPath = 255;
constexpr std::size_t kLongestExtension = 7;

void ReplaceAny(std::string& path, std::string_view from, char to) {
    for (char& c : path)
        if (from.find(c) != std::string_view::npos) c = to;
}

// A ':' separated name as a path below the volumes root; nothing when it names no volume. Two
// separators in a row, as in C:\x, count as one.
std::optional<std::string> VolumePath(std::string_view name, std::string_view volumesRoot) {
    std::string path;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find(':'), name.size());
        if (end > 0) path.append("/").append(name.substr(0, end));
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    if (path.empty()) return std::nullopt;
    return std::string(volumesRoot) + path;
}

// Bitmap resources are stored as PNG files.
void RedirectBitmap(std::string& path) {
    if (path.size() >= 5 && strcasecmp(path.c_str() + path.size() - 4, ".bmp") == 0)
        path.replace(path.size() - 4, 4, ".png");
}

} // namespace

TranslatedPath TranslatePath(std::string_view path, bool, std::string_view volumesRoot) {
    TranslatedPath result{std::string(path)};
    if (path.starts_with('/')) {
        ReplaceAny(result.path, "\\:", '/');
    } else if (path.find(':') == std::string_view::npos) {
        ReplaceAny(result.path, "\\", '/');
    } else {
        ReplaceAny(result.path, "/\\", ':');
        if (const auto onVolume = VolumePath(result.path, volumesRoot)) {
            result.failed = onVolume->size() > kLongestPath;
            if (!result.failed) result.path = *onVolume;
        }
    }
    RedirectBitmap(result.path);
    return result;
}

std::string ModuleFileName(std::string_view executable, std::string_view name) {
    std::string path(executable.substr(0, executable.rfind('/') + 1));
    ReplaceAny(path, "/", '\\');
    return path.append(name);
}

bool IsBareName(std::string_view name) {
    return name.find_first_of("/:\\") == std::string_view::npos;
}

FindPattern ParseFindPattern(std::string_view pattern) {
    const std::size_t slash = pattern.rfind('/');
    const std::string_view last = pattern.substr(slash + 1);
    if (last.find('*') == std::string_view::npos) return {std::string(pattern)};
    FindPattern result;
    if (slash == std::string_view::npos)
        result.directory = "."; // a pattern alone means the process's working directory
    else
        result.directory = pattern.substr(0, std::max<std::size_t>(slash, 1));
    // A lone "*" has no extension to compare.
    result.filtered = last != "*.*" && last.size() >= 2;
    if (result.filtered) result.extension = last.substr(2, kLongestExtension);
    return result;
}

std::string_view ExtensionOf(std::string_view name) {
    const std::size_t dot = name.rfind('.');
    if (dot == std::string_view::npos || dot == 0) return {};
    return name.substr(dot + 1);
}

} // namespace vm
