// SHBrowseForFolder: the desktop's dialog for choosing a folder, and what its result is freed with.
//
//     BROWSEINFO info{};
//     info.hwndOwner = view;
//     info.lpszTitle = "Where are the banks?";
//     if (LPITEMIDLIST item = SHBrowseForFolder(&info)) {
//         SHGetPathFromIDList(item, path); // char path[MAX_PATH]
//         ILFree(item);
//     }
#pragma once

#include <cstddef>

#include <vmcore/app/messages.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

struct ITEMIDLIST; ///< a path; to be asked with SHGetPathFromIDList only
using LPITEMIDLIST = ITEMIDLIST*;
using LPCITEMIDLIST = const ITEMIDLIST*;

/// Called with BFFM_INITIALIZED when the dialog is there, and with BFFM_SELCHANGED and a list that is
/// valid during the call when another folder is current. The answer is not used.
using BFFCALLBACK = int(CALLBACK*)(HWND dialog, UINT message, LPARAM lParam, LPARAM data);

struct tagBROWSEINFO {
    HWND hwndOwner;
    LPCITEMIDLIST pidlRoot; ///< not used: the user may go anywhere
    char* pszDisplayName;   ///< out, when it is not null: the folder's name, at most MAX_PATH bytes
    const char* lpszTitle;  ///< the dialog's title
    UINT ulFlags;
    BFFCALLBACK lpfn;
    LPARAM lParam; ///< handed to the callback
    int iImage;
};
using BROWSEINFO = tagBROWSEINFO;
using LPBROWSEINFO = tagBROWSEINFO*;

/// Of BROWSEINFO; kept, and without a meaning but for BIF_BROWSEINCLUDEFILES.
enum : UINT {
    BIF_RETURNONLYFSDIRS = 0x1,
    BIF_EDITBOX = 0x10,
    BIF_NEWDIALOGSTYLE = 0x40,
    BIF_USENEWUI = 0x50,
    BIF_BROWSEINCLUDEFILES = 0x4000, ///< shows files as well; only a folder can be chosen
};
enum : UINT {
    BFFM_INITIALIZED = 1,
    BFFM_SELCHANGED = 2,
    /// To the dialog's handle, with SendMessage: makes a folder the current one; lParam is its path, or
    /// with wParam FALSE its list. A folder that does not exist changes nothing.
    BFFM_SETSELECTION = WM_USER + 102,
};

/// The folder that was chosen, to be freed with any of the four functions below; null for Cancel. A
/// folder that the file functions cannot work with (longer than 255 bytes, a ':' or '\' in its name),
/// or whose name in no encoding looks like another one's, is refused with a message box, and the dialog stays. See commdlg.h for what all dialogs do.
VM_API LPITEMIDLIST SHBrowseForFolder(BROWSEINFO* info);
/// Copies the path into `path`, which holds MAX_PATH bytes. FALSE and an empty string for null.
VM_API BOOL SHGetPathFromIDList(LPCITEMIDLIST list, char* path);

VM_API void ILFree(LPITEMIDLIST list);
VM_API void SHFree(void* memory);
VM_API void CoTaskMemFree(void* memory);

/// The process's allocator; counting references does nothing.
class IMalloc {
public:
    virtual ULONG AddRef() = 0;
    virtual ULONG Release() = 0;
    virtual void* Alloc(std::size_t size) = 0;
    virtual void Free(void* memory) = 0;

protected:
    ~IMalloc() = default;
};
using LPMALLOC = IMalloc*;
VM_API HRESULT SHGetMalloc(IMalloc** allocator); ///< S_OK; E_FAIL for null
