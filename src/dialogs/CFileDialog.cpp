#include <vmcore/dialogs/CFileDialog.h>

#include <cstring>

#include "dialogs/FileChooser.h"
#include "dialogs/chosenFiles.h"

namespace {

CString Text(std::string_view text) {
    return CString(std::string(text).c_str());
}

} // namespace

CFileDialog::CFileDialog(BOOL openFileDialog, const char* defExt, const char* fileName, DWORD flags,
                         const char* filter, CWnd* parent)
    : CDialog(0, parent), m_ofn{}, m_bOpenFileDialog(openFileDialog),
      m_defExt(defExt ? defExt : ""), m_filter(vm::FilterWithZeros(filter)), m_fileName{} {
    m_ofn.lStructSize = sizeof m_ofn;
    m_ofn.lpstrFilter = filter ? m_filter.c_str() : nullptr;
    m_ofn.nFilterIndex = 1;
    m_ofn.lpstrFile = m_fileName;
    m_ofn.nMaxFile = sizeof m_fileName;
    m_ofn.Flags = flags | OFN_EXPLORER | OFN_ENABLESIZING;
    m_ofn.lpstrDefExt = defExt ? static_cast<const char*>(m_defExt) : nullptr;
    if (fileName) std::strncpy(m_fileName, fileName, MAX_PATH - 1);
}

int CFileDialog::DoModal() {
    if (parentWnd) m_ofn.hwndOwner = parentWnd->view;
    return vm::RunFileDialog(&m_ofn, m_bOpenFileDialog != 0) ? IDOK : IDCANCEL;
}

CString CFileDialog::GetPathName() const {
    POSITION first = GetStartPosition();
    return first ? GetNextPathName(first) : CString();
}

CString CFileDialog::GetFileName() const {
    return Text(vm::NameOf(static_cast<const char*>(GetPathName())));
}

CString CFileDialog::GetFileTitle() const {
    const CString name = GetFileName();
    const std::string_view letters = static_cast<const char*>(name);
    const std::size_t dot = letters.find_last_of('.');
    return dot == 0 ? name : Text(letters.substr(0, dot));
}

CString CFileDialog::GetFileExt() const {
    const CString name = GetFileName();
    const std::string_view letters = static_cast<const char*>(name);
    const std::size_t dot = letters.find_last_of('.');
    return dot == 0 || dot == std::string_view::npos ? CString() : Text(letters.substr(dot + 1));
}

CString CFileDialog::GetFolderPath() const {
    return Text(vm::FolderOf(static_cast<const char*>(GetPathName())));
}

// A position is the place of a name in the list; the first is the whole list's.
POSITION CFileDialog::GetStartPosition() const {
    return m_ofn.lpstrFile && *m_ofn.lpstrFile ? reinterpret_cast<POSITION>(m_ofn.lpstrFile) : 0;
}

CString CFileDialog::GetNextPathName(POSITION& position) const {
    const auto* entry = reinterpret_cast<const char*>(position);
    if (!entry) return {};
    const bool isFirst = entry == m_ofn.lpstrFile;
    const char* const second = entry + std::strlen(entry) + 1;
    const bool isList = m_ofn.Flags & OFN_ALLOWMULTISELECT;
    if (isFirst && (!isList || !*second)) {
        position = 0;
        return CString(entry);
    }
    const char* const name = isFirst ? second : entry;
    const char* const next = name + std::strlen(name) + 1;
    position = *next ? reinterpret_cast<POSITION>(next) : 0;
    std::string path = m_ofn.lpstrFile;
    if (!path.ends_with('/')) path += '/';
    return Text(path + name);
}

IMPLEMENT_DYNAMIC(CFileDialog, CDialog)
