// What is in a window, for whoever looks for a view that is missing.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/types.h>

/// Writes the views of the window's content to standard error: a line for each, parents before
/// children, with its children's addresses.
VM_API void walkNSViews(NSWindow* window);
/// The same for one view and those below it.
VM_API void walkNSView(NSView* view);
