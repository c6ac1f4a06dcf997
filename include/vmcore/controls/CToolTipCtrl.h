// Short texts that appear where the mouse rests, each with a text of its own. (CWnd::addTooltip is the
// other way: one text for all rectangles of a window.)
//
//     m_tips.Create(this);
//     m_tips.AddTool(GetDlgItem(1001), "The channel, 1 to 16");
//     const CRect meter(10, 10, 60, 90);
//     m_tips.AddTool(this, "The level", &meter, 5);
//
// A tool is a window, or with a rectangle a part of it, and a number. Its text goes with the window or
// with this object's view, whichever ends first. Without Create every member does nothing and returns
// 0 or FALSE. Texts are shown as they stand, Mac Roman beyond ASCII. Main thread only.
#pragma once

#include <vmcore/wnd/CWnd.h>

/// Which time SetDelayTime means.
enum : UINT { TTDT_AUTOMATIC = 0, TTDT_RESHOW = 1, TTDT_AUTOPOP = 2, TTDT_INITIAL = 3 };

class VM_API CToolTipCtrl : public CWnd {
    DECLARE_DYNAMIC(CToolTipCtrl)

    using CWnd::Create;
    /// FALSE when the parent has no view. No style has an effect.
    BOOL Create(CWnd* parent, DWORD style = 0);

    /// `rect` is in the units of the window; without it the tool is all of the window. A tool of the
    /// same window and number is replaced. FALSE without a window that has a view, or a text.
    BOOL AddTool(CWnd* window, const char* text, const RECT* rect = nullptr, UINT_PTR id = 0);
    void DelTool(CWnd* window, UINT_PTR id = 0);
    void UpdateTipText(const char* text, CWnd* window, UINT_PTR id = 0);
    void GetText(CString& text, CWnd* window, UINT_PTR id = 0) const; ///< empty without the tool
    int GetToolCount() const;
    void Activate(BOOL active); ///< FALSE: the tools show nothing until TRUE
    void Pop();                 ///< hides the text that is shown

    /// Texts wider than so many pixels are broken at spaces; -1, the default: only where they have a
    /// line's end. The width before. For texts that are set from now on.
    int SetMaxTipWidth(int width);
    int GetMaxTipWidth() const; ///< -1 without Create
    /// Kept and given back, without effect: how soon and how long texts show is the desktop's matter.
    void SetDelayTime(UINT which, int milliseconds);
    void SetDelayTime(UINT milliseconds); ///< of TTDT_AUTOMATIC
    int GetDelayTime(UINT which) const;
    void RelayEvent(MSG* message); ///< not needed: tools notice the mouse themselves
};
