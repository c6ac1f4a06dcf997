// CWnd: one window or one control.
//
// A handle (HWND) is the pointer of a native view; a top-level window also owns a native window. A
// class that wants messages overrides MessageMap and switches on the number:
//
//     class Pane : public CWnd {
//         int MessageMap(int message, WPARAM wParam, LPARAM lParam) override {
//             switch (message) {
//             case WM_PAINT: { CPaintDC dc(this); dc.TextOut(4, 4, "Hello", 5); return 1; }
//             }
//             return CWnd::MessageMap(message, wParam, lParam);
//         }
//     };
//
// A message goes to WindowProc, then OnWndMsg (reflection to the sending control, the command
// filter, MessageMap), and, when none of them took it, to DefWindowProc. A MessageMap result whose
// low eight bits are 0 means "not handled".
//
// Everything here runs on the main thread, except SendMessage and PostMessage, which any thread may
// call. Calls on an object without a view do nothing and return 0, FALSE or null. What the toolkit
// reports during a call is logged as "exception at CWnd::<call>() - <name>" and ends in the same
// neutral result. Objects belong to whoever made them; views belong to the library.
#pragma once

#include <vmcore/app/messages.h>
#include <vmcore/app/registry.h>
#include <vmcore/controls/CMenu.h>
#include <vmcore/core/CString.h>
#include <vmcore/core/arrays.h>
#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>
#include <vmcore/wnd/runtimeClass.h>

class CDataExchange;
class CDC;
class CFont;
class CRgn;
struct AccelEntry;

/// The record of WM_CREATE.
struct tagCREATESTRUCT {
    void* lpCreateParams;
    HINSTANCE hInstance;
    std::intptr_t hMenu; ///< the control ID
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    DWORD style;
    const char* lpszName;
    const char* lpszClass;
    DWORD dwExStyle;
};
using CREATESTRUCT = tagCREATESTRUCT;
using LPCREATESTRUCT = tagCREATESTRUCT*;

/// The header with which every notification record begins.
struct tagNMHDR {
    HWND hwndFrom;
    UINT idFrom;
    UINT code;
};
using NMHDR = tagNMHDR;
using LPNMHDR = tagNMHDR*;

/// The record of WM_GETMINMAXINFO.
struct tagMINMAXINFO {
    tagPOINT ptReserved;
    tagPOINT ptMaxSize;
    tagPOINT ptMaxPosition;
    tagPOINT ptMinTrackSize;
    tagPOINT ptMaxTrackSize;
};
using MINMAXINFO = tagMINMAXINFO;

using TIMERPROC = void (*)(HWND window, UINT message, UINT id, DWORD time);
struct AFX_CMDHANDLERINFO;

enum : DWORD {
    WS_VISIBLE = 0x2,
    WS_CHILD = 0x4,
    WS_BORDER = 0x8,
    /// A view made by Create is reached with the Tab key, and a Tab that it does not handle goes on to
    /// the next. Without it the view gets the focus by SetFocus or a click, and keeps Tab for itself.
    WS_TABSTOP = 0x10,
    WS_GROUP = 0x20,
    WS_VSCROLL = 0x80,
    WS_HSCROLL = 0x100,
    /// Of a top-level window: title, close, minimise, resize. Without it the user cannot resize the
    /// window, and its title bar has a minimise button only, with WS_EX_TOPMOST a close button only.
    WS_OVERLAPPEDWINDOW = 0x10000,
    WS_EX_TOPMOST = 0x8,
};

/// What ShowWindow does; other values change nothing. There is none to maximise: a window that was
/// maximised comes back at the place and size that its host stored, not maximised.
enum : int {
    SW_HIDE = 0,
    SW_SHOWNORMAL = 1,
    SW_SHOWNOACTIVATE = 4,
    SW_SHOW = 5,
    SW_MINIMIZE = 6,
};

enum : UINT {
    SWP_NOMOVE = 0x1,
    SWP_NOSIZE = 0x2,
    SWP_NOZORDER = 0x4,
    SWP_HIDEWINDOW = 0x8,
    SWP_NOACTIVATE = 0x10,
    SWP_NOREDRAW = 0x20,
    SWP_SHOWWINDOW = 0x40,
};

