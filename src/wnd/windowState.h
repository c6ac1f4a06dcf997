// What the window module has one of. Main thread only; never freed.
#pragma once

#include <vmcore/core/types.h>

class CWnd;

namespace vm {

struct WindowState {
    HWND CaptureWnd = nullptr;           // the view that has the mouse capture
    CWnd* ActiveWnd = nullptr;           // the object last made active
    NSWindow* LastFocusWindow = nullptr; // the window that last had the focus
    CWnd* pluginHost = nullptr;          // its view is never taken from its parent
    CWnd* lastCreatedCWnd = nullptr;
    CWnd* lastMainWindow = nullptr; // remembered between "resigned" and "became main"
    bool RMBUp = false;             // the last left press counted as a right one
    int redirectedReleases = 0;
    int paints = 0; // WM_PAINT in progress, one inside the other
};

WindowState& Windows();

} // namespace vm
