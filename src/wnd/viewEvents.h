// The second of the two steps from a native event to a message: neutral records of what happened to
// a view, and the messages that they become. Nothing here knows the toolkit's events, so tests make
// the records by hand.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <vmcore/core/types.h>

class CWnd;
class CWndView;

namespace vm {

enum class MouseButton { Left, Right, Other };

/// Modifier keys as the interfaces know them: Ctrl plays the command key, Super the control key,
/// Alt the option key. Bits of the platform's modifier word.
enum Modifier : unsigned {
    kCommandKey = 0x100,
    kShiftKey = 0x200,
    kOptionKey = 0x800,
    kControlKey = 0x1000,
    kRightShiftKey = 0x2000,
    kRightOptionKey = 0x4000,
    kRightControlKey = 0x8000,
};

/// The modifiers of the key press that is being handled, if one is. The keyboard may be ahead of it.
std::optional<unsigned> ModifiersInHand();

/// The buttons that are down, as bits of the platform's set.
enum PressedButton : unsigned { kLeftDown = 1, kRightDown = 2, kMiddleDown = 4 };

/// The key state word of mouse messages.
UINT KeyStateOf(unsigned modifiers, unsigned pressedButtons);

struct MouseRecord {
    int x; // in the view, top-down
    int y;
    int screenX;
    int screenY;
    int clickCount; // 1 for a first press, 2 for a double click
    unsigned modifiers;
    unsigned pressedButtons;
};

struct KeyRecord {
    std::vector<int> characters; // without modifiers but Shift, in order
    std::vector<int> typed;      // as typed, beside `characters`
    int nativeCode;
    unsigned modifiers;
    double seconds; // the event's time stamp
    int x;          // the mouse, in the view
    int y;
};

struct WheelRecord {
    double delta; // 1.0 for one notch
    int x;
    int y;
    unsigned modifiers;
    unsigned pressedButtons;
};

void MousePressed(CWndView& view, MouseButton button, const MouseRecord& mouse);
void MouseReleased(CWndView& view, MouseButton button, const MouseRecord& mouse);
/// Moved or dragged.
void MouseMoved(CWndView& view, const MouseRecord& mouse);
void MouseEntered(CWndView& view, const MouseRecord& mouse);
void MouseLeft(CWndView& view, const MouseRecord& mouse);
void WheelTurned(CWndView& view, const WheelRecord& wheel);
/// Whether a handler, a translation or an accelerator took a part of it, or the view is gone.
bool KeyPressed(CWndView& view, const KeyRecord& key);
void KeyReleased(CWndView& view, const KeyRecord& key);
/// A press that the native control with the focus did not use is only translated, by the objects from the
/// control's up to its window's. Whether one of them took it, or the control is gone.
bool KeyLeftAlone(QWidget& control, const KeyRecord& key);

} // namespace vm
