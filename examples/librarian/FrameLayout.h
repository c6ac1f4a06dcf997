// Where the parts of the main window lie, for the desktop's font (FontScale.h).
#pragma once

#include <afxwin.h>

struct FrameParts {
    bool header = true;
    bool find = false;
    bool tree = true;
    bool hex = true;
    bool detail = true;
    bool monitor = true;
    int editorHeight = 0; ///< of an open editor, which stands in the place of hex and detail pane
};

/// Empty rectangles for parts that are not shown, or for which there is no room.
struct FrameRects {
    CRect header, find, tree, list, hex, detail, editor, monitor, status;
};

/// The list always has its place. A window that is too low or too narrow does without the monitor, the
/// detail pane and the tree, in this order.
FrameRects LayOutFrame(int width, int height, const FrameParts& shown);
