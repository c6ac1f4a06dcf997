// A row of tabs, native or part of a tab widget whose pages were drawn in an interface file.
//
// An object made by Create, bound with DDX_Control or attached to a handle works the same. Without
// tabs every member does nothing and returns -1 or FALSE, unless something else is stated. Another
// tab that the user chose goes to the parent as WM_NOTIFY with TCN_SELCHANGE; what a member changes,
// insertions and deletions included, is not reported. Texts are Mac Roman beyond ASCII. Main thread
// only.
#pragma once

#include <vmcore/wnd/CWnd.h>

/// Create's style needs no bits of its own: the tabs are at the top.
constexpr DWORD TCS_TABS = 0;
constexpr DWORD TCS_SINGLELINE = 0;

/// Parts of a TCITEM.
enum : UINT {
    TCIF_TEXT = 0x1,
    TCIF_IMAGE = 0x2, ///< -1 when asked for, else ignored
    TCIF_PARAM = 0x8,
};

/// Where a HitTest hit.
enum : UINT { TCHT_NOWHERE = 0x1, TCHT_ONITEM = 0x6 };

struct tagTCITEM {
    UINT mask; ///< TCIF_ bits
    DWORD dwState;
    DWORD dwStateMask;
    char* pszText; ///< when asked for: a buffer of cchTextMax bytes, which is always terminated
    int cchTextMax;
    int iImage;
    LPARAM lParam;
};
using TCITEM = tagTCITEM;
using TC_ITEM = tagTCITEM;

struct tagTCHITTESTINFO {
    tagPOINT pt; ///< in the control
    UINT flags;  ///< filled: where it hit
};
using TCHITTESTINFO = tagTCHITTESTINFO;

class VM_API CTabCtrl : public CWnd {
    DECLARE_DYNAMIC(CTabCtrl)

    using CWnd::Create;
    /// The rectangle includes the pane below the tabs, where the program puts what belongs to the
    /// selected one: see AdjustRect. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    /// The new tab's index; at the end for an index beyond it. The first tab is selected. A tab widget
    /// gets an empty page with it.
    int InsertItem(int index, const TCITEM* item);
    int InsertItem(int index, const char* text);
    /// With a tab widget's tab its page goes. With the selected one the next becomes it, else the last.
    BOOL DeleteItem(int index);
    BOOL DeleteAllItems();
    BOOL GetItem(int index, TCITEM* item) const;
    BOOL SetItem(int index, const TCITEM* item);
    int GetItemCount() const; ///< 0 without tabs
    int GetRowCount() const;  ///< always 1: tabs without room are scrolled; 0 without tabs
    int GetCurSel() const;
    int SetCurSel(int index); ///< the tab selected before; -1, and nothing done, without such a tab

    BOOL GetItemRect(int index, RECT* rect) const; ///< in the control
    /// `larger` FALSE: from the rectangle of the control to what is left for the contents; TRUE: back.
    void AdjustRect(BOOL larger, RECT* rect) const;
    int HitTest(TCHITTESTINFO* info) const; ///< the tab under the point
    /// Of tabs made by Create; -1: as the texts need. The width before, -1 for other tabs.
    int SetMinTabWidth(int width);
};
