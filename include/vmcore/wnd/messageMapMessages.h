// Message map entries with handlers of fixed names, one for every message that a window gets. Above
// each is the handler's declaration; CWnd's own of that name does nothing but what CWnd.h says.
//
// Coordinates are signed, sizes are not. A CWnd* is the object of the handle in the message; for a view
// without one the scratch window, valid until the next call that needs it; null for none. A macro for
// a message that the library does not send (ON_WM_ERASEBKGND) is in messageMapMissing.h: an error.
#pragma once

#include <vmcore/wnd/messageMapParts.h>

// Life.
/// int OnCreate(CREATESTRUCT* record): null in a dialog
#define ON_WM_CREATE()                                                                             \
    VM_MAP_ON(WM_CREATE, vm::map::AnswerOf(VM_MAP_HANDLER(int, OnCreate, (CREATESTRUCT*))(         \
                             reinterpret_cast<CREATESTRUCT*>(vmMessage.lParam))))
/// void OnDestroy()
#define ON_WM_DESTROY() VM_MAP_ON(WM_DESTROY, (VM_MAP_HANDLER(void, OnDestroy, ())(), 1))
/// void OnClose(): of a WM_CLOSE that was sent or posted the window stays unless this calls the base
/// class's. The user's close asks WM_QUERYCLOSE and then goes, whatever this does: refuse it there.
#define ON_WM_CLOSE() VM_MAP_ON(WM_CLOSE, (VM_MAP_HANDLER(void, OnClose, ())(), 1))
/// BOOL OnQueryClose(): TRUE refuses the close
#define ON_WM_QUERYCLOSE()                                                                         \
    VM_MAP_ON(WM_QUERYCLOSE, vm::map::AnswerOf(VM_MAP_HANDLER(BOOL, OnQueryClose, ())()))
/// void OnShowWindow(BOOL show, UINT status): status is 0
#define ON_WM_SHOWWINDOW()                                                                         \
    VM_MAP_ON(WM_SHOWWINDOW, (VM_MAP_HANDLER(void, OnShowWindow, (BOOL, UINT))(                    \
                                  vmMessage.wParam != 0, static_cast<UINT>(vmMessage.lParam)),     \
                              1))

// Painting and places.
/// void OnPaint()
#define ON_WM_PAINT() VM_MAP_ON(WM_PAINT, (VM_MAP_HANDLER(void, OnPaint, ())(), 1))
/// void OnSize(UINT type, int cx, int cy): of a top-level window and a modal dialog the frame's size,
/// larger than the client area; type is 2 or 0, see WM_SIZE
#define ON_WM_SIZE()                                                                               \
    VM_MAP_ON(WM_SIZE, (VM_MAP_HANDLER(void, OnSize, (UINT, int, int))(                            \
                            static_cast<UINT>(vmMessage.wParam), LOWORD(vmMessage.lParam),         \
                            HIWORD(vmMessage.lParam)),                                             \
                        1))
/// void OnMove(int x, int y)
#define ON_WM_MOVE()                                                                               \
    VM_MAP_ON(                                                                                     \
        WM_MOVE,                                                                                   \
        (VM_MAP_HANDLER(void, OnMove, (int, int))(vmMessage.Point().x, vmMessage.Point().y), 1))
/// void OnGetMinMaxInfo(MINMAXINFO* limits)
#define ON_WM_GETMINMAXINFO()                                                                      \
    VM_MAP_ON(WM_GETMINMAXINFO, (VM_MAP_HANDLER(void, OnGetMinMaxInfo, (MINMAXINFO*))(             \
                                     reinterpret_cast<MINMAXINFO*>(vmMessage.lParam)),             \
                                 1))

// Mouse: void OnX(UINT flags, CPoint point).
#define ON_WM_LBUTTONDOWN()                                                                        \
    VM_MAP_ON(WM_LBUTTONDOWN, (VM_MAP_HANDLER(void, OnLButtonDown, (UINT, CPoint))(                \
                                   vmMessage.Keys(), vmMessage.Point()),                           \
                               1))
#define ON_WM_LBUTTONUP()                                                                          \
    VM_MAP_ON(WM_LBUTTONUP, (VM_MAP_HANDLER(void, OnLButtonUp, (UINT, CPoint))(vmMessage.Keys(),   \
                                                                               vmMessage.Point()), \
                             1))
#define ON_WM_LBUTTONDBLCLK()                                                                      \
    VM_MAP_ON(WM_LBUTTONDBLCLK, (VM_MAP_HANDLER(void, OnLButtonDblClk, (UINT, CPoint))(            \
                                     vmMessage.Keys(), vmMessage.Point()),                         \
                                 1))
