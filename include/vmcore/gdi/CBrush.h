// Brushes: solid, hollow, or made from a bitmap.
#pragma once

#include <vmcore/gdi/CGdiObject.h>

class CBitmap;

class VM_API CBrush : public CGdiObject {
public:
    CBrush();
    explicit CBrush(COLORREF color);
    /// Takes the bitmap's image as it is now, if it has one. The drawing calls fill with a colour
    /// all the same: see CDC::FillRect.
    explicit CBrush(CBitmap* bitmap);

    /// Rewrites the record that is there, also a shared one, or makes one. FALSE only without
    /// memory.
    BOOL CreateSolidBrush(COLORREF color);
    /// 0 when there is no brush or no `out`.
    int GetLogBrush(tagLOGBRUSH* out);

    operator void*() const { return m_hObject; }
};
