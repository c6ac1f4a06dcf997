// Files dragged onto a view or a window.
#pragma once

class CWnd;
class QDropEvent;

namespace vm {
/// Accepts the drag when it carries local files; whether it did.
bool AcceptFileDrag(QDropEvent* drag);
/// Sends WM_DROPFILES with the paths of the drop.
void SendDroppedFiles(CWnd& wnd, QDropEvent* drop);
} // namespace vm
