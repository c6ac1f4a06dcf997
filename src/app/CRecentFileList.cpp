#include <vmcore/app/CRecentFileList.h>

#include <cstring>

#include "core/log.h"

CRecentFileList::CRecentFileList(int maximum) : m_maximum(maximum > 0 ? maximum : 0) {}

void CRecentFileList::Add(const char* path) {
    if (!path || !*path) return;
    const CString name(path); // hosts add what the list itself handed out
    for (int i = 0; i < m_names.GetSize(); ++i) {
        if (std::strcmp(m_names.GetAt(i), name) != 0) continue;
        m_names.RemoveAt(i);
        break;
    }
    m_names.InsertAt(0, name);
    if (m_names.GetSize() > m_maximum) m_names.RemoveAt(m_names.GetSize() - 1);
}

void CRecentFileList::Remove(int index) {
    if (index >= 0 && index < m_names.GetSize()) m_names.RemoveAt(index);
}

const char* CRecentFileList::operator[](int index) const {
    if (index < 0 || index >= m_names.GetSize()) return "";
    return m_names.GetAt(index);
}

BOOL CRecentFileList::GetDisplayName(CString& name, int index) const {
    if (index < 0 || index >= m_names.GetSize()) return FALSE;
    const char* path = m_names.GetAt(index);
    const char* slash = std::strrchr(path, '/');
    name = vm::Format("&%d %s", index + 1, slash ? slash + 1 : path).c_str();
    return TRUE;
}
