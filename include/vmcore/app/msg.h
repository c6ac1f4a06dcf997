// The message record that thread queues hold and GetMessage fills.
#pragma once

#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>

struct tagMSG {
    HWND hwnd; ///< the target's handle; 0 in a thread message
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time; ///< never filled: 0
    POINT pt;   ///< never filled: 0, 0
};
using MSG = tagMSG;
using LPMSG = tagMSG*;
