// The matching rule of accelerator tables, on plain data.
#pragma once

#include <vmcore/controls/CMenu.h>

#include "wnd/viewEvents.h"

namespace vm {

/// The key of a WM_CHAR record as accelerator tables write it: the upper-case character, and the
/// native key code shifted left by 8.
int AcceleratorKey(WPARAM wParam, LPARAM lParam);

/// The first entry of `table` for this key whose three modifiers are exactly those held (bits of
/// vm::Modifier); null for none.
const AccelEntry* MatchAccelerator(int key, unsigned modifiers, const AccelEntry* table);

} // namespace vm