#define ON_WM_MBUTTONDOWN()                                                                        \
    VM_MAP_ON(WM_MBUTTONDOWN, (VM_MAP_HANDLER(void, OnMButtonDown, (UINT, CPoint))(                \
                                   vmMessage.Keys(), vmMessage.Point()),                           \
                               1))
#define ON_WM_MBUTTONUP()                                                                          \
    VM_MAP_ON(WM_MBUTTONUP, (VM_MAP_HANDLER(void, OnMButtonUp, (UINT, CPoint))(vmMessage.Keys(),   \
                                                                               vmMessage.Point()), \
                             1))
#define ON_WM_MBUTTONDBLCLK()                                                                      \
    VM_MAP_ON(WM_MBUTTONDBLCLK, (VM_MAP_HANDLER(void, OnMButtonDblClk, (UINT, CPoint))(            \
                                     vmMessage.Keys(), vmMessage.Point()),                         \
                                 1))
#define ON_WM_RBUTTONDOWN()                                                                        \
    VM_MAP_ON(WM_RBUTTONDOWN, (VM_MAP_HANDLER(void, OnRButtonDown, (UINT, CPoint))(                \
                                   vmMessage.Keys(), vmMessage.Point()),                           \
                               1))
#define ON_WM_RBUTTONUP()                                                                          \
    VM_MAP_ON(WM_RBUTTONUP, (VM_MAP_HANDLER(void, OnRButtonUp, (UINT, CPoint))(vmMessage.Keys(),   \
                                                                               vmMessage.Point()), \
                             1))
#define ON_WM_RBUTTONDBLCLK()                                                                      \
    VM_MAP_ON(WM_RBUTTONDBLCLK, (VM_MAP_HANDLER(void, OnRButtonDblClk, (UINT, CPoint))(            \
                                     vmMessage.Keys(), vmMessage.Point()),                         \
                                 1))
#define ON_WM_MOUSEMOVE()                                                                          \
    VM_MAP_ON(WM_MOUSEMOVE, (VM_MAP_HANDLER(void, OnMouseMove, (UINT, CPoint))(vmMessage.Keys(),   \
                                                                               vmMessage.Point()), \
                             1))
#define ON_WM_MOUSEENTER()                                                                         \
    VM_MAP_ON(WM_MOUSEENTER, (VM_MAP_HANDLER(void, OnMouseEnter,                                   \
                                             (UINT, CPoint))(vmMessage.Keys(), vmMessage.Point()), \
                              1))
/// void OnMouseLeave()
#define ON_WM_MOUSELEAVE() VM_MAP_ON(WM_MOUSELEAVE, (VM_MAP_HANDLER(void, OnMouseLeave, ())(), 1))
/// BOOL OnMouseWheel(UINT flags, short delta, CPoint point): in the window, not on the screen
#define ON_WM_MOUSEWHEEL()                                                                         \
    VM_MAP_ON(WM_MOUSEWHEEL, VM_MAP_HANDLER(BOOL, OnMouseWheel, (UINT, short, CPoint))(            \
                                 vmMessage.Keys(), static_cast<short>(HIWORD(vmMessage.wParam)),   \
                                 vmMessage.Point()) != 0)
/// void OnContextMenu(CWnd* clicked, CPoint point): a dialog gets no clicks on its controls; a class
/// of the control does
#define ON_WM_CONTEXTMENU()                                                                        \
    VM_MAP_ON(WM_CONTEXTMENU, (VM_MAP_HANDLER(void, OnContextMenu, (CWnd*, CPoint))(               \
                                   vm::map::WindowOf(vmMessage.wParam), vmMessage.Point()),        \
                               1))
/// void OnParentNotify(UINT message, LPARAM point)
#define ON_WM_PARENTNOTIFY()                                                                       \
    VM_MAP_ON(WM_PARENTNOTIFY, (VM_MAP_HANDLER(void, OnParentNotify, (UINT, LPARAM))(              \
                                    vmMessage.Keys(), vmMessage.lParam),                           \
                                1))
/// void OnDropFiles(NSArray* files)
#define ON_WM_DROPFILES()                                                                          \
    VM_MAP_ON(WM_DROPFILES, (VM_MAP_HANDLER(void, OnDropFiles, (NSArray*))(                        \
                                 reinterpret_cast<NSArray*>(vmMessage.wParam)),                    \
                             1))

// Keys: void OnX(UINT key, UINT repeats, UINT flags). Every repeat is a message of its own, so that repeats is
// 1 where nothing is packed; flags is the native key code.
#define ON_WM_KEYDOWN()                                                                            \
    VM_MAP_ON(WM_KEYDOWN, (VM_MAP_HANDLER(void, OnKeyDown, (UINT, UINT, UINT))(                    \
                               static_cast<UINT>(vmMessage.wParam), vmMessage.Repeats(),           \
                               HIWORD(vmMessage.lParam)),                                          \
                           1))
