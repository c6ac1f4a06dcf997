// The common dialogs as plain functions: files, fonts, colours. The desktop's own dialogs are shown
// where it has them.
//
// While one is open it is a modal dialog like any other: the application's windows are blocked, its
// timers and posted messages run, and the end of the application cancels it. With nobody to ask
// (VMCORE_MESSAGEBOX=log, an application that is ending, none at all) or on another than the main
// thread, a dialog is cancelled at once with a log line that begins with its name. Fields that no
// comment mentions are not used.
//
// Texts are Mac Roman as window texts are; file names are the file system's bytes.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>
#include <vmcore/gdi/gdiobjects.h>

struct tagOFN {
    DWORD lStructSize;
    HWND hwndOwner; ///< the window to appear over; may be null
    HINSTANCE hInstance;
    /// Pairs of a name and patterns ("*.syx;*.mid"), each ended by a zero, one more at the end. "*.*",
    /// no patterns, and a name without them show every file.
    const char* lpstrFilter;
    char* lpstrCustomFilter;
    DWORD nMaxCustFilter;
    DWORD nFilterIndex; ///< from 1; comes back as the user left it
    /// In: the name, with or without a path, that is suggested. Out: the path; of several files the
    /// folder and each name, all ended by a zero, and one more zero; that is left out after a single path
    /// that fills the buffer, unless Flags has OFN_ALLOWMULTISELECT.
    char* lpstrFile;
    DWORD nMaxFile;       ///< bytes of lpstrFile
    char* lpstrFileTitle; ///< out, when it is not null: the name without the path
    DWORD nMaxFileTitle;
    /// Where to start, unless lpstrFile has a path or is one of a folder. A folder that does not exist counts as none: then it
    /// is CurrentDirectory, or else the process's working directory.
    const char* lpstrInitialDir;
    const char* lpstrTitle;
    DWORD Flags;
    WORD nFileOffset;    ///< out: where the name begins in lpstrFile
    WORD nFileExtension; ///< out: where its extension begins; 0 without one
    /// For a name typed without an extension: the first of the chosen filter, else this one. Null: none.
    const char* lpstrDefExt;
    LPARAM lCustData;
    void* lpfnHook;
    const char* lpTemplateName;
};
using OPENFILENAME = tagOFN;
using LPOPENFILENAME = tagOFN*;

/// Of OPENFILENAME; all other bits are kept and mean nothing.
enum : DWORD {
    OFN_READONLY = 0x1,        ///< kept: there is no such check box
    OFN_OVERWRITEPROMPT = 0x2, ///< asks before an existing file is chosen for saving
    OFN_HIDEREADONLY = 0x4,    ///< always so
    OFN_NOCHANGEDIR = 0x8,     ///< otherwise the chosen folder becomes CurrentDirectory
    OFN_ALLOWMULTISELECT = 0x200,
    OFN_EXTENSIONDIFFERENT = 0x400, ///< out: the extension is not lpstrDefExt
    OFN_PATHMUSTEXIST = 0x800,
    OFN_FILEMUSTEXIST = 0x1000, ///< the folder too
    OFN_ENABLESIZING = 0x800000,
    OFN_EXPLORER = 0x80000,
};

/// What CommDlgExtendedError answers; 0 after OK and Cancel.
enum : DWORD {
    CDERR_INITIALIZATION = 0x2,   ///< a null record, or no buffer for the result
    FNERR_BUFFERTOOSMALL = 0x3003 ///< lpstrFile; its first two bytes are the size needed
};

/// TRUE when files were chosen. What comes back is what the file functions take for these very files:
/// a path that they could not open (longer than 255 bytes, a ':' or '\' in a name, an existing ".bmp"
/// file, which they would take for a ".png") is refused with a message box, and the dialog stays; so is
/// a name in no encoding that looks like another one's. A name for saving that ends in ".bmp" comes back
/// as the ".png" that is written.
VM_API BOOL GetOpenFileName(OPENFILENAME* record);
VM_API BOOL GetSaveFileName(OPENFILENAME* record);
VM_API DWORD CommDlgExtendedError();

struct tagCHOOSEFONT {
    DWORD lStructSize;
    HWND hwndOwner;
    HDC hDC;
    LOGFONT* lpLogFont; ///< in with CF_INITTOLOGFONTSTRUCT, and out
    int iPointSize; ///< out: tenths of a point. A point is a pixel, as in CFont::CreatePointFont
    DWORD Flags;
    COLORREF rgbColors; ///< kept: there is no choice of a colour
    LPARAM lCustData;
    void* lpfnHook;
    const char* lpTemplateName;
    HINSTANCE hInstance;
    char* lpszStyle; ///< out, when it is not null: the name of the style, at most 31 characters
    WORD nFontType;
    int nSizeMin; ///< with CF_LIMITSIZE: another size becomes the nearest one
    int nSizeMax;
};
using CHOOSEFONT = tagCHOOSEFONT;
using LPCHOOSEFONT = tagCHOOSEFONT*;

/// Of CHOOSEFONT; all other bits are kept and mean nothing.
enum : DWORD {
    CF_SCREENFONTS = 0x1,
    CF_INITTOLOGFONTSTRUCT = 0x40,
    CF_EFFECTS = 0x100, ///< underlined and struck out are taken over
    CF_LIMITSIZE = 0x2000,
    CF_FIXEDPITCHONLY = 0x4000, ///< only these are offered
    CF_SCALABLEONLY = 0x20000,  ///< always so
};

/// TRUE when a font was chosen. The face name holds the style as well ("Arial Bold Italic"), because
/// CFont chooses by the face name alone: CFont::CreateFontIndirect gives the font that was chosen.
VM_API BOOL ChooseFont(CHOOSEFONT* record);

struct tagCHOOSECOLOR {
    DWORD lStructSize;
    HWND hwndOwner;
    HWND hInstance;
    COLORREF rgbResult; ///< in with CC_RGBINIT, and out
    COLORREF*
        lpCustColors; ///< 16 of them, in and out, also after Cancel; null: those of CColorDialog
    DWORD Flags;
    LPARAM lCustData;
    void* lpfnHook;
    const char* lpTemplateName;
};
using CHOOSECOLOR = tagCHOOSECOLOR;
using LPCHOOSECOLOR = tagCHOOSECOLOR*;

/// Of CHOOSECOLOR; all other bits are kept and mean nothing: the dialog is always the full one.
enum : DWORD {
    CC_RGBINIT = 0x1,
    CC_FULLOPEN = 0x2,
    CC_PREVENTFULLOPEN = 0x4,
};

VM_API BOOL ChooseColor(CHOOSECOLOR* record); ///< TRUE when a colour was chosen
