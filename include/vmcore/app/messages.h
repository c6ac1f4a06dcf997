// Message numbers, the command-state objects and the message functions that belong to no class.
//
// A message is a number with two pointer-sized parameters and a pointer-sized result. The numbers
// are this library's own; hosts and plug-ins are compiled against this table. Delivery is a direct
// call of the window's WindowProc on the main thread: see CWnd.
#pragma once

#include <vmcore/app/msg.h>
#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

enum : UINT {
    // To controls, through CWnd::SendDlgItemMessage.
    BM_SETCHECK = 101,     ///< wParam: check state
    BM_GETCHECK = 102,     ///< result: check state
    BM_CLICK = 103,        ///< as a click of the mouse, WM_COMMAND included
    LB_ADDSTRING = 110,    ///< lParam: text; result: index or LB_ERR, as for all of the group
    LB_INSERTSTRING = 111, ///< wParam: index, lParam: text
    LB_DELETESTRING = 112, ///< wParam: index, which comes back
    LB_RESETCONTENT = 113,
    LB_GETCOUNT = 114,
    LB_GETCURSEL = 115,
    LB_SETCURSEL = 116,    ///< wParam: index, -1 for none
    LB_GETTEXT = 117,      ///< wParam: index, lParam: buffer; result: length
    LB_GETTEXTLEN = 118,   ///< wParam: index
    LB_FINDSTRING = 119,   ///< wParam: index to start after (-1: at the top), lParam: prefix
    LB_SELECTSTRING = 120, ///< wParam, lParam: see CListBox::SelectString; always LB_ERR
    CB_ADDSTRING = 130,    ///< as the list box messages, but:
    CB_INSERTSTRING = 131, ///< -1: at the end
    CB_DELETESTRING = 132, ///< result: how many are left
    CB_RESETCONTENT = 133,
    CB_GETCOUNT = 134,
    CB_GETCURSEL = 135,
    CB_SETCURSEL = 136,
    CB_GETLBTEXT = 137,
    CB_GETLBTEXTLEN = 138,
    CB_FINDSTRING = 139,
    CB_SELECTSTRING = 140, ///< selects what CB_FINDSTRING finds; the same result
    CB_GETITEMDATA = 141,  ///< wParam: index
    CB_SETITEMDATA = 142,  ///< wParam: index, lParam: item data
    CB_FINDSTRINGEXACT = 143,
    CB_SHOWDROPDOWN = 144,    ///< wParam: TRUE opens the list, FALSE closes it
    CB_GETDROPPEDSTATE = 145, ///< TRUE while the list is open
    CB_LIMITTEXT = 146,       ///< wParam: the longest text that may be typed, 0 for no limit
    EM_LIMITTEXT = 150,    ///< SendDlgItemMessage reports it as needing a CEdit, then forwards it
    EM_GETLIMITTEXT = 151, ///< in characters
    EM_SETSEL = 152,       ///< wParam: first, lParam: end (-1: to the end; first -1: none)
    EM_GETSEL = 153,       ///< result: MAKELONG(first, end)
    EM_REPLACESEL = 154,   ///< lParam: text; wParam TRUE: can be undone
    EM_SETREADONLY = 155,  ///< wParam: flag
    EM_GETMODIFY = 156,    ///< the user has changed the text since it was set
    EM_SETMODIFY = 157,    ///< wParam: flag
    EM_GETLINECOUNT = 158,
    EM_GETLINE = 159,      ///< wParam: line, lParam: buffer whose first WORD holds its size
    EM_LINEINDEX = 160,    ///< wParam: line; result: its first character
    EM_LINELENGTH = 161,   ///< wParam: a character of the line
    EM_LINEFROMCHAR = 162, ///< wParam: character
    EM_CANUNDO = 163,
    EM_UNDO = 164,
    EM_SETPASSWORDCHAR = 165, ///< wParam: shown for every character, 0 for the text itself
    EM_GETPASSWORDCHAR = 166,
    WM_SETTEXT = 200,     ///< lParam: text
    WM_GETTEXT = 201,     ///< wParam: buffer size, lParam: buffer
    WM_COMMAND = 202,     ///< wParam: command ID, lParam: the control's handle or 0
    WM_CLOSE = 204,       ///< the closing notice; unhandled, it destroys the window
    WM_RBUTTONDOWN = 205, ///< mouse messages: wParam key state, lParam packed point
    WM_LBUTTONDOWN = 206,
    WM_MBUTTONDOWN = 207,
    WM_CREATE = 208, ///< lParam: CREATESTRUCT, or 0
    WM_DESTROY = 209,
    WM_LBUTTONUP = 210,
    WM_MBUTTONUP = 211,
    WM_RBUTTONUP = 212,
    WM_NOTIFY = 213,    ///< wParam: control ID, lParam: NMHDR
    WM_DROPFILES = 218, ///< wParam: the paths, for DragQueryFile
    WM_ACTIVATE = 219,
    WM_HSCROLL = 220, ///< wParam: MAKELONG(code, position)
    WM_VSCROLL = 221,
    WM_CONTEXTMENU = 222, ///< wParam: handle of the clicked window, lParam: packed point
    WM_MDIACTIVATE = 223,
    WM_SETFOCUS = 224,
    WM_KILLFOCUS = 225,
    WM_PAINT = 226,
    WM_INITDIALOG = 227,
    /// lParam: packed width and height, of a top-level window and a modal dialog those of the frame
    /// with its borders and menu bar: lay out by GetClientRect. wParam: 2 for a new window and of a
    /// view, else 0.
    WM_SIZE = 228,
    WM_LBUTTONDBLCLK = 229,
    WM_MBUTTONDBLCLK = 230,
    WM_RBUTTONDBLCLK = 231,
    WM_MOVE = 245,            ///< lParam: packed left and top
    WM_TIMER = 246,           ///< wParam: timer ID, lParam: the procedure given to SetTimer
    WM_GETMINMAXINFO = 250,   ///< lParam: MINMAXINFO; answer 1 when it was filled
    WM_UPDATECOMMANDUI = 251, ///< wParam: command ID, lParam: CCmdUI
    WM_EXITMENULOOP = 252,
    WM_PARENTNOTIFY = 255, ///< wParam: the message of the press in a child, lParam: packed point
    WM_MOUSEMOVE = 260,
    WM_MOUSEWHEEL = 261, ///< wParam: MAKELONG(key state, delta)
    WM_MOUSELEAVE = 262,
    WM_MOUSEENTER = 263,
    WM_CHAR = 275,
    WM_GETDISPLAYTEXT = 277, ///< a list control asks for a cell's text: see CListCtrl
    WM_SHOWWINDOW = 281,
    WM_KEYDOWN = 290,
    WM_KEYUP = 291,
    TVM_ANSWERED = 330,     ///< a tree control answers 1 and does nothing else
    WM_USER = 1024,         ///< hosts number their own messages from here
    WM_QUERYCLOSE = 0x8069, ///< answer 0 to allow the close, anything else refuses it
    WM_APP = 0x9000,        ///< a second free range, above WM_QUERYCLOSE
};