#define ON_WM_KEYUP()                                                                              \
    VM_MAP_ON(WM_KEYUP, (VM_MAP_HANDLER(void, OnKeyUp, (UINT, UINT, UINT))(                        \
                             static_cast<UINT>(vmMessage.wParam), vmMessage.Repeats(),             \
                             HIWORD(vmMessage.lParam)),                                            \
                         1))
#define ON_WM_CHAR()                                                                               \
    VM_MAP_ON(WM_CHAR, (VM_MAP_HANDLER(void, OnChar, (UINT, UINT, UINT))(                          \
                            static_cast<UINT>(vmMessage.wParam), vmMessage.Repeats(),              \
                            HIWORD(vmMessage.lParam)),                                             \
                        1))

// Focus and activation.
/// void OnSetFocus(CWnd* before): of a top-level window itself
#define ON_WM_SETFOCUS()                                                                           \
    VM_MAP_ON(WM_SETFOCUS,                                                                         \
              (VM_MAP_HANDLER(void, OnSetFocus, (CWnd*))(vm::map::WindowOf(vmMessage.wParam)), 1))
/// void OnKillFocus(CWnd* next): null; of a top-level window itself
#define ON_WM_KILLFOCUS()                                                                          \
    VM_MAP_ON(                                                                                     \
        WM_KILLFOCUS,                                                                              \
        (VM_MAP_HANDLER(void, OnKillFocus, (CWnd*))(vm::map::WindowOf(vmMessage.wParam)), 1))
/// void OnActivate(UINT state, CWnd* other, BOOL minimized)
#define ON_WM_ACTIVATE()                                                                           \
    VM_MAP_ON(WM_ACTIVATE, (VM_MAP_HANDLER(void, OnActivate, (UINT, CWnd*, BOOL))(                 \
                                vmMessage.Keys(), vm::map::WindowOf(vmMessage.lParam),             \
                                HIWORD(vmMessage.wParam) != 0),                                    \
                            1))
/// void OnMDIActivate(BOOL activated, CWnd* activating, CWnd* deactivating)
#define ON_WM_MDIACTIVATE()                                                                        \
    VM_MAP_ON(WM_MDIACTIVATE,                                                                      \
              (VM_MAP_HANDLER(void, OnMDIActivate, (BOOL, CWnd*, CWnd*))(                          \
                   vmMessage.lParam && reinterpret_cast<NSView*>(vmMessage.lParam) == view,        \
                   vm::map::WindowOf(vmMessage.lParam), vm::map::WindowOf(vmMessage.wParam)),      \
               1))

// The rest.
/// void OnTimer(UINT id), or UINT_PTR
#define ON_WM_TIMER()                                                                              \
    VM_MAP_ON(WM_TIMER,                                                                            \
              (vm::map::OfTimer<VmClass>::Call(this, &VmClass::OnTimer, vmMessage.wParam), 1))
/// void OnHScroll(UINT code, UINT position, CScrollBar* control), or CWnd*: null for the window's own
/// bars. Also a slider and the arrows of a spin control arrive as a CScrollBar*: compare it with their
/// address, call what every CWnd has, or cast it to what it is.
#define ON_WM_HSCROLL()                                                                            \
    VM_MAP_ON(WM_HSCROLL,                                                                          \
              (vm::map::OfScroll<VmClass>::Call(this, &VmClass::OnHScroll, vmMessage.Keys(),       \
                                                HIWORD(vmMessage.wParam), vmMessage.lParam),       \
               1))
/// void OnVScroll(UINT code, UINT position, CScrollBar* control), or CWnd*
#define ON_WM_VSCROLL()                                                                            \
    VM_MAP_ON(WM_VSCROLL,                                                                          \
              (vm::map::OfScroll<VmClass>::Call(this, &VmClass::OnVScroll, vmMessage.Keys(),       \
                                                HIWORD(vmMessage.wParam), vmMessage.lParam),       \
               1))
/// void OnExitMenuLoop(BOOL isPopup): TRUE, for only pop-up menus tell
#define ON_WM_EXITMENULOOP()                                                                       \
    VM_MAP_ON(WM_EXITMENULOOP, (VM_MAP_HANDLER(void, OnExitMenuLoop, (BOOL))(TRUE), 1))

// The parts of the macros above.
#define VM_MAP_ON(message, answer)                                                                 \
    if (vmMessage.number == (message)) return answer;
#define VM_MAP_HANDLER(Result, name, parameters)                                                   \
    (this->*static_cast<Result(VmClass::*) parameters>(&VmClass::name))
