// The first of the two steps from a native event to a message: the toolkit's events as neutral
// records.
#pragma once

#include "wnd/viewEvents.h"

class QEnterEvent;
class QEvent;
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
MouseButton ButtonOf(const QMouseEvent& event);

/// A press of a modifier alone, or a release that the keyboard's repetition makes: no message.
bool IsSilentKey(const QKeyEvent& event);

/// The modifiers held now.
unsigned CurrentModifiers();

} // namespace vm
