// What the dispatch knows of message maps: results that do not fit into a map's answer, and the
// commands that a dialog's map has.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

namespace vm::map {

/// The result behind what MessageMap answered: most often the answer itself.
LRESULT ResultOf(int answer);
/// Whether the window has a message map with a handler for IDOK or IDCANCEL, which `wParam` names. A
/// map written as a switch is asked too, and does not know the question.
bool HasCommand(CWnd& wnd, WPARAM wParam, LPARAM lParam);

} // namespace vm::map
