// The top-level windows of an application, and the status bar at their bottom.
//
// An MDI frame opens no window of its own: its documents are top-level windows, and the active one
// is simply the application's main window. Main thread only.
#pragma once

#include <vmcore/controls/CStatic.h>
#include <vmcore/core/CString.h>
#include <vmcore/wnd/CWnd.h>

struct CCreateContext;

class VM_API CFrameWnd : public CWnd {
    DECLARE_DYNCREATE(CFrameWnd)

    CFrameWnd();
    ~CFrameWnd() override;
    /// Opens a 100 by 100 window; the resource ID is not used.
    virtual BOOL LoadFrame(UINT id, DWORD style = WS_OVERLAPPEDWINDOW, CWnd* parent = nullptr,
                           CCreateContext* context = nullptr);
    virtual void GetMessageString(UINT id, CString& message) const; ///< does nothing
    /// Always a top-level window, even with a parent.
    virtual BOOL Create(const char* className, const char* windowName, DWORD style,
                        const RECT& rect, CWnd* parent = nullptr,
                        CCreateContext* context = nullptr);
    using CWnd::Create;

    CString GetTitle() const;
    void SetTitle(const char* text); ///< only for a frame with a window
    void OnClose();                  ///< DestroyWindow, after noting the end of the main window
    void ShowControlBar(CWnd*, BOOL, BOOL) {}
    void EnableDocking(DWORD) {}
    void DockControlBar(CWnd*, UINT = 0, const RECT* = nullptr) {}
    BOOL LoadAccelTable(const char*) { return TRUE; } ///< loads nothing: see CWnd::accelTable

protected:
    CString title;
};

class CMDIFrameWndTimer;

class VM_API CMDIFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMDIFrameWnd)

    CMDIFrameWnd();
    ~CMDIFrameWnd() override;
    /// Opens no window: sends WM_CREATE with a zeroed record and returns TRUE.
    BOOL LoadFrame(UINT id, DWORD style = WS_OVERLAPPEDWINDOW, CWnd* parent = nullptr,
                   CCreateContext* context = nullptr) override;
    CWnd* MDIGetActive(BOOL* maximized = nullptr) const;
    BOOL KillTimer(UINT id);

private:
    friend class CWnd;
    CMDIFrameWndTimer* m_timer;
};

class VM_API CMDIChildWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMDIChildWnd)

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
};

class VM_API CMiniFrameWnd : public CFrameWnd {
    DECLARE_DYNCREATE(CMiniFrameWnd)

    BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
};

class VM_API CControlBar : public CWnd {
    DECLARE_DYNAMIC(CControlBar)

    void SetBorders(int, int, int, int) {}
    void SetBorders(const RECT*) {}
    void SetBarStyle(DWORD) {}
    void EnableDocking(DWORD) {}
};

class VM_API CToolBar : public CControlBar {
    DECLARE_DYNAMIC(CToolBar)
};

/// A strip of 16 pixels at the bottom of its parent, with one text.
class VM_API CStatusBar : public CWnd {
    DECLARE_DYNAMIC(CStatusBar)

    /// TRUE without creating anything when the parent has no view.
    BOOL Create(CWnd* parent, DWORD style = WS_VISIBLE, UINT id = 0xE801);
    using CWnd::Create;
    int MessageMap(int message, WPARAM wParam, LPARAM lParam) override;
    int OnCreate(CREATESTRUCT* cs);
    void OnSize(UINT type, int cx, int cy);
    /// Sets the text, whatever the index. FALSE when the bar has no view.
    BOOL SetPaneText(int index, const char* text, BOOL update = TRUE);

private:
    RECT StripRect() const;
    CStatic m_strip;
};