constexpr int LB_ERR = -1;
constexpr int CB_ERR = -1;

/// What a control reports, in the high word of WM_COMMAND's wParam; its tag is in the low word and
/// its handle in lParam. Only what a person does is reported, never what the host sets.
enum : int {
    EN_KILLFOCUS = 0x1, ///< editing ended: Return, or the focus left after a change
    EN_SETFOCUS = 0x2,  ///< editing begins
    EN_CHANGE = 0x4,    ///< the text changed: after EN_UPDATE
    EN_UPDATE = 0x5,
    BN_CLICKED = 0x66,     ///< push buttons, check boxes, radio buttons
    CBN_SELCHANGE = 0x74,  ///< an entry of a combo box was chosen
    LBN_SELCHANGE = 0x140, ///< the selection of a list
    LBN_DBLCLK = 0x141
};

/// The code of WM_NOTIFY's NMHDR when another tab was chosen.
constexpr int TCN_SELCHANGE = 1;

/// The low word of WM_HSCROLL and WM_VSCROLL.
enum : int {
    SB_LINEDOWN = 1,   ///< the area of a scroll bar after its knob
    SB_PAGEDOWN = 3,   ///< the area before its knob
    SB_THUMBTRACK = 5, ///< the position is in the high word: scroll bars and sliders
};

/// Command IDs that the application sends by itself.
enum : int {
    ID_APP_PREFERENCES = 502,
    ID_APP_ABOUT = 0xE140,
};

/// What a window's command-update handler fills: the state of one menu item.
/// Field and virtual order are part of the binary interface.
class VM_API CCmdUI {
public:
    CCmdUI();
    virtual ~CCmdUI();
    /// The three setters act on the item at m_nIndex of *m_pMenu, when both exist.
    virtual void Enable(bool enable = true);
    virtual void SetCheck(int check = 1); ///< any non-zero value checks the item
    virtual void SetText(const char* text);
    virtual bool GetFnDefined();
    virtual void SetFnDefined(bool defined);

    HMENU* m_pMenu; ///< the variable that holds the menu; may be null
    void* m_reserved[2];
    bool m_bHandled;   ///< a handler has dealt with this item
    int m_nID;         ///< command ID
    int m_nIndex;      ///< item index in the menu
    bool m_bFnDefined; ///< some handler runs this command
    void* m_reservedEnd;
};

