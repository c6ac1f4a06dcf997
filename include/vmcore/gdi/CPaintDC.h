// The device context of a window's paint handler.
#pragma once

#include <vmcore/gdi/CDC.h>

class CWnd;

struct tagPAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    tagRECT rcPaint; ///< what may be painted: the bounding box of the clip
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
};
using PAINTSTRUCT = tagPAINTSTRUCT;

/// Good inside WM_PAINT only: outside of it the window has no context, the paint record stays empty
/// and each drawing call is logged and draws nothing.
class VM_API CPaintDC : public CDC {
public:
    explicit CPaintDC(CWnd* wnd);
    ~CPaintDC() override;

    tagPAINTSTRUCT m_ps;
};
