// The first of the two steps from a native event to a message: the toolkit's events as neutral
// records.
#pragma once

#include "wnd/viewEvents.h"

class QEnterEvent;
class QEvent;
class QInputMethodEvent;
class QKeyEvent;
class QMouseEvent;
class QWheelEvent;
class QWidget;

namespace vm {

MouseRecord RecordOf(const QMouseEvent& event, int clickCount);
MouseRecord RecordOf(const QEnterEvent& event);
/// For an event without a position: where the mouse is now.
MouseRecord MouseNow(const QWidget& view);
WheelRecord RecordOf(const QWheelEvent& event);
KeyRecord RecordOf(const QKeyEvent& event, const QWidget& view);
/// The characters that an input method or a dead key ends in, each as if its key typed it. Those that
/// no byte can hold are left out.
std::vector<KeyRecord> RecordsOf(const QInputMethodEvent& event, const QWidget& view);
MouseButton ButtonOf(const QMouseEvent& event);

/// The presses of one button in one place, each soon after the one before: 3 for the third. To be
/// asked once for each press.
int ClickCountOf(const QMouseEvent& press);

/// A press of a modifier alone, or a release that the keyboard's repetition makes: no message.
bool IsSilentKey(const QKeyEvent& event);

/// Shift+F10; the Menu key is an event of its own.
bool AsksForContextMenu(const QKeyEvent& event);

/// Where Tab and Shift+Tab take the focus.
enum class FocusStep { None, Next, Previous };
FocusStep FocusStepOf(const QKeyEvent& event);

/// The modifiers of the key press in hand, else those of the last event.
unsigned CurrentModifiers();
/// Those held at this moment, of which the events may be behind.
unsigned HeldModifiers();
/// Those of an event of the keyboard or the mouse; for any other, and null, the current ones.
unsigned ModifiersOfEvent(const QEvent* event);

/// The buttons that are down, or those of ReplayButtons until a record of another event is made.
unsigned CurrentButtons();
void ReplayButtons(unsigned pressed);

} // namespace vm