/// A command state that writes into the caller's variables instead of a menu.
class VM_API MacCmdUI : public CCmdUI {
public:
    /// `text` may be null, else it holds at least 255 bytes. Sets `second` to whether `id` is not
    /// 9999, and `mark` to 0.
    MacCmdUI(int id, BYTE& enabled, BYTE& second, SHORT& mark, char* text);
    ~MacCmdUI() override;
    /// Also sets m_bHandled, and, only when enabling, that a handler exists: a handler that only
    /// ever disables says SetFnDefined(true) first.
    void Enable(bool enable = true) override;
    void SetCheck(int check = 1) override;
    /// Copies at most 254 characters, without "&", up to the first tab.
    void SetText(const char* text) override;
    virtual void SetRadio(bool on = true);
    virtual bool GetHandled();
    virtual void SetHandled(bool handled);

private:
    BYTE& m_enabled;
    BYTE& m_second;
    SHORT& m_mark;
    char* m_text;
};

/// Sends to a bare handle; 0 for a null one. The message gets the plain CWnd behaviour, never the
/// overrides of the class that owns the handle. Afterwards the handle's first binding is a scratch
/// window, before the re-appended owner. Main thread only.
VM_API LRESULT SendMessage(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// Runs the calling thread's loop for 10 ms and returns FALSE: what was pending has been processed
/// by then. `msg` is never written, so a pump that loops while this is TRUE ends. What a handler
/// throws comes out here.
VM_API BOOL PeekMessage(MSG* msg, HWND window, UINT first, UINT last, UINT remove);
VM_API BOOL TranslateMessage(const MSG* msg); ///< FALSE; does nothing
/// Must not be called: shows a message box saying so and returns 0.
VM_API LRESULT DispatchMessage(const MSG* msg);
VM_API BOOL IsDialogMessage(HWND window, MSG* msg); ///< TRUE; does nothing
/// TRUE; posts nothing. A worker's messages are posted with CWinThread::PostThreadMessage.
VM_API BOOL PostThreadMessage(NSWinThread* threadId, UINT message, WPARAM wParam, LPARAM lParam);
/// Asks the application to terminate on the next turn of the main loop. The main window may still
/// refuse (WM_QUERYCLOSE), and while a modal dialog is open the request is dropped with a log line:
/// call CDialog::EndDialog first, and this after DoModal has returned. The exit code is not used.
VM_API void PostQuitMessage(int exitCode);
/// Milliseconds since the first call of either function in this process, which returns 0. Follows
/// the system clock.
VM_API DWORD GetTickCount();
VM_API DWORD GetCurrentTime();

/// Writes the text and a newline to the system log.
VM_API void OutputDebugString(const char* text);

/// Shows a message box and returns the answer (IDOK ...). `type` is the Win32 style word: buttons,
/// icon and default button; of its other bits MB_TOPMOST and MB_SYSTEMMODAL keep the box in front. Escape
/// and the close button answer IDCANCEL, or IDOK where that is the only button; a box without
/// such an answer stays. Ctrl+C copies the box. The text is UTF-8, never markup. Any thread; a worker
/// waits for the answer. VMCORE_MESSAGEBOX=log in the environment logs the box and answers with its
/// default button.
VM_API int MessageBox(HWND owner, const char* text, const char* caption, UINT type);

enum : UINT {
    MB_OK = 0,
    MB_OKCANCEL = 1,
    MB_ABORTRETRYIGNORE = 2,
    MB_YESNOCANCEL = 3,
    MB_YESNO = 4,
    MB_RETRYCANCEL = 5,
    MB_CANCELTRYCONTINUE = 6,
    MB_ICONSTOP = 0x10,
    MB_ICONERROR = 0x10,
    MB_ICONHAND = 0x10,
    MB_ICONQUESTION = 0x20,
    MB_ICONEXCLAMATION = 0x30,
    MB_ICONWARNING = 0x30,
    MB_ICONINFORMATION = 0x40,
    MB_ICONASTERISK = 0x40,
    MB_DEFBUTTON1 = 0,
    MB_DEFBUTTON2 = 0x100,
    MB_DEFBUTTON3 = 0x200,
    MB_DEFBUTTON4 = 0x300,
    MB_APPLMODAL = 0,
    MB_SYSTEMMODAL = 0x1000,
    MB_TASKMODAL = 0x2000,
    MB_SETFOREGROUND = 0x10000,
    MB_TOPMOST = 0x40000,
};

enum : int {
    IDOK = 1,
    IDCANCEL = 2,
    IDABORT = 3,
    IDRETRY = 4,
    IDIGNORE = 5,
    IDYES = 6,
    IDNO = 7,
    IDCLOSE = 8,
    IDHELP = 9,
    IDTRYAGAIN = 10,
    IDCONTINUE = 11,
};
