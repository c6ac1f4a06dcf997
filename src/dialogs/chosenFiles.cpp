#include "dialogs/chosenFiles.h"

#include <algorithm>

#include "files/pathTranslation.h"

namespace vm {
namespace {

constexpr std::size_t kLongestPath = 255;

// Up to the last slash that all of them share.
std::string_view CommonFolder(const std::vector<std::string>& paths) {
    std::string_view folder = FolderOf(paths.front());
    const auto holds = [&](const std::string& path) {
        return folder == "/" || (path.starts_with(folder) && path[folder.size()] == '/');
    };
    while (!std::all_of(paths.begin(), paths.end(), holds)) folder = FolderOf(folder);
    return folder;
}

} // namespace

std::string_view FolderOf(std::string_view path) {
    const std::size_t slash = path.find_last_of('/');
    if (slash == std::string_view::npos) return {};
    return path.substr(0, std::max<std::size_t>(slash, 1));
}

std::string_view NameOf(std::string_view path) {
    return path.substr(path.find_last_of('/') + 1);
}

std::string WithExtension(std::string path, std::string_view extension) {
    if (extension.empty() || NameOf(path).find('.', 1) != std::string_view::npos) return path;
    return path.append(".").append(extension);
}

bool IsUsablePath(const std::string& path) {
    if (path.size() > kLongestPath) return false;
    const TranslatedPath translated = TranslatePath(path, false, {});
    return !translated.failed && translated.path == path;
}

std::string SavedAs(const std::string& path) {
    constexpr std::string_view kBitmap = ".bmp";
    if (path.size() <= kBitmap.size()) return path;
    const std::size_t dot = path.size() - kBitmap.size();
    const bool isBitmap =
        std::equal(kBitmap.begin(), kBitmap.end(), path.begin() + static_cast<std::ptrdiff_t>(dot),
                   [](char a, char b) { return a == (b | 0x20) || a == b; });
    return isBitmap ? path.substr(0, dot) + ".png" : path;
}

std::string SelectionList(const std::vector<std::string>& paths) {
    std::string list;
    if (paths.size() > 1) {
        const std::string_view folder = CommonFolder(paths);
        list.append(folder) += '\0';
        for (const std::string& path : paths)
            list.append(path, folder == "/" ? 1 : folder.size() + 1) += '\0';
    } else if (!paths.empty()) {
        list.append(paths.front()) += '\0';
    }
    return list += '\0';
}

} // namespace vm
