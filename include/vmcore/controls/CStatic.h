// A text or picture that the user cannot change, or a line.
#pragma once

#include <vmcore/core/types.h>
#include <vmcore/wnd/CWnd.h>

constexpr DWORD SS_LEFT = 0;
constexpr DWORD SS_CENTER = 0x00100000;
constexpr DWORD SS_RIGHT = 0x00200000;
constexpr DWORD SS_BITMAP = 0x00400000; ///< shows only the picture of SetBitmap
constexpr DWORD SS_ETCHEDHORZ = 0x00800000;
constexpr DWORD SS_ETCHEDVERT = 0x01000000;
constexpr DWORD SS_ETCHEDFRAME = 0x02000000;
constexpr DWORD SS_SUNKEN = 0x04000000;
constexpr DWORD SS_NOPREFIX = 0x08000000;    ///< `&` is shown
constexpr DWORD SS_CENTERIMAGE = 0x10000000; ///< the picture in the middle

/// Of an object made by Create, bound with DDX_Control or attached to a label.
class VM_API CStatic : public CWnd {
    DECLARE_DYNAMIC(CStatic)

    /// Makes a label of the parent; a text is in the middle of the height. `&` marks the key that leads to
    /// the next control made in the parent that the Tab key leads to; as long as there is none, `&` is
    /// shown. FALSE when the parent has no view.
    BOOL Create(const char* label, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);
    using CWnd::Create;

    /// Shows the bitmap as it is now in place of the text; null shows nothing. The bitmap before
    /// comes back, null without a label. It stays the caller's.
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;
};
