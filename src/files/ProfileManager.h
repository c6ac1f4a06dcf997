// The ini files in use, by name. Used under the profile lock only.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "files/IniProfile.h"

namespace vm {

class ProfileManager {
public:
    ProfileManager() = default;
    ~ProfileManager() { ClearAll(); }
    ProfileManager(const ProfileManager&) = delete;
    ProfileManager& operator=(const ProfileManager&) = delete;

    /// The profile of this name (in any case), which is made and read when there is none.
    IniProfile& GetIniProfile(const char* name, bool flag = false);

    /// The three on the default file. They leave CurrentDirectory equal to the process's working
    /// directory.
    DWORD GetProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer,
                           DWORD size);
    int GetProfileInt(LPCSTR section, LPCSTR key);
    void WriteProfileString(LPCSTR section, LPCSTR key, LPCSTR value);

    void Flush();                        ///< writes all
    void FlushProfile(const char* name); ///< writes and forgets one
    void ClearAll();                     ///< writes and forgets all

private:
    using Profiles = std::vector<std::unique_ptr<IniProfile>>;
    Profiles::iterator Find(const char* name);

    std::set<std::string> m_cutFiles;
    Profiles m_profiles; ///< in the order of their creation
};

} // namespace vm
