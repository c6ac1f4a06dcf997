// The font that CWnd::GetFont answers for a window without one: one object, refilled at each call.
#pragma once

class CFont;

namespace vm {
CFont* TemporaryFont();
/// Clears its handle; at the end of the application object.
void ClearTemporaryFont();
} // namespace vm
