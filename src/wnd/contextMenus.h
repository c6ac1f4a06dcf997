// Context menus of the toolkit's own views: a right click, the Menu key and Shift+F10 reach the window
// object as they do in views made by Create.
#pragma once

#include <functional>

class CWnd;
class QAbstractItemView;

namespace vm {

/// From now on the view asks `object` with WM_CONTEXTMENU: wParam the view, lParam the place on the
/// screen. A right press has selected the row under the mouse by then. Without an object it is
/// that of the nearest view around.
void ReportContextMenus(QAbstractItemView& view, std::function<CWnd*()> object);

} // namespace vm
