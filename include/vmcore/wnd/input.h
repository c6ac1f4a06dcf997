// The state of keyboard and mouse, and helpers for hosts that send their own input messages.
//
// Which key plays which part: Ctrl on the keyboard is the command key of messages and menus
// (MK_COMMAND), Super (the key with the logo) is the control key (MK_CONTROL), Alt is the option key.
// The virtual keys below name the keys of the keyboard: VK_CONTROL is Ctrl, VK_LWIN is Super.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>

class CWnd;
class QEvent;
/// An event of the toolkit that a host gets hold of; opaque otherwise.
using NSEvent = QEvent;

/// What GetKeyState and GetAsyncKeyState know.
enum : int {
    VK_LBUTTON = 0x01,
    VK_RBUTTON = 0x02,
    VK_MBUTTON = 0x04,
    VK_SHIFT = 0x10,
    VK_CONTROL = 0x11, ///< Ctrl, also where the command key is meant
    VK_MENU = 0x12,    ///< Alt
    VK_LWIN = 0x5B,    ///< Super, left or right: the control key of MK_CONTROL
    VK_RWIN = 0x5C,    ///< the same
};

/// The codes of WM_KEYDOWN. Letters and digits have their capital letter and figure, all function keys
/// share 0x10, and any other key has the character it types.
enum : int {
    VK_HOME = 0x01,
    VK_END = 0x04,
    VK_BACK = 0x08,
    VK_TAB = 0x09,
    VK_PRIOR = 0x0B, ///< Page Up
    VK_NEXT = 0x0C,  ///< Page Down
    VK_RETURN = 0x0D,
    VK_ESCAPE = 0x1B,
    VK_LEFT = 0x1C,
    VK_RIGHT = 0x1D,
    VK_UP = 0x1E,
    VK_DOWN = 0x1F,
    VK_SPACE = 0x20,
};

/// 0x8000 (negative) while the key or button was down at the message that is being handled, else 0.
/// Always 0 for keys that are not in the first list above.
VM_API SHORT GetKeyState(int virtualKey);
/// The same, but the keys as they are at this moment, which a message may be behind of.
VM_API SHORT GetAsyncKeyState(int virtualKey);

/// The key state word of mouse messages (MK_...): the modifiers of the event, and the buttons that are
/// down now, whatever the event says. Null: the modifiers of the last event.
VM_API UINT BuildKeyState(NSEvent* event);
/// Has key state words and GetKeyState take these buttons as down (1 left, 2 right, 4 middle), for hosts
/// that replay input. The next event of the mouse or the keyboard ends it.
VM_API void SetButton(UINT pressed);

// Messages. A null object gets none.
/// WM_MOUSEMOVE with the current key state.
VM_API void VMMouseTrack(CWnd* wnd, int x, int y);
/// Tells the parent of a button that went down or up in `child`: WM_PARENTNOTIFY with the number of the
/// left or right button's message, and the point, which is given in the child, in the parent.
VM_API void ParentNotifyOnButton(CWnd* child, bool down, POINT point, bool right);
/// Sends WM_CONTEXTMENU with a point of the screen, as a right click does; whether it was taken.
VM_API BOOL HandleContextMenuMessage(CWnd* wnd, POINT point);
/// WM_COMMAND with EN_SETFOCUS or EN_KILLFOCUS, the field's tag and its handle, to the object of the
/// nearest view around an editable text field. Nothing for any other view.
VM_API void GenerateFocusMessage(HWND field, bool gained);
/// WM_ACTIVATE (0, its handle).
VM_API void WindowDeactivate(CWnd* wnd);
/// Whether the mouse is in the lower right corner, 15 pixels square, by which the top-level window of
/// `wnd` can be resized; FALSE for one that cannot.
VM_API BOOL TestForLowerRight(CWnd* wnd);
