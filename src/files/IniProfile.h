// One ini file in memory: read when it is made, looked up and changed, written on request. Used under
// the profile lock only.
#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <vmcore/core/types.h>

#include "files/IniLines.h"

namespace vm {

class IniProfile {
public:
    /// Reads the file at once; one that cannot be read is an empty profile.
    /// `cutFiles`: those whose cut lines are in the log already.
    IniProfile(std::string name, std::set<std::string>& cutFiles);
    ~IniProfile(); ///< writes
    IniProfile(const IniProfile&) = delete;
    IniProfile& operator=(const IniProfile&) = delete;

    const std::string& GetProfileName() const { return m_name; }

    DWORD GetPrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR defaultValue, LPSTR buffer,
                                  DWORD size);
    int GetPrivateProfileInt(LPCSTR section, LPCSTR key, int defaultValue);
    void WritePrivateProfileString(LPCSTR section, LPCSTR key, LPCSTR value);
    DWORD GetProfileSubClassCount(std::string_view section) const;
    void GetProfileEnumKey(std::string_view section, DWORD index, LPSTR name, LPDWORD length) const;
    bool VerifyKey(std::string_view prefix) const { return m_lines.AnyBeginsWith(prefix); }

    void ReadProfile(const char* name);
    void Write(); ///< when something has changed
    void WriteProfile(const char* name);

private:
    std::optional<IniLines::Place> FindSection(std::string_view section);
    std::optional<std::string_view> FindEntry(std::string_view section, std::string_view key);
    void Set(std::string_view section, std::string_view key, std::string_view value);
    bool CanHold(std::string_view section, std::string_view key, std::string_view value) const;
    bool ReadLines(const char* name);
    void ReportCut();

    const std::string m_name;
    std::set<std::string>& m_cutFiles;
    IniLines m_lines;
    std::string m_cachedSection;                  ///< the header that was last looked up
    std::size_t m_cachedIndex;                    ///< where, or the number of lines; 0 for nothing
    std::optional<IniLines::Place> m_cachedPlace; ///< the same, as long as nothing was written
    std::string m_entry;                          ///< the line that is being written
    bool m_dirty = false;
    bool m_unreadable = false; ///< there is a file whose contents we do not have
    DWORD m_lastWriteTick = 0; ///< sixtieths of a second
};

} // namespace vm
