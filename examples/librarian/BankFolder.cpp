#include "BankFolder.h"

#include <algorithm>

#include <windows.h>

namespace {

constexpr const char* kPattern = "/*.syx";

bool IsShortEnough(const std::string& path) {
    return path.size() < MAX_PATH;
}

} // namespace

std::vector<std::string> BanksIn(const std::string& folder, std::size_t limit) {
    std::vector<std::string> names;
    if (folder.empty() || !IsShortEnough(folder + kPattern)) return names;
    WIN32_FIND_DATA entry = {};
    const HANDLE find = FindFirstFile((folder + kPattern).c_str(), &entry);
    for (BOOL more = find != INVALID_HANDLE_VALUE; more; more = FindNextFile(find, &entry)) {
        const bool isFile = !(entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
        if (isFile && IsShortEnough(folder + "/" + entry.cFileName))
            names.emplace_back(entry.cFileName);
    }
    FindClose(find);
    std::sort(names.begin(), names.end());
    if (names.size() > limit) names.resize(limit);
    return names;
}

std::string FolderOf(const std::string& path) {
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return {};
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string NameOf(const std::string& path) {
    return path.substr(path.rfind('/') + 1);
}
