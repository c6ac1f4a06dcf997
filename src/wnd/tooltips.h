// The tooltips of a window object: rectangles of its view that show the object's one text.
#pragma once

class CWnd;

namespace vm {

/// The object goes: its rectangles show nothing any more.
void FreeTooltipText(CWnd& wnd);

} // namespace vm
