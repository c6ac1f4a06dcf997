#include "wnd/viewEvents.h"

#include <utility>

#include <QtCore/QPointer>

#include <vmcore/wnd/CWnd.h>

#include "core/log.h"
#include "wnd/CWndNSView.h"
#include "wnd/keyCodes.h"
#include "wnd/viewScaling.h"
#include "wnd/views.h"
#include "wnd/windowState.h"

namespace vm {
namespace {

constexpr unsigned kModifiersWithoutCharacter =
    kCommandKey | kOptionKey | kControlKey | kRightOptionKey | kRightControlKey;
constexpr int kWheelNotch = 120;

// A handler may run a loop of its own, as a menu or a message box does, in which the view is freed.
using View = QPointer<CWndView>;
bool Listens(const View& view) {
    return view && view->wnd && view->enabled;
}

// In the units of the view's object, which must be there.
LPARAM PositionIn(const CWndView& view, int x, int y) {
    const double scale = ScaleOf(*view.wnd);
    return MAKELPARAM(ToHost(x, scale), ToHost(y, scale));
}
LPARAM PositionOf(const CWndView& view, const MouseRecord& mouse) {
    return PositionIn(view, mouse.x, mouse.y);
}
WPARAM StateOf(const MouseRecord& mouse) {
    return KeyStateOf(mouse.modifiers, mouse.pressedButtons);
}

struct ButtonMessages {
    UINT down;
    UINT doubleClick;
    UINT up;
};

ButtonMessages MessagesOf(MouseButton button) {
    switch (button) {
    case MouseButton::Left:
        return {WM_LBUTTONDOWN, WM_LBUTTONDBLCLK, WM_LBUTTONUP};
    case MouseButton::Right:
        return {WM_RBUTTONDOWN, WM_RBUTTONDBLCLK, WM_RBUTTONUP};
    case MouseButton::Other:
        break;
    }
    return {WM_MBUTTONDOWN, WM_MBUTTONDBLCLK, WM_MBUTTONUP};
}

// True when the object took the context click, or is gone after it.
bool ContextMenuTaken(CWndView& view, LPARAM position) {
    const View self = &view;
    const LRESULT result =
        view.wnd->WindowProc(WM_CONTEXTMENU, reinterpret_cast<WPARAM>(&view), position);
    return result != 0 || !self || !view.wnd;
}

// Where a mouse message goes: to the object of the view, or, while another view has the capture, to
// that view's object with the position in that view.
struct Target {
    CWnd* wnd;
    LPARAM position;
    bool isCaptured;
};

Target TargetOf(CWndView& view, const MouseRecord& mouse) {
    const HWND capture = Windows().CaptureWnd;
    if (capture && capture != &view) {
        if (CWnd* wnd = ObjectOf(capture)) {
            POINT point{mouse.screenX, mouse.screenY};
            ScreenToClient(capture, &point);
            return {wnd, MAKELPARAM(point.x, point.y), true};
        }
    }
    return {view.wnd, PositionOf(view, mouse), false};
}

bool SendKeyDown(CWndView& view, const KeyRecord& key, int code) {
    return view.wnd->WindowProc(WM_KEYDOWN, static_cast<WPARAM>(code & 0xFFFF),
                                static_cast<LPARAM>(key.nativeCode) << 16) != 0;
}

MSG CharacterMessage(HWND view, const CWnd& wnd, const KeyRecord& key, int code) {
    MSG record{};
    record.hwnd = view;
    record.message = WM_CHAR;
    record.wParam = static_cast<WPARAM>(code);
    record.lParam = (static_cast<LPARAM>(key.nativeCode) << 16) & 0xFF0000;
    record.time = static_cast<DWORD>(key.seconds / 3.0 * 50.0);
    const double scale = ScaleOf(wnd);
    record.pt = {ToHost(key.x, scale), ToHost(key.y, scale)};
    return record;
}

// Asks the objects from `wnd` up to that of `last`, or without one to the top: a translation or an
// accelerator ends the key. What it was pressed in may be ended by its own translation.
template <class IsGone>
bool Translated(CWnd* wnd, const NSWindow* last, MSG& record, IsGone isGone) {
    for (; CWndListVerify(wnd) && wnd->view; wnd = wnd->parentWnd) {
        if (wnd->PreTranslateMessage(&record) || !CWndListVerify(wnd) || isGone()) return true;
        if (wnd->accelTable && TranslateAccelerator(wnd->view, wnd->accelTable, &record))
            return true;
        if (!CWndListVerify(wnd)) return true;
        if (last && wnd->nsWindow == last) break;
    }
    return false;
}

bool SendTyped(CWndView& view, const KeyRecord& key, std::size_t index) {
    if (key.modifiers & kModifiersWithoutCharacter) return false;
    if (index >= key.typed.size()) return false;
    // Four bits of the key code are what hosts' character handlers get here.
    return view.wnd->WindowProc(WM_CHAR, static_cast<WPARAM>(key.typed[index] & 0xFF),
                                (static_cast<LPARAM>(key.nativeCode) << 16) & 0xF0000) != 0;
}

// Whether something took it.
bool PressCharacter(CWndView& view, const KeyRecord& key, std::size_t index) {
    const View self = &view;
    const int code = VirtualKeyOf(key.nativeCode, key.characters[index]);
    const bool taken = SendKeyDown(view, key, code);
    if (!self || !view.wnd) return true;
    MSG record = CharacterMessage(&view, *view.wnd, key, code);
    const auto isGone = [&] { return !self || !view.wnd; };
    if (Translated(view.wnd, nullptr, record, isGone) || isGone()) return true;
    return SendTyped(view, key, index) || taken;
}

const KeyRecord* s_keyInHand = nullptr;

// A handler may run a loop of its own, with keys of its own.
class KeyInHand {
public:
    explicit KeyInHand(const KeyRecord& key) : m_outer(std::exchange(s_keyInHand, &key)) {}
    ~KeyInHand() { s_keyInHand = m_outer; }
    KeyInHand(const KeyInHand&) = delete;
    KeyInHand& operator=(const KeyInHand&) = delete;

private:
    const KeyRecord* m_outer;
};

// What the mouse drags: the values of CWndView::dragged.
enum Drag { kPlainMove = 0, kLeftDrag = 1, kOtherDrag = 2 };

Drag DragOf(unsigned pressedButtons) {
    if (pressedButtons == 0) return kPlainMove;
    return pressedButtons & kLeftDown ? kLeftDrag : kOtherDrag;
}

} // namespace

UINT KeyStateOf(unsigned modifiers, unsigned pressedButtons) {
    const bool command = modifiers & kCommandKey;
    const bool left = pressedButtons & kLeftDown;
    UINT state = 0;
    if (command) state |= MK_COMMAND;
    if (left && !command) state |= MK_LBUTTON;
    if (pressedButtons & kMiddleDown) state |= MK_MBUTTON;
    if ((pressedButtons & kRightDown) || (left && command)) state |= MK_RBUTTON;
    if (modifiers & (kShiftKey | kRightShiftKey)) state |= MK_SHIFT;
    if (modifiers & (kControlKey | kRightControlKey)) state |= MK_CONTROL;
    return state;
}

void MousePressed(CWndView& view, MouseButton button, const MouseRecord& mouse) {
    if (!view.wnd || !view.enabled) return;
    WindowState& windows = Windows();
    windows.CaptureWnd = nullptr;
    const bool isControlClick =
        button == MouseButton::Left && (mouse.modifiers & (kControlKey | kRightControlKey));
    if (button == MouseButton::Left) windows.RMBUp = isControlClick;
    if (isControlClick) {
        if (!ContextMenuTaken(view, PositionOf(view, mouse)))
            view.wnd->WindowProc(WM_RBUTTONDOWN, StateOf(mouse), PositionOf(view, mouse));
        return;
    }
    if (button == MouseButton::Right &&
        ContextMenuTaken(view, MAKELPARAM(mouse.screenX, mouse.screenY)))
        return;
    const ButtonMessages messages = MessagesOf(button);
    view.wnd->WindowProc(mouse.clickCount < 2 ? messages.down : messages.doubleClick,
                         StateOf(mouse), PositionOf(view, mouse));
}

void MouseReleased(CWndView& view, MouseButton button, const MouseRecord& mouse) {
    if (!view.wnd || !view.enabled) return;
    WindowState& windows = Windows();
    if (button != MouseButton::Left) {
        view.wnd->WindowProc(MessagesOf(button).up, StateOf(mouse), PositionOf(view, mouse));
        return;
    }
    const Target target = TargetOf(view, mouse);
    if (target.isCaptured)
        PrintError("mouseUp to captureWnd: %d %p (%d, %d)\n", ++windows.redirectedReleases,
                   static_cast<void*>(target.wnd), static_cast<short>(LOWORD(target.position)),
                   static_cast<short>(HIWORD(target.position)));
    const UINT message = windows.RMBUp ? WM_RBUTTONUP : WM_LBUTTONUP;
    windows.RMBUp = false;
    target.wnd->WindowProc(message, StateOf(mouse), target.position);
}

// A drag with another button stays with its view whoever has the capture.
void MouseMoved(CWndView& view, const MouseRecord& mouse) {
    if (!view.wnd || !view.enabled) return;
    view.dragged = DragOf(mouse.pressedButtons);
    const Target target = view.dragged == kOtherDrag
                              ? Target{view.wnd, PositionOf(view, mouse), false}
                              : TargetOf(view, mouse);
    target.wnd->WindowProc(WM_MOUSEMOVE, StateOf(mouse), target.position);
}

void MouseEntered(CWndView& view, const MouseRecord& mouse) {
    if (view.wnd && view.enabled)
        view.wnd->WindowProc(WM_MOUSEENTER, StateOf(mouse), PositionOf(view, mouse));
}

void MouseLeft(CWndView& view, const MouseRecord& mouse) {
    if (view.wnd && view.enabled)
        view.wnd->WindowProc(WM_MOUSELEAVE, StateOf(mouse), PositionOf(view, mouse));
}

void WheelTurned(CWndView& view, const WheelRecord& wheel) {
    if (!view.wnd || !view.enabled) return;
    int delta = static_cast<int>(wheel.delta * kWheelNotch);
    if (wheel.modifiers & (kOptionKey | kRightOptionKey)) delta *= 10;
    if (delta == 0) return;
    view.wnd->WindowProc(WM_MOUSEWHEEL,
                         MAKEWPARAM(KeyStateOf(wheel.modifiers, wheel.pressedButtons), delta),
                         PositionIn(view, wheel.x, wheel.y));
}

bool KeyPressed(CWndView& view, const KeyRecord& key) {
    const KeyInHand inHand(key);
    const View self = &view;
    bool taken = false;
    for (std::size_t i = 0; i < key.characters.size() && Listens(self); ++i)
        taken = PressCharacter(view, key, i) || taken;
    return taken || !self;
}

// A dialog's parent is not asked: the dialog blocks it.
bool KeyLeftAlone(QWidget& control, const KeyRecord& key) {
    const KeyInHand inHand(key);
    const QPointer<QWidget> self = &control;
    CWnd* const own = ObjectOf(&control);
    CWnd* const wnd = own ? own : ObjectAround(control);
    const NSWindow* const window = WindowOf(&control);
    for (const int character : key.characters) {
        if (!wnd || !CWndListVerify(wnd)) return wnd != nullptr;
        const int code = VirtualKeyOf(key.nativeCode, character);
        MSG record = CharacterMessage(&control, *wnd, key, code);
        if (Translated(wnd, window, record, [&] { return !self; }) || !self) return true;
    }
    return false;
}

std::optional<unsigned> ModifiersInHand() {
    if (!s_keyInHand) return std::nullopt;
    return s_keyInHand->modifiers;
}

void KeyReleased(CWndView& view, const KeyRecord& key) {
    const View self = &view;
    for (std::size_t i = 0; i < key.characters.size() && Listens(self); ++i)
        view.wnd->WindowProc(WM_KEYUP, static_cast<WPARAM>(key.characters[i]),
                             static_cast<LPARAM>(key.nativeCode) << 16);
}

} // namespace vm
