// The one way in which a control of the toolkit becomes the view of a window object.
#pragma once

#include <QtWidgets/QWidget>

#include <vmcore/wnd/CWnd.h>

#include "wnd/views.h"

namespace vm {

/// Places `control` at `rect` of the parent (less the parent's child origin) and makes it the view
/// of `wnd`: asks PreCreateWindow, sets parent, style and tag, has the parent told of the control's
/// actions, registers the view, and shows it when the style has WS_VISIBLE. No message is sent. Without a parent that has a view it deletes
/// the control, leaves `wnd` as it is and returns false.
bool AdoptControl(CWnd& wnd, QWidget* control, CWnd* parent, const RECT& rect, DWORD style,
                  UINT id);

/// The object's view as a control of this class; null without one.
template <class Control>
Control* ControlOf(const CWnd& wnd) {
    return IsLiveView(wnd.view) ? dynamic_cast<Control*>(wnd.view) : nullptr;
}

} // namespace vm
