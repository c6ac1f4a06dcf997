// The scroll bars of a window object: native bars at the right and the bottom inside its view, and
// the square where they meet.
#pragma once

#include <QtCore/QSize>

class CWnd;
class QWidget;

namespace vm {

inline constexpr int kScrollBarWidth = 15;

/// What the bars that are shown take off the client area.
QSize ScrollBarSpace(const CWnd& wnd);
/// The client area of the object's view as WM_SIZE tells it: in the host's units, less the bars, never negative.
QSize ClientSizeOf(const CWnd& wnd, const QWidget& view);
/// Puts the bars where they belong in a view of a new size.
void LayOutScrollBars(const CWnd& wnd);
/// Frees the vertical, then the horizontal bar, then the square.
void RemoveScrollBars(CWnd& wnd);

} // namespace vm
