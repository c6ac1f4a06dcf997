// The ini files in use.
#include "files/ProfileManager.h"

#include <algorithm>
#include <cstring>

#include <vmcore/core/strings.h>
#include <vmcore/files/paths.h>

namespace vm {
namespace {

std::string DefaultProfile() {
    char path[MAX_PATH] = {};
    GetUserPreferencesPath(path, sizeof path);
    return std::string(path) + "/Velmora Win.ini";
}

// The library's current directory is none while the object lives, and the process's afterwards.
class DefaultDirectory {
public:
    DefaultDirectory() {
        GetCurrentDirectory(sizeof m_directory, m_directory);
        CurrentDirectory[0] = 0;
    }
    ~DefaultDirectory() { SetCurrentDirectory(m_directory); }
    DefaultDirectory(const DefaultDirectory&) = delete;
    DefaultDirectory& operator=(const DefaultDirectory&) = delete;

private:
    char m_directory[MAX_PATH] = {};
};

} // namespace

ProfileManager::Profiles::iterator ProfileManager::Find(const char* name) {
    return std::find_if(m_profiles.begin(), m_profiles.end(), [name](const auto& profile) {
        const char* known = profile->GetProfileName().c_str();
        return std::strcmp(known, name) == 0 || macstricmp(known, name) == 0;
    });
}

IniProfile& ProfileManager::GetIniProfile(const char* name, bool) {
    const auto found = Find(name);
    if (found != m_profiles.end()) return **found;
    m_profiles.push_back(std::make_unique<IniProfile>(name, m_cutFiles));
    return *m_profiles.back();
}

DWORD ProfileManager::GetProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue,
                                       LPSTR buffer, DWORD size) {
    const std::string name = DefaultProfile();
    const DefaultDirectory directory;
    return GetIniProfile(name.c_str())
        .GetPrivateProfileString(section, key, defaultValue, buffer, size);
}

int ProfileManager::GetProfileInt(LPCSTR section, LPCSTR key) {
    char text[256] = {};
    GetProfileString(section, key, "0", text, sizeof text);
    return DecimalValue(text);
}

void ProfileManager::WriteProfileString(LPCSTR section, LPCSTR key, LPCSTR value) {
    const std::string name = DefaultProfile();
    const DefaultDirectory directory;
    GetIniProfile(name.c_str()).WritePrivateProfileString(section, key, value);
}

void ProfileManager::Flush() {
    for (const auto& profile : m_profiles) profile->Write();
}

void ProfileManager::FlushProfile(const char* name) {
    const auto found = Find(name);
    if (found == m_profiles.end()) return;
    (*found)->Write();
    m_profiles.erase(found); // tries once more when that failed
}

void ProfileManager::ClearAll() {
    Flush();
    m_profiles.clear();
}

} // namespace vm
