// Push buttons, check boxes, radio buttons and the frame around a group.
//
// An object made by Create, bound with DDX_Control or attached to a handle works the same; a
// checkable group box counts as a check box. Without a button every member does nothing and returns
// 0, FALSE or null. A click of the user goes to the parent as BN_CLICKED; what a member changes is
// not reported, except by BM_CLICK, which is a click. An object also answers the BM_ messages when
// they are sent to it, after its MessageMap. Main thread only.
#pragma once

#include <vmcore/core/types.h>
#include <vmcore/wnd/CWnd.h>

/// Create's style: one kind (the bits of BS_TYPEMASK), and further bits.
constexpr DWORD BS_PUSHBUTTON = 0;
constexpr DWORD BS_DEFPUSHBUTTON = 0x00100000;
constexpr DWORD BS_CHECKBOX = 0x00200000; ///< a click changes nothing: the program calls SetCheck
constexpr DWORD BS_AUTOCHECKBOX = 0x00300000;
constexpr DWORD BS_RADIOBUTTON = 0x00400000; ///< as BS_CHECKBOX
constexpr DWORD BS_AUTORADIOBUTTON = 0x00500000;
constexpr DWORD BS_3STATE = 0x00600000; ///< as BS_CHECKBOX
constexpr DWORD BS_AUTO3STATE = 0x00700000;
/// behind the controls beside it, and never in the way of the mouse
constexpr DWORD BS_GROUPBOX = 0x00800000;
constexpr DWORD BS_TYPEMASK = 0x00F00000;
/// a check box or radio button that looks like a push button
constexpr DWORD BS_PUSHLIKE = 0x01000000;
constexpr DWORD BS_LEFTTEXT = 0x02000000; ///< the text to the left of the box
constexpr DWORD BS_FLAT = 0x04000000;
constexpr DWORD BS_BITMAP = 0x08000000; ///< need not be given: see SetBitmap

/// Of GetCheck and GetState.
enum : int {
    BST_UNCHECKED = 0,
    BST_CHECKED = 1,
    BST_INDETERMINATE = 2,
    BST_PUSHED = 4,
    BST_FOCUS = 8,
};

class VM_API CButton : public CWnd {
    DECLARE_DYNAMIC(CButton)

    using CWnd::Create;
    /// WS_GROUP begins a new group of radio buttons: of those made in one parent, each excludes the
    /// others from the last button with WS_GROUP on. `&` marks the key that works the button. FALSE
    /// when the parent has no view.
    BOOL Create(const char* caption, DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetCheck() const;     ///< BST_UNCHECKED, BST_CHECKED or BST_INDETERMINATE
    void SetCheck(int check); ///< a radio button may be unchecked, so that none of its group is on
    UINT GetState() const;    ///< the check with BST_PUSHED and BST_FOCUS
    void SetState(BOOL pushed);  ///< how it looks
    UINT GetButtonStyle() const; ///< the kind, with BS_PUSHLIKE
    /// Makes a push button the default one or an ordinary one, and a check box one of two or of three
    /// states, and, made by Create, one that changes by itself or not. Other kinds stay what they are.
    void SetButtonStyle(UINT style, BOOL redraw = TRUE);
    /// Shows the bitmap as it is now, beside the text if there is one; null shows none. The bitmap
    /// before comes back. It stays the caller's.
    HBITMAP SetBitmap(HBITMAP bitmap);
    HBITMAP GetBitmap() const;

    LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
};
