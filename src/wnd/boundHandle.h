// Bindings asked for and removed by a pointer alone. The handle that a message carries to the main
// thread is read from the registry, not from the object: the object may be destroyed by the main
// thread at that very moment.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

namespace vm {
/// The view that the object was bound to last; null without a binding. Any thread; the pointer is
/// not followed.
HWND BoundHandle(const CWnd* wnd);
/// Removes all bindings of one view. The pointer is not followed.
void RemoveBindingsOf(HWND view);
} // namespace vm