/// The key state word of mouse messages.
enum : UINT {
    MK_COMMAND = 0x01, ///< the command key (Ctrl on the keyboard)
    MK_LBUTTON = 0x02,
    MK_MBUTTON = 0x04,
    MK_RBUTTON = 0x08,
    MK_SHIFT = 0x10,
    MK_CONTROL = 0x40, ///< the control key (Super on the keyboard)
};

/// What a view made by Create is to a screen reader. The numbers are those of the desktop's
/// accessibility interface (AT-SPI).
enum AccessibleRole : UINT {
    ACCESSIBLE_PANEL = 39, ///< the default: a group of controls
    ACCESSIBLE_BUTTON = 43,
    ACCESSIBLE_LABEL = 29,
    ACCESSIBLE_TEXT = 61,
    ACCESSIBLE_TABLE = 55,
    ACCESSIBLE_LIST = 31,
    ACCESSIBLE_SLIDER = 51,
    ACCESSIBLE_PICTURE = 27, ///< what is drawn and has no better name
    ACCESSIBLE_TOOLBAR = 63,
    ACCESSIBLE_STATUSBAR = 54,
};

class VM_API CWnd {
public:
    CWnd();
    explicit CWnd(HWND handle);
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    // Virtual operations. Their order is part of the binary interface; subclasses append.
    virtual ~CWnd();
    /// With a parent: makes a child view, sends WM_CREATE, WM_SIZE (2) and WM_MOVE, and shows it
    /// when `style` has WS_VISIBLE. Without: makes a top-level window (see CreateLWindow).
    virtual BOOL Create(const char* className, const char* windowName, DWORD style,
                        const RECT& rect, CWnd* parent, UINT id, void* context = nullptr);
    virtual BOOL PreCreateWindow(CREATESTRUCT& cs); ///< negative widths and heights become 10
    /// FALSE; TRUE takes a key press. Asked from the window that has the focus up its parents, each before
    /// its accelTable is searched, with the virtual key in wParam and WM_CHAR as message. A native control
    /// is asked first what it does with a key: here comes only what it leaves alone (so no letters from a
    /// text, no arrows from a list), never Tab nor a dialog's Return and Escape, and no window but the
    /// control's own and those up to its top-level one.
    virtual BOOL PreTranslateMessage(MSG* msg);
    /// Hides the view at once and frees it later; sends WM_DESTROY. FALSE without a view.
    virtual BOOL DestroyWindow();
    virtual void DoDataExchange(CDataExchange* exchange);
    virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam); ///< the filter: TRUE swallows the command
    virtual BOOL OnNotify(WPARAM wParam, LPARAM lParam, LRESULT* result);
    /// The entry of menus. With `info` (then a CCmdUI) asks for the command's state, else runs it.
    virtual BOOL OnCmdMsg(UINT message, int id, void* extra, AFX_CMDHANDLERINFO* info);
    virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    virtual BOOL OnWndMsg(UINT message, WPARAM wParam, LPARAM lParam, LRESULT* result);
    virtual void CalcWindowRect(RECT* client, UINT adjustType = 0);
    virtual int MessageMap(int message, WPARAM wParam, LPARAM lParam);
    /// Never called by the library: the slot for a host's own intermediate base classes.
    virtual int BaseMessageMap(int message, WPARAM wParam, LPARAM lParam);
    virtual CRuntimeClass* GetRuntimeClass() const;

    // Class records: see runtimeClass.h.
    static CRuntimeClass* RecordOfCWnd();
    static CWnd* CreateObject();
    BOOL IsKindOf(const CRuntimeClass* record) const; ///< of that class or one derived from it

    // Messages.
    /// On the main thread calls WindowProc; from another thread carries the message there and
    /// waits. 0 without delivery when the object is no longer alive.
    LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Calls WindowProc at once on the calling thread, without the test for a live object.
    LRESULT SendMessageDirect(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Delivers on a later turn of the main loop, in the order of posting. When the window's handle
    /// has gone or was bound to another object by then, it is dropped and "Post or SendMessage sent
    /// to hWnd object not registered in ControlReference list" logged.
    bool PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    // Creation and binding.
    BOOL CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style, int x,
                  int y, int cx, int cy, HWND parent, HMENU menu, void* param = nullptr); ///< FALSE
    BOOL CreateEx(DWORD exStyle, const char* className, const char* windowName, DWORD style,
                  const RECT& rect, CWnd* parent, UINT id, void* param = nullptr); ///< TRUE
    BOOL Attach(HWND handle);
    HWND Detach();
    BOOL AttachMacWnd(NSWindow* window);
    NSWindow* DetachMacWnd();
    BOOL SubclassWindow(HWND handle);
    HWND UnsubclassWindow();
    BOOL isCustomNSView() const; ///< TRUE when the view was made by Create
    HWND GetSafeHwnd() const { return view; }
    static CWnd* FromHandlePermanent(HWND handle); ///< as GetControlReference
    static CWnd* getLastCreatedCWnd();
    bool VerifyWindow() const;
    LRESULT VerifyWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
    void setAutorelease(); ///< the view is freed when control is back in the event loop
    void setCallOnDealloc(bool notice); ///< a view made by Create sends WM_CLOSE when it is freed

    // Tree.
    CWnd* GetParent();
    BOOL IsChild(const CWnd* other) const;
    CWnd* GetParentFrame() const;
    HWND GetFrameWnd() const;
    static CWnd* GetActiveWindow();
    CWnd* GetWindow(UINT which); ///< 0: the first child that has an object; null for the rest
    CWnd* GetDesktopWindow() const { return nullptr; }
    /// Not needed here: a message box says so; 0xFFFFFFFF.
    static UINT CreateUniqueID(CWnd* window, int first);
    /// Never null once a view exists: an unregistered or missing item comes back as the scratch
    /// window, valid until the next call. Test the result's view.
    CWnd* GetDlgItem(int id);
    void GetDlgItem(int id, HWND* handle);
    UINT GetDlgCtrlID() const;
    void SetCommandID(int id);

    // Text. 8-bit; ASCII of what the toolkit holds.
    void SetWindowText(const char* text);
    void GetWindowText(CString& text) const;
    /// Copies at most `size` - 1 bytes; a truncated copy gets no terminator. Returns the whole
    /// length.
    int GetWindowText(char* text, int size) const;
    int GetWindowTextLength() const;
    int GetDlgItemText(int id, char* text, int size);
    int GetDlgItemText(int id, CString& text);
    void SetDlgItemText(int id, const char* text);
    UINT GetDlgItemInt(int id, BOOL* ok = nullptr, BOOL isSigned = TRUE);
    void SetDlgItemInt(int id, UINT value, BOOL isSigned = TRUE);
    void CheckDlgButton(int id, UINT state);
    UINT IsDlgButtonChecked(int id); ///< 0 when absent
    /// Of the radio buttons with these IDs, `check` is on and the others are off; all are off when it is
    /// none of them.
    void CheckRadioButton(int first, int last, int check);
    int GetCheckedRadioButton(int first, int last) const; ///< its ID; 0 for none
    /// WM_SETTEXT (1), WM_GETTEXT (the length of the whole text) and the BM_, LB_, CB_ and EM_ groups
    /// act on the control; 0 without it. EM_LIMITTEXT and any other message is reported in a message box that names the
    /// item, and forwarded to the WindowProc of the item's object.
    LRESULT SendDlgItemMessage(int id, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);

    // Style, visibility, state.
    DWORD GetStyle() const { return style; }
    BOOL ModifyStyle(DWORD remove, DWORD add, UINT flags = 0);   ///< TRUE; no native effect
    BOOL ModifyStyleEx(DWORD remove, DWORD add, UINT flags = 0); ///< TRUE; changes nothing
    BOOL ShowWindow(int show); ///< sends WM_SHOWWINDOW whatever `show` is
    /// A child: neither it nor a view that it is in is hidden, whether its window is shown or not.
    BOOL IsWindowVisible() const;
    /// Controls and views made by Create; others stay as they are. Returns whether a view exists.
    BOOL EnableWindow(BOOL enable = TRUE);
    BOOL IsWindowEnabled() const;           ///< the window's own state, whatever it is in
    BOOL IsIconic() const { return FALSE; } ///< also of a minimised window
    BOOL IsZoomed() const { return FALSE; } ///< also of a maximised one
    void BringWindowToTop();
    CWnd* SetActiveWindow();                  ///< always null
    void DragAcceptFiles(BOOL accept = TRUE); ///< WM_DROPFILES arrives only after this

    // Geometry: top-down screen or client coordinates, in pixels. WM_GETMINMAXINFO asks a top-level
    // window for its limits, first when its frame is known; they bind its user and not these calls.
    void GetWindowRect(RECT* rect) const;
    void GetClientRect(RECT* rect) const;
    void MoveWindow(int x, int y, int width, int height, BOOL repaint = TRUE);
    void MoveWindow(const RECT* rect, BOOL repaint = TRUE);
    /// Puts a child below `insertAfter`. A top-level window comes to the front with `insertAfter` in
    /// front of it: the desktop puts no window below another that stays where it is.
    BOOL SetWindowPos(const CWnd* insertAfter, int x, int y, int cx, int cy, UINT flags);
    /// Moves the window over the middle of `other`: without one a child over that of its parent, a
    /// top-level window over that of the window that it was made for, or of the screen when there is none
    /// in sight. A top-level window stays within the screen, without the desktop's panels.
    void CenterWindow(const CWnd* other = nullptr);
    void ClientToScreen(POINT* point) const;
    void ClientToScreen(RECT* rect) const;
    void ScreenToClient(POINT* point) const;
    void ScreenToClient(RECT* rect) const;
    /// The deepest view with an object at a client point, null outside of this window.
    CWnd* ChildWindowFromPoint(POINT point) const;
    CWnd* ChildWindowFromPoint(POINT point, UINT flags) const; ///< the flags are ignored
    static CWnd* WindowFromPoint(POINT point); ///< the same at a point of the screen, in any window
    void setFlipped(bool flag);                ///< views made by Create; positions stay top-down
    /// Everything in the view is drawn `scale` times as large, and positions and sizes are in the
    /// units of the host: GetClientRect, WM_SIZE, mouse messages, painting. Child views and top-level
    /// windows are not scaled. Sends WM_SIZE.
    void SetWindowScaling(float scale);
    float GetBackingScaleFactor() const; ///< device pixels in one pixel; 1.0 without a window
    /// The bars of WS_VSCROLL and WS_HSCROLL: 15 pixels at the right and the bottom, taken off the
    /// client area. Create calls these after the creation messages. A drag of the knob moves it and
    /// sends SB_THUMBTRACK; a click beside it only sends its code: SetScrollPos shows where it led.
    void CreateVScroll();
    void CreateHScroll();
    void CreateVHScrollFill();
    void SetScrollRange(BOOL vertical, int lowest, int highest);
    /// Moves the knob, within the range; sends nothing.
    void SetScrollPos(BOOL vertical, int position);

    // Painting. What lasts is painted in WM_PAINT: see CPaintDC.
    void Invalidate(BOOL erase = TRUE);
    void InvalidateRect(const RECT* rect, BOOL erase = TRUE);
    BOOL UpdateWindow();
    BOOL RedrawWindow(const RECT* rect = nullptr, CRgn* region = nullptr, UINT flags = 0);
    void SetRedraw(BOOL redraw = TRUE);
    BOOL NeedsToDrawRect(CGRect rect) const;             ///< in the region being painted
    HDC GetPaintContext() const { return paintContext; } ///< null outside WM_PAINT
    /// For drawing at any time, in client coordinates, onto what the window shows: it stays until the
    /// area is painted next; while the window is not on the screen it only measures. Give it to ReleaseDC before
    /// control is back in the event loop, from where on it draws nothing.
    CDC* GetDC();
    /// Onto what is being painted at the moment; detached when nothing is.
    CDC* GetWindowDC();
    BOOL ReleaseDC(CDC* dc); ///< shows what was drawn and deletes it; FALSE for null

    // Focus and capture.
    CWnd* SetFocus(); ///< of a child: a top-level window never gets keys, null and nothing done
    static CWnd* GetFocus();
    CWnd* SetCapture();
    static CWnd* GetCaptureWnd();

    // Tooltips. All tooltips of one window show the text that was given last.
    /// The tag for removeTooltip, or -1 for a null argument or a text that cannot be shown.
    int addTooltip(const CRect* rect, const char* text);
    void removeTooltip(int tag); ///< nothing for a negative one
    void removeAllTooltips();

    // For people who use a screen reader. Both may be set before the view exists.
    void SetAccessibleName(const char* name); ///< empty: the window text
    void SetAccessibleRole(UINT role);        ///< AccessibleRole; native controls keep their own

    // Timers: repeating, in milliseconds, on the calling thread's loop.
    /// Non-zero on success: the low half of the timer object's address, not the ID. IDs need not be
    /// unique. The procedure is handed to WM_TIMER and never called by the library.
    UINT SetTimer(UINT id, UINT elapse, TIMERPROC procedure = nullptr);
    /// Ends the first timer with this ID; FALSE when there is none.
    BOOL KillTimer(UINT id);

    // Menus, font, colours, help.
    CMenu* GetMenu();
    BOOL DrawMenuBar() { return 0; }
    CMenu* GetSystemMenu(BOOL) { return nullptr; }
    void SetFont(CFont* newFont, BOOL redraw = TRUE); ///< for GetFont: native controls keep theirs
    CFont* GetFont() const;
    COLORREF SetBkColor(COLORREF color);
    COLORREF SetTextColor(COLORREF color);
    CPoint GetMousePos() const { return mousePos; }
    void SetMousePos(const CPoint& position) { mousePos = position; }
    int WinHelp(DWORD_PTR data, UINT command = 0); ///< 0

    /// In front of this window. Without a caption the application's name is it.
    int MessageBox(const char* message, const char* caption = nullptr, UINT type = MB_OK) const;
    /// The plain function, which the one above would hide from the methods of windows.
    static int MessageBox(HWND owner, const char* message, const char* caption, UINT type);

    // Default handlers. The library never calls them: a host's MessageMap unpacks the parameters
    // and calls these or its own of the same names.
    void OnClose();
    int OnCreate(CREATESTRUCT*) { return 0; }
    BOOL OnMouseWheel(UINT, short, CPoint) { return 0; }
    int OnCharToItem(UINT, CWnd*, UINT) { return 0; }
    HBRUSH OnCtlColor(CDC*, CWnd*, UINT) { return nullptr; }
    HCURSOR OnQueryDragIcon() { return nullptr; }
    BOOL OnEraseBkgnd(CDC*) { return 0; }
    void OnDestroy() {}
    void OnSysCommand(UINT, LPARAM) {}
    void OnHelp() {}
    void OnHelpFinder() {}
    void OnHelpIndex() {}
    void OnContextHelp() {}
    void OnSetFocus(CWnd*) {}
    void OnKillFocus(CWnd*) {}
    void OnTimer(UINT) {}
    void OnMenuSelect(UINT, UINT, HMENU) {}
    void OnInitMenuPopup(CMenu*, UINT, BOOL) {}
    void OnSize(UINT, int, int) {}
    void OnMove(int, int) {}
    void OnLButtonDown(UINT, CPoint) {}
    void OnLButtonUp(UINT, CPoint) {}
    void OnLButtonDblClk(UINT, CPoint) {}
    void OnRButtonDown(UINT, CPoint) {}
    void OnRButtonUp(UINT, CPoint) {}
    void OnRButtonDblClk(UINT, CPoint) {}
    void OnMButtonDown(UINT, CPoint) {}
    void OnMButtonUp(UINT, CPoint) {}
    void OnMButtonDblClk(UINT, CPoint) {}
    void OnMouseMove(UINT, CPoint) {}
    void OnDrawItem(int, void*) {}
    void OnMDIActivate(BOOL, CWnd*, CWnd*) {}
    void OnActivate(UINT, CWnd*, BOOL) {}
    void OnActivateApp(BOOL, DWORD) {}
    void OnDropFiles(NSArray*) {}
    void OnChar(UINT, UINT, UINT) {}
    void OnKeyDown(UINT, UINT, UINT) {}
    void OnKeyUp(UINT, UINT, UINT) {}
    void OnPaint() {}
    void OnMouseEnter(UINT, CPoint) {}
    void OnMouseLeave() {}
    void OnExitMenuLoop(BOOL) {}
    BOOL OnQueryClose() { return FALSE; }
    void OnContextMenu(CWnd* clicked, CPoint point); ///< asks the parent, as DefWindowProc does
    void OnVScroll(UINT, UINT, CWnd*) {}
    void OnHScroll(UINT, UINT, CWnd*) {}
    void OnParentNotify(UINT, LPARAM) {}
    void OnShowWindow(BOOL, UINT) {}
    void OnCaptureChanged(CWnd*) {}
    void OnGetMinMaxInfo(MINMAXINFO*) {}

    /// Stand-ins for the order argument of SetWindowPos; their handles are 2, 1, 0 and 3.
    static const CWnd wndTop;
    static const CWnd wndBottom;
    static const CWnd wndTopMost;
    static const CWnd wndNoTopMost;

    // State. The order is part of the binary interface of hosts and their plug-ins.
    CWnd* parentWnd; ///< given at creation; null for top-level windows
    HWND view;       ///< the view; 1, 2 and 3 are reserved and no views
    DWORD style;
    DWORD exStyle;
    const AccelEntry* accelTable; ///< searched after PreTranslateMessage; the host's, never freed
    CFont* font;
    BOOL redrawEnabled;
    LONG vScrollMin;
    LONG vScrollMax;
    LONG scrollPosition;
    LONG hScrollMin;
    LONG hScrollMax;
    CPtrArray m_TimerList;
    CUIntArray m_TimerIDList;
    CPtrArray m_TimerProcList;
    void* resourceBundle; ///< AfxGetResourceHandle() at construction
    CPoint mousePos;
    HWND vScrollView;
    HWND hScrollView;
    BYTE vScrollShown;
    BYTE hScrollShown;
    BYTE scrollFillShown;
    LONG childOriginY; ///< subtracted from a child's requested position
    LONG childOriginX;
    LONG m_reserved1;
    LONG m_reserved2;
    NSWindow* nsWindow; ///< top-level windows only
    HDC paintContext;
    CString text; ///< the text of a view made by Create
    CMenu menu;
    COLORREF bkColor;
    COLORREF textColor;
    LONG m_reserved3;
    BYTE closedByPlatform; ///< the window system is closing the window already
    void* tooltipText;
    float scaleX;
    float scaleY;

