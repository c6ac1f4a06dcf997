// A knob that is drawn along a scale.
//
// Positions are those that the parent gets with WM_HSCROLL and WM_VSCROLL (SB_THUMBTRACK in the low
// word, the position in the high one). A horizontal slider counts from the least value of its range
// on. A vertical one counts from its top end, which is 0, down to the length of the range at the
// bottom, whatever the range begins with. DDX_Slider exchanges the native value instead, which for
// both begins with the range and on a vertical slider grows upwards: native value = end of the
// range - position.
//
// An object made by Create, bound with DDX_Control or attached to a handle of a slider or dial works
// the same. Without one every member does nothing and returns 0 or FALSE. Nothing that a member
// changes is reported. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

constexpr DWORD TBS_HORZ = 0;
constexpr DWORD TBS_VERT = 0x00100000;
constexpr DWORD TBS_AUTOTICKS = 0x00200000; ///< a tick at every value, or as SetTicFreq says
constexpr DWORD TBS_TOP = 0x00400000; ///< ticks above or to the left, else below or to the right
constexpr DWORD TBS_LEFT = 0x00400000;
constexpr DWORD TBS_BOTTOM = 0;
constexpr DWORD TBS_RIGHT = 0;
constexpr DWORD TBS_BOTH = 0x00800000; ///< ticks on both sides
constexpr DWORD TBS_NOTICKS = 0x01000000;

class VM_API CSliderCtrl : public CWnd {
    DECLARE_DYNAMIC(CSliderCtrl)

    using CWnd::Create;
    /// The range is 0 to 100. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    void GetRange(int& lowest, int& highest) const;
    /// The native value stays within. `redraw` makes no difference.
    void SetRange(int lowest, int highest, BOOL redraw = FALSE);
    int GetRangeMin() const;
    int GetRangeMax() const;
    void SetRangeMin(int lowest, BOOL redraw = FALSE);
    void SetRangeMax(int highest, BOOL redraw = FALSE);
    int GetPos() const;
    void SetPos(int position);
    int GetPageSize() const;
    int SetPageSize(int size); ///< for the keys and clicks beside the knob; the size before
    int GetLineSize() const;
    int SetLineSize(int size);

    void SetTicFreq(int frequency); ///< a tick every so many values
    /// A tick at one position. Ticks are evenly spaced here: as close as it takes to meet all of them.
    /// FALSE outside of the range.
    BOOL SetTic(int position);
    void ClearTics(BOOL redraw = FALSE); ///< no ticks until SetTicFreq or SetTic
    UINT GetNumTics() const;             ///< that are shown, 2 at least: the ends count
};
