// A scroll bar by itself. The bars of a window are CWnd's own: WS_VSCROLL, CWnd::SetScrollPos.
//
// What the user does goes to the parent as WM_HSCROLL or WM_VSCROLL: a click before the knob
// SB_PAGEDOWN (3), one after it SB_LINEDOWN (1), a drag SB_THUMBTRACK (5) with a position in the high
// word. That position is scaled to the parent's own range, vScrollMin to vScrollMax or hScrollMin
// to hScrollMax. The bar itself has moved when the message arrives, so a handler reads the position
// in the range of the bar from the bar, in all three cases and beyond 65535. Arrows at the ends, if the
// desktop has them, send nothing and leave the bar where it is.
//
//     case WM_VSCROLL: if (HWND(lParam) == m_bar.view) ShowFrom(m_bar.GetScrollPos());
//
// An object made by Create, bound with DDX_Control or attached to a handle works the same. Without a
// scroll bar every member does nothing and returns 0 or FALSE. Nothing that a member changes is
// reported. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

constexpr DWORD SBS_HORZ = 0;
constexpr DWORD SBS_VERT = 0x00100000;

/// Parts of a SCROLLINFO.
enum : UINT {
    SIF_RANGE = 0x1,
    SIF_PAGE = 0x2,
    SIF_POS = 0x4,
    SIF_DISABLENOSCROLL =
        0x8, ///< disables the bar when there is nothing to scroll, else enables it
    SIF_TRACKPOS = 0x10,
    SIF_ALL = SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS,
};

/// What EnableScrollBar disables: only both together.
enum : UINT {
    ESB_ENABLE_BOTH = 0,
    ESB_DISABLE_LTUP = 1,
    ESB_DISABLE_RTDN = 2,
    ESB_DISABLE_BOTH = 3
};

struct tagSCROLLINFO {
    UINT cbSize;
    UINT fMask;
    int nMin;
    int nMax;
    UINT nPage; ///< how much is seen at once: positions end at nMax - nPage + 1
    int nPos;
    int nTrackPos; ///< the same as nPos
};
using SCROLLINFO = tagSCROLLINFO;
using LPSCROLLINFO = tagSCROLLINFO*;
using LPCSCROLLINFO = const tagSCROLLINFO*;

class VM_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)

    using CWnd::Create;
    /// The range is 0 to 100, without a page. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    int GetScrollPos() const;
    int SetScrollPos(int position, BOOL redraw = TRUE); ///< within the range; the position before
    void GetScrollRange(int* lowest, int* highest) const;
    void SetScrollRange(int lowest, int highest, BOOL redraw = TRUE);
    /// The parts that fMask names. cbSize is not looked at.
    BOOL SetScrollInfo(const SCROLLINFO* info, BOOL redraw = TRUE);
    BOOL GetScrollInfo(SCROLLINFO* info, UINT mask = SIF_ALL) const;
    int GetScrollLimit() const; ///< the last position
    void ShowScrollBar(BOOL show = TRUE);
    BOOL EnableScrollBar(UINT arrows = ESB_ENABLE_BOTH); ///< FALSE for one arrow alone
};