protected:
    void Init();
    BOOL CreateChild(CREATESTRUCT& cs);
    bool TakenByControl(WPARAM wParam, LPARAM lParam);
    void OrderAfter(const CWnd& other);
    void DestroyTopLevel();
    void DestroyChild();
};

/// Makes the top-level window of `wnd` from `cs` and sends WM_CREATE, WM_SIZE (2) and WM_MOVE. A
/// `y` below 46 becomes 46. Null when no window could be made.
VM_API NSWindow* CreateLWindow(CREATESTRUCT* cs, CWnd* wnd);

// The same operations on bare handles. A null handle gives FALSE, 0 or null.
/// A window's title or a control's text, its line feeds as they are; any other view is reported
/// in a message box and gives 0.
VM_API int GetWindowText(HWND window, char* text, int size);
VM_API HWND GetParent(HWND window);
VM_API BOOL IsChild(HWND parent, HWND child);
VM_API void GetWindowRect(HWND window, RECT* rect);
VM_API void ClientToScreen(HWND window, POINT* point);
VM_API void ScreenToClient(HWND window, POINT* point);
VM_API BOOL SetWindowPos(HWND window, HWND insertAfter, int x, int y, int cx, int cy, UINT flags);
/// As CWnd::GetDC. It lasts until control is back in the event loop.
VM_API HDC GetDC(HWND window);
VM_API int ReleaseDC(HWND window, HDC context); ///< no effect; 1
VM_API HWND SetCapture(HWND window);
VM_API HWND GetCapture();
VM_API BOOL ReleaseCapture();
/// Creates nothing and returns null.
VM_API HWND CreateWindow(const char* className, const char* windowName, DWORD style, int x, int y,
                         int cx, int cy, HWND parent, HMENU menu, HINSTANCE instance, void* param);
/// Shows a message box that names CWnd::DestroyWindow and returns FALSE.
VM_API BOOL DestroyWindow(HWND window);
VM_API BOOL KillTimer(HWND window, UINT id); ///< TRUE; does nothing
VM_API int WinHelp(HWND window, const char* file, UINT command, DWORD_PTR data);

/// The paths of WM_DROPFILES. Index 0xFFFFFFFF gives the number of paths; else the path's length, 0
/// when there is none, and 2 with an empty buffer when the name is not ASCII (a message box says
/// so).
VM_API UINT DragQueryFile(NSArray* drop, UINT index, char* buffer, UINT size);
VM_API BOOL DragQueryPoint(NSArray* drop, POINT* point); ///< the mouse, in screen coordinates; TRUE
VM_API void DragFinish(NSArray* drop);                   ///< does nothing
