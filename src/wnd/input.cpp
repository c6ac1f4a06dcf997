#include <vmcore/wnd/input.h>

#include <QtGui/QCursor>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QTextEdit>

#include <vmcore/app/messages.h>
#include <vmcore/wnd/CWnd.h>

#include "wnd/NativeWindow.h"
#include "wnd/nativeEvents.h"
#include "wnd/views.h"

namespace {

constexpr int kGrowCorner = 15;
constexpr SHORT kDown = static_cast<SHORT>(0x8000);

bool IsDown(int virtualKey, unsigned modifiers, unsigned buttons) {
    switch (virtualKey) {
    case VK_LBUTTON:
        return buttons & vm::kLeftDown;
    case VK_RBUTTON:
        return buttons & vm::kRightDown;
    case VK_MBUTTON:
        return buttons & vm::kMiddleDown;
    case VK_SHIFT:
        return modifiers & (vm::kShiftKey | vm::kRightShiftKey);
    case VK_CONTROL:
        return modifiers & vm::kCommandKey;
    case VK_MENU:
        return modifiers & (vm::kOptionKey | vm::kRightOptionKey);
    case VK_LWIN:
    case VK_RWIN:
        return modifiers & (vm::kControlKey | vm::kRightControlKey);
    default:
        return false;
    }
}

template <class Edit>
bool IsEditable(const HWND view) {
    const auto* edit = qobject_cast<const Edit*>(view);
    return edit && !edit->isReadOnly();
}

bool IsEditableField(const HWND view) {
    return vm::IsLiveView(view) &&
           (IsEditable<QLineEdit>(view) || IsEditable<QPlainTextEdit>(view) ||
            IsEditable<QTextEdit>(view));
}

LPARAM HandleOf(const CWnd& wnd) {
    return reinterpret_cast<LPARAM>(wnd.view);
}

} // namespace

SHORT GetKeyState(int virtualKey) {
    return IsDown(virtualKey, vm::CurrentModifiers(), vm::CurrentButtons()) ? kDown : SHORT{0};
}

SHORT GetAsyncKeyState(int virtualKey) {
    return IsDown(virtualKey, vm::HeldModifiers(), vm::CurrentButtons()) ? kDown : SHORT{0};
}

UINT BuildKeyState(NSEvent* event) {
    return vm::KeyStateOf(vm::ModifiersOfEvent(event), vm::CurrentButtons());
}

void SetButton(UINT pressed) {
    vm::ReplayButtons(pressed);
}

void VMMouseTrack(CWnd* wnd, int x, int y) {
    if (wnd) wnd->SendMessage(WM_MOUSEMOVE, BuildKeyState(nullptr), MAKELPARAM(x, y));
}

void ParentNotifyOnButton(CWnd* child, bool down, POINT point, bool right) {
    CWnd* const parent = child ? child->GetParent() : nullptr;
    if (!parent || parent == child) return;
    child->ClientToScreen(&point);
    parent->ScreenToClient(&point);
    const UINT press = right ? WM_RBUTTONDOWN : WM_LBUTTONDOWN;
    const UINT release = right ? WM_RBUTTONUP : WM_LBUTTONUP;
    parent->SendMessage(WM_PARENTNOTIFY, down ? press : release, MAKELPARAM(point.x, point.y));
}

BOOL HandleContextMenuMessage(CWnd* wnd, POINT point) {
    if (!wnd) return FALSE;
    return wnd->SendMessage(WM_CONTEXTMENU, static_cast<WPARAM>(HandleOf(*wnd)),
                            MAKELPARAM(point.x, point.y)) != 0;
}

void GenerateFocusMessage(HWND field, bool gained) {
    if (!IsEditableField(field)) return;
    CWnd* const wnd = vm::ObjectAround(*field);
    if (wnd)
        wnd->SendMessage(WM_COMMAND,
                         MAKEWPARAM(vm::TagOf(field), gained ? EN_SETFOCUS : EN_KILLFOCUS),
                         reinterpret_cast<LPARAM>(field));
}

void WindowDeactivate(CWnd* wnd) {
    if (wnd) wnd->SendMessage(WM_ACTIVATE, 0, HandleOf(*wnd));
}

BOOL TestForLowerRight(CWnd* wnd) {
    const NSWindow* const window =
        wnd && vm::IsLiveView(wnd->view) ? vm::WindowOf(wnd->view) : nullptr;
    const CWnd* const top = window ? GetWRefCon(const_cast<NSWindow*>(window)) : nullptr;
    if (!top || !(top->style & WS_OVERLAPPEDWINDOW)) return FALSE;
    const QRect inside = window->rect();
    const QRect corner(inside.bottomRight() - QPoint(kGrowCorner - 1, kGrowCorner - 1),
                       inside.bottomRight());
    return corner.contains(window->mapFromGlobal(QCursor::pos()));
}
