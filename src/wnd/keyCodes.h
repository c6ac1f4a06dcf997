// Key translation as pure functions: from the kernel's key numbers to the library's native key
// codes, and from those to the virtual key codes of WM_KEYDOWN.
#pragma once

#include <cstdint>

namespace vm {

/// What an unknown key has. Never 0, which is the letter A.
inline constexpr int kUnknownKey = 0x7F;

/// The native code of a Linux input event code (linux/input-event-codes.h); kUnknownKey for none.
int NativeKeyFromEvdev(int code);

/// The native code of a toolkit key number, for events that carry no physical key.
int NativeKeyFromQtKey(int key, bool isKeypad);

/// The virtual key code that replaces `character` for this native code; `character` when none does.
/// All function keys share one code.
int VirtualKeyOf(int nativeCode, int character);

} // namespace vm
