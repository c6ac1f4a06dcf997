// The first responder of each window: the view that keys go to. It is what the toolkit calls the focus
// widget, except that neither a window's activation nor a menu changes it.
#pragma once

#include <vmcore/core/types.h>

class CWnd;
class CWndView;

namespace vm {

/// Sends WM_KILLFOCUS and WM_SETFOCUS to views made by CWnd::Create from now on. Once is enough.
void WatchResponders();

/// The view that has the focus, or, while a menu bar is worked by keyboard, the one that had it; null
/// when there is none.
QWidget* FocusOrResponder();

/// The first view made by CWnd::Create from the first responder upwards; null when there is none.
CWndView* FirstResponderView();

/// The same from `start`.
CWndView* FirstViewFrom(QWidget* start);

} // namespace vm
