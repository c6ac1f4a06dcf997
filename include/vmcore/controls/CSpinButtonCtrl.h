// A pair of arrows that counts a number up and down, usually that of a text field beside it, its
// buddy.
//
//     CSpinButtonCtrl arrows;
//     arrows.Create(WS_VISIBLE | UDS_SETBUDDYINT | UDS_ALIGNRIGHT | UDS_ARROWKEYS, rect, this, 1003);
//     arrows.SetBuddy(&m_channel);
//     arrows.SetRange(1, 16);
//
// Before a step the parent gets WM_NOTIFY with UDN_DELTAPOS and an NMUPDOWN. It may change iDelta; 0
// refuses the step, while the answer only says whether the message was handled. After it come WM_VSCROLL, or WM_HSCROLL for arrows side by side,
// with MAKELONG(SB_THUMBTRACK, position). What a member changes is not reported. The arrow that would
// lead out of the range is disabled, unless the range wraps. Steps repeat while the arrow is held.
//
// An object made by Create, bound with DDX_Control or attached to a handle works the same; in an
// interface file the class is CSpinButton, which has UDS_SETBUDDYINT and UDS_ARROWKEYS. A native
// number field (QSpinBox) is accepted too: it has no buddy, no UDN_DELTAPOS, and reports like a text
// field. Without either every member does nothing and returns 0, FALSE or null. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

constexpr DWORD UDS_WRAP = 0x00100000; ///< the end of the range is followed by its beginning
/// the buddy shows the position, and a number typed there counts
constexpr DWORD UDS_SETBUDDYINT = 0x00200000;
/// SetBuddy puts the arrows at the buddy's right end, inside of it
constexpr DWORD UDS_ALIGNRIGHT = 0x00400000;
constexpr DWORD UDS_ALIGNLEFT = 0x00800000;
constexpr DWORD UDS_ARROWKEYS = 0x01000000;   ///< the arrow keys work in the buddy
constexpr DWORD UDS_HORZ = 0x02000000;        ///< arrows to the left (down) and right (up)
constexpr DWORD UDS_NOTHOUSANDS = 0x04000000; ///< always so

/// The code of WM_NOTIFY before a step.
constexpr UINT UDN_DELTAPOS = 150;

struct tagNMUPDOWN {
    NMHDR hdr;
    int iPos;
    int iDelta; ///< what is about to be added; a handler may change it
};
using NMUPDOWN = tagNMUPDOWN;
using NM_UPDOWN = tagNMUPDOWN;
using LPNMUPDOWN = tagNMUPDOWN*;

struct tagUDACCEL {
    UINT nSec; ///< held for so long ...
    UINT nInc; ///< ... a step counts so much
};
using UDACCEL = tagUDACCEL;

class VM_API CSpinButtonCtrl : public CWnd {
    DECLARE_DYNAMIC(CSpinButtonCtrl)

    using CWnd::Create;
    /// The range is 0 to 100. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    /// `highest` below `lowest` turns the arrows round: up counts down to it.
    void SetRange(int lowest, int highest);
    void SetRange32(int lowest, int highest);
    void GetRange(int& lowest, int& highest) const;
    void GetRange32(int& lowest, int& highest) const;
    DWORD GetRange() const;   ///< MAKELONG(highest, lowest)
    int SetPos(int position); ///< within the range; the position before
    int SetPos32(int position);
    int GetPos() const;
    int GetPos32(BOOL* error = nullptr) const; ///< error: the buddy shows no number of the range
    /// The buddy before, which gets back the width that the arrows took; null: none. The same again changes
    /// nothing.
    CWnd* SetBuddy(CWnd* buddy);
    CWnd* GetBuddy() const; ///< null also when it has no object
    BOOL SetAccel(int count,
                  const UDACCEL* accelerations); ///< a native number field takes the first
    UINT GetAccel(int count, UDACCEL* accelerations) const; ///< how many there are
    int SetBase(
        int base); ///< 10, or 16 for a buddy with 0x and four digits; the base before, 0 for others
    UINT GetBase() const;
};
