// CFileDialog: the desktop's dialog for opening or saving files.
//
//     CFileDialog dialog(TRUE, "syx", nullptr, OFN_FILEMUSTEXIST,
//                        "SysEx and MIDI files|*.syx;*.mid|All files|*.*||", this);
//     if (dialog.DoModal() == IDOK) load(dialog.GetPathName());
#pragma once

#include <string>

#include <vmcore/core/position.h>
#include <vmcore/dialogs/CDialog.h>
#include <vmcore/dialogs/commdlg.h>

class VM_API CFileDialog : public CDialog {
    DECLARE_DYNAMIC(CFileDialog)

    /// `filter` has the form of the example: pairs of a name and patterns. The parent is the window to
    /// appear over; null: the one in use.
    explicit CFileDialog(BOOL openFileDialog, const char* defExt = nullptr,
                         const char* fileName = nullptr,
                         DWORD flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT,
                         const char* filter = nullptr, CWnd* parentWnd = nullptr);

    /// IDOK or IDCANCEL; CommDlgExtendedError says whether IDCANCEL is a failure. See GetOpenFileName.
    int DoModal() override;

    // Of the chosen file, the first one of several; before DoModal of what is suggested.
    CString GetPathName() const;
    CString GetFileName() const;   ///< without the folder
    CString GetFileTitle() const;  ///< without the extension, too
    CString GetFileExt() const;    ///< without the dot
    CString GetFolderPath() const; ///< without a slash at the end, unless it is the root

    /// Walks through the files of OFN_ALLOWMULTISELECT: 0 when there is none (any more).
    POSITION GetStartPosition() const;
    CString GetNextPathName(POSITION& position) const;
    BOOL GetReadOnlyPref() const { return (m_ofn.Flags & OFN_READONLY) != 0; }

    // State. The order is part of the binary interface.
    OPENFILENAME m_ofn; ///< to be changed before DoModal; lpstrFile may be a larger buffer
    BOOL m_bOpenFileDialog;

private:
    CString m_defExt;
    std::string m_filter; // with zeros
    char m_fileName[MAX_PATH * 16];
};
