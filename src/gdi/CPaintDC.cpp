#include <vmcore/gdi/CPaintDC.h>

#include <vmcore/wnd/CWnd.h>

#include "gdi/cdc.h"

CPaintDC::CPaintDC(CWnd* wnd) : m_ps{} {
    Attach(wnd ? wnd->GetPaintContext() : nullptr);
    m_ps.hdc = m_hDC;
    CRect clip;
    GetClipBox(&clip);
    m_ps.rcPaint = clip;
}

CPaintDC::~CPaintDC() {
    Detach();
}
