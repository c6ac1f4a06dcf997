// The record that a window is made from, as WM_CREATE hands it out.
#pragma once

#include <vmcore/wnd/CWnd.h>

namespace vm {
CREATESTRUCT CreationRecord(const char* className, const char* windowName, DWORD style,
                            const RECT& rect, const CWnd* parent, UINT id);
} // namespace vm
