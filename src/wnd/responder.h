// The responder chain: from the view that has the focus up its parents to the window.
#pragma once

#include <vmcore/core/types.h>

class CWnd;
class CWndView;

namespace vm {

/// The first view made by CWnd::Create from the focus of the application's active window upwards;
/// null when there is none.
CWndView* FirstResponderView();

/// The same from `start`.
CWndView* FirstViewFrom(QWidget* start);

} // namespace vm
