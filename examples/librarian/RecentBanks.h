// The banks opened last, newest first, kept in the section [Librarian Recent Banks] of the default
// profile.
#pragma once

#include <string>

#include <afxwin.h>

class RecentBanks {
public:
    static constexpr int kMaximum = 8;

    /// Reads the list; entries that are no absolute paths are passed over.
    void Load();

    /// Puts a bank first. FALSE when that changes nothing: it is the first already, or its path is
    /// one that the profile cannot hold.
    BOOL Add(const std::string& path);
    void Remove(int index);

    int Count() const { return m_paths.GetSize(); }
    std::string Path(int index) const { return m_paths[index]; }
    /// "voices.syx - /home/anna/banks", with the front of a long folder left out.
    std::string Text(int index) const;

private:
    void Store() const;

    CRecentFileList m_paths{kMaximum};
};
