#include "BankFolder.h"

#include <algorithm>
#include <filesystem>

#include <windows.h>

#include "Lower.h"

namespace fs = std::filesystem;

namespace {

bool IsShortEnough(const std::string& path) {
    return path.size() < MAX_PATH;
}

} // namespace

// A search by FindFirstFile ends at the first name that is not plain ASCII.
std::vector<std::string> FilesIn(const std::string& folder, const std::string& extension) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code ignored;
        const std::string name = entry->path().filename().string();
        if (Lower(entry->path().extension().string()) == extension &&
            entry->is_regular_file(ignored) && IsShortEnough(folder + "/" + name))
            names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    return names;
}

std::vector<std::string> BanksIn(const std::string& folder, std::size_t limit) {
    std::vector<std::string> names = FilesIn(folder, ".syx");
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
