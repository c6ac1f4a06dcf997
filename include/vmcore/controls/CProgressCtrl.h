// A bar that shows how far a job has come. A new position is on the screen when the call returns,
// also while the program works on and its main loop does not run.
//
// An object made by Create, bound with DDX_Control or attached to a handle works the same. Without a
// progress bar every member does nothing and returns 0 or FALSE. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

constexpr DWORD PBS_SMOOTH = 0x00100000; ///< always so
constexpr DWORD PBS_VERTICAL = 0x00200000;
constexpr DWORD PBS_MARQUEE = 0x00400000; ///< SetMarquee sets it going

class VM_API CProgressCtrl : public CWnd {
    DECLARE_DYNAMIC(CProgressCtrl)

    using CWnd::Create;
    /// The range is 0 to 100, the step 10. FALSE when the parent has no view.
    BOOL Create(DWORD style, const RECT& rect, CWnd* parent, UINT id);

    /// A range that ends where it begins, or before, becomes one long.
    void SetRange(short lowest, short highest);
    void SetRange32(int lowest, int highest);
    void GetRange(int& lowest, int& highest) const;

    // The position before comes back. Positions stay within the range.
    int SetPos(int position);
    int OffsetPos(int distance);
    int SetStep(int step); ///< the step before
    int StepIt();          ///< at the end of the range goes on from its beginning
    int GetPos() const;

    /// Something that moves without end, and the position again. The pace is the desktop's. TRUE.
    BOOL SetMarquee(BOOL on, int interval = 30);
};
