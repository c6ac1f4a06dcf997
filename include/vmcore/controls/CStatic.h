// A text that the user cannot change.
#pragma once

#include <vmcore/wnd/CWnd.h>

class VM_API CStatic : public CWnd {
public:
    /// Makes a label of the parent. FALSE when the parent has no view.
    BOOL Create(const char* label, DWORD style, const RECT& rect, CWnd* parent, UINT id = 0xFFFF);
    using CWnd::Create;
};
