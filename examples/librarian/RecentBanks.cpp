#include "RecentBanks.h"

#include "BankFolder.h"
#include "Settings.h"

namespace {

constexpr const char* kSection = "Librarian Recent Banks";
constexpr std::size_t kLongestFolder = 40;

std::string KeyOf(int index) {
    return "Bank" + std::to_string(index + 1);
}

bool IsStorable(const std::string& path) {
    return !path.empty() && path.front() == '/' && FitsProfile(KeyOf(0), path);
}

// The last folders of a path that are short enough.
std::string Shortened(const std::string& folder) {
    if (folder.size() <= kLongestFolder) return folder;
    const std::size_t slash = folder.find('/', folder.size() - kLongestFolder);
    return "..." + (slash == std::string::npos ? "" : folder.substr(slash));
}

} // namespace

void RecentBanks::Load() {
    for (int i = kMaximum - 1; i >= 0; --i) {
        char path[MAX_PATH] = {};
        ::GetProfileString(kSection, KeyOf(i).c_str(), "", path, sizeof path);
        if (IsStorable(path)) m_paths.Add(path);
    }
}

BOOL RecentBanks::Add(const std::string& path) {
    if (!IsStorable(path) || m_paths[0] == path) return FALSE;
    m_paths.Add(path.c_str());
    Store();
    return TRUE;
}

void RecentBanks::Remove(int index) {
    m_paths.Remove(index);
    Store();
}

std::string RecentBanks::Text(int index) const {
    const std::string path = Path(index);
    return NameOf(path) + " - " + Shortened(FolderOf(path));
}

void RecentBanks::Store() const {
    for (int i = 0; i < kMaximum; ++i)
        ::WriteProfileString(kSection, KeyOf(i).c_str(), i < Count() ? m_paths[i] : nullptr);
}
