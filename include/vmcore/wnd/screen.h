// The screens, in pixels from the top left corner of the main one. Without a display every rectangle
// is empty. Main thread only.
#pragma once

#include <vmcore/core/export.h>
#include <vmcore/core/geometry.h>
#include <vmcore/core/types.h>

/// What GetSystemMetrics answers; 0 for every other index.
enum SystemMetric : int {
    SM_CXSCREEN = 0, ///< the main screen
    SM_CYSCREEN = 1,
    SM_CXVSCROLL = 2, ///< the scroll bars of CWnd::Create
    SM_CYHSCROLL = 3,
    SM_CYCAPTION = 4, ///< the title bar of the first window that has one, else the style's
    SM_CXICON = 11,
    SM_CYICON = 12,
    SM_CXCURSOR = 13,
    SM_CYCURSOR = 14,
    SM_CYMENU = 15,       ///< a menu bar of one line
    SM_CXFULLSCREEN = 16, ///< the main screen without the desktop's panels
    SM_CYFULLSCREEN = 17,
    SM_MOUSEPRESENT = 19, ///< 1
    SM_CYVSCROLL = 20,    ///< an arrow of a scroll bar
    SM_CXHSCROLL = 21,
    SM_CXDOUBLECLK = 36, ///< how far apart the presses of a double click may be
    SM_CYDOUBLECLK = 37,
    SM_CMOUSEBUTTONS = 43, ///< 3
    SM_CXSMICON = 49,
    SM_CYSMICON = 50,
    SM_CXDRAG = 68, ///< how far the mouse moves before a press is a drag
    SM_CYDRAG = 69,
    SM_XVIRTUALSCREEN = 76, ///< all screens together
    SM_YVIRTUALSCREEN = 77,
    SM_CXVIRTUALSCREEN = 78,
    SM_CYVIRTUALSCREEN = 79,
    SM_CMONITORS = 80,
};

VM_API RECT GetScreenRect();        ///< the main screen
VM_API RECT GetVirtualScreenRect(); ///< the smallest rectangle that holds all screens
VM_API int GetSystemMetrics(int index);
