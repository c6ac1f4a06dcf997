// The most recently used files, newest first, in memory.
#pragma once

#include <vmcore/core/CString.h>
#include <vmcore/core/arrays.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

class VM_API CRecentFileList {
public:
    explicit CRecentFileList(int maximum = 4);

    /// Puts `path` first; it stands in the list once. Beyond the maximum the oldest is dropped. A
    /// null or empty path changes nothing.
    void Add(const char* path);
    void Remove(int index); ///< nothing for an index out of range
    int GetSize() const { return m_names.GetSize(); }
    int GetMaximum() const { return m_maximum; }
    const char* operator[](int index) const; ///< "" for an index out of range
    /// The text of a menu item: "&1 Name.syx", the file name alone. FALSE out of range.
    BOOL GetDisplayName(CString& name, int index) const;

private:
    CStringArray m_names;
    int m_maximum;
};
