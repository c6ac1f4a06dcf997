// Pens. Only the solid and the null style exist; every other style is drawn solid.
#pragma once

#include <vmcore/gdi/CGdiObject.h>

class VM_API CPen : public CGdiObject {
public:
    CPen();
    CPen(int style, int width, COLORREF color);
    CPen(int style, int width, const tagLOGBRUSH* brush, int count, const unsigned int* entries);

    /// These free the pen that was there. FALSE only without memory.
    BOOL CreatePen(int style, int width, COLORREF color);
    /// A width below 1 counts as 1, with "Internal Error! CPen::CPen width < 1. Setting Width to 1"
    /// on standard error.
    BOOL CreatePen(int style, int width, const tagLOGBRUSH* brush, int count,
                   const unsigned int* entries);
    /// The width is lopnWidth.x.
    BOOL CreatePenIndirect(tagLOGPEN* pen);

    /// Not supported: a message box says so. 0.
    int GetExtLogPen(tagEXTLOGPEN* pen);

    operator HPEN() const { return m_hObject; }
};
